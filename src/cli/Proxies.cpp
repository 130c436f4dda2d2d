#include "cli/Proxies.h"

#include "cli/Columns.h"
#include "cli/Json.h"
#include "cli/Services.h"
#include "diagnosis/NetworkScanner.h"

#include <QJsonObject>

namespace velq::cli
{

namespace
{

QStringList rowOf(const QJsonValue &proxy)
{
    return {proxy[u"proxyType"].toString(), proxy[u"serverIP"].toString(),
            proxy[u"port"].toString(),
            proxy[u"authenticated"].toBool() ? QStringLiteral("with a password")
                                             : QStringLiteral("open")};
}

QJsonObject recordOf(const ProxyServer &proxy)
{
    return {{QStringLiteral("proxyType"), jsonOf(proxy.proxyType)},
            {QStringLiteral("serverIP"), jsonOf(proxy.serverIP)},
            {QStringLiteral("port"), jsonOf(proxy.port)},
            {QStringLiteral("enabled"), proxy.enabled},
            {QStringLiteral("authenticated"), proxy.authenticated}};
}

} // namespace

Report proxies()
{
    (void)serviceInventory();
    QJsonArray records;
    for (const ProxyServer &proxy : NetworkScanner::shareScanner().serviceProxy())
        records.append(recordOf(proxy));
    return {proxiesText(records), QJsonDocument(records)};
}

QString proxiesText(const QJsonArray &records)
{
    if (records.isEmpty())
        return QStringLiteral("No proxies are switched on.\n");
    QList<QStringList> rows{{QStringLiteral("PROXY"), QStringLiteral("SERVER"),
                             QStringLiteral("PORT"), QStringLiteral("ACCESS")}};
    for (const QJsonValue record : records)
        rows.append(rowOf(record));
    return columns(rows);
}

} // namespace velq::cli
