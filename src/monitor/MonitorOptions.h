#pragma once

#include <QStringList>

namespace velq
{

/// What the monitor's command line asks for.
struct MonitorOptions {
    enum class Request {
        Run, ///< in the status bar where there is a display, else in the terminal
        RunInConsole,
        ShowHelp,
        ShowVersion,
        Refuse, ///< an unknown option or argument, named in `unknown`
    };
    Request request = Request::Run;
    QString unknown;

    /// `arguments` without the program's own name.
    static MonitorOptions parse(const QStringList &arguments);

    /// One line on how the program is called.
    static QString usage();
    /// The usage and what each option means.
    static QString help();
};

} // namespace velq
