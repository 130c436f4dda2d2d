#pragma once

#include "platform/linux/propertylist/Node.h"

#include <optional>
#include <string>
#include <string_view>

namespace velq::nettools
{

/// Reads the old style of property lists: `{ key = value; }`, `( value, value )`, `<00ff>`,
/// `"text"` with escapes, or a word without quotes. All values but data are texts. Null when `text`
/// is something else or nests deeper than a list may.
propertylist::Node readOldStyle(std::string_view text);

/// Bytes of hexadecimal digits with any blanks between them; nothing for other texts.
std::optional<std::string> bytesOfHex(std::string_view digits);

} // namespace velq::nettools
