// One look at the connection, beside the least that can be asked of the kernel.

#include "monitor/MenuInterface.h"
#include "platform/linux/rtnetlink/Routes.h"

#include <benchmark/benchmark.h>

#include <ifaddrs.h>
#include <sys/socket.h>

namespace velq::bench
{

namespace
{

void networkConnect(benchmark::State &state)
{
    bool connected = false;
    for ([[maybe_unused]] auto turn : state)
        benchmark::DoNotOptimize(connected = MenuInterface::networkConnect());
    state.SetLabel(connected ? "connected" : "not connected");
}

// What "ip route get 203.0.113.1" asks: one request, one answer.
void routeGet(benchmark::State &state)
{
    const rtnetlink::Address destination{AF_INET, {203, 0, 113, 1}};
    for ([[maybe_unused]] auto turn : state) {
        auto socket = rtnetlink::Socket::open();
        benchmark::DoNotOptimize(rtnetlink::routeTo(*socket, destination));
    }
}

void interfaceAddresses(benchmark::State &state)
{
    for ([[maybe_unused]] auto turn : state) {
        ifaddrs *addresses = nullptr;
        if (getifaddrs(&addresses) == 0)
            freeifaddrs(addresses);
    }
}

BENCHMARK(networkConnect);
BENCHMARK(routeGet);
BENCHMARK(interfaceAddresses);

} // namespace

} // namespace velq::bench

BENCHMARK_MAIN();
