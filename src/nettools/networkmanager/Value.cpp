#include "nettools/networkmanager/Value.h"

#include "nettools/networkmanager/Bus.h"

#include <utility>

namespace velq::nettools
{

namespace
{

constexpr const char *reading = "reading a message";

template <typename Wire, typename Data> Value basic(sd_bus_message *message, char type)
{
    Wire wire{};
    check(sd_bus_message_read_basic(message, type, &wire), reading);
    return Value(static_cast<Data>(wire));
}

Value readBasic(sd_bus_message *message, char type)
{
    switch (type) {
    case SD_BUS_TYPE_BYTE:
        return basic<uint8_t, uint64_t>(message, type);
    case SD_BUS_TYPE_BOOLEAN: {
        int truth = 0;
        check(sd_bus_message_read_basic(message, type, &truth), reading);
        return Value(truth != 0);
    }
    case SD_BUS_TYPE_INT16:
        return basic<int16_t, int64_t>(message, type);
    case SD_BUS_TYPE_UINT16:
        return basic<uint16_t, uint64_t>(message, type);
    case SD_BUS_TYPE_INT32:
        return basic<int32_t, int64_t>(message, type);
    case SD_BUS_TYPE_UINT32:
        return basic<uint32_t, uint64_t>(message, type);
    case SD_BUS_TYPE_INT64:
        return basic<int64_t, int64_t>(message, type);
    case SD_BUS_TYPE_UINT64:
        return basic<uint64_t, uint64_t>(message, type);
    case SD_BUS_TYPE_DOUBLE:
        return basic<double, double>(message, type);
    case SD_BUS_TYPE_STRING:
    case SD_BUS_TYPE_OBJECT_PATH:
    case SD_BUS_TYPE_SIGNATURE:
        return basic<const char *, std::string>(message, type);
    default:
        check(sd_bus_message_skip(message, nullptr), reading);
        return {};
    }
}

void enter(sd_bus_message *message, char type, const char *contents)
{
    check(sd_bus_message_enter_container(message, type, contents), reading);
}

void leave(sd_bus_message *message)
{
    check(sd_bus_message_exit_container(message), reading);
}

bool enterEntry(sd_bus_message *message, const char *contents)
{
    const int entered = sd_bus_message_enter_container(message, SD_BUS_TYPE_DICT_ENTRY, contents);
    check(entered, reading);
    return entered > 0;
}

Value readMap(sd_bus_message *message, const char *contents, Value::Choice choice)
{
    const std::string_view inBraces(contents);
    const std::string entry(inBraces.substr(1, inBraces.size() - 2));
    Value::Map map;
    enter(message, SD_BUS_TYPE_ARRAY, contents);
    while (enterEntry(message, entry.c_str())) {
        const char *key = nullptr;
        check(sd_bus_message_read_basic(message, entry.front(), &key), reading);
        if (choice(key))
            map.insert_or_assign(key, Value::read(message, choice));
        else
            check(sd_bus_message_skip(message, entry.c_str() + 1), reading);
        leave(message);
    }
    leave(message);
    return Value(std::move(map));
}

Value readList(sd_bus_message *message, char type, const char *contents, Value::Choice choice)
{
    Value::List list;
    enter(message, type, contents);
    while (sd_bus_message_at_end(message, 0) == 0)
        list.push_back(Value::read(message, choice));
    leave(message);
    return Value(std::move(list));
}

Value readVariant(sd_bus_message *message, const char *contents, Value::Choice choice)
{
    enter(message, SD_BUS_TYPE_VARIANT, contents);
    const bool isBasic = contents[1] == '\0' && contents[0] != SD_BUS_TYPE_VARIANT;
    Value inside = isBasic ? readBasic(message, contents[0]) : Value::read(message, choice);
    leave(message);
    return inside;
}

bool isMap(char type, std::string_view contents)
{
    return type == SD_BUS_TYPE_ARRAY && (contents.starts_with("{s") || contents.starts_with("{o"));
}

} // namespace

Value Value::read(sd_bus_message *message, Choice choice)
{
    char type = 0;
    const char *contents = nullptr;
    check(sd_bus_message_peek_type(message, &type, &contents), reading);
    if (contents == nullptr)
        return readBasic(message, type);
    if (type == SD_BUS_TYPE_VARIANT)
        return readVariant(message, contents, choice);
    return isMap(type, contents) ? readMap(message, contents, choice)
                                 : readList(message, type, contents, choice);
}

bool Value::truth(bool otherwise) const
{
    const auto *data = std::get_if<bool>(&m_data);
    return data != nullptr ? *data : otherwise;
}

int64_t Value::number(int64_t otherwise) const
{
    if (const auto *data = std::get_if<int64_t>(&m_data))
        return *data;
    const auto *data = std::get_if<uint64_t>(&m_data);
    return data != nullptr && std::in_range<int64_t>(*data) ? static_cast<int64_t>(*data)
                                                            : otherwise;
}

const std::string &Value::text() const
{
    static const std::string none;
    const auto *data = std::get_if<std::string>(&m_data);
    return data != nullptr ? *data : none;
}

const Value::List &Value::list() const
{
    static const List none;
    const auto *data = std::get_if<List>(&m_data);
    return data != nullptr ? *data : none;
}

const Value::Map &Value::map() const
{
    static const Map none;
    const auto *data = std::get_if<Map>(&m_data);
    return data != nullptr ? *data : none;
}

const Value &Value::operator[](std::string_view key) const
{
    static const Value none;
    const Map &entries = map();
    const auto found = entries.find(key);
    return found != entries.end() ? found->second : none;
}

} // namespace velq::nettools
