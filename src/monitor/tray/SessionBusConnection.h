#pragma once

#include <QDBusConnection>

namespace velq
{

/// A connection to the session bus of its own, beside the shared one; closed at its end. Not
/// connected where there is no session bus. Any thread.
class SessionBusConnection
{
public:
    /// `name` is Qt's name for it, unique in the process.
    explicit SessionBusConnection(const QString &name)
        : m_connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name))
    {
    }
    SessionBusConnection(const SessionBusConnection &) = delete;
    SessionBusConnection &operator=(const SessionBusConnection &) = delete;
    ~SessionBusConnection() { QDBusConnection::disconnectFromBus(name()); }

    QString name() const { return m_connection.name(); }
    QDBusConnection *operator->() { return &m_connection; }

private:
    QDBusConnection m_connection;
};

} // namespace velq
