#pragma once

#include "common/AlertPanel.h"

#include <QPointer>

class QDialog;
class QEventLoop;
class QWidget;

namespace velq
{

/// Shows an alert in a dialog. Blocks by an event loop of its own, in which timers, windows and the
/// main queue go on. Serves one alert at a time. Main thread, with a QApplication.
class AlertWindow : public AlertPanel
{
public:
    /// The dialog belongs to the window `parent`, where there is one; not owned.
    explicit AlertWindow(QWidget *parent = nullptr);

    /// The buttons stand in the alert's order, and Return presses the first. Escape and the
    /// window's own close button answer like it; so does an application that quits, or a parent
    /// that is destroyed, before there was an answer.
    void runModal(NSAlert_Addition &alert) override;
    void closeWindow() override;
    void stopModal() override;

private:
    QPointer<QWidget> m_parent;
    QPointer<QDialog> m_dialog;
    QEventLoop *m_loop = nullptr; ///< not owned; null when nobody waits, or no longer
};

} // namespace velq
