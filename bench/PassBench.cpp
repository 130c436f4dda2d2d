// One pass of the device watch beside `ip neigh`, run and read to its end the same way. The number
// of neighbours that there are is in VELQ_BENCH_NEIGHBOURS.

#include "bench/CpuCounters.h"
#include "devices/WifiDeviceScanner.h"
#include "platform/UserNotificationCenter.h"
#include "shell/process/ChildProcess.h"

#include <benchmark/benchmark.h>

#include <QtGlobal>

namespace velq::bench
{

namespace
{

class NoNotifications : public UserNotificationCenter
{
public:
    void deliver(const UserNotification &) override { }
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
