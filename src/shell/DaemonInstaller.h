#pragma once

#include "platform/AdministratorRights.h"

namespace velq
{

/// Puts the root daemon in place and takes it away again, after the system has asked the person for
/// administrator rights. Any thread, which is blocked meanwhile; two installations at a time stage
/// their files at the same places.
///
/// What is installed is what this build has made, or nothing: files that were changed since are
/// refused.
class DaemonInstaller
{
public:
    DaemonInstaller() = delete;

    /// Stages the daemon and its property list in the person's caches folder, runs the script
    /// "copy.sh" of the main bundle's resources on them with administrator rights, and removes what
    /// was staged, whatever came of it. True only when the person dismissed the prompt; installed
    /// and failed alike are false. Nothing is logged or shown besides the prompt. It fails where
    /// the home folder's path has a blank in it; the bundle's may have.
    static bool installDaemon();

    /// Takes the daemon away from this person, and altogether when nobody else has it. Done also
    /// when it was not installed.
    static AdministratorRights::Result removeDaemon();
};

} // namespace velq
