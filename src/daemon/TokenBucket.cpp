#include "daemon/TokenBucket.h"

#include <algorithm>

namespace velq::daemon
{

bool TokenBucket::take(Clock::time_point now)
{
    const std::chrono::duration<double> passed = now - m_filled;
    m_filled = now;
    m_tokens = std::min(m_burst, m_tokens + passed.count() * m_perSecond);
    if (m_tokens < 1)
        return false;
    m_tokens -= 1;
    return true;
}

} // namespace velq::daemon
