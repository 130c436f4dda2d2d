#pragma once

#include <functional>
#include <string>
#include <vector>

namespace velq::testing
{

/// What a program printed and how it ended.
struct ToolRun {
    std::string output;
    std::string errors;
    int status = -1; ///< the exit status; the signal's number plus 128 when one ended it
};

/// Runs `program`, a path or a name on PATH, to its end; `words` begin with what it is called by.
/// `prepare` is called in the child after its standard output and error are redirected; it may
/// redirect them again and must be safe after fork(2).
ToolRun runProgram(
    const std::string &program, std::vector<std::string> words,
    const std::function<void()> &prepare = [] {});

/// Runs the built tool `name` with these arguments.
ToolRun runNettool(
    const std::string &name, const std::vector<std::string> &arguments,
    const std::function<void()> &prepare = [] {});

} // namespace velq::testing
