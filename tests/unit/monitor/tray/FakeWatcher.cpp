#include "FakeWatcher.h"

#include "support/Waiting.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>

namespace velq
{

namespace
{

constexpr QLatin1String name("org.kde.StatusNotifierWatcher");

QString nextConnectionName()
{
    static int number = 0;
    return QStringLiteral("fake watcher %1").arg(++number);
}

} // namespace

FakeWatcher::FakeWatcher()
    : m_connection(nextConnectionName())
{
    m_connection->registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
                                 QDBusConnection::ExportAllContents);
    for (const char *member : {"NewIcon", "NewTitle", "NewToolTip", "NewStatus"})
        listen("org.kde.StatusNotifierItem", member);
    for (const char *member : {"ItemsPropertiesUpdated", "LayoutUpdated"})
        listen("com.canonical.dbusmenu", member);
    m_connection->registerService(name);
}

void FakeWatcher::listen(const char *interface, const char *member)
{
    m_connection->connect(QString(), QString(), QLatin1String(interface), QLatin1String(member),
                          this, SLOT(onSignal(QDBusMessage)));
}

bool FakeWatcher::answerWhetherThereIsAHost()
{
    ++m_timesAsked;
    return m_hasHost;
}

void FakeWatcher::setHasHost(bool hasHost)
{
    m_hasHost = hasHost;
    if (hasHost)
        Q_EMIT StatusNotifierHostRegistered();
    else
        Q_EMIT StatusNotifierHostUnregistered();
}

void FakeWatcher::RegisterStatusNotifierItem(const QString &service)
{
    registered.append(service);
}

void FakeWatcher::onSignal(const QDBusMessage &message)
{
    signalsSeen.append(message.member());
}

QVariant FakeWatcher::call(const QString &path, const QString &interface, const QString &method,
                           const QVariantList &arguments)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(registered.constLast(), path, interface, method);
    message.setArguments(arguments);
    const QDBusPendingCall call = m_connection->asyncCall(message);
    testing::waitUntil([&call] { return call.isFinished(); });
    const QDBusMessage reply = call.reply();
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0) : QVariant();
}

QVariant FakeWatcher::read(const QString &path, const QString &interface, const QString &property)
{
    const QVariant value = call(path, QStringLiteral("org.freedesktop.DBus.Properties"),
                                QStringLiteral("Get"), {interface, property});
    return value.value<QDBusVariant>().variant();
}

QVariant FakeWatcher::itemProperty(const char *property)
{
    return read(QStringLiteral("/StatusNotifierItem"), QStringLiteral("org.kde.StatusNotifierItem"),
                QLatin1String(property));
}

void FakeWatcher::callItem(const char *method, const QVariantList &arguments)
{
    call(QStringLiteral("/StatusNotifierItem"), QStringLiteral("org.kde.StatusNotifierItem"),
         QLatin1String(method), arguments);
}

} // namespace velq
