#pragma once

#include <QDBusServiceWatcher>
#include <QObject>

#include <memory>
#include <optional>

class QDBusPendingCallWatcher;

namespace velq
{

/// Follows whether the session has a tray for StatusNotifierItems: a watcher on the session bus
/// that knows of a host. Asks without waiting, and follows a watcher that comes, goes or is
/// replaced, and the end of the bus. Main thread.
///
/// Protocol: freedesktop.org, StatusNotifierItem, "StatusNotifierWatcher".
class StatusNotifierWatch : public QObject
{
    Q_OBJECT

public:
    StatusNotifierWatch();
    ~StatusNotifierWatch() override;

    /// No value while the answer is awaited.
    std::optional<bool> hostIsThere() const { return m_hostIsThere; }

Q_SIGNALS:
    /// Emitted with no value in between when one watcher takes another's place, too: items must be
    /// registered anew.
    void changed();

private Q_SLOTS:
    void ask();
    void onDisconnected();

private:
    void onOwnerChanged(const QString &service, const QString &oldOwner, const QString &newOwner);
    void onAnswered();
    void setHostIsThere(std::optional<bool> isThere);

    QDBusServiceWatcher m_owner;
    std::unique_ptr<QDBusPendingCallWatcher> m_question;
    std::optional<bool> m_hostIsThere;
};

} // namespace velq
