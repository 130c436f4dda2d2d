#include "platform/linux/ApplicationActivation.h"

#include "platform/RunningApplication.h"
#include "platform/linux/ClientWindows.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QVariantMap>

namespace velq
{

namespace
{

constexpr int patienceMilliseconds = 2000;

// The Desktop Entry Specification, "D-Bus Activation".
QString objectPath(const QString &identifier)
{
    QString path = QLatin1Char('/') + identifier;
    return path.replace(QLatin1Char('.'), QLatin1Char('/'))
        .replace(QLatin1Char('-'), QLatin1Char('_'));
}

bool activateOverBus(const QString &identifier)
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (identifier.isNull() || bus.interface() == nullptr
        || !bus.interface()->isServiceRegistered(identifier))
        return false;
    QDBusMessage activate = QDBusMessage::createMethodCall(
        identifier, objectPath(identifier), QStringLiteral("org.freedesktop.Application"),
        QStringLiteral("Activate"));
    activate.setArguments({QVariantMap()});
    return bus.call(activate, QDBus::Block, patienceMilliseconds).type()
        == QDBusMessage::ReplyMessage;
}

} // namespace

bool bringForward(const RunningApplication &application)
{
    return activateOverBus(application.bundleIdentifier())
        || ClientWindows().activateWindowOf(application.processIdentifier());
}

} // namespace velq
