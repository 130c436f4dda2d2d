#include "nettools/lists/OldStyleReader.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdint>
#include <iterator>

#include <plist/plist.h>

namespace velq::nettools
{

namespace
{

using propertylist::Node;

void appendCharacter(std::string &text, uint32_t character)
{
    const auto tail = [&](unsigned shift) {
        text += static_cast<char>(0x80U | (character >> shift & 0x3fU));
    };
    if (character < 0x80) {
        text += static_cast<char>(character);
        return;
    }
    if (character < 0x800) {
        text += static_cast<char>(0xc0U | character >> 6U);
    } else if (character < 0x10000) {
        text += static_cast<char>(0xe0U | character >> 12U);
        tail(6);
    } else {
        text += static_cast<char>(0xf0U | character >> 18U);
        tail(12);
        tail(6);
    }
    tail(0);
}

class OldStyleReader
{
public:
    explicit OldStyleReader(std::string_view text)
        : m_rest(text)
    {
    }

    Node readWhole()
    {
        Node node = value(0);
        return node != nullptr && at('\0') ? std::move(node) : nullptr;
    }

private:
    // What comes after blanks; NUL at the end.
    bool at(char mark);
    bool take(char mark);
    Node value(int depth);
    Node dictionary(int depth);
    Node array(int depth);
    Node data();
    std::optional<std::string> text();
    std::optional<std::string> quoted();
    bool takeEscape(std::string &into);
    uint32_t takeNumber(size_t most, int base);
    uint32_t takeUnicode();

    std::string_view m_rest;
};

bool OldStyleReader::at(char mark)
{
    m_rest.remove_prefix(std::min(m_rest.find_first_not_of(" \t\r\n"), m_rest.size()));
    return m_rest.empty() ? mark == '\0' : m_rest.front() == mark;
}

bool OldStyleReader::take(char mark)
{
    if (!at(mark))
        return false;
    m_rest.remove_prefix(1);
    return true;
}

Node OldStyleReader::value(int depth)
{
    if (depth > propertylist::deepestNesting)
        return nullptr;
    if (take('{'))
        return dictionary(depth + 1);
    if (take('('))
        return array(depth + 1);
    if (take('<'))
        return data();
    const auto read = text();
    // The library ends a text at its first NUL.
    const bool isText = read && read->find('\0') == std::string::npos;
    return isText ? Node(plist_new_string(read->c_str())) : nullptr;
}

Node OldStyleReader::dictionary(int depth)
{
    Node node(plist_new_dict());
    while (!take('}')) {
        const auto key = text();
        if (!key || !take('='))
            return nullptr;
        Node item = value(depth);
        if (item == nullptr || !take(';'))
            return nullptr;
        plist_dict_set_item(node.get(), key->c_str(), item.release());
    }
    return node;
}

Node OldStyleReader::array(int depth)
{
    Node node(plist_new_array());
    while (!take(')')) {
        Node item = value(depth);
        if (item == nullptr || !(take(',') || at(')')))
            return nullptr;
        plist_array_append_item(node.get(), item.release());
    }
    return node;
}

Node OldStyleReader::data()
{
    const size_t end = m_rest.find('>');
    if (end == std::string_view::npos)
        return nullptr;
    const auto bytes = bytesOfHex(m_rest.substr(0, end));
    m_rest.remove_prefix(end + 1);
    return bytes ? Node(plist_new_data(bytes->data(), bytes->size())) : nullptr;
}

std::optional<std::string> OldStyleReader::text()
{
    if (take('"'))
        return quoted();
    const size_t length =
        m_rest.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
                                 "0123456789_$/:.-+");
    const std::string_view word = m_rest.substr(0, length);
    m_rest.remove_prefix(word.size());
    return word.empty() ? std::nullopt : std::optional(std::string(word));
}

std::optional<std::string> OldStyleReader::quoted()
{
    std::string result;
    while (!m_rest.empty()) {
        const char next = m_rest.front();
        m_rest.remove_prefix(1);
        if (next == '"')
            return result;
        if (next != '\\')
            result += next;
        else if (!takeEscape(result))
            break;
    }
    return std::nullopt;
}

uint32_t OldStyleReader::takeNumber(size_t most, int base)
{
    const std::string_view digits = m_rest.substr(0, most);
    uint32_t number = 0;
    const char *const end = std::from_chars(digits.begin(), digits.end(), number, base).ptr;
    m_rest.remove_prefix(static_cast<size_t>(end - digits.begin()));
    return number;
}

// Characters beyond the first 65536 stand there in two halves.
uint32_t OldStyleReader::takeUnicode()
{
    const uint32_t first = takeNumber(4, 16);
    if ((first & 0xfc00U) != 0xd800U || !m_rest.starts_with("\\U"))
        return first;
    m_rest.remove_prefix(2);
    return 0x10000U + ((first & 0x3ffU) << 10U) + (takeNumber(4, 16) & 0x3ffU);
}

bool OldStyleReader::takeEscape(std::string &into)
{
    if (m_rest.empty())
        return false;
    if (std::isdigit(static_cast<unsigned char>(m_rest.front())) != 0) {
        appendCharacter(into, takeNumber(3, 8));
        return true;
    }
    const char mark = m_rest.front();
    m_rest.remove_prefix(1);
    switch (mark) {
    case 'U':
        appendCharacter(into, takeUnicode());
        break;
    case 'n':
        into += '\n';
        break;
    case 't':
        into += '\t';
        break;
    case 'r':
        into += '\r';
        break;
    default:
        into += mark;
    }
    return true;
}

} // namespace

Node readOldStyle(std::string_view text)
{
    return OldStyleReader(text).readWhole();
}

std::optional<std::string> bytesOfHex(std::string_view digits)
{
    std::string compact;
    std::ranges::copy_if(digits, std::back_inserter(compact),
                         [](char c) { return c != ' ' && c != '\t' && c != '\n'; });
    std::string bytes;
    for (std::string_view rest = compact; !rest.empty();) {
        const std::string_view pair = rest.substr(0, 2);
        unsigned char byte = 0;
        const auto read = std::from_chars(pair.begin(), pair.end(), byte, 16);
        if (pair.size() != 2 || read.ptr != pair.end())
            return std::nullopt;
        bytes += static_cast<char>(byte);
        rest.remove_prefix(2);
    }
    return bytes;
}

} // namespace velq::nettools
