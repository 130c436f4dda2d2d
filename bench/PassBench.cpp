// One pass of the device watch beside `ip neigh`, run and read to its end the same way. The number
// of neighbours that there are is in VELQ_BENCH_NEIGHBOURS.

#include "devices/WifiDeviceScanner.h"
#include "platform/UserNotificationCenter.h"
#include "shell/process/ChildProcess.h"

#include <benchmark/benchmark.h>

#include <QtGlobal>

#include <sys/resource.h>

namespace velq::bench
{

namespace
{

class NoNotifications : public UserNotificationCenter
{
public:
    void deliver(const UserNotification &) override { }
};

double seconds(const timeval &time)
{
    constexpr double micro = 1e-6;
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * micro;
}

double cpuOf(int who)
{
    rusage used{};
    getrusage(who, &used);
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

/// Adds to a benchmark the CPU seconds of one turn, this process's and its children's.
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
    benchmark::State &m_state;
    double m_own = cpuOf(RUSAGE_SELF);
    double m_children = cpuOf(RUSAGE_CHILDREN);
};

void pass(benchmark::State &state)
{
    NoNotifications notifications;
    const auto scanner = WifiDeviceScanner::create(notifications);
    const QList<DeviceData> known = scanner->allDevices_new();
    if (known.size() != qEnvironmentVariableIntValue("VELQ_BENCH_NEIGHBOURS")) {
        state.SkipWithError("the neighbours were not all listed");
        return;
    }
    const CpuCounters counters(state);
    for ([[maybe_unused]] auto turn : state)
        benchmark::DoNotOptimize(
            WifiDeviceScanner::compareDevices(known, scanner->allDevices_new()));
}

void ipNeigh(benchmark::State &state)
{
    const CpuCounters counters(state);
    for ([[maybe_unused]] auto turn : state) {
        process::ChildProcess ip("/sbin/ip", {"neigh"});
        benchmark::DoNotOptimize(ip.readToEnd());
        ip.waitUntilExit();
    }
}

BENCHMARK(pass)->UseRealTime();
BENCHMARK(ipNeigh)->UseRealTime();

} // namespace

} // namespace velq::bench

BENCHMARK_MAIN();
