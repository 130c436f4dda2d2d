#pragma once

#include <QString>

namespace velq
{

/// The system's program that keeps the network's settings: it sets devices up, and remembers what
/// Velq's tools change. On Linux NetworkManager. Any thread.
class NetworkKeeper
{
public:
    NetworkKeeper() = delete;

    enum class State {
        Absent,  ///< the system has none, keeps it from starting, or cannot tell
        Stopped, ///< it is installed, but nobody has started it
        Running,
    };

    /// As it is now. Starts nothing; waits a second at most for each answer.
    static State state();

    static QString name();
    /// A command line for the person, who needs the administrator's rights for it.
    static QString startCommand();
};

} // namespace velq
