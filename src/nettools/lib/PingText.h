#pragma once

#include <string>
#include <string_view>

namespace velq::nettools
{

/// One line of the ping of Linux (iputils, in English, with -n -O) in the words of the ping of BSD
/// systems, read off output in public documentation: echoes are numbered from 0, and "no answer
/// yet" becomes "Request timeout". Both without the line's end. A line that is neither is kept.
std::string pingLine(std::string_view line);

} // namespace velq::nettools
