// A command run by the root daemon, beside the same command run directly. Run as somebody whom the
// daemon serves, in turns, and no more often than it serves anybody at once.
//
// Prints a line a run: "privileged MICROSECONDS" or "direct MICROSECONDS".

#include "shell/ShellUtl.h"

#include <chrono>
#include <cstdio>

namespace velq::bench
{

namespace
{

constexpr int turns = 50;

using Run = QString (*)(const QString &launchPath, const QStringList &arguments);

bool measure(const char *name, Run run)
{
    const auto start = std::chrono::steady_clock::now();
    const QString output =
        run(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), QStringLiteral("echo done")});
    const std::chrono::duration<double, std::micro> time = std::chrono::steady_clock::now() - start;
    std::printf("%s %.0f\n", name, time.count());
    return output == QLatin1String("done\n");
}

} // namespace

} // namespace velq::bench

int main()
{
    using namespace velq;
    for (int turn = 0; turn < bench::turns; ++turn) {
        if (!bench::measure("privileged", ShellUtl::runShellWithDemone)
            || !bench::measure("direct", ShellUtl::runShell)) {
            std::fputs("CallTimer: a command gave no answer\n", stderr);
            return 1;
        }
    }
}
