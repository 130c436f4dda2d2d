#include "nettools/networkmanager/Profiles.h"

#include "nettools/networkmanager/MessageText.h"
#include "nettools/networksetup/Backend.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <set>
#include <tuple>
#include <utility>

namespace velq::nettools
{

namespace
{

// The system bus lets nobody wait for more than 128 answers.
constexpr size_t atOnce = 64;

// A wired device without a cable has no profile available, though it will use one.
bool couldUse(const Device &device, const Profile &profile)
{
    const Value &connection = profile.settings["connection"];
    const std::string &interface = connection["interface-name"].text();
    if (connection["type"].text() != "802-3-ethernet"
        || (!interface.empty() && interface != device.interface))
        return false;
    std::string address;
    for (const Value &octet : profile.settings["802-3-ethernet"]["mac-address"].list()) {
        constexpr std::string_view digits = "0123456789abcdef";
        const auto number = static_cast<size_t>(octet.number(0) & 0xff);
        address.append(address.empty() ? "" : ":");
        address += digits[number / 16];
        address += digits[number % 16];
    }
    return address.empty() || address == device.hardwareAddress;
}

// What NetworkManager goes by when it chooses, the wish of the device's user first.
auto rank(const Device &device, const Profile &profile)
{
    const Value &connection = profile.settings["connection"];
    return std::tuple(profile.path == device.profile, profile.autoconnects(),
                      connection["autoconnect-priority"].number(0),
                      connection["timestamp"].number(0));
}

// Among all profiles, as those that are available say nothing.
bool isSearchedFor(const Device &device)
{
    const bool wired = device.type == Device::Ethernet || device.type == Device::Veth;
    return wired && device.available.empty();
}

ReadProfile profileFrom(const std::string &path, Message answer)
{
    Profile profile{path, std::move(answer), {}};
    profile.settings = Value::read(profile.message.get());
    return std::make_shared<const Profile>(std::move(profile));
}

// Null when the caller may not see it, or it has gone.
ReadProfile answerTo(Call &call, const std::string &path)
{
    try {
        return profileFrom(path, call.answer());
    } catch (const BusError &error) {
        if (!error.isDenial() && !error.isMissing())
            throw;
        return nullptr;
    }
}

std::string newUuid()
{
    std::ifstream file("/proc/sys/kernel/random/uuid");
    std::string uuid;
    std::getline(file, uuid);
    return uuid;
}

void keep(const ProfileCopies &copies, const std::string &uuid, const std::string &text)
{
    if (!copies.keep(uuid, text))
        throw Refusal(std::string("no copy of the settings can be kept, so they stay as they are: ")
                      + std::strerror(errno));
}

} // namespace

Profiles::Profiles(NetworkManager &manager)
    : m_manager(manager)
{
}

std::vector<std::string> Profiles::pathsFor(const Device &device) const
{
    std::vector<std::string> paths =
        isSearchedFor(device) ? m_manager.state().profiles : device.available;
    if (!device.profile.empty() && std::ranges::find(paths, device.profile) == paths.end())
        paths.push_back(device.profile);
    return paths;
}

Profiles::ByPath Profiles::read(std::span<const std::string> paths) const
{
    ByPath profiles;
    while (!paths.empty()) {
        const auto now = paths.first(std::min(paths.size(), atOnce));
        std::vector<std::pair<std::string, Call>> calls;
        for (const std::string &path : now)
            calls.emplace_back(path, m_manager.askForSettings(path));
        for (auto &[path, call] : calls) {
            if (auto profile = answerTo(call, path))
                profiles.emplace(path, std::move(profile));
        }
        paths = paths.subspan(now.size());
    }
    return profiles;
}

std::vector<ReadProfile> Profiles::choose(const Device &device, const ByPath &profiles) const
{
    std::vector<ReadProfile> chosen;
    for (const std::string &path : pathsFor(device)) {
        const auto found = profiles.find(path);
        if (found != profiles.end()
            && (!isSearchedFor(device) || path == device.profile
                || couldUse(device, *found->second)))
            chosen.push_back(found->second);
    }
    std::ranges::stable_sort(chosen, std::greater<>(),
                             [&](const ReadProfile &profile) { return rank(device, *profile); });
    return chosen;
}

std::vector<std::vector<ReadProfile>>
Profiles::candidates(std::span<const Device *const> devices) const
{
    std::set<std::string> paths;
    for (const Device *device : devices)
        std::ranges::copy(pathsFor(*device), std::inserter(paths, paths.end()));
    const ByPath profiles = read(std::vector(paths.begin(), paths.end()));
    std::vector<std::vector<ReadProfile>> candidates;
    std::ranges::transform(devices, std::back_inserter(candidates),
                           [&](const Device *device) { return choose(*device, profiles); });
    return candidates;
}

std::vector<ReadProfile> Profiles::candidates(const Device &device) const
{
    return choose(device, read(pathsFor(device)));
}

ReadProfile Profiles::best(const Device &device) const
{
    // The one in use comes before all others, whatever they are.
    if (!device.profile.empty()) {
        Call call = m_manager.askForSettings(device.profile);
        if (auto inUse = answerTo(call, device.profile))
            return inUse;
    }
    const auto all = candidates(device);
    return all.empty() ? nullptr : all.front();
}

bool Profiles::change(const Profile &profile, const std::vector<Edit> &edits)
{
    const bool first = !hasCopy(profile);
    keep(m_copies, profile.uuid(), textOf(profile.message));
    try {
        m_manager.change(profile.path, profile.message, edits);
    } catch (const BusError &) {
        if (first)
            forget(profile);
        throw;
    }
    return first;
}

void Profiles::undo(const Profile &profile)
{
    m_manager.change(m_manager.find(profile.uuid()), profile.message, {});
}

ReadProfile Profiles::create(const Device &device, const std::string &name)
{
    const std::string uuid = newUuid();
    const std::vector<Edit> entries{
        {"connection", "id", name},
        {"connection", "uuid", uuid},
        {"connection", "type", "802-3-ethernet"},
        {"connection", "interface-name", device.interface},
        {"ipv4", "method", "auto"},
        {"ipv6", "method", "auto"},
    };
    keep(m_copies, uuid, "");
    try {
        const std::string path = m_manager.add(entries);
        return profileFrom(path, m_manager.askForSettings(path).answer());
    } catch (const BusError &) {
        m_copies.remove(uuid);
        throw;
    }
}

bool Profiles::hasCopy(const Profile &profile) const
{
    return m_copies.copyOf(profile.uuid()).has_value();
}

bool Profiles::restore(const Profile &profile)
{
    const auto text = m_copies.copyOf(profile.uuid());
    if (!text)
        return false;
    if (!text->empty())
        return m_manager.replace(profile.path, *text);
    m_manager.remove(profile.path);
    return true;
}

Value Profiles::settingsOf(const Profile &profile) const
{
    try {
        return Value::read(m_manager.askForSettings(profile.path).answer().get());
    } catch (const BusError &error) {
        if (error.isMissing())
            return {};
        throw;
    }
}

void Profiles::forget(const Profile &profile)
{
    m_copies.remove(profile.uuid());
}

} // namespace velq::nettools
