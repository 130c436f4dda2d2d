#include "cli/Connection.h"

#include "cli/Json.h"
#include "common/Text.h"
#include "monitor/MenuInterface.h"
#include "shell/CommandLine.h"

#include <QJsonObject>

namespace velq::cli
{

namespace
{

// Asked of the default route, not of the way to a public host: no name has to be resolved, and no
// host has to have answered.
QString defaultInterface()
{
    const QString name = outputOf(QStringLiteral("route -n get default|grep 'interface'|awk -F ': "
                                                 "' '{print $2}'"))
                             .trimmed();
    return name.isEmpty() ? QString() : name;
}

} // namespace

Connection Connection::now()
{
    if (!MenuInterface::networkConnect())
        return {};
    return {true, defaultInterface()};
}

Report Connection::report(const QString &text) const
{
    const QJsonObject json{{QStringLiteral("connected"), connected},
                           {QStringLiteral("interface"), jsonOf(interface)}};
    const QString way =
        interface.isNull() ? QString() : QStringLiteral(", by %1").arg(onOneLine(interface));
    return {text + way + QStringLiteral(".\n"), QJsonDocument(json), connected ? Fine : Found};
}

} // namespace velq::cli
