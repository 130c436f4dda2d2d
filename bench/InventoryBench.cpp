// The inventory of network services and the look-ups in it, by the tools on PATH. The number of
// ports that there are is in VELQ_BENCH_PORTS.

#include "bench/CpuCounters.h"
#include "diagnosis/NetworkScanner.h"

#include <QtGlobal>

namespace velq::bench
{

namespace
{

QList<NetworkService> &takeInventory()
{
    NetworkScanner &scanner = NetworkScanner::shareScanner();
    scanner.services().clear();
    scanner.searchNetworkSerices();
    return scanner.services();
}

void inventory(benchmark::State &state)
{
    if (takeInventory().size() != qEnvironmentVariableIntValue("VELQ_BENCH_PORTS")) {
        state.SkipWithError("the ports were not all listed");
        return;
    }
    const CpuCounters counters(state);
    for ([[maybe_unused]] auto turn : state)
        benchmark::DoNotOptimize(takeInventory());
}

void lookUps(benchmark::State &state)
{
    const QList<NetworkService> known = takeInventory();
    const CpuCounters counters(state);
    for ([[maybe_unused]] auto turn : state) {
        benchmark::DoNotOptimize(
            NetworkScanner::networkInterfaceForService(known.constLast().netType));
        benchmark::DoNotOptimize(
            NetworkScanner::networkServiceForInterface(known.constLast().interface));
        benchmark::DoNotOptimize(NetworkScanner::shareScanner().networkServices());
    }
}

BENCHMARK(inventory)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(lookUps)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace

} // namespace velq::bench

BENCHMARK_MAIN();
