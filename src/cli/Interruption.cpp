#include "cli/Interruption.h"

#include "platform/TerminationSignals.h"

#include <utility>

namespace velq::cli
{

Interruption::Scope::Scope(Interruption &interruption, Stop stop)
    : m_interruption(interruption)
    , m_outer(interruption.exchange(std::move(stop)))
{
}

Interruption::Scope::~Scope()
{
    (void)m_interruption.exchange(std::move(m_outer));
}

// Under the lock: no scope ends while its command is being asked.
bool Interruption::isLeftTo(int signal)
{
    const std::scoped_lock lock(m_mutex);
    if (m_signal != 0 || !m_stop || !m_stop())
        return false;
    m_signal = signal;
    return true;
}

int Interruption::signal() const
{
    const std::scoped_lock lock(m_mutex);
    return m_signal;
}

Interruption::Stop Interruption::exchange(Stop stop)
{
    const std::scoped_lock lock(m_mutex);
    TerminationSignals::spareChildren(stop != nullptr);
    return std::exchange(m_stop, std::move(stop));
}

} // namespace velq::cli
