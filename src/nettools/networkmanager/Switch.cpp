#include "nettools/networkmanager/Switch.h"

#include "nettools/networkmanager/Application.h"
#include "nettools/networkmanager/ProfileEdits.h"
#include "nettools/networksetup/Backend.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace velq::nettools
{

namespace
{

constexpr std::chrono::seconds patience{10};

/// What has been done so far, undone in reverse unless all of it succeeds.
class Steps
{
public:
    explicit Steps(NetworkManager &manager)
        : m_manager(manager)
    {
    }
    Steps(const Steps &) = delete;
    Steps &operator=(const Steps &) = delete;
    ~Steps()
    {
        if (!m_undo.empty())
            tryTo([&] { (void)m_manager.readOnceBack(); });
        while (!m_undo.empty()) {
            tryTo(m_undo.back());
            m_undo.pop_back();
        }
    }

    void take(const std::function<void()> &step, std::function<void()> undo)
    {
        step();
        m_undo.push_back(std::move(undo));
    }
    void keep() { m_undo.clear(); }

private:
    static void tryTo(const std::function<void()> &work)
    {
        try {
            work();
        } catch (const BusError &) {
            // The reason why it failed is told; that taking it back fails for it too helps nobody.
            return;
        }
    }

    NetworkManager &m_manager;
    std::vector<std::function<void()>> m_undo;
};

struct Radio {
    const char *property;
    bool on;
    bool hardware; ///< what a switch on the computer's case says
};

std::optional<Radio> radioOf(const State &state, const Device &device)
{
    if (device.type == Device::WiFi)
        return Radio{"WirelessEnabled", state.wireless, state.wirelessHardware};
    if (device.type == Device::Modem)
        return Radio{"WwanEnabled", state.mobile, state.mobileHardware};
    return std::nullopt;
}

bool isOnlyOne(const State &state, const Device &device)
{
    return std::ranges::count(state.devices, device.type, &Device::type) == 1;
}

bool isWired(const Port &port)
{
    return port.kind == Port::Kind::Wired;
}

bool anyAutoconnects(std::span<const ReadProfile> candidates)
{
    return std::ranges::any_of(candidates, &Profile::autoconnects, &ReadProfile::operator*);
}

void switchProfile(Steps &steps, Profiles &profiles, const ReadProfile &profile, bool on)
{
    const auto first = std::make_shared<bool>(false);
    steps.take([&] { *first = profiles.change(*profile, autoconnectEdits(on)); },
               [&profiles, profile, first] {
                   profiles.undo(*profile);
                   if (*first)
                       profiles.forget(*profile);
               });
}

void switchRadioOn(Steps &steps, NetworkManager &manager, const Port &port, const Radio &radio)
{
    if (!radio.hardware)
        throw Refusal("the radio of " + port.name + " is switched off by a switch of the computer");
    if (!radio.on)
        steps.take([&] { manager.setRadio(radio.property, true); },
                   [&manager, radio] { manager.setRadio(radio.property, false); });
}

void switchDeviceOn(Steps &steps, NetworkManager &manager, const Device &device)
{
    const auto set = [&](const char *property) {
        steps.take([&] { manager.setDevice(device, property, true); },
                   [&manager, device, property] { manager.setDevice(device, property, false); });
    };
    if (!device.managed)
        set("Managed");
    if (!device.autoconnects)
        set("Autoconnect");
}

// A device that has just come to life has to find out first what it could use.
void awaitReady(NetworkManager &manager, const std::string &devicePath, const Port &port)
{
    (void)manager.await(patience, [&](const State &state) {
        const Device &device = deviceAt(state, devicePath, port);
        return device.managed && device.stage > Device::Unmanaged;
    });
}

void chooseProfile(Steps &steps, Profiles &profiles, const Device &device, const Port &port)
{
    const auto candidates = profiles.candidates(device);
    if (anyAutoconnects(candidates))
        return;
    if (!candidates.empty())
        switchProfile(steps, profiles, candidates.front(), true);
    else if (isWired(port))
        (void)profiles.create(device, port.name);
}

bool mayBeUsed(const State &state, const Device &device)
{
    const auto radio = radioOf(state, device);
    return state.networking && device.managed && device.autoconnects
        && (!radio || (radio->on && radio->hardware));
}

bool knowsWhatToUse(const Device &device, std::span<const ReadProfile> candidates)
{
    // A device without a wire may know of nothing that is in reach now.
    const bool wired = device.type == Device::Ethernet || device.type == Device::Veth;
    return anyAutoconnects(candidates) || (candidates.empty() && !wired);
}

// It comes online by itself now; asked for it, it does so at once.
void startUsing(NetworkManager &manager, Profiles &profiles, const Port &port,
                const std::string &devicePath)
{
    const Device device = deviceAt(manager.readAgain(), devicePath, port);
    const auto candidates = profiles.candidates(device);
    if (!isWired(port) || !device.is(Device::Disconnected) || candidates.empty())
        return;
    (void)manager.activate(candidates.front()->path, device);
}

} // namespace

bool isSwitchedOn(const State &state, const Device &device, const Profiles &profiles)
{
    return mayBeUsed(state, device) && knowsWhatToUse(device, profiles.candidates(device));
}

bool isSwitchedOn(const State &state, const Device &device, std::span<const ReadProfile> candidates)
{
    return mayBeUsed(state, device) && knowsWhatToUse(device, candidates);
}

void switchOn(NetworkManager &manager, Profiles &profiles, const Port &port,
              const std::string &devicePath)
{
    Steps steps(manager);
    if (!manager.state().networking)
        steps.take([&] { manager.enableNetworking(true); },
                   [&manager] { manager.enableNetworking(false); });
    const Device before = deviceAt(manager.state(), devicePath, port);
    if (const auto radio = radioOf(manager.state(), before))
        switchRadioOn(steps, manager, port, *radio);
    switchDeviceOn(steps, manager, before);
    awaitReady(manager, devicePath, port);
    chooseProfile(steps, profiles, deviceAt(manager.state(), devicePath, port), port);
    const State &state = manager.readAgain();
    if (!isSwitchedOn(state, deviceAt(state, devicePath, port), profiles))
        throw Refusal(port.name + " could not be switched on");
    startUsing(manager, profiles, port, devicePath);
    steps.keep();
}

void switchOff(NetworkManager &manager, Profiles &profiles, const Port &port,
               const std::string &devicePath)
{
    Steps steps(manager);
    const Device device = deviceAt(manager.state(), devicePath, port);
    const auto radio = radioOf(manager.state(), device);
    if (radio && isOnlyOne(manager.state(), device)) {
        if (radio->on)
            manager.setRadio(radio->property, false);
    } else {
        for (const ReadProfile &profile : profiles.candidates(device)) {
            if (profile->autoconnects() && isWired(port))
                switchProfile(steps, profiles, profile, false);
        }
        if (device.isInUse())
            manager.disconnect(device);
        else if (device.autoconnects && !isWired(port))
            manager.setDevice(device, "Autoconnect", false);
    }
    const bool off = manager.await(patience, [&](const State &state) {
        const Device &now = deviceAt(state, devicePath, port);
        return !isSwitchedOn(state, now, profiles) && !now.isInUse();
    });
    if (!off)
        throw Refusal(port.name + " could not be switched off");
    steps.keep();
}

} // namespace velq::nettools
