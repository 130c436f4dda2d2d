#include "cli/Services.h"

#include "cli/Columns.h"
#include "cli/Json.h"
#include "diagnosis/NetworkScanner.h"

#include <QJsonObject>

namespace velq::cli
{

namespace
{

QStringList rowOf(const QJsonValue &service)
{
    return {service[u"netType"].toString(),
            service[u"interface"].toString(),
            service[u"macAdds"].toString(),
            service[u"ipAdds"].toString(),
            service[u"enabled"].toBool() ? QStringLiteral("enabled") : QStringLiteral("disabled"),
            service[u"isActive"].toBool() ? QStringLiteral("active") : QStringLiteral("inactive")};
}

QJsonObject recordOf(const NetworkService &service)
{
    return {{QStringLiteral("netType"), jsonOf(service.netType)},
            {QStringLiteral("ipAdds"), jsonOf(service.ipAdds)},
            {QStringLiteral("name"), jsonOf(service.name)},
            {QStringLiteral("interface"), jsonOf(service.interface)},
            {QStringLiteral("macAdds"), jsonOf(service.macAdds)},
            {QStringLiteral("enabled"), service.enabled},
            {QStringLiteral("isActive"), service.isActive}};
}

} // namespace

QList<NetworkService> serviceInventory()
{
    NetworkScanner &scanner = NetworkScanner::shareScanner();
    scanner.services().clear();
    scanner.searchNetworkSerices();
    return scanner.services();
}

Report services()
{
    QJsonArray records;
    for (const NetworkService &service : serviceInventory())
        records.append(recordOf(service));
    return {servicesText(records), QJsonDocument(records)};
}

QString servicesText(const QJsonArray &records)
{
    if (records.isEmpty())
        return QStringLiteral("No network services.\n");
    QList<QStringList> rows{{QStringLiteral("SERVICE"), QStringLiteral("INTERFACE"),
                             QStringLiteral("HARDWARE ADDRESS"), QStringLiteral("IP ADDRESS"),
                             QStringLiteral("SWITCH"), QStringLiteral("LINK")}};
    for (const QJsonValue record : records)
        rows.append(rowOf(record));
    return columns(rows);
}

} // namespace velq::cli
