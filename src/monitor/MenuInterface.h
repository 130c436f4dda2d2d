#pragma once

namespace velq
{

/// What stands behind the menu's entries: the probe of the connection and its repair. No instances,
/// no state; any thread.
class MenuInterface
{
public:
    MenuInterface() = delete;

    /// Whether the network is usable now. Made anew on each call, sends no packet, takes
    /// microseconds; what the system does not answer counts as no.
    static bool networkConnect();

    /// Brings the network back: every port's interface on, every service on, Ethernet and Wi-Fi to
    /// addresses that the network gives out. Does nothing while the network is usable.
    ///
    /// Blocks while the tools run, which takes seconds, or as long as somebody is asked for the
    /// administrator's password. Off the main thread. Whether it helped, the next probe tells.
    static void speedUp();
};

} // namespace velq
