#include "platform/NetworkKeeper.h"

#include "platform/linux/BusHandle.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace velq
{

namespace
{

using State = NetworkKeeper::State;

constexpr uint64_t patience = 1'000'000; // in microseconds

constexpr const char *busName = "org.freedesktop.NetworkManager";
constexpr const char *unit = "NetworkManager.service";
constexpr const char *serviceManager = "org.freedesktop.systemd1";

struct FreeText {
    void operator()(char *text) const noexcept { std::free(text); }
};

bool answers(sd_bus *bus)
{
    sd_bus_message *message = nullptr;
    const int asked =
        sd_bus_call_method(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                           "org.freedesktop.DBus", "NameHasOwner", nullptr, &message, "s", busName);
    const MessageHandle reply(message);
    int owned = 0;
    return asked >= 0 && sd_bus_message_read(reply.get(), "b", &owned) >= 0 && owned != 0;
}

// Of one that was never asked for, too. Empty when it cannot be told.
std::string unitPath(sd_bus *bus)
{
    sd_bus_message *message = nullptr;
    const int asked = sd_bus_call_method(bus, serviceManager, "/org/freedesktop/systemd1",
                                         "org.freedesktop.systemd1.Manager", "LoadUnit", nullptr,
                                         &message, "s", unit);
    const MessageHandle reply(message);
    const char *path = nullptr;
    return asked >= 0 && sd_bus_message_read(reply.get(), "o", &path) >= 0 ? path : std::string();
}

// One that is masked has been shut out by somebody, who knows.
bool canBeStarted(sd_bus *bus)
{
    const std::string path = unitPath(bus);
    char *text = nullptr;
    if (path.empty()
        || sd_bus_get_property_string(bus, serviceManager, path.c_str(),
                                      "org.freedesktop.systemd1.Unit", "LoadState", nullptr, &text)
            < 0)
        return false;
    const std::unique_ptr<char, FreeText> state(text);
    return std::string(state.get()) == "loaded";
}

} // namespace

State NetworkKeeper::state()
{
    const BusHandle bus = openSystemBus();
    if (bus == nullptr)
        return State::Absent;
    (void)sd_bus_set_method_call_timeout(bus.get(), patience);
    if (answers(bus.get()))
        return State::Running;
    return canBeStarted(bus.get()) ? State::Stopped : State::Absent;
}

QString NetworkKeeper::name()
{
    return QStringLiteral("NetworkManager");
}

QString NetworkKeeper::startCommand()
{
    return QStringLiteral("sudo systemctl start NetworkManager");
}

} // namespace velq
