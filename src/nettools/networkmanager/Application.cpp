#include "nettools/networkmanager/Application.h"

#include <algorithm>
#include <thread>

namespace velq::nettools
{

namespace
{

// Three requests of DHCP's, with what it waits for an answer between them.
constexpr std::chrono::seconds forLease{20};
constexpr std::chrono::seconds forSettings{8};

// The time is told in whole seconds: once two more have begun, one has passed.
constexpr std::chrono::seconds leaseAges{2};

std::chrono::system_clock::time_point leasedAt(const Device &device)
{
    return std::chrono::system_clock::time_point(std::chrono::seconds(device.leasedAt));
}

bool tryReapply(NetworkManager &manager, const Device &device)
{
    if (isLeaseFresh(device))
        std::this_thread::sleep_until(leasedAt(device) + leaseAges);
    try {
        manager.reapply(device);
        return true;
    } catch (const BusError &error) {
        if (error.isAbsence() || error.isDenial())
            throw;
        return false;
    }
}

struct Awaited {
    std::string activation;
    std::chrono::seconds limit;
};

void await(NetworkManager &manager, const Port &port, const std::string &devicePath,
           const Awaited &awaited, const InEffect &inEffect)
{
    bool ended = false;
    const bool done = manager.await(awaited.limit, [&](const State &state) {
        const Device &device = deviceAt(state, devicePath, port);
        const bool current = device.activation == awaited.activation;
        const auto &activations = state.activations;
        ended = std::ranges::find(activations, awaited.activation) == activations.end();
        // A cable that is out is nothing that settings could mend.
        return ended || !device.carrier
            || (current && device.is(Device::Activated) && inEffect(device));
    });
    if (ended)
        throw Refusal(port.name + " could not be brought online with these settings");
    if (!done)
        throw NotInTime(port.name + " has not come online with these settings in time");
}

// Somebody else's Reapply may have come between, and ours have been lost over it.
void awaitReapplied(NetworkManager &manager, const Port &port, const Device &device,
                    std::chrono::seconds limit, const InEffect &inEffect)
{
    const Awaited half{device.activation, limit / 2};
    try {
        await(manager, port, device.path, half, inEffect);
    } catch (const NotInTime &) {
        const Device late = deviceAt(manager.state(), device.path, port);
        if (late.is(Device::Activated))
            (void)tryReapply(manager, late);
        await(manager, port, device.path, half, inEffect);
    }
}

void applyNow(NetworkManager &manager, const Port &port, const Device &device,
              const Profile &profile, std::chrono::seconds limit, const InEffect &inEffect)
{
    if (device.stage >= Device::IpConfig && tryReapply(manager, device))
        awaitReapplied(manager, port, device, limit, inEffect);
    else
        await(manager, port, device.path, {manager.activate(profile.path, device), forLease},
              inEffect);
}

bool uses(const Device &device, const Profile &profile)
{
    return device.profile == profile.path && device.isInUse();
}

} // namespace

bool isLeaseFresh(const Device &device)
{
    const auto age = std::chrono::system_clock::now() - leasedAt(device);
    // A lease from the future is of a clock that has been set since.
    return age >= std::chrono::seconds(0) && age < leaseAges;
}

const Device &deviceAt(const State &state, const std::string &path, const Port &port)
{
    const Device *device = state.device(path);
    if (device == nullptr)
        throw Refusal(port.name + " has just gone: there is no device " + port.device
                      + " any more");
    return *device;
}

void apply(NetworkManager &manager, const Port &port, const std::string &devicePath,
           const Profile &profile, const InEffect &inEffect)
{
    const Device device = deviceAt(manager.readAgain(), devicePath, port);
    if (uses(device, profile))
        applyNow(manager, port, device, profile, forSettings, inEffect);
}

void applyOrActivate(NetworkManager &manager, const Port &port, const std::string &devicePath,
                     const Profile &profile, const InEffect &inEffect)
{
    const Device device = deviceAt(manager.readAgain(), devicePath, port);
    if (uses(device, profile))
        applyNow(manager, port, device, profile, forLease, inEffect);
    else if (device.stage >= Device::Disconnected)
        await(manager, port, devicePath, {manager.activate(profile.path, device), forLease},
              inEffect);
}

void activateAnew(NetworkManager &manager, const Port &port, const std::string &devicePath,
                  const Profile &profile)
{
    const Device device = deviceAt(manager.readAgain(), devicePath, port);
    if (uses(device, profile))
        await(manager, port, devicePath, {manager.activate(profile.path, device), forLease},
              [](const Device &) { return true; });
}

} // namespace velq::nettools
