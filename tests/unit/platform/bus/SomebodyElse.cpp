#include "SomebodyElse.h"

#include <QDBusMessage>
#include <QString>

namespace velq::testing
{

namespace
{

constexpr QLatin1String name("somebody else");

} // namespace

SomebodyElse::SomebodyElse()
{
    QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), name);
}

SomebodyElse::~SomebodyElse()
{
    QDBusConnection::disconnectFromBus(name);
}

QDBusConnection SomebodyElse::connection() const
{
    return QDBusConnection(name);
}

void SomebodyElse::emitSignal(const char *path, const char *interface, const char *member,
                              const QVariantList &arguments) const
{
    QDBusMessage signal = QDBusMessage::createSignal(
        QString::fromLatin1(path), QString::fromLatin1(interface), QString::fromLatin1(member));
    signal.setArguments(arguments);
    connection().send(signal);
}

} // namespace velq::testing
