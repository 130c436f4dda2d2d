#pragma once

#include <functional>
#include <string>
#include <vector>

namespace velq::testing
{

/// What a net tool printed and how it ended.
struct ToolRun {
    std::string output;
    std::string errors;
    int status = -1; ///< the exit status; the signal's number plus 128 when one ended it
};

/// Runs the built tool `name` to its end. `prepare` is called in the child after its standard
/// output and error are redirected; it may redirect them again and must be safe after fork(2).
ToolRun runNettool(
    const std::string &name, const std::vector<std::string> &arguments,
    const std::function<void()> &prepare = [] {});

} // namespace velq::testing
