#pragma once

#include <memory>
#include <systemd/sd-bus.h>

namespace velq
{

struct CloseBus {
    void operator()(sd_bus *bus) const noexcept { sd_bus_close_unref(bus); }
};

/// A connection to a bus, owned; one thread.
using BusHandle = std::unique_ptr<sd_bus, CloseBus>;

struct FreeMessage {
    void operator()(sd_bus_message *message) const noexcept { sd_bus_message_unref(message); }
};

/// A message, owned; the thread of its connection.
using MessageHandle = std::unique_ptr<sd_bus_message, FreeMessage>;

/// The system bus; null when it cannot be reached.
inline BusHandle openSystemBus()
{
    sd_bus *bus = nullptr;
    return sd_bus_open_system(&bus) < 0 ? BusHandle() : BusHandle(bus);
}

} // namespace velq
