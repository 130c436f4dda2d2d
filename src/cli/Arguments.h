#pragma once

#include <QStringList>

namespace velq::cli
{

/// A word that switches something on in a command.
struct Option {
    const char *name; ///< with its two dashes
    const char *meaning;
};

/// A word without which a command makes no sense.
struct Operand {
    const char *name;              ///< as the help writes it, in capitals
    const char *meaning;           ///< one line
    QStringList (*candidates)();   ///< what it may be, to be offered; not every word that is right
    const char *listing = nullptr; ///< the command that lists them instead, in its first column
};

/// What a command is called with.
struct Arguments {
    bool json = false;    ///< the report is for programs, which nobody watches at work
    bool verbose = false; ///< the person wants to see what the tools complain of
    QStringList options;  ///< those of its own that were given
    QStringList operands;

    bool has(const Option &option) const { return options.contains(QLatin1String(option.name)); }
};

} // namespace velq::cli
