// A command of ours beside another one, run and read to their ends the same way. Their words are in
// VELQ_BENCH_OURS and VELQ_BENCH_THEIRS, one a line; the first is the program's path.

#include "bench/CpuCounters.h"
#include "shell/process/ChildProcess.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <sstream>

namespace velq::bench
{

namespace
{

std::vector<std::string> words(const char *variable)
{
    const char *text = getenv(variable);
    std::istringstream stream(text != nullptr ? text : "");
    std::vector<std::string> result;
    for (std::string line; std::getline(stream, line);)
        result.push_back(line);
    return result;
}

void run(benchmark::State &state, const char *variable)
{
    const std::vector<std::string> command = words(variable);
    if (command.empty()) {
        state.SkipWithError("no command is given");
        return;
    }
    const std::vector<std::string> arguments(command.begin() + 1, command.end());
    const CpuCounters counters(state);
    for ([[maybe_unused]] auto turn : state) {
        process::ChildProcess child(command[0], arguments);
        benchmark::DoNotOptimize(child.readToEnd());
        child.waitUntilExit();
        if (child.exitStatus() != 0)
            state.SkipWithError("the command has failed");
    }
}

BENCHMARK_CAPTURE(run, ours, "VELQ_BENCH_OURS")->UseRealTime();
BENCHMARK_CAPTURE(run, theirs, "VELQ_BENCH_THEIRS")->UseRealTime();

} // namespace

} // namespace velq::bench

BENCHMARK_MAIN();
