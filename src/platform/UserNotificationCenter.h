#pragma once

#include <QString>

namespace velq
{

/// One notification for the person in front of the screen.
struct UserNotification {
    QString title;
    /// Plain text, lines divided by "\n".
    QString informativeText;
};

/// Shows notifications. Called on the main thread.
class UserNotificationCenter
{
public:
    UserNotificationCenter() = default;
    UserNotificationCenter(const UserNotificationCenter &) = delete;
    UserNotificationCenter &operator=(const UserNotificationCenter &) = delete;
    virtual ~UserNotificationCenter() = default;

    /// Shows it now. Does not wait; where nobody shows notifications, nothing happens.
    virtual void deliver(const UserNotification &notification) = 0;
};

/// The desktop's own notifications: on Linux org.freedesktop.Notifications on the session bus.
class DesktopNotificationCenter : public UserNotificationCenter
{
public:
    void deliver(const UserNotification &notification) override;
};

} // namespace velq
