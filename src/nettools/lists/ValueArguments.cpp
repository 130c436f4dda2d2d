#include "nettools/lists/ValueArguments.h"

#include "nettools/lists/OldStyleReader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <optional>

#include <plist/plist.h>

namespace velq::nettools
{

namespace
{

using propertylist::Node;
using propertylist::scalarNode;

std::string quotedIn(const char *before, std::string_view word, const char *after)
{
    return std::string(before).append("'").append(word).append("'").append(after);
}

Node textNode(std::string_view word)
{
    return Node(plist_new_string(std::string(word).c_str()));
}

Node integerNode(std::string_view word)
{
    return scalarNode("integer", word);
}

Node realNode(std::string_view word)
{
    double value = 0;
    const auto read =
        std::from_chars(word.begin() + (word.starts_with('+') ? 1 : 0), word.end(), value);
    const bool isWhole = read.ec == std::errc() && read.ptr == word.end();
    return isWhole ? Node(plist_new_real(value)) : nullptr;
}

Node booleanNode(std::string_view word)
{
    std::string lower(word);
    std::ranges::transform(lower, lower.begin(), [](char c) {
        return static_cast<char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
    });
    if (lower == "true" || lower == "yes" || lower == "1")
        return Node(plist_new_bool(1));
    if (lower == "false" || lower == "no" || lower == "0")
        return Node(plist_new_bool(0));
    return nullptr;
}

Node dataNode(std::string_view word)
{
    const auto bytes = bytesOfHex(word);
    return bytes ? Node(plist_new_data(bytes->data(), bytes->size())) : nullptr;
}

// The offset of "Z", "+0100" or "-0730" in minutes.
std::optional<int> minutesOfZone(std::string_view zone)
{
    if (zone.empty() || zone == "Z")
        return 0;
    int number = 0;
    const auto read = std::from_chars(zone.begin() + 1, zone.end(), number);
    const bool isSigned = zone.front() == '+' || zone.front() == '-';
    if (!isSigned || zone.size() != 5 || read.ptr != zone.end() || number < 0)
        return std::nullopt;
    const int minutes = number / 100 * 60 + number % 100;
    return zone.front() == '-' ? -minutes : minutes;
}

// Reads "2001-01-02", "2001-01-02 03:04:05 +0100" or "2001-01-02T03:04:05Z" into its parts.
bool readDate(std::string_view word, std::tm &time, std::string_view &zone)
{
    const auto number = [&](size_t at, size_t length, int &into) {
        const std::string_view digits = word.substr(std::min(at, word.size()), length);
        const auto read = std::from_chars(digits.begin(), digits.end(), into);
        return digits.size() == length && read.ec == std::errc() && read.ptr == digits.end();
    };
    const auto isOneOf = [&](size_t at, std::string_view marks) {
        return at < word.size() && marks.find(word[at]) != std::string_view::npos;
    };
    if (!number(0, 4, time.tm_year) || !isOneOf(4, "-") || !number(5, 2, time.tm_mon)
        || !isOneOf(7, "-") || !number(8, 2, time.tm_mday))
        return false;
    if (word.size() == 10)
        return true;
    zone = word.substr(std::min<size_t>(19, word.size()));
    zone.remove_prefix(zone.starts_with(' ') ? 1 : 0);
    return isOneOf(10, " T") && number(11, 2, time.tm_hour) && isOneOf(13, ":")
        && number(14, 2, time.tm_min) && isOneOf(16, ":") && number(17, 2, time.tm_sec);
}

Node dateNode(std::string_view word)
{
    std::tm time = {};
    std::string_view zone;
    if (!readDate(word, time, zone))
        return nullptr;
    const auto offset = minutesOfZone(zone);
    time.tm_year -= 1900;
    --time.tm_mon;
    const std::tm asked = time;
    std::time_t seconds = timegm(&time);
    // A day that there is not has become another.
    if (!offset || time.tm_mday != asked.tm_mday || time.tm_hour != asked.tm_hour
        || time.tm_min != asked.tm_min || time.tm_sec != asked.tm_sec)
        return nullptr;
    seconds -= std::time_t{*offset} * 60;
    std::array<char, 32> text{};
    gmtime_r(&seconds, &time);
    const size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &time);
    return scalarNode("date", {text.data(), length});
}

struct Scalar {
    std::string_view option;
    Node (*make)(std::string_view word);
    const char *kind;
};
constexpr std::array scalars{
    Scalar{"-string", textNode, "text"},
    Scalar{"-int", integerNode, "whole number"},
    Scalar{"-integer", integerNode, "whole number"},
    Scalar{"-float", realNode, "number"},
    Scalar{"-bool", booleanNode, "boolean"},
    Scalar{"-boolean", booleanNode, "boolean"},
    Scalar{"-date", dateNode, "date"},
    Scalar{"-data", dataNode, "row of hexadecimal bytes"},
};

bool isOneOf(std::string_view word, std::initializer_list<std::string_view> options)
{
    return std::ranges::find(options, word) != options.end();
}

// Takes the words of one value off the front.
Value takeValue(Arguments &words)
{
    const std::string_view first = words.front();
    words = words.subspan(1);
    const auto *const scalar = std::ranges::find(scalars, first, &Scalar::option);
    if (scalar == scalars.end())
        return plainValue(first);
    if (words.empty())
        return Value::refused(quotedIn("the value of ", first, " is missing"));
    const std::string_view word = words.front();
    words = words.subspan(1);
    Node node = scalar->make(word);
    if (node == nullptr)
        return Value::refused(quotedIn("", word, " is no ") + scalar->kind);
    return Value::of(std::move(node));
}

Value arrayOf(Arguments words)
{
    Node array(plist_new_array());
    while (!words.empty()) {
        Value item = takeValue(words);
        if (!item.complaint.empty())
            return item;
        plist_array_append_item(array.get(), item.node.release());
    }
    return Value::of(std::move(array));
}

Value dictionaryOf(Arguments words)
{
    Node dictionary(plist_new_dict());
    while (!words.empty()) {
        const std::string key(words.front());
        words = words.subspan(1);
        if (words.empty())
            return Value::refused(quotedIn("the value of ", key, " is missing"));
        Value item = takeValue(words);
        if (!item.complaint.empty())
            return item;
        plist_dict_set_item(dictionary.get(), key.c_str(), item.node.release());
    }
    return Value::of(std::move(dictionary));
}

Node xmlNode(std::string_view text)
{
    if (text.starts_with("<?xml") || text.starts_with("<!") || text.starts_with("<plist"))
        return propertylist::parsed(text);
    return propertylist::parsed("<plist version=\"1.0\">" + std::string(text) + "</plist>");
}

} // namespace

Value plainValue(std::string_view word)
{
    const size_t begin = word.find_first_not_of(" \t\r\n");
    const char mark = begin == std::string_view::npos ? '\0' : word[begin];
    if (mark != '{' && mark != '(' && mark != '<' && mark != '"')
        return Value::of(textNode(word));
    Node node = mark == '<' ? xmlNode(word.substr(begin)) : nullptr;
    if (node == nullptr)
        node = readOldStyle(word);
    if (node == nullptr)
        return Value::refused("Could not parse: " + std::string(word)
                              + ".  Try single-quoting it.");
    return Value::of(std::move(node));
}

Value valueOf(Arguments words)
{
    const std::string_view first = words.front();
    const bool isArray = isOneOf(first, {"-array", "-array-add"});
    if (isArray || isOneOf(first, {"-dict", "-dict-add"})) {
        Value value = isArray ? arrayOf(words.subspan(1)) : dictionaryOf(words.subspan(1));
        value.isAddition = first.ends_with("-add");
        return value;
    }
    if (first.starts_with('-') && first.size() > 1 && words.size() > 1
        && std::ranges::find(scalars, first, &Scalar::option) == scalars.end())
        return Value::refused(quotedIn("unknown type ", first, ""));
    Value value = takeValue(words);
    if (value.complaint.empty() && !words.empty())
        value.complaint = quotedIn("unexpected argument ", words.front(), "");
    return value;
}

std::string put(void *dictionary, const std::string &key, Value value)
{
    plist_t old = value.isAddition ? plist_dict_get_item(dictionary, key.c_str()) : nullptr;
    if (old == nullptr) {
        plist_dict_set_item(dictionary, key.c_str(), value.node.release());
        return {};
    }
    const plist_type type = plist_get_node_type(value.node.get());
    if (plist_get_node_type(old) != type)
        return quotedIn("the value of ", key, " is no ")
            + (type == PLIST_ARRAY ? "array" : "dictionary");
    if (type == PLIST_DICT) {
        plist_dict_merge(&old, value.node.get());
        return {};
    }
    for (uint32_t i = 0; i < plist_array_get_size(value.node.get()); ++i)
        plist_array_append_item(old, plist_copy(plist_array_get_item(value.node.get(), i)));
    return {};
}

} // namespace velq::nettools
