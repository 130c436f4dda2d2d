#include "nettools/networksetup/Port.h"

#include <algorithm>
#include <array>
#include <linux/if.h>
#include <string_view>
#include <tuple>
#include <utility>

namespace velq::nettools
{

namespace
{

struct Words {
    std::string_view first;  ///< the name of the first port of that kind; empty for none
    std::string_view prefix; ///< of the others' names
};

// In the order of Port::Kind.
constexpr std::array<Words, 6> words{{{"Ethernet", "LAN-"},
                                      {"Wi-Fi", "WLAN-"},
                                      {"", "Modem-"},
                                      {"", "Bluetooth-"},
                                      {"", "LAN-"},
                                      {"Loopback", "Loopback-"}}};

constexpr std::string_view letters =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";

} // namespace

void namePorts(std::vector<Port> &ports)
{
    std::ranges::stable_sort(ports, {}, [](const Port &port) {
        return std::tuple(port.kind == Port::Kind::Loopback, port.index);
    });
    std::array<bool, words.size()> seen{};
    for (Port &port : ports) {
        const auto kind = static_cast<size_t>(port.kind);
        const bool first = !std::exchange(seen.at(kind), true) && !words.at(kind).first.empty();
        port.name = first ? words.at(kind).first : words.at(kind).prefix;
        if (!first)
            port.name += port.device;
    }
}

const Port *portNamed(const std::vector<Port> &ports, std::string_view name)
{
    auto found = std::ranges::find(ports, name, &Port::name);
    if (found == ports.end())
        found = std::ranges::find(ports, name, &Port::device);
    return found != ports.end() ? &*found : nullptr;
}

bool isPlainDeviceName(std::string_view name)
{
    return !name.empty() && name.size() < IFNAMSIZ
        && letters.find(name.front()) != std::string_view::npos
        && std::ranges::all_of(name, [](char c) {
               return letters.find(c) != std::string_view::npos
                   || std::string_view("._@:-").find(c) != std::string_view::npos;
           });
}

} // namespace velq::nettools
