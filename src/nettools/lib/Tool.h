#pragma once

#include "nettools/lib/Form.h"

#include <span>
#include <string>
#include <string_view>

namespace velq::nettools
{

class Output;

/// What a tool was called with, its own name left out.
using Arguments = std::span<const std::string_view>;

/// How a tool ended. The exit statuses are the same for all tools: 0 done, 1 the work failed, 2 the
/// tool was called wrongly. A tool that stands in for another program may end with that one's.
struct Outcome {
    static constexpr int failure = 1;
    static constexpr int misuse = 2;

    int status = 0;
    std::string complaint; ///< for standard error, the tool's name left out; empty for none

    static Outcome done() { return {}; }
    static Outcome failed(std::string complaint) { return {failure, std::move(complaint)}; }
    static Outcome misused(std::string complaint) { return {misuse, std::move(complaint)}; }
};

/// One tool as the table lists it: what is called, helped with and described in its manual page.
/// `run` prints through the given output and reports failures by its outcome; it writes nothing to
/// standard error itself.
struct Tool {
    std::string_view name;
    std::string_view usage;   ///< the arguments; a line for each way to call it
    std::string_view summary; ///< sentences in lines; a line that begins with a blank stays one
    Outcome (*run)(Arguments, Output &);
    std::span<const Form> forms{}; ///< for a tool that has them
};

} // namespace velq::nettools
