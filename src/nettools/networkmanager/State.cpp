#include "nettools/networkmanager/State.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <sstream>

namespace velq::nettools
{

namespace
{

constexpr std::string_view manager = "org.freedesktop.NetworkManager";
constexpr std::string_view deviceInterface = "org.freedesktop.NetworkManager.Device";
constexpr std::string_view wiredInterface = "org.freedesktop.NetworkManager.Device.Wired";
constexpr std::string_view wirelessInterface = "org.freedesktop.NetworkManager.Device.Wireless";
constexpr int64_t externalFlag = 0x80; // NM_ACTIVATION_STATE_FLAG_EXTERNAL

// All that is asked of a State's values, those in Device included. NetworkManager tells much more,
// which would take most of the time.
constexpr std::array keysInUse = std::to_array<std::string_view>({
    "ActiveAccessPoint",
    "ActiveConnection",
    "ActiveConnections",
    "AddressData",
    "Autoconnect",
    "AvailableConnections",
    "Bitrate",
    "Carrier",
    "Connection",
    "Connections",
    "DeviceType",
    "Devices",
    "Dhcp4Config",
    "Flags",
    "Frequency",
    "Gateway",
    "HwAddress",
    "Interface",
    "Ip4Config",
    "Ip6Config",
    "Managed",
    "MaxBitrate",
    "Mtu",
    "NameserverData",
    "NetworkingEnabled",
    "Options",
    "RouteData",
    "RsnFlags",
    "Ssid",
    "State",
    "StateFlags",
    "Strength",
    "WirelessEnabled",
    "WirelessHardwareEnabled",
    "WpaFlags",
    "WwanEnabled",
    "WwanHardwareEnabled",
    "address",
    "dest",
    "dhcp_lease_time",
    "domain_name_servers",
    "expiry",
    "ip_address",
    "metric",
    "prefix",
});
static_assert(std::ranges::is_sorted(keysInUse));

bool isOfUse(std::string_view key)
{
    if (key.starts_with("/"))
        return true;
    if (key.starts_with(manager))
        return !key.ends_with(".Statistics");
    return std::ranges::binary_search(keysInUse, key);
}

std::vector<std::string> textsOf(const Value &list)
{
    std::vector<std::string> texts;
    for (const Value &value : list.list())
        texts.push_back(value.text());
    return texts;
}

// NetworkManager writes "/" for no object.
std::string pathOf(const Value &value)
{
    return value.text() == "/" ? "" : value.text();
}

std::string lowerCase(std::string text)
{
    std::ranges::transform(text, text.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return text;
}

std::string hardwareAddressOf(const Value &interfaces)
{
    for (const auto &[name, properties] : interfaces.map()) {
        if (const std::string &address = properties["HwAddress"].text(); !address.empty())
            return lowerCase(address);
    }
    return {};
}

uint32_t smallNumber(const Value &value)
{
    return static_cast<uint32_t>(value.number(0));
}

// DHCP's options come as texts.
int64_t numberIn(const Value &option)
{
    const std::string &text = option.text();
    int64_t number = 0;
    (void)std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

void addLease(Device &device, const Value &options)
{
    device.lease = options["ip_address"].text();
    std::istringstream servers(options["domain_name_servers"].text());
    device.leaseServers.assign(std::istream_iterator<std::string>(servers), {});
    const int64_t until = numberIn(options["expiry"]);
    const int64_t length = numberIn(options["dhcp_lease_time"]);
    device.leasedAt = length > 0 && until > length ? until - length : 0;
}

Device deviceFrom(const std::string &path, const Value &objects)
{
    const Value &interfaces = objects[path];
    const Value &properties = interfaces[deviceInterface];
    Device device;
    device.path = path;
    device.interface = properties["Interface"].text();
    device.type = smallNumber(properties["DeviceType"]);
    device.stage = smallNumber(properties["State"]);
    device.managed = properties["Managed"].truth(false);
    device.autoconnects = properties["Autoconnect"].truth(true);
    device.hardwareAddress = hardwareAddressOf(interfaces);
    device.mtu = smallNumber(properties["Mtu"]);
    device.available = textsOf(properties["AvailableConnections"]);
    device.carrier = interfaces[wiredInterface]["Carrier"].truth(true);
    addLease(device,
             objects[properties["Dhcp4Config"].text()]["org.freedesktop.NetworkManager.DHCP4Config"]
                    ["Options"]);
    device.ip4 =
        objects[properties["Ip4Config"].text()]["org.freedesktop.NetworkManager.IP4Config"];
    device.ip6 =
        objects[properties["Ip6Config"].text()]["org.freedesktop.NetworkManager.IP6Config"];

    const Value &wireless = interfaces[wirelessInterface];
    device.accessPoint =
        objects[wireless["ActiveAccessPoint"].text()]["org.freedesktop.NetworkManager.AccessPoint"];
    device.bitrate = smallNumber(wireless["Bitrate"]);

    device.activation = pathOf(properties["ActiveConnection"]);
    const Value &activation =
        objects[device.activation]["org.freedesktop.NetworkManager.Connection.Active"];
    device.external = (activation["StateFlags"].number(0) & externalFlag) != 0;
    if (!device.external)
        device.profile = pathOf(activation["Connection"]);
    return device;
}

} // namespace

const Device *State::device(std::string_view path) const
{
    const auto found = std::ranges::find(devices, path, &Device::path);
    return found != devices.end() ? &*found : nullptr;
}

State State::from(sd_bus_message *answer)
{
    const Value objects = Value::read(answer, isOfUse);
    const Value &properties = objects["/org/freedesktop/NetworkManager"][manager];
    State state;
    state.networking = properties["NetworkingEnabled"].truth(true);
    state.wireless = properties["WirelessEnabled"].truth(true);
    state.wirelessHardware = properties["WirelessHardwareEnabled"].truth(true);
    state.mobile = properties["WwanEnabled"].truth(true);
    state.mobileHardware = properties["WwanHardwareEnabled"].truth(true);
    for (const std::string &path : textsOf(properties["Devices"]))
        state.devices.push_back(deviceFrom(path, objects));
    state.profiles = textsOf(objects["/org/freedesktop/NetworkManager/Settings"]
                                    ["org.freedesktop.NetworkManager.Settings"]["Connections"]);
    state.activations = textsOf(properties["ActiveConnections"]);
    return state;
}

} // namespace velq::nettools
