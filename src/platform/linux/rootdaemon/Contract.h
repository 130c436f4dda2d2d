#pragma once

#include <chrono>
#include <cstddef>

/// What the root daemon and those who call it agree on. Standard C++; shared by both sides.
///
/// The daemon has one object with one method, `runShell(s launchPath, as arguments) → s output`.
/// The output is valid UTF-8 without NUL.
namespace velq::rootdaemon
{

/// On the system bus; the installation's files are named after these.
inline constexpr char busName[] = "com.zelmor.VelqDamonObject";
inline constexpr char objectPath[] = "/VelqDamonObject";
inline constexpr char interfaceName[] = "com.zelmor.VelqDamonObject";
inline constexpr char methodName[] = "runShell";

/// What polkit is asked about every caller.
inline constexpr char actionId[] = "com.zelmor.velqdemon.run-shell";

/// A command that runs longer is ended, with all its descendants.
inline constexpr std::chrono::seconds commandLimit{60};
inline constexpr std::size_t parallelCommands = 4;
inline constexpr std::size_t queuedCommands = 16;
/// Of all places of a kind, those that one user's calls may take. The rest is left to the others.
constexpr std::size_t shareOfOne(std::size_t places)
{
    return places * 3 / 4;
}

/// How long a person may take over polkit's question.
inline constexpr std::chrono::seconds authorizationLimit{120};

/// The longest that a caller can have to wait: the question, all that is in hand, begun and ended
/// in as many turns as one user's share takes, its own command, and the grace that commands get to
/// end.
inline constexpr std::chrono::seconds longestCall = authorizationLimit
    + (commandLimit + std::chrono::seconds{5})
        * ((parallelCommands + queuedCommands) / shareOfOne(parallelCommands) + 2);

} // namespace velq::rootdaemon
