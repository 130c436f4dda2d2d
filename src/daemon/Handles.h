#pragma once

#include <cerrno>
#include <cstdint>
#include <memory>
#include <system_error>
#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>

namespace velq::daemon
{

/// libsystemd's objects, each reference owned by one handle.
template <auto release> struct Releasing {
    template <typename Object> void operator()(Object *object) const { release(object); }
};

using Event = std::unique_ptr<sd_event, Releasing<sd_event_unref>>;
/// Goes silent with its handle, also inside its own callback.
using EventSource = std::unique_ptr<sd_event_source, Releasing<sd_event_source_disable_unref>>;
using Bus = std::unique_ptr<sd_bus, Releasing<sd_bus_flush_close_unref>>;
using Message = std::unique_ptr<sd_bus_message, Releasing<sd_bus_message_unref>>;
using Slot = std::unique_ptr<sd_bus_slot, Releasing<sd_bus_slot_unref>>;
using Track = std::unique_ptr<sd_bus_track, Releasing<sd_bus_track_unref>>;
using Credentials = std::unique_ptr<sd_bus_creds, Releasing<sd_bus_creds_unref>>;

/// In microseconds. Left to itself a timer may be a quarter of a second late.
inline constexpr uint64_t timerAccuracy = 1000;

/// Throws std::system_error for one of libsystemd's negative results; for what the daemon cannot
/// live without.
inline int demand(int result, const char *what)
{
    if (result < 0)
        throw std::system_error(-result, std::generic_category(), what);
    return result;
}

} // namespace velq::daemon
