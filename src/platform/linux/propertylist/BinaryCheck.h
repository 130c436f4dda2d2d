#pragma once

#include <string_view>

namespace velq::propertylist
{

inline constexpr std::string_view binaryMagic = "bplist00";

/// Whether a binary property list may be given to the library: every object inside the bytes and
/// whole, every text a text, no cycle, and unfolded within the bounds. A few objects that refer to
/// one another twice each would otherwise unfold to more than any memory holds.
bool isSoundBinary(std::string_view bytes);

} // namespace velq::propertylist
