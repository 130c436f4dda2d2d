#include "cli/Repair.h"

#include "cli/Connection.h"
#include "cli/KeptSettings.h"
#include "cli/MissingRights.h"
#include "common/Log.h"
#include "monitor/MenuInterface.h"

namespace velq::cli
{

namespace
{

Report advised(Report report, const QString &lines)
{
    report.text += lines;
    return report;
}

} // namespace

Report repair()
{
    if (const Connection before = Connection::now(); before.connected)
        return advised(before.report(QStringLiteral("Nothing to repair: the computer is connected "
                                                    "to the network")),
                       QStringLiteral("If pages do not load all the same, try velq diagnose.\n"));
    log(QStringLiteral("Repairing the connection"));
    const KeptSettings kept = KeptSettings::now();
    MenuInterface::speedUp();
    const Connection after = Connection::now();
    if (after.connected)
        return after.report(QStringLiteral("The connection is back"));
    explainMissingRights();
    return advised(after.report(QStringLiteral("There still is no network connection")),
                   QStringLiteral("To find out why, try velq diagnose.\n") + kept.wayBack());
}

} // namespace velq::cli
