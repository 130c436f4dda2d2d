#pragma once

#include "cli/Arguments.h"
#include "cli/Command.h"

#include <QString>
#include <QStringList>

namespace velq::cli
{

/// What the command line asks for.
struct Invocation {
    enum class Request { Run, ShowHelp, ShowVersion, Refuse };

    Request request = Request::Run;
    const Command *command = nullptr; ///< in the table; set for Run, may be for the others
    Arguments arguments;              ///< for Run: they make sense to the command
    QString complaint;                ///< why it is refused: the end of a sentence

    /// `words` without the program's own name. What makes no sense is refused whatever else is
    /// asked for.
    static Invocation parse(const QStringList &words);
};

} // namespace velq::cli
