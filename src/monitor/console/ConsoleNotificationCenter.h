#pragma once

#include "monitor/console/ConsoleOutput.h"
#include "platform/UserNotificationCenter.h"

namespace velq
{

/// Prints each notification as a line, and shows it on the desktop too if there is one. Main
/// thread.
class ConsoleNotificationCenter : public UserNotificationCenter
{
public:
    /// `output` must outlive the centre.
    explicit ConsoleNotificationCenter(ConsoleOutput &output);

    void deliver(const UserNotification &notification) override;

private:
    ConsoleOutput &m_output;
    DesktopNotificationCenter m_desktop;
};

} // namespace velq
