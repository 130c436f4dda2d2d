#pragma once

#include "nettools/networkmanager/Bus.h"
#include "nettools/networkmanager/Settings.h"
#include "nettools/networkmanager/State.h"

#include <chrono>
#include <functional>
#include <optional>
#include <span>
#include <string>

namespace velq::nettools
{

/// NetworkManager as it runs now, by its D-Bus interface. Never starts it. One thread.
///
/// Paths are those of its objects. All throw BusError.
class NetworkManager
{
public:
    /// Nothing when it does not run. Throws BusError when it runs and does not answer.
    static std::optional<NetworkManager> connect();

    /// As it was when it was read last.
    const State &state() const { return m_state; }
    const State &readAgain();
    /// The same once it runs again, should it have gone a moment ago. Paths are other ones then.
    const State &readOnceBack();

    /// Reads the state until `wanted` says that it is right, each time that something has changed.
    /// False when it does not get right within the time.
    bool await(std::chrono::seconds limit, const std::function<bool(const State &)> &wanted);

    /// Asks for the settings of a profile; they are what the call is answered with.
    Call askForSettings(const std::string &profile) const;
    /// Changes a profile for good, but nothing that runs now.
    void change(const std::string &profile, const Message &settings, std::span<const Edit> edits);
    /// The same with settings as MessageText keeps them. False when the text is no good.
    bool replace(const std::string &profile, std::string_view text);
    /// Returns the new profile.
    std::string add(std::span<const Edit> entries);
    void remove(const std::string &profile);
    /// The path of the profile with that UUID.
    std::string find(const std::string &uuid) const;

    /// Brings what the device's profile says now into effect, without going offline for it.
    void reapply(const Device &device);
    /// Starts to use a profile; returns the activation.
    std::string activate(const std::string &profile, const Device &device);
    void disconnect(const Device &device);
    void enableNetworking(bool enabled);
    /// "Managed" or "Autoconnect".
    void setDevice(const Device &device, const char *property, bool value);
    /// "WirelessEnabled" or "WwanEnabled".
    void setRadio(const char *property, bool value);

private:
    NetworkManager(Bus bus, State state);
    void set(const std::string &object, const char *interface, const char *property, bool value);
    Message request(const std::string &object, const char *interface, const char *member) const;

    Bus m_bus;
    State m_state;
    std::unique_ptr<Watch> m_watch; ///< from the first change on
};

} // namespace velq::nettools
