#pragma once

#include "platform/linux/rootdaemon/Contract.h"

#include <chrono>
#include <span>
#include <stdexcept>

namespace velq::daemon
{

/// What the command line says.
struct Options {
    std::chrono::microseconds idle = std::chrono::seconds{30}; ///< then it is gone
    std::chrono::microseconds limit = rootdaemon::commandLimit;
    bool help = false;
};

extern const char usage[];

/// A command line that makes no sense; what() says why.
class BadOptions : public std::invalid_argument
{
public:
    using std::invalid_argument::invalid_argument;
};

/// The words after the program's name. Throws BadOptions.
Options optionsFrom(std::span<char *const> words);

} // namespace velq::daemon
