#pragma once

#include <string>

namespace velq::nettools
{

/// Appends a number in digits of that base, lower case, without a prefix.
void appendNumber(std::string &out, unsigned number, int base = 10);

} // namespace velq::nettools
