#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <systemd/sd-bus.h>
#include <variant>
#include <vector>

namespace velq::nettools
{

/// Whatever a D-Bus message holds, for reading. A variant is what it holds, a dictionary with texts
/// for keys is a map, all other arrays and structures are lists. Asked for what it is not, a value
/// says what the caller expects of an absent one.
class Value
{
public:
    using List = std::vector<Value>;
    using Map = std::map<std::string, Value, std::less<>>;

    Value() = default;
    template <typename Data>
    explicit Value(Data data)
        : m_data(std::move(data))
    {
    }

    /// Whether an entry with that key is worth reading.
    using Choice = bool (*)(std::string_view key);

    /// The value that comes next in the message, whatever it is; of maps, in whatever depth, only
    /// the entries that are chosen. Throws BusError.
    static Value read(sd_bus_message *message, Choice choice = everything);

    bool isSet() const { return !std::holds_alternative<std::monostate>(m_data); }
    bool truth(bool otherwise) const;
    /// Of any integer type; one that does not fit is what `otherwise` says.
    int64_t number(int64_t otherwise) const;
    /// Also of a path; empty when it is none.
    const std::string &text() const;
    const List &list() const;
    const Map &map() const;
    /// The entry of a map; an absent value when there is none.
    const Value &operator[](std::string_view key) const;

private:
    static bool everything(std::string_view) { return true; }

    std::variant<std::monostate, bool, int64_t, uint64_t, double, std::string, List, Map> m_data;
};

} // namespace velq::nettools
