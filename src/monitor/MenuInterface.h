#pragma once

namespace velq
{

/// What stands behind the menu's entries: the probe of the connection. No instances, no state; any
/// thread.
class MenuInterface
{
public:
    MenuInterface() = delete;

    /// Whether the network is usable now. Made anew on each call, sends no packet, takes
    /// microseconds; what the system does not answer counts as no.
    static bool networkConnect();
};

} // namespace velq
