#pragma once

#include <string>

namespace velq::testing
{

/// The file of that name in samples/; fails the running test when it is empty.
std::string sample(const std::string &name);

} // namespace velq::testing
