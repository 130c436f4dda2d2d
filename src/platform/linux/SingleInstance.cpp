#include "platform/SingleInstance.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDir>
#include <QLockFile>
#include <QStandardPaths>

namespace velq
{

SingleInstance::SingleInstance() = default;

SingleInstance::~SingleInstance()
{
    if (m_busName.isEmpty())
        return;
    // Sent, not called: a bus that hangs must not keep the program from ending.
    QDBusMessage release = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ReleaseName"));
    release.setArguments({m_busName});
    QDBusConnection::sessionBus().send(release);
}

bool SingleInstance::claim(const QString &identifier)
{
    QDBusConnectionInterface *bus = QDBusConnection::sessionBus().interface();
    if (bus == nullptr)
        return lock(identifier);
    const auto reply = bus->registerService(identifier);
    if (!reply.isValid())
        return lock(identifier);
    if (reply.value() != QDBusConnectionInterface::ServiceRegistered)
        return false;
    m_busName = identifier;
    return true;
}

bool SingleInstance::lock(const QString &identifier)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    m_lock =
        std::make_unique<QLockFile>(QDir(folder).filePath(identifier + QStringLiteral(".lock")));
    m_lock->setStaleLockTime(0);
    // A folder that cannot be written must not keep the program from starting.
    return m_lock->tryLock() || m_lock->error() != QLockFile::LockFailedError;
}

} // namespace velq
