#pragma once

#include <functional>
#include <mutex>

namespace velq::cli
{

/// What becomes of a running command that the person, or the system, asks to end.
///
/// A command that says nothing of it ends with the program, at once.
class Interruption
{
public:
    /// Asks the command to stop soon; false when there is nothing to wait for.
    using Stop = std::function<bool()>;

    /// For as long as it lives, the first signal asks the command instead, and the tools that it
    /// runs live through Ctrl-C; one inside another goes before it. Any thread.
    class Scope
    {
    public:
        Scope(Interruption &interruption, Stop stop);
        Scope(const Scope &) = delete;
        Scope &operator=(const Scope &) = delete;
        ~Scope();

    private:
        Interruption &m_interruption;
        Stop m_outer;
    };

    /// Whether the command stops by itself; whoever wants it twice does not wait for that. Main
    /// thread.
    bool isLeftTo(int signal);

    /// The signal that the command was asked by; 0 when there was none. Any thread.
    int signal() const;

private:
    Stop exchange(Stop stop);

    mutable std::mutex m_mutex;
    Stop m_stop;
    int m_signal = 0;
};

} // namespace velq::cli
