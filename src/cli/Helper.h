#pragma once

#include "cli/Arguments.h"
#include "cli/Report.h"

#include <QJsonObject>

namespace velq::cli
{

class Interruption;

/// What `helper` takes.
extern const Operand helperAction;

/// Looks at the root daemon, or removes it.
Report helper(const Arguments &arguments, Interruption &interruption);

/// The root daemon as it is now: "installed", "complete", "faulty" (the files that are not as
/// installed), "version", "granted" (to this person), "answers". Starts it if it can be.
QJsonObject helperRecord();

/// The same for people. Whole lines.
QString helperText(const QJsonObject &record);

} // namespace velq::cli
