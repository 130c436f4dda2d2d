#pragma once

#include <chrono>

namespace velq::daemon
{

/// So many at once, then so many a second.
class TokenBucket
{
public:
    using Clock = std::chrono::steady_clock;

    TokenBucket(double burst, double perSecond)
        : m_burst(burst)
        , m_perSecond(perSecond)
        , m_tokens(burst)
    {
    }

    /// False when there was none left at that time.
    bool take(Clock::time_point now);

private:
    double m_burst;
    double m_perSecond;
    double m_tokens;
    Clock::time_point m_filled{};
};

} // namespace velq::daemon
