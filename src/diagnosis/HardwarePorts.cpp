#include "diagnosis/HardwarePorts.h"

#include "shell/CommandLine.h"

#include <QStringList>

namespace velq
{

QList<NetworkService> hardwarePorts()
{
    return hardwarePortsFrom(outputOf(
        QStringLiteral("networksetup -listallhardwareports |grep -A 2 'Hardware Port'|awk -F ': ' "
                       "'{print $2}'")));
}

QList<NetworkService> hardwarePortsFrom(const QString &output)
{
    constexpr qsizetype lines = 3;
    QList<NetworkService> ports;
    for (const QString &piece : output.split(QStringLiteral("\n\n"))) {
        const QStringList parts = piece.split(u'\n');
        if (parts.size() != lines)
            continue;
        NetworkService port;
        port.netType = parts[0];
        port.name = parts[0];
        port.interface = parts[1];
        port.macAdds = parts[2];
        ports.append(port);
    }
    return ports;
}

} // namespace velq
