#pragma once

#include <memory>
#include <systemd/sd-bus.h>

namespace velq::nettools
{

struct CloseSessionBus {
    void operator()(sd_bus *bus) const noexcept { sd_bus_flush_close_unref(bus); }
};
/// A connection to the session bus of the person as whom this process runs.
using SessionBus = std::unique_ptr<sd_bus, CloseSessionBus>;

/// Null when there is none.
SessionBus openSessionBus();

} // namespace velq::nettools
