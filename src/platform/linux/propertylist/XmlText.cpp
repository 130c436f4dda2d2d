#include "platform/linux/propertylist/XmlText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

namespace velq::propertylist
{

namespace
{

constexpr std::string_view space = " \t\r\n";

bool isXmlCharacter(uint32_t character)
{
    return character >= 0x20 ? character <= 0x10ffff && (character & 0x1ff800U) != 0xd800U
                             : space.find(static_cast<char>(character)) != std::string_view::npos;
}

// Takes one character off the front; none for bytes that are no UTF-8.
uint32_t takeCharacter(std::string_view &bytes)
{
    constexpr uint32_t none = 0xffffffff;
    const auto first = static_cast<unsigned char>(bytes.front());
    const size_t length = first < 0x80 ? 1 : first < 0xe0 ? 2 : first < 0xf0 ? 3 : 4;
    if ((first >= 0x80 && first < 0xc2) || first > 0xf4 || bytes.size() < length)
        return none;
    uint32_t character = length == 1 ? first : first & (0x7fU >> length);
    for (const char next : bytes.substr(1, length - 1)) {
        if ((static_cast<unsigned char>(next) & 0xc0U) != 0x80U)
            return none;
        character = character << 6U | (static_cast<unsigned char>(next) & 0x3fU);
    }
    constexpr std::array<uint32_t, 5> least{0, 0, 0x80, 0x800, 0x10000};
    bytes.remove_prefix(length);
    return character < least.at(length) ? none : character;
}

bool isDigits(std::string_view text, int base = 10)
{
    uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), value, base);
    return error == std::errc() && end == text.end();
}

bool isInteger(std::string_view text)
{
    if (text.starts_with('-') || text.starts_with('+'))
        text.remove_prefix(1);
    if (text.starts_with("0x") || text.starts_with("0X"))
        return isDigits(text.substr(2), 16);
    return isDigits(text);
}

bool isReal(std::string_view text)
{
    if (text.starts_with('+'))
        text.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), value);
    return error != std::errc::invalid_argument && end == text.end();
}

bool isDate(std::string_view text)
{
    constexpr std::string_view form = "0000-00-00T00:00:00Z";
    const auto fits = [](char expected, char actual) {
        return expected == '0' ? actual >= '0' && actual <= '9' : actual == expected;
    };
    return std::ranges::equal(form, text, fits);
}

bool isBase64(std::string_view text)
{
    return text.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
                                  "0123456789+/= \t\r\n")
        == std::string_view::npos;
}

bool isReference(std::string_view name)
{
    if (!name.starts_with('#')) {
        constexpr std::array known{"lt", "gt", "amp", "apos", "quot"};
        return std::ranges::find(known, name) != known.end();
    }
    name.remove_prefix(1);
    const int base = name.starts_with('x') ? 16 : 10;
    if (base == 16)
        name.remove_prefix(1);
    uint32_t character = 0;
    const auto [end, error] = std::from_chars(name.begin(), name.end(), character, base);
    return error == std::errc() && end == name.end() && isXmlCharacter(character);
}

std::string_view trimmed(std::string_view text)
{
    const size_t first = text.find_first_not_of(space);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(space) - first + 1);
}

} // namespace

bool isXmlText(std::string_view bytes)
{
    while (!bytes.empty()) {
        if (!isXmlCharacter(takeCharacter(bytes)))
            return false;
    }
    return true;
}

bool hasOnlyKnownReferences(std::string_view text)
{
    size_t start = 0;
    while ((start = text.find('&', start)) != std::string_view::npos) {
        const size_t end = text.find(';', start);
        if (end == std::string_view::npos || !isReference(text.substr(start + 1, end - start - 1)))
            return false;
        start = end;
    }
    return true;
}

bool isScalarText(std::string_view element, std::string_view text)
{
    if (element == "data")
        return isBase64(text);
    if (element == "integer")
        return isInteger(trimmed(text));
    return element == "real" ? isReal(trimmed(text)) : isDate(trimmed(text));
}

} // namespace velq::propertylist
