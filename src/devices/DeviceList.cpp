#include "devices/DeviceList.h"

#include <QSet>

#include <optional>
#include <utility>

namespace velq
{

namespace
{

constexpr QLatin1String privateRange("192.168");

using Cut = std::optional<DeviceData> (*)(QStringView line);

bool isWholeAddress(QStringView destination)
{
    return destination.count(QLatin1Char('.')) == 3;
}

bool isNoNeighbour(QStringView gateway)
{
    return gateway == QLatin1String("127.0.0.1") || gateway.startsWith(QLatin1String("link#"))
        || gateway == QLatin1String("ff:ff:ff:ff:ff:ff");
}

std::optional<DeviceData> fromRoutingRow(QStringView line)
{
    const auto columns = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (columns.size() < 2)
        return std::nullopt;
    const QStringView destination = columns[0];
    const QStringView gateway = columns[1];
    if (!destination.contains(privateRange) || !isWholeAddress(destination)
        || isNoNeighbour(gateway))
        return std::nullopt;
    return DeviceData{destination.toString(), gateway.toString()};
}

std::optional<DeviceData> fromCacheLine(QStringView line)
{
    constexpr QLatin1String at(") at ");
    QString text = line.toString();
    text.remove(QStringLiteral("? ("));
    const qsizetype ipEnd = text.indexOf(at);
    const qsizetype macEnd = text.indexOf(QLatin1String(" on "));
    if (ipEnd < 0 || macEnd < 0)
        return std::nullopt;
    const QString ip = text.left(ipEnd);
    if (!ip.contains(privateRange))
        return std::nullopt;
    const qsizetype macStart = ipEnd + at.size();
    return DeviceData{ip, text.mid(macStart, std::max<qsizetype>(macEnd - macStart, 0))};
}

QList<DeviceData> cutDevices(const QString &text, Cut cut)
{
    QList<DeviceData> devices;
    QSet<std::pair<QString, QString>> seen;
    for (const QStringView line : QStringView(text).split(QLatin1Char('\n'))) {
        const auto device = cut(line);
        if (!device)
            continue;
        const qsizetype before = seen.size();
        seen.insert({device->ip, device->macAddress});
        if (seen.size() > before)
            devices.append(*device);
    }
    return devices;
}

} // namespace

QList<DeviceData> devicesFromRoutingTable(const QString &text)
{
    return cutDevices(text, fromRoutingRow);
}

QList<DeviceData> devicesFromAddressCache(const QString &text)
{
    return cutDevices(text, fromCacheLine);
}

} // namespace velq
