#include "daemon/PlainText.h"

#include <cstdint>

namespace velq::daemon
{

namespace
{

constexpr std::string_view replacement = "\xEF\xBF\xBD";

struct Sequence {
    size_t length;
    uint32_t lead;    // what the first byte contributes
    uint32_t minimum; // less would have fitted a shorter sequence
};

Sequence sequenceFrom(unsigned char first)
{
    if (first < 0x80)
        return {1, first, 0};
    if (first >= 0xC2 && first < 0xE0)
        return {2, first & 0x1Fu, 0x80};
    if (first >= 0xE0 && first < 0xF0)
        return {3, first & 0x0Fu, 0x800};
    if (first >= 0xF0 && first < 0xF5)
        return {4, first & 0x07u, 0x10000};
    return {0, 0, 0};
}

bool isCharacter(uint32_t point)
{
    const bool surrogate = point >= 0xD800 && point <= 0xDFFF;
    const bool noncharacter = (point >= 0xFDD0 && point <= 0xFDEF) || (point & 0xFFFE) == 0xFFFE;
    return point != 0 && point <= 0x10FFFF && !surrogate && !noncharacter;
}

struct Character {
    size_t length;
    bool allowed;
};

constexpr Character strayByte{1, false};

Character firstCharacter(std::string_view bytes)
{
    const Sequence sequence = sequenceFrom(static_cast<unsigned char>(bytes.front()));
    if (sequence.length == 0 || bytes.size() < sequence.length)
        return strayByte;
    uint32_t point = sequence.lead;
    for (const char byte : bytes.substr(1, sequence.length - 1)) {
        const auto next = static_cast<unsigned char>(byte);
        if ((next & 0xC0) != 0x80)
            return strayByte;
        point = point << 6 | (next & 0x3Fu);
    }
    return point < sequence.minimum ? strayByte : Character{sequence.length, isCharacter(point)};
}

std::string escaped(char byte)
{
    constexpr std::string_view digits = "0123456789abcdef";
    const auto value = static_cast<unsigned char>(byte);
    if (byte == '\n')
        return "\\n";
    if (byte == '\t')
        return "\\t";
    if (byte == '\\')
        return "\\\\";
    if (value >= 0x20 && value < 0x7F)
        return {byte};
    return {'\\', 'x', digits[value >> 4], digits[value & 0x0F]};
}

} // namespace

std::string validText(std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const Character first = firstCharacter(bytes);
        text += first.allowed ? bytes.substr(0, first.length) : replacement;
        bytes.remove_prefix(first.length);
    }
    return text;
}

std::string escapedText(std::string_view bytes, size_t limit)
{
    std::string text;
    for (const char byte : bytes) {
        const std::string next = escaped(byte);
        if (text.size() + next.size() > limit)
            break;
        text += next;
    }
    return text;
}

} // namespace velq::daemon
