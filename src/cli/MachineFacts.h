#pragma once

#include <QJsonObject>
#include <QStringList>

namespace velq::cli
{

/// The running system: "name", "kernel", "processor", "desktop", "session", "qt".
QJsonObject systemFacts();

/// The first line that each tool says of its version, Velq's own and those it relies on; null for
/// one that is not there. Runs all of them.
QJsonObject toolVersions();

/// The networks that this computer knows by name. Runs tools.
QStringList networkNames();

} // namespace velq::cli
