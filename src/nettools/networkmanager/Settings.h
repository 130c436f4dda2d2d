#pragma once

#include "nettools/networkmanager/Bus.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace velq::nettools
{

/// The settings of a connection profile on their way from one message to another (a{sa{sv}}), as
/// they are but for some entries: nothing is lost that this program does not know.

using Ipv6Bytes = std::array<uint8_t, 16>;
/// IPv4 addresses are in network order.
using SettingValue = std::variant<bool, uint32_t, int64_t, std::string, std::vector<uint32_t>,
                                  std::vector<Ipv6Bytes>>;

/// One entry to be different from what it was; without a value, to be left out.
struct Edit {
    std::string group;
    std::string key;
    std::optional<SettingValue> value;
};

/// Appends what the answer `settings` holds, from its beginning, with the edits made. Groups that
/// an edit names and that are not there are added. Throws BusError.
void appendEdited(const Message &to, const Message &settings, std::span<const Edit> edits);

/// Appends settings that have nothing but these. Throws BusError.
void appendSettings(const Message &to, std::span<const Edit> entries);

} // namespace velq::nettools
