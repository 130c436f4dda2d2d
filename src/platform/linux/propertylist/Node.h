#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velq::propertylist
{

/// A value of a property list as libplist keeps it (its `plist_t`), owned with all that hangs
/// below. One thread at a time.
struct FreeNode {
    void operator()(void *node) const noexcept;
};
using Node = std::unique_ptr<void, FreeNode>;

/// Bounds of what is read and written: bytes of a list, and dictionaries and arrays in one another.
inline constexpr size_t largestList = size_t{4} << 20;
inline constexpr int deepestNesting = 64;

/// The list in `bytes`, XML or binary (told apart by content). Null when they are damaged, declare
/// entities, or go beyond the bounds: only what can be read whole is read at all.
Node parsed(std::string_view bytes);

/// The XML form. Nothing when parsed() would not read it back: a text with control characters or
/// not in UTF-8, a list beyond the bounds.
std::optional<std::string> xmlOf(void *node);

/// One entry of a dictionary; the value stays the dictionary's.
struct Entry {
    std::string key;
    void *value = nullptr;
};
/// In the order of the list.
std::vector<Entry> entriesOf(void *dictionary);

/// An integer, real number or date as it stands in XML: "-5", "0.25", "2001-01-02T00:00:00Z".
std::string scalarText(void *node);

/// The node of a scalar's XML form, `element` being "integer", "real" or "date". Null when `text`
/// is no such value.
Node scalarNode(std::string_view element, std::string_view text);

} // namespace velq::propertylist
