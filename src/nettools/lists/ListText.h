#pragma once

#include <string>

namespace velq::nettools
{

/// A value of a property list as `defaults read` shows it, without a line feed at its end: texts
/// and numbers plain, booleans as 1 and 0, dictionaries and arrays in the old style over several
/// lines, keys in order.
std::string listText(void *node);

} // namespace velq::nettools
