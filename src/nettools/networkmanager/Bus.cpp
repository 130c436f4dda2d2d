#include "nettools/networkmanager/Bus.h"

#include <cerrno>
#include <cstring>
#include <utility>

namespace velq::nettools
{

namespace
{

constexpr const char *absent = SD_BUS_ERROR_NAME_HAS_NO_OWNER;

int onAnswer(sd_bus_message *message, void *answer, sd_bus_error *)
{
    static_cast<Message *>(answer)->reset(sd_bus_message_ref(message));
    // That the time is over would count as nothing that has come in.
    return 1;
}

int onChange(sd_bus_message *, void *changed, sd_bus_error *)
{
    *static_cast<bool *>(changed) = true;
    return 0;
}

int onOwner(sd_bus_message *message, void *gone, sd_bus_error *)
{
    const char *name = nullptr;
    const char *before = nullptr;
    const char *after = nullptr;
    if (sd_bus_message_read(message, "sss", &name, &before, &after) > 0 && *before != '\0')
        *static_cast<bool *>(gone) = true;
    return 0;
}

// False when there is nothing to look at now.
bool lookAtNext(sd_bus *bus)
{
    const int done = sd_bus_process(bus, nullptr);
    check(done, "waiting");
    return done > 0;
}

void sleep(sd_bus *bus, uint64_t microseconds)
{
    const int waited = sd_bus_wait(bus, microseconds);
    if (waited != -EINTR)
        check(waited, "waiting");
}

} // namespace

BusError::BusError(std::string name, const std::string &message)
    : std::runtime_error(message)
    , m_name(std::move(name))
{
}

bool BusError::isNobody() const
{
    return m_name == SD_BUS_ERROR_NAME_HAS_NO_OWNER || m_name == SD_BUS_ERROR_SERVICE_UNKNOWN;
}

bool BusError::isAbsence() const
{
    return isNobody() || m_name == SD_BUS_ERROR_NO_REPLY || m_name == SD_BUS_ERROR_TIMEOUT
        || m_name == SD_BUS_ERROR_DISCONNECTED || m_name == "System.Error.ECONNRESET";
}

bool BusError::isDenial() const
{
    return m_name == SD_BUS_ERROR_ACCESS_DENIED
        || m_name == SD_BUS_ERROR_INTERACTIVE_AUTHORIZATION_REQUIRED
        || m_name.ends_with(".PermissionDenied") || m_name.ends_with(".NotAuthorized");
}

bool BusError::isMissing() const
{
    return m_name == SD_BUS_ERROR_UNKNOWN_OBJECT || m_name == SD_BUS_ERROR_UNKNOWN_METHOD
        || m_name == SD_BUS_ERROR_UNKNOWN_INTERFACE || m_name.ends_with(".UnknownDevice")
        || m_name.ends_with(".UnknownConnection");
}

void check(int result, const char *doing)
{
    if (result >= 0)
        return;
    const bool lost = result == -ENOTCONN || result == -ECONNRESET || result == -EPIPE;
    throw BusError(lost ? SD_BUS_ERROR_DISCONNECTED : SD_BUS_ERROR_FAILED,
                   std::string(doing) + ": " + std::strerror(-result));
}

std::optional<Bus> Bus::openSystem()
{
    sd_bus *bus = nullptr;
    if (sd_bus_open_system(&bus) < 0)
        return std::nullopt;
    return Bus(bus);
}

Bus::Bus(sd_bus *bus)
    : m_bus(bus)
{
}

Message Bus::request(const char *destination, const std::string &path, const char *interface,
                     const char *member) const
{
    sd_bus_message *raw = nullptr;
    check(sd_bus_message_new_method_call(m_bus.get(), &raw, destination, path.c_str(), interface,
                                         member),
          "making a call");
    Message message(raw);
    check(sd_bus_message_set_auto_start(raw, 0), "making a call");
    return message;
}

Message Bus::call(const Message &request, std::chrono::microseconds limit) const
{
    return Call(*this, request, limit).answer();
}

Call::Call(const Bus &bus, const Message &request, std::chrono::microseconds limit)
    : m_bus(bus.get())
{
    sd_bus_slot *slot = nullptr;
    check(sd_bus_call_async(m_bus, &slot, request.get(), onAnswer, m_answer.get(),
                            static_cast<uint64_t>(limit.count())),
          sd_bus_message_get_member(request.get()));
    m_slot.reset(slot);
}

Message Call::answer()
{
    while (*m_answer == nullptr) {
        if (!lookAtNext(m_bus))
            sleep(m_bus, UINT64_MAX);
    }
    const sd_bus_error *error = sd_bus_message_get_error(m_answer->get());
    if (error != nullptr)
        throw BusError(error->name, error->message != nullptr ? error->message : "no reason given");
    return std::move(*m_answer);
}

Watch::Watch(const Bus &bus, const char *service)
    : m_bus(bus.get())
{
    sd_bus_slot *slot = nullptr;
    check(sd_bus_match_signal(m_bus, &slot, service, nullptr, "org.freedesktop.DBus.Properties",
                              "PropertiesChanged", onChange, &m_changed),
          "watching for changes");
    m_properties.reset(slot);
    const std::string rule =
        std::string("type='signal',sender='org.freedesktop.DBus',member='NameOwnerChanged',"
                    "interface='org.freedesktop.DBus',path='/org/freedesktop/DBus',arg0='")
        + service + "'";
    check(sd_bus_add_match(m_bus, &slot, rule.c_str(), onOwner, &m_gone), "watching for changes");
    m_owner.reset(slot);
}

bool Watch::wait(std::chrono::steady_clock::time_point deadline)
{
    using std::chrono::duration_cast;
    using std::chrono::microseconds;
    while (true) {
        while (lookAtNext(m_bus)) { }
        if (m_gone)
            throw BusError(absent, "the service has gone");
        if (std::exchange(m_changed, false))
            return true;
        const auto left = duration_cast<microseconds>(deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0)
            return false;
        sleep(m_bus, static_cast<uint64_t>(left.count()));
    }
}

} // namespace velq::nettools
