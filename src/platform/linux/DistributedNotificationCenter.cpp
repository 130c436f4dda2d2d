#include "platform/DistributedNotificationCenter.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <chrono>

namespace velq
{

namespace
{

constexpr QLatin1String path("/com/zelmor/DistributedNotificationCenter");
constexpr QLatin1String interface("com.zelmor.DistributedNotificationCenter");
constexpr QLatin1String member("Posted");

// What is sent waits in a thread of Qt's, and goes with it when the program ends. The bus answers
// in order: its answer to this says that it has all that came before.
void waitUntilSent(const QDBusConnection &bus)
{
    constexpr std::chrono::milliseconds patience = std::chrono::seconds(1);
    (void)bus.call(QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                                  QStringLiteral("/org/freedesktop/DBus"),
                                                  QStringLiteral("org.freedesktop.DBus.Peer"),
                                                  QStringLiteral("Ping")),
                   QDBus::Block, static_cast<int>(patience.count()));
}

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
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.send(signal))
        waitUntilSent(bus);
}

} // namespace velq
