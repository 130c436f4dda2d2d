#include "nettools/lists/ListText.h"

#include "platform/linux/propertylist/Node.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <string_view>

#include <plist/plist.h>

namespace velq::nettools
{

namespace
{

std::string textInside(plist_t node, size_t level);

std::string indented(size_t level)
{
    std::string blanks(level * 4, ' ');
    return blanks;
}

std::string formatted(const char *format, uint32_t number)
{
    std::array<char, 16> text{};
    (void)std::snprintf(text.data(), text.size(), format, number);
    return text.data();
}

// Takes one character off the front of valid UTF-8.
uint32_t takeCharacter(std::string_view &text)
{
    const auto first = static_cast<unsigned char>(text.front());
    const size_t length = first < 0x80 ? 1 : first < 0xe0 ? 2 : first < 0xf0 ? 3 : 4;
    uint32_t character = length == 1 ? first : first & (0x7fU >> length);
    for (const char next : text.substr(1, length - 1))
        character = character << 6U | (static_cast<unsigned char>(next) & 0x3fU);
    text.remove_prefix(std::min(length, text.size()));
    return character;
}

std::string escaped(uint32_t character)
{
    switch (character) {
    case '"':
        return "\\\"";
    case '\\':
        return R"(\\)";
    case '\n':
        return R"(\\n)";
    case '\t':
        return R"(\\t)";
    case '\r':
        return R"(\\r)";
    default:
        break;
    }
    if (character < 0x20 || character == 0x7f)
        return formatted(R"(\\%03o)", character);
    if (character < 0x80)
        return {static_cast<char>(character)};
    if (character < 0x10000)
        return formatted(R"(\\U%04x)", character);
    const uint32_t rest = character - 0x10000;
    return formatted(R"(\\U%04x)", 0xd800 + (rest >> 10U))
        + formatted(R"(\\U%04x)", 0xdc00 + (rest & 0x3ffU));
}

// Letters and digits stand as they are, everything else in quotes.
std::string quoted(std::string_view text)
{
    const auto isPlain = [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    };
    if (!text.empty() && std::ranges::all_of(text, isPlain))
        return std::string(text);
    std::string result = "\"";
    while (!text.empty())
        result += escaped(takeCharacter(text));
    return result += '"';
}

std::string realText(plist_t node)
{
    double value = 0;
    plist_get_real_val(node, &value);
    std::array<char, 32> text{};
    const auto written = std::to_chars(text.begin(), text.end(), value);
    return {text.begin(), written.ptr};
}

// "2001-01-02T00:00:00Z" becomes "2001-01-02 00:00:00 +0000".
std::string dateText(plist_t node)
{
    std::string text = propertylist::scalarText(node);
    std::ranges::replace(text, 'T', ' ');
    text.pop_back();
    return text + " +0000";
}

std::string hexText(std::string_view bytes, bool inGroups)
{
    std::string text;
    for (size_t i = 0; i < bytes.size(); ++i) {
        if (inGroups && i > 0 && i % 4 == 0)
            text += ' ';
        text += formatted("%02x", static_cast<unsigned char>(bytes[i]));
    }
    return text;
}

// Of long ones only the beginning and the end.
std::string dataText(plist_t node)
{
    uint64_t length = 0;
    const char *data = plist_get_data_ptr(node, &length);
    const std::string_view bytes(data, length);
    std::string text = "{length = " + std::to_string(length) + ", bytes = 0x";
    if (length <= 24)
        return text + hexText(bytes, false) + "}";
    return text + hexText(bytes.substr(0, 16), true) + " ... "
        + hexText(bytes.substr(length - 8), true) + " }";
}

std::string plainText(plist_t node)
{
    uint8_t flag = 0;
    switch (plist_get_node_type(node)) {
    case PLIST_STRING:
        return plist_get_string_ptr(node, nullptr);
    case PLIST_BOOLEAN:
        plist_get_bool_val(node, &flag);
        return flag != 0 ? "1" : "0";
    case PLIST_REAL:
        return realText(node);
    case PLIST_DATE:
        return dateText(node);
    default:
        return propertylist::scalarText(node);
    }
}

std::string dictionaryText(plist_t node, size_t level)
{
    auto entries = propertylist::entriesOf(node);
    std::ranges::sort(entries, {}, &propertylist::Entry::key);
    std::string text = "{\n";
    for (const auto &[key, value] : entries)
        text += indented(level + 1) + quoted(key) + " = " + textInside(value, level + 1) + ";\n";
    return text + indented(level) + "}";
}

std::string arrayText(plist_t node, size_t level)
{
    std::string text = "(";
    for (uint32_t i = 0; i < plist_array_get_size(node); ++i) {
        text += i == 0 ? "\n" : ",\n";
        text += indented(level + 1) + textInside(plist_array_get_item(node, i), level + 1);
    }
    return text + "\n" + indented(level) + ")";
}

// A list within another is indented once more behind what stands before it: that is how it has
// always been.
std::string textInside(plist_t node, size_t level)
{
    switch (plist_get_node_type(node)) {
    case PLIST_DICT:
        return indented(level) + dictionaryText(node, level);
    case PLIST_ARRAY:
        return indented(level) + arrayText(node, level);
    case PLIST_DATA:
        return dataText(node);
    default:
        return quoted(plainText(node));
    }
}

} // namespace

std::string listText(void *node)
{
    switch (plist_get_node_type(node)) {
    case PLIST_DICT:
    case PLIST_ARRAY:
    case PLIST_DATA:
        return textInside(node, 0);
    default:
        return plainText(node);
    }
}

} // namespace velq::nettools
