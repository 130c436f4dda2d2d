#include "platform/DistributedNotificationCenter.h"

#include <QDBusConnection>
#include <QDBusMessage>

namespace velq
{

namespace
{

constexpr QLatin1String path("/com/zelmor/DistributedNotificationCenter");
constexpr QLatin1String interface("com.zelmor.DistributedNotificationCenter");
constexpr QLatin1String member("Posted");

} // namespace

DistributedNotificationCenter::DistributedNotificationCenter(QObject *parent)
    : QObject(parent)
{
    // Any sender: whoever shares the session may post.
    QDBusConnection::sessionBus().connect(QString(), path, interface, member, this,
                                          SIGNAL(posted(QString, QString)));
}

void DistributedNotificationCenter::post(const QString &name, const QString &object)
{
    QDBusMessage signal = QDBusMessage::createSignal(path, interface, member);
    signal.setArguments({name, object});
    QDBusConnection::sessionBus().send(signal);
}

} // namespace velq
