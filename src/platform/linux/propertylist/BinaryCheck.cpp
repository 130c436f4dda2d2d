#include "platform/linux/propertylist/BinaryCheck.h"

#include "platform/linux/propertylist/Node.h"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace velq::propertylist
{

namespace
{

// The first half of an object's first byte; the second half is its size.
enum Marker : unsigned { constant, integer, real, date, data, ascii, utf16, unused, uid };
constexpr unsigned array = 0xa;
constexpr unsigned dictionary = 0xd;

constexpr size_t trailerSize = 32;
constexpr uint64_t largestUnfolded = 2 * uint64_t{largestList};
// What the library needs for an object besides its bytes.
constexpr uint64_t objectCost = 16;

class BinaryCheck
{
public:
    explicit BinaryCheck(std::string_view bytes)
        : m_bytes(bytes)
    {
    }

    bool run() { return readTrailer() && visit(m_root, 0, false); }

private:
    // Where an object's content lies, after its marker.
    struct Object {
        unsigned marker;
        unsigned info;
        uint64_t content;
    };

    bool readTrailer();
    bool visit(uint64_t index, int depth, bool asKey);
    bool visitContainer(const Object &object, int depth);
    bool visitText(const Object &object);
    bool visitScalar(const Object &object);
    std::optional<Object> objectAt(uint64_t index) const;
    std::optional<uint64_t> length(Object &object) const;
    std::optional<uint64_t> number(uint64_t offset, uint64_t size) const;
    bool take(uint64_t offset, uint64_t size);
    bool isAscii(uint64_t offset, uint64_t size) const;
    bool isUtf16(uint64_t offset, uint64_t units) const;

    std::string_view m_bytes;
    uint64_t m_offsetSize = 0;
    uint64_t m_referenceSize = 0;
    uint64_t m_count = 0;
    uint64_t m_root = 0;
    uint64_t m_table = 0;
    uint64_t m_unfolded = 0;
};

// A big-endian number; nothing when it is no part of the bytes.
std::optional<uint64_t> BinaryCheck::number(uint64_t offset, uint64_t size) const
{
    if (size == 0 || size > 8 || offset > m_bytes.size() || size > m_bytes.size() - offset)
        return std::nullopt;
    uint64_t value = 0;
    for (const char each : m_bytes.substr(offset, size))
        value = value << 8U | static_cast<unsigned char>(each);
    return value;
}

bool BinaryCheck::readTrailer()
{
    if (m_bytes.size() < binaryMagic.size() + trailerSize)
        return false;
    const uint64_t trailer = m_bytes.size() - trailerSize;
    m_offsetSize = *number(trailer + 6, 1);
    m_referenceSize = *number(trailer + 7, 1);
    m_count = *number(trailer + 8, 8);
    m_root = *number(trailer + 16, 8);
    m_table = *number(trailer + 24, 8);
    const bool sizesFit =
        m_offsetSize >= 1 && m_offsetSize <= 8 && m_referenceSize >= 1 && m_referenceSize <= 8;
    return sizesFit && m_table >= binaryMagic.size() && m_table <= trailer
        && m_count <= (trailer - m_table) / m_offsetSize;
}

std::optional<BinaryCheck::Object> BinaryCheck::objectAt(uint64_t index) const
{
    if (index >= m_count)
        return std::nullopt;
    const auto offset = number(m_table + index * m_offsetSize, m_offsetSize);
    if (!offset || *offset < binaryMagic.size() || *offset >= m_table)
        return std::nullopt;
    const auto marker = static_cast<unsigned>(*number(*offset, 1));
    return Object{marker >> 4U, marker & 0xfU, *offset + 1};
}

// A length that does not fit into the marker follows it as an integer.
std::optional<uint64_t> BinaryCheck::length(Object &object) const
{
    if (object.info != 0xf)
        return object.info;
    const auto marker = number(object.content, 1);
    if (!marker || *marker >> 4U != integer || (*marker & 0xfU) > 3)
        return std::nullopt;
    const uint64_t size = uint64_t{1} << (*marker & 0xfU);
    const auto value = number(object.content + 1, size);
    object.content += 1 + size;
    return value;
}

// Counts the bytes as unfolded once more; false when they are not all there.
bool BinaryCheck::take(uint64_t offset, uint64_t size)
{
    if (offset > m_table || size > m_table - offset)
        return false;
    m_unfolded += size + objectCost;
    return m_unfolded <= largestUnfolded;
}

bool BinaryCheck::isAscii(uint64_t offset, uint64_t size) const
{
    return std::ranges::all_of(m_bytes.substr(offset, size), [](char each) { return each > 0; });
}

bool BinaryCheck::isUtf16(uint64_t offset, uint64_t units) const
{
    bool afterHigh = false;
    for (uint64_t i = 0; i < units; ++i) {
        const uint64_t unit = *number(offset + 2 * i, 2);
        const bool low = (unit & 0xfc00U) == 0xdc00U;
        if (unit == 0 || low != afterHigh)
            return false;
        afterHigh = (unit & 0xfc00U) == 0xd800U;
    }
    return !afterHigh;
}

bool BinaryCheck::visitText(const Object &object)
{
    Object text = object;
    const auto units = length(text);
    // As many units as bytes are too many in any case, and their product does not overflow.
    if (!units || *units > m_bytes.size())
        return false;
    if (text.marker == ascii)
        return take(text.content, *units) && isAscii(text.content, *units);
    return take(text.content, *units * 2) && isUtf16(text.content, *units);
}

bool BinaryCheck::visitScalar(const Object &object)
{
    switch (object.marker) {
    case constant:
        return (object.info == 0x8 || object.info == 0x9) && take(object.content, 0);
    case integer:
        return object.info <= 4 && take(object.content, uint64_t{1} << object.info);
    case real:
        return (object.info == 2 || object.info == 3)
            && take(object.content, uint64_t{1} << object.info);
    case date:
        return object.info == 3 && take(object.content, 8);
    case uid:
        return object.info < 8 && take(object.content, object.info + 1);
    default:
        return false;
    }
}

bool BinaryCheck::visitContainer(const Object &object, int depth)
{
    Object container = object;
    const auto count = length(container);
    if (depth >= deepestNesting || !count || *count > m_bytes.size())
        return false;
    const uint64_t keys = container.marker == dictionary ? *count : 0;
    const uint64_t references = *count + keys;
    if (!take(container.content, references * m_referenceSize))
        return false;
    for (uint64_t i = 0; i < references; ++i) {
        const auto reference = number(container.content + i * m_referenceSize, m_referenceSize);
        if (!visit(*reference, depth + 1, i < keys))
            return false;
    }
    return true;
}

bool BinaryCheck::visit(uint64_t index, int depth, bool asKey)
{
    const auto object = objectAt(index);
    if (!object)
        return false;
    if (object->marker == ascii || object->marker == utf16)
        return visitText(*object);
    if (asKey)
        return false;
    if (object->marker == array || object->marker == dictionary)
        return visitContainer(*object, depth);
    if (object->marker != data)
        return visitScalar(*object);
    Object bytes = *object;
    const auto size = length(bytes);
    return size && take(bytes.content, *size);
}

} // namespace

bool isSoundBinary(std::string_view bytes)
{
    return BinaryCheck(bytes).run();
}

} // namespace velq::propertylist
