#pragma once

#include <string_view>

namespace velq::propertylist
{

/// Whether XML may be given to the library, which is lenient and has no bounds: one whole property
/// list, every element closed and of a known kind, values where values belong, no entity declared,
/// nested within the bound. What passes is read without loss.
bool isSoundXml(std::string_view bytes);

} // namespace velq::propertylist
