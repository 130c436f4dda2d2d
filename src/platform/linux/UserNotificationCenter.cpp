#include "platform/UserNotificationCenter.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QStringList>
#include <QVariantMap>

namespace velq
{

namespace
{

constexpr QLatin1String service("org.freedesktop.Notifications");
constexpr QLatin1String path("/org/freedesktop/Notifications");
constexpr quint32 replacesNone = 0;
constexpr qint32 serverDecidesExpiry = -1;

} // namespace

// Desktop Notifications Specification 1.2: the body is markup, so the text is escaped.
void DesktopNotificationCenter::deliver(const UserNotification &notification)
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, path, service, QStringLiteral("Notify"));
    const QVariantMap hints{
        {QStringLiteral("desktop-entry"), QStringLiteral("com.zelmor.Monitor")},
        {QStringLiteral("suppress-sound"), true},
    };
    call.setArguments({QStringLiteral("Velq"), replacesNone, QString(), notification.title,
                       notification.informativeText.toHtmlEscaped(), QStringList(), hints,
                       serverDecidesExpiry});
    QDBusConnection::sessionBus().send(call);
}

} // namespace velq
