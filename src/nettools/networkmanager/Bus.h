#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <systemd/sd-bus.h>

namespace velq::nettools
{

struct SlotUnref {
    void operator()(sd_bus_slot *slot) const noexcept { sd_bus_slot_unref(slot); }
};
using Slot = std::unique_ptr<sd_bus_slot, SlotUnref>;

struct MessageUnref {
    void operator()(sd_bus_message *message) const noexcept { sd_bus_message_unref(message); }
};
using Message = std::unique_ptr<sd_bus_message, MessageUnref>;

/// A call that was not answered as it should: by an error, or not at all. what() is what the other
/// side says.
class BusError : public std::runtime_error
{
public:
    BusError(std::string name, const std::string &message);

    const std::string &name() const { return m_name; }
    /// Nobody has the name that was called.
    bool isNobody() const;
    /// That, or whoever had it went away before the answer.
    bool isAbsence() const;
    /// The caller has not the right.
    bool isDenial() const;
    /// The object that was called is not there.
    bool isMissing() const;

private:
    std::string m_name;
};

/// Throws BusError for the negative error number that functions of sd-bus return.
void check(int result, const char *doing);

/// A connection to the system bus. Nothing that is called through it is started for that. One
/// thread.
class Bus
{
public:
    /// Nothing when there is no bus.
    static std::optional<Bus> openSystem();

    Message request(const char *destination, const std::string &path, const char *interface,
                    const char *member) const;
    /// A Call and its answer.
    Message call(const Message &request, std::chrono::microseconds limit = {}) const;

    sd_bus *get() const { return m_bus.get(); }

private:
    struct Close {
        void operator()(sd_bus *bus) const noexcept { sd_bus_flush_close_unref(bus); }
    };
    explicit Bus(sd_bus *bus);

    std::unique_ptr<sd_bus, Close> m_bus;
};

/// A call on its way, one of as many as need not wait for each other. The bus must outlive it; an
/// answer that nobody asked for by then is dropped.
class Call
{
public:
    /// Returns at once, even when the bus has not let this program in yet. Throws BusError.
    Call(const Bus &bus, const Message &request, std::chrono::microseconds limit = {});

    /// Waits for the answer, for the bus's usual time unless another limit was set. Once. Throws
    /// BusError.
    Message answer();

private:
    sd_bus *m_bus;
    std::unique_ptr<Message> m_answer = std::make_unique<Message>();
    Slot m_slot;
};

/// Wakes whoever waits for a service to change. The bus must outlive it.
class Watch
{
public:
    /// Tells of every property that `service` says has changed, and of the service itself. Throws
    /// BusError.
    Watch(const Bus &bus, const char *service);
    Watch(const Watch &) = delete;
    Watch &operator=(const Watch &) = delete;
    ~Watch() = default;

    /// Blocks until something has changed since the last call; false when nothing does before the
    /// deadline. Throws BusError when the service or the bus goes away.
    bool wait(std::chrono::steady_clock::time_point deadline);

private:
    sd_bus *m_bus;
    bool m_changed = false;
    bool m_gone = false;
    Slot m_properties;
    Slot m_owner;
};

} // namespace velq::nettools
