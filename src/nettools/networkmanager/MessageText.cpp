#include "nettools/networkmanager/MessageText.h"

#include <charconv>
#include <optional>

namespace velq::nettools
{

namespace
{

constexpr const char *reading = "reading settings";
constexpr char open = '(';
constexpr char close = ')';
// Below what D-Bus itself allows.
constexpr int deepest = 32;

// A text takes one line whatever is in it.
std::string escaped(std::string_view text)
{
    std::string result;
    for (const char c : text) {
        if (c == '\\' || c == '\n')
            result += '\\';
        result += c == '\n' ? 'n' : c;
    }
    return result;
}

std::optional<std::string> unescaped(std::string_view text)
{
    std::string result;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            result += text[i];
            continue;
        }
        if (++i == text.size() || (text[i] != '\\' && text[i] != 'n'))
            return std::nullopt;
        result += text[i] == 'n' ? '\n' : '\\';
    }
    return result;
}

template <typename Wire> std::string numberText(sd_bus_message *message, char type)
{
    Wire wire{};
    check(sd_bus_message_read_basic(message, type, &wire), reading);
    return std::to_string(wire);
}

std::string basicText(sd_bus_message *message, char type)
{
    switch (type) {
    case SD_BUS_TYPE_BYTE:
        return numberText<uint8_t>(message, type);
    case SD_BUS_TYPE_BOOLEAN:
        return numberText<int>(message, type);
    case SD_BUS_TYPE_INT16:
        return numberText<int16_t>(message, type);
    case SD_BUS_TYPE_UINT16:
        return numberText<uint16_t>(message, type);
    case SD_BUS_TYPE_INT32:
        return numberText<int32_t>(message, type);
    case SD_BUS_TYPE_UINT32:
        return numberText<uint32_t>(message, type);
    case SD_BUS_TYPE_INT64:
        return numberText<int64_t>(message, type);
    case SD_BUS_TYPE_UINT64:
        return numberText<uint64_t>(message, type);
    case SD_BUS_TYPE_STRING:
    case SD_BUS_TYPE_OBJECT_PATH:
    case SD_BUS_TYPE_SIGNATURE: {
        const char *text = nullptr;
        check(sd_bus_message_read_basic(message, type, &text), reading);
        return escaped(text);
    }
    default:
        throw BusError(SD_BUS_ERROR_NOT_SUPPORTED, "settings hold a value that cannot be kept");
    }
}

void appendValues(std::string &out, sd_bus_message *message)
{
    char type = 0;
    const char *contents = nullptr;
    while (sd_bus_message_peek_type(message, &type, &contents) > 0) {
        if (contents == nullptr) {
            out.append({type}).append(" ").append(basicText(message, type)).append("\n");
            continue;
        }
        out.append({open, type}).append(contents).append("\n");
        check(sd_bus_message_enter_container(message, type, contents), reading);
        appendValues(out, message);
        check(sd_bus_message_exit_container(message), reading);
        out.append({close}).append("\n");
    }
}

template <typename Wire> bool appendNumber(sd_bus_message *to, char type, std::string_view text)
{
    Wire wire{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), wire);
    return error == std::errc() && end == text.data() + text.size()
        && sd_bus_message_append_basic(to, type, &wire) >= 0;
}

bool appendBasic(sd_bus_message *to, char type, std::string_view text)
{
    switch (type) {
    case SD_BUS_TYPE_BYTE:
        return appendNumber<uint8_t>(to, type, text);
    case SD_BUS_TYPE_BOOLEAN:
        return appendNumber<int>(to, type, text);
    case SD_BUS_TYPE_INT16:
        return appendNumber<int16_t>(to, type, text);
    case SD_BUS_TYPE_UINT16:
        return appendNumber<uint16_t>(to, type, text);
    case SD_BUS_TYPE_INT32:
        return appendNumber<int32_t>(to, type, text);
    case SD_BUS_TYPE_UINT32:
        return appendNumber<uint32_t>(to, type, text);
    case SD_BUS_TYPE_INT64:
        return appendNumber<int64_t>(to, type, text);
    case SD_BUS_TYPE_UINT64:
        return appendNumber<uint64_t>(to, type, text);
    case SD_BUS_TYPE_STRING:
    case SD_BUS_TYPE_OBJECT_PATH:
    case SD_BUS_TYPE_SIGNATURE: {
        const auto plain = unescaped(text);
        return plain && sd_bus_message_append_basic(to, type, plain->c_str()) >= 0;
    }
    default:
        return false;
    }
}

bool appendLine(sd_bus_message *to, std::string_view line, int &depth)
{
    if (line.size() == 1 && line[0] == close)
        return --depth >= 0 && sd_bus_message_close_container(to) >= 0;
    if (line.size() < 2)
        return false;
    if (line[0] == open)
        return ++depth <= deepest
            && sd_bus_message_open_container(to, line[1], std::string(line.substr(2)).c_str()) >= 0;
    return line[1] == ' ' && appendBasic(to, line[0], line.substr(2));
}

} // namespace

std::string textOf(const Message &message)
{
    check(sd_bus_message_rewind(message.get(), 1), reading);
    std::string text;
    appendValues(text, message.get());
    return text;
}

bool appendText(const Message &to, std::string_view text)
{
    int depth = 0;
    bool any = false;
    while (!text.empty()) {
        const size_t end = text.find('\n');
        if (end == std::string_view::npos || !appendLine(to.get(), text.substr(0, end), depth))
            return false;
        text.remove_prefix(end + 1);
        any = true;
    }
    return any && depth == 0;
}

} // namespace velq::nettools
