#pragma once

#include <string>
#include <string_view>

namespace velq::daemon
{

/// Text that every client of the bus takes, from any bytes: what is no UTF-8, a NUL, a surrogate or
/// a noncharacter becomes U+FFFD; nothing is left out.
std::string validText(std::string_view bytes);

/// On one line, in printable ASCII: the rest as C escapes. Cut to `limit` bytes at most.
std::string escapedText(std::string_view bytes, size_t limit);

} // namespace velq::daemon
