#pragma once

#include <QString>

namespace velq
{

/// Where the command-line tools are found.
class ToolPath
{
public:
    /// Puts `folder` into `searchPath` (a PATH value) just before the first of the system's own
    /// folders: what the user put in front keeps its precedence, and the system's
    /// differently-speaking tools of the same names do not get in the way. A path that has the
    /// folder already comes back unchanged.
    static QString withHelpers(const QString &searchPath, const QString &folder);

    /// Does that to this process's PATH, for itself and its children. Before any thread is started.
    static void addHelpersToEnvironment(const QString &folder);

    /// The file to start for `launchPath`. An absolute path that stands for a tool which this
    /// system lacks or speaks otherwise becomes the tool of that name on PATH; all other paths, and
    /// a tool that PATH does not have, come back as they are. Any thread.
    static QString resolved(const QString &launchPath);
};

} // namespace velq
