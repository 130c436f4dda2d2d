#include "monitor/console/ConsoleNotificationCenter.h"

namespace velq
{

ConsoleNotificationCenter::ConsoleNotificationCenter(ConsoleOutput &output)
    : m_output(output)
{
}

void ConsoleNotificationCenter::deliver(const UserNotification &notification)
{
    QString text = notification.informativeText;
    m_output.writeLine(QStringLiteral("%1: %2").arg(
        notification.title, text.replace(QLatin1Char('\n'), QStringLiteral(", "))));
    m_desktop.deliver(notification);
}

} // namespace velq
