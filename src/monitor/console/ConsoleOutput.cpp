#include "monitor/console/ConsoleOutput.h"

#include <QDateTime>

#include <cstdio>

namespace velq
{

void ConsoleOutput::writeLine(const QString &text)
{
    const QString time =
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    const QByteArray line = QStringLiteral("%1  %2\n").arg(time, text).toLocal8Bit();
    const auto length = static_cast<size_t>(line.size());
    if (std::fwrite(line.constData(), 1, length, stdout) != length || std::fflush(stdout) != 0)
        Q_EMIT failed();
}

} // namespace velq
