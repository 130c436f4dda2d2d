#include "nettools/networkmanager/NetworkManager.h"

#include "nettools/networkmanager/MessageText.h"

#include <thread>
#include <utility>

namespace velq::nettools
{

namespace
{

constexpr const char *name = "org.freedesktop.NetworkManager";
constexpr const char *path = "/org/freedesktop/NetworkManager";
constexpr const char *deviceInterface = "org.freedesktop.NetworkManager.Device";
constexpr const char *settingsInterface = "org.freedesktop.NetworkManager.Settings";
constexpr const char *profileInterface = "org.freedesktop.NetworkManager.Settings.Connection";
constexpr const char *writing = "making a call";

// A change may wait for somebody to type a password; to look takes it no time.
constexpr std::chrono::seconds toRead{5};
// From one that ends to the next one that has begun.
constexpr std::chrono::seconds toReturn{5};

// NM_SETTINGS_UPDATE2_FLAG_TO_DISK and _NO_REAPPLY: on disk, and nothing that runs is touched.
constexpr uint32_t toDiskOnly = 0x1 | 0x40;

State stateOf(const Bus &bus)
{
    const Message answer =
        bus.call(bus.request(name, "/org/freedesktop", "org.freedesktop.DBus.ObjectManager",
                             "GetManagedObjects"),
                 toRead);
    return State::from(answer.get());
}

void finishUpdate(const Message &message)
{
    check(sd_bus_message_append(message.get(), "ua{sv}", toDiskOnly, 0), writing);
}

} // namespace

std::optional<NetworkManager> NetworkManager::connect()
{
    auto bus = Bus::openSystem();
    if (!bus)
        return std::nullopt;
    try {
        State state = stateOf(*bus);
        return NetworkManager(std::move(*bus), std::move(state));
    } catch (const BusError &error) {
        if (!error.isNobody())
            throw;
        return std::nullopt;
    }
}

NetworkManager::NetworkManager(Bus bus, State state)
    : m_bus(std::move(bus))
    , m_state(std::move(state))
{
}

Message NetworkManager::request(const std::string &object, const char *interface,
                                const char *member) const
{
    return m_bus.request(name, object, interface, member);
}

const State &NetworkManager::readAgain()
{
    m_state = stateOf(m_bus);
    return m_state;
}

const State &NetworkManager::readOnceBack()
{
    const auto deadline = std::chrono::steady_clock::now() + toReturn;
    while (true) {
        try {
            m_watch.reset();
            return readAgain();
        } catch (const BusError &error) {
            if (!error.isAbsence() || std::chrono::steady_clock::now() >= deadline)
                throw;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
}

bool NetworkManager::await(std::chrono::seconds limit,
                           const std::function<bool(const State &)> &wanted)
{
    const auto deadline = std::chrono::steady_clock::now() + limit;
    if (!m_watch)
        m_watch = std::make_unique<Watch>(m_bus, name);
    while (!wanted(readAgain())) {
        if (!m_watch->wait(deadline))
            return false;
    }
    return true;
}

Call NetworkManager::askForSettings(const std::string &profile) const
{
    return {m_bus, request(profile, profileInterface, "GetSettings")};
}

void NetworkManager::change(const std::string &profile, const Message &settings,
                            std::span<const Edit> edits)
{
    const Message message = request(profile, profileInterface, "Update2");
    appendEdited(message, settings, edits);
    finishUpdate(message);
    (void)m_bus.call(message);
}

bool NetworkManager::replace(const std::string &profile, std::string_view text)
{
    const Message message = request(profile, profileInterface, "Update2");
    if (!appendText(message, text))
        return false;
    finishUpdate(message);
    (void)m_bus.call(message);
    return true;
}

std::string NetworkManager::add(std::span<const Edit> entries)
{
    const Message message =
        request(std::string(path) + "/Settings", settingsInterface, "AddConnection");
    appendSettings(message, entries);
    return Value::read(m_bus.call(message).get()).text();
}

void NetworkManager::remove(const std::string &profile)
{
    (void)m_bus.call(request(profile, profileInterface, "Delete"));
}

std::string NetworkManager::find(const std::string &uuid) const
{
    const Message message =
        request(std::string(path) + "/Settings", settingsInterface, "GetConnectionByUuid");
    check(sd_bus_message_append(message.get(), "s", uuid.c_str()), writing);
    return Value::read(m_bus.call(message).get()).text();
}

void NetworkManager::reapply(const Device &device)
{
    const Message message = request(device.path, deviceInterface, "Reapply");
    check(sd_bus_message_append(message.get(), "a{sa{sv}}tu", 0, uint64_t{0}, 0), writing);
    (void)m_bus.call(message);
}

std::string NetworkManager::activate(const std::string &profile, const Device &device)
{
    const Message message = request(path, name, "ActivateConnection");
    check(sd_bus_message_append(message.get(), "ooo", profile.c_str(), device.path.c_str(), "/"),
          writing);
    return Value::read(m_bus.call(message).get()).text();
}

void NetworkManager::disconnect(const Device &device)
{
    (void)m_bus.call(request(device.path, deviceInterface, "Disconnect"));
}

void NetworkManager::enableNetworking(bool enabled)
{
    const Message message = request(path, name, "Enable");
    check(sd_bus_message_append(message.get(), "b", enabled ? 1 : 0), writing);
    (void)m_bus.call(message);
}

void NetworkManager::setDevice(const Device &device, const char *property, bool value)
{
    set(device.path, deviceInterface, property, value);
}

void NetworkManager::setRadio(const char *property, bool value)
{
    set(path, name, property, value);
}

void NetworkManager::set(const std::string &object, const char *interface, const char *property,
                         bool value)
{
    const Message message = request(object, "org.freedesktop.DBus.Properties", "Set");
    check(sd_bus_message_append(message.get(), "ssv", interface, property, "b", value ? 1 : 0),
          writing);
    (void)m_bus.call(message);
}

} // namespace velq::nettools
