#pragma once

#include <QString>

namespace velq
{

/// Installs the monitor, which the main application carries among its resources, for the current
/// user: copies its bundle into the home folder and writes and loads a launch agent that keeps it
/// running. For the main application; no instances, no state, any thread.
///
/// Nothing reports an error: what cannot be made, copied or deleted is left as it is. "The running
/// application" is the one that calls; a program in the monitor's own bundle works for the main
/// application, and carries that bundle. Paths have no null where not said.
class MonitorInstaller
{
public:
    MonitorInstaller() = delete;

    /// Notes in the user defaults ("appPath") where the running application is, and replaces the
    /// monitor if compareMiniVersionDecideIsReplace() says so.
    static void installOrroMenuBar();
    /// The same, but always replaces the monitor.
    static void installOrroMenuBarWithForce();
    /// Unloads the agent, and deletes its file and the installed bundle. "appPath" stays.
    static void uninstallOrroMenuBar();

    /// Puts the root daemon in place, for which the system asks for administrator rights. Blocks
    /// until that is done. True only when the person dismissed the question.
    static bool installDaemon();

    /// What of the monitor is there; null for what is not.
    struct Installed {
        QString agent; ///< the agent's file
        QString app;   ///< the bundle
    };
    /// For who only looks: it makes no folder, which all that give a path in one may do.
    static Installed installed();

    /// The user's folder of launch agents; made if it is missing.
    static QString launchAgentPath();
    /// The file of the monitor's agent; null when there is none.
    static QString miniLaunchAgentPath();
    /// Where that file is or would be.
    static QString miniLaunchAgent();
    /// Runs "launchctl OPTION PATH" in the system's shell and waits for it, if there is a file at
    /// `path`, which may be null. Its status is not looked at. The path is not quoted.
    static void launchctlApplicationInPath(const QString &path, const QString &option);

    /// The version of the monitor that the running application carries: the whole number of its own
    /// "CFBundleVersion".
    static qint64 menubarVersion();

    /// The running application's folder of support files, with a "/" at its end; made if it is
    /// missing.
    static QString pallidorPath();
    /// The installed bundle; null when there is none.
    static QString miniAppPath();
    /// Where that bundle is or would be.
    static QString createdMiniAppPath();
    /// The bundle that the running application carries; null when there is none.
    static QString bundleMiniPath();

    /// Whether the installed monitor must be replaced: the agent's file or the bundle is missing,
    /// or the version in that file is lower than the carried one.
    static bool compareMiniVersionDecideIsReplace();
    /// Puts the carried bundle in place, unless only the agent's file is missing, and writes and
    /// loads the agent.
    static void replaceMini();

    /// The installed bundle's program; null when there is none.
    static QString miniExePath();
    /// The installed bundle's identifier; null when there is none.
    static QString label();
    /// Writes the agent's file, in the place of any that is there, and loads it. What cannot be
    /// found is left out of it.
    static void createMiniLaunchAgent();
};

} // namespace velq
