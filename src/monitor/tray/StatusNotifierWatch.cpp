#include "monitor/tray/StatusNotifierWatch.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace velq
{

namespace
{

constexpr QLatin1String watcher("org.kde.StatusNotifierWatcher");
constexpr QLatin1String path("/StatusNotifierWatcher");

QDBusMessage question()
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        watcher, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call.setArguments({watcher, QStringLiteral("IsStatusNotifierHostRegistered")});
    call.setAutoStartService(false);
    return call;
}

// A watcher that does not know the question exists all the same.
bool answersAnything(const QDBusError &error)
{
    switch (error.type()) {
    case QDBusError::ServiceUnknown:
    case QDBusError::NoReply:
    case QDBusError::Disconnected:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        return false;
    default:
        return error.name() != QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner");
    }
}

} // namespace

StatusNotifierWatch::StatusNotifierWatch()
    : m_owner(watcher, QDBusConnection::sessionBus())
{
    connect(&m_owner, &QDBusServiceWatcher::serviceOwnerChanged, this,
            &StatusNotifierWatch::onOwnerChanged);
    QDBusConnection bus = QDBusConnection::sessionBus();
    // No sender is named: Qt would wait for the bus to say who owns the name.
    for (const char *signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        bus.connect(QString(), path, watcher, QLatin1String(signal), this, SLOT(ask()));
    bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                SLOT(onDisconnected()));
    // Where there has never been a connection, no call is ever answered.
    if (bus.isConnected())
        ask();
    else
        onDisconnected();
}

StatusNotifierWatch::~StatusNotifierWatch() = default;

void StatusNotifierWatch::ask()
{
    m_question = std::make_unique<QDBusPendingCallWatcher>(
        QDBusConnection::sessionBus().asyncCall(question()));
    connect(m_question.get(), &QDBusPendingCallWatcher::finished, this,
            &StatusNotifierWatch::onAnswered);
}

void StatusNotifierWatch::onAnswered()
{
    const QDBusPendingReply<QDBusVariant> reply = *m_question;
    setHostIsThere(reply.isError() ? answersAnything(reply.error())
                                   : reply.value().variant().toBool());
}

void StatusNotifierWatch::onOwnerChanged(const QString &, const QString &, const QString &newOwner)
{
    if (newOwner.isEmpty()) {
        m_question.reset();
        setHostIsThere(false);
    } else {
        setHostIsThere(std::nullopt);
        ask();
    }
}

void StatusNotifierWatch::onDisconnected()
{
    m_question.reset();
    setHostIsThere(false);
}

void StatusNotifierWatch::setHostIsThere(std::optional<bool> isThere)
{
    if (m_hostIsThere == isThere)
        return;
    m_hostIsThere = isThere;
    Q_EMIT changed();
}

} // namespace velq
