#pragma once

#include <stdexcept>

namespace velq::launchagent
{

/// Why an agent cannot be loaded or unloaded; what() is a sentence for the person who asked.
class Error : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace velq::launchagent
