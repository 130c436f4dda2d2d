#pragma once

#include "diagnosis/DiagnosisHost.h"

namespace velq
{

class AlertPanel;

} // namespace velq

namespace velq::cli
{

/// The diagnosis's host in a program without windows: alerts go to the panel, views there are none.
class ConsoleHost : public DiagnosisHost
{
public:
    /// `panel` must outlive the host.
    explicit ConsoleHost(AlertPanel &panel);

    void runModal(NSAlert_Addition &alert) override;
    std::shared_ptr<QWidget> createIPErrorView(const QString &service) override;
    std::shared_ptr<QWidget> createProxyControlView(const QList<ProxyServer> &proxies,
                                                    CloseProxy closeProxy) override;

private:
    AlertPanel &m_panel;
};

} // namespace velq::cli
