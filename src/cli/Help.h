#pragma once

#include "cli/Command.h"

#include <QString>

namespace velq::cli
{

/// A command with what it takes.
QString synopsis(const Command &command);
/// Whether the operand's meaning names what it may be, so that nothing else need.
bool isListed(const Operand &operand);
/// How the program is called; `command` null for all of it. Whole lines.
QString usage(const Command *command);
/// The usage, and what everything means.
QString help(const Command *command);
/// What the exit statuses mean, for all commands or this one. Whole lines.
QString exitStatuses(const Command *command);

} // namespace velq::cli
