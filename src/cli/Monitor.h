#pragma once

#include "cli/Arguments.h"
#include "cli/Report.h"

#include <QJsonObject>

namespace velq::cli
{

class Interruption;

/// What `monitor` takes.
extern const Operand monitorAction;

/// Installs the monitor for this person, removes it, starts it or stops it.
Report monitor(const Arguments &arguments, Interruption &interruption);

/// The installed monitor as it is now: "installed", "version", "running".
QJsonObject monitorRecord();

} // namespace velq::cli
