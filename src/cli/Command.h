#pragma once

#include "cli/Arguments.h"
#include "cli/Report.h"

#include <span>

namespace velq::cli
{

class Interruption;

/// What the program does around a command.
enum Trait : int {
    /// Its last result is kept for the report on the computer.
    Kept = 1,
    /// What the tools say on standard error is for the person: why the command failed. With the
    /// others it is not, unless asked for; they find out what it means.
    ToolsSpeak = 2,
    /// It is worth little while the system's keeper of the network's settings is stopped.
    NeedsKeeper = 4,
};

/// One command of the program, in one piece with its help.
struct Command {
    const char *name;
    const char *summary;     ///< what it does, as the end of a sentence
    const char *description; ///< sentences, in lines that fit a terminal
    const char *found;       ///< when it ends with Found; null for a command that only lists

    /// Does it. Blocks, off the main thread, which runs its event loop meanwhile; what takes long
    /// tells so on standard error. Ends with the program when it is interrupted, unless it has
    /// something to say then.
    Report (*run)(const Arguments &arguments, Interruption &interruption);

    int traits = 0; ///< of the Traits, joined
    std::span<const Option> options = {};
    const Operand *operand = nullptr; ///< null for a command that takes none

    bool has(Trait trait) const { return (traits & trait) != 0; }
};

/// Makes a command of what can be asked in one way only.
template <Report (*report)()> Report simple(const Arguments & /*none*/, Interruption & /*none*/)
{
    return report();
}

} // namespace velq::cli
