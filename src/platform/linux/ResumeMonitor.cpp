#include "platform/ResumeMonitor.h"

#include <QDBusConnection>

namespace velq
{

ResumeMonitor::ResumeMonitor(QObject *parent)
    : QObject(parent)
{
    // No sender is named: asking who owns the name would wait for the bus, and a false alarm only
    // costs one probe.
    QDBusConnection::systemBus().connect(QString(), QStringLiteral("/org/freedesktop/login1"),
                                         QStringLiteral("org.freedesktop.login1.Manager"),
                                         QStringLiteral("PrepareForSleep"), this,
                                         SLOT(onPrepareForSleep(bool)));
}

void ResumeMonitor::onPrepareForSleep(bool goingToSleep)
{
    if (!goingToSleep)
        Q_EMIT resumed();
}

} // namespace velq
