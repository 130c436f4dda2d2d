#pragma once

#include <string_view>

namespace velq::propertylist
{

/// Whether the bytes are UTF-8 and hold characters that XML allows: no control characters but blank
/// space.
bool isXmlText(std::string_view bytes);

/// Whether every "&" in `text` begins one of XML's own five entities or the number of a character
/// that XML allows.
bool hasOnlyKnownReferences(std::string_view text);

/// Whether `text` is what the element of that name may hold: "integer", "real", "date", "data".
bool isScalarText(std::string_view element, std::string_view text);

} // namespace velq::propertylist
