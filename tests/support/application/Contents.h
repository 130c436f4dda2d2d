#pragma once

#include <string>
#include <string_view>

namespace velq::testing
{

/// What the application tells its test: appends a line to the file "log" in its bundle's Contents.
void tell(std::string_view line);

/// Its bundle's identifier, as TestBundle writes it.
std::string identifier();

} // namespace velq::testing
