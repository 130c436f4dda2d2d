#pragma once

#include <benchmark/benchmark.h>

#include <sys/resource.h>

namespace velq::bench
{

/// Adds to a benchmark the CPU seconds of one turn, this process's ("own") and its children's
/// ("children"), between its making and its end.
class CpuCounters
{
public:
    explicit CpuCounters(benchmark::State &state)
        : m_state(state)
    {
    }
    CpuCounters(const CpuCounters &) = delete;
    CpuCounters &operator=(const CpuCounters &) = delete;
    ~CpuCounters()
    {
        const auto perTurn = benchmark::Counter::kAvgIterations;
        m_state.counters["own"] = {cpuOf(RUSAGE_SELF) - m_own, perTurn};
        m_state.counters["children"] = {cpuOf(RUSAGE_CHILDREN) - m_children, perTurn};
    }

private:
    static double seconds(const timeval &time)
    {
        constexpr double micro = 1e-6;
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * micro;
    }

    static double cpuOf(int who)
    {
        rusage used{};
        getrusage(who, &used);
        return seconds(used.ru_utime) + seconds(used.ru_stime);
    }

    benchmark::State &m_state;
    double m_own = cpuOf(RUSAGE_SELF);
    double m_children = cpuOf(RUSAGE_CHILDREN);
};

} // namespace velq::bench
