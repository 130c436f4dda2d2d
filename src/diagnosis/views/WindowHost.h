#pragma once

#include "diagnosis/DiagnosisHost.h"

#include <QPointer>

namespace velq
{

/// The host of the diagnosis in a program with windows. Main thread.
///
/// The views belong to those who hold them: when the last one lets go, on whichever thread, the
/// view ends in the next turn of the main thread's event loop. A view that is shown inside a window
/// may also end with that.
class WindowHost : public DiagnosisHost
{
public:
    /// Alerts belong to the window `window`, where there is one; not owned.
    explicit WindowHost(QWidget *window = nullptr);

    void runModal(NSAlert_Addition &alert) override;
    std::shared_ptr<QWidget> createIPErrorView(const QString &service) override;
    std::shared_ptr<QWidget> createProxyControlView(const QList<ProxyServer> &proxies,
                                                    CloseProxy closeProxy) override;

private:
    QPointer<QWidget> m_window;
};

} // namespace velq
