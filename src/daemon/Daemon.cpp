#include "daemon/Daemon.h"

#include "platform/linux/rootdaemon/Contract.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <string>
#include <string_view>
#include <systemd/sd-daemon.h>

namespace velq::daemon
{

namespace
{

// The questions to polkit that may be open; each call holds up to a megabyte.
constexpr size_t askingCalls = 16;
constexpr double burst = 60;
constexpr double perSecond = 20;

constexpr char systemBus[] = "unix:path=/run/dbus/system_bus_socket";

void blockSignals()
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGTERM);
    sigaddset(&set, SIGCHLD);
    demand(-pthread_sigmask(SIG_BLOCK, &set, nullptr), "pthread_sigmask");
}

const char *busAddress()
{
    const char *address = secure_getenv("DBUS_SYSTEM_BUS_ADDRESS");
    return address == nullptr ? systemBus : address;
}

// For those who look; the filter answers the calls before they get here.
int unreachable(sd_bus_message *, void *, sd_bus_error *)
{
    return -EACCES;
}

const sd_bus_vtable vtable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD_WITH_ARGS("runShell", SD_BUS_ARGS("s", launchPath, "as", arguments),
                            SD_BUS_RESULT("s", output), unreachable, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END,
};

bool isText(const char *text, std::string_view expected)
{
    return text != nullptr && text == expected;
}

bool isRunShell(sd_bus_message *message)
{
    const char *interface = sd_bus_message_get_interface(message);
    return isText(sd_bus_message_get_path(message), rootdaemon::objectPath)
        && isText(sd_bus_message_get_member(message), rootdaemon::methodName)
        && (interface == nullptr || isText(interface, rootdaemon::interfaceName));
}

} // namespace

Daemon::Daemon(const Options &options)
    : m_options(options)
    , m_audit(Journal())
{
    blockSignals();
    sd_event *loop = nullptr;
    demand(sd_event_new(&loop), "sd_event_new");
    m_loop.reset(loop);
    openBus();
    watchLoop();
    demand(sd_bus_request_name(m_bus.get(), rootdaemon::busName, 0), "sd_bus_request_name");
}

void Daemon::openBus()
{
    sd_bus *bus = nullptr;
    demand(sd_bus_new(&bus), "sd_bus_new");
    m_bus.reset(bus);
    demand(sd_bus_set_address(bus, busAddress()), "sd_bus_set_address");
    demand(sd_bus_set_bus_client(bus, 1), "sd_bus_set_bus_client");
    // The bus itself then refuses what has descriptors in it.
    demand(sd_bus_negotiate_fds(bus, 0), "sd_bus_negotiate_fds");
    demand(sd_bus_start(bus), "sd_bus_start");

    sd_bus_slot *slot = nullptr;
    demand(sd_bus_add_object_vtable(bus, &slot, rootdaemon::objectPath, rootdaemon::interfaceName,
                                    vtable, nullptr),
           "sd_bus_add_object_vtable");
    m_object.reset(slot);
    const auto onMessage = [](sd_bus_message *message, void *self, sd_bus_error *) {
        return static_cast<Daemon *>(self)->onMessage(message);
    };
    demand(sd_bus_add_filter(bus, &slot, onMessage, this), "sd_bus_add_filter");
    m_filter.reset(slot);
    demand(sd_bus_attach_event(bus, m_loop.get(), SD_EVENT_PRIORITY_NORMAL), "sd_bus_attach_event");
    demand(sd_bus_set_exit_on_disconnect(bus, 1), "sd_bus_set_exit_on_disconnect");
}

void Daemon::watchLoop()
{
    sd_event_source *source = nullptr;
    demand(sd_event_add_signal(m_loop.get(), &source, SIGTERM, nullptr, nullptr),
           "sd_event_add_signal");
    m_signalSource.reset(source);

    const auto afterEach = [](sd_event_source *, void *self) {
        static_cast<Daemon *>(self)->lookAround();
        return 0;
    };
    demand(sd_event_add_post(m_loop.get(), &source, afterEach, this), "sd_event_add_post");
    m_afterEach.reset(source);

    const auto onIdle = [](sd_event_source *, uint64_t, void *self) {
        static_cast<Daemon *>(self)->leave();
        return 0;
    };
    demand(sd_event_add_time_relative(m_loop.get(), &source, CLOCK_MONOTONIC,
                                      static_cast<uint64_t>(m_options.idle.count()), timerAccuracy,
                                      onIdle, this),
           "sd_event_add_time");
    m_idleTime.reset(source);
}

int Daemon::run()
{
    return sd_event_loop(m_loop.get()) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

// Before everything that libsystemd answers by itself: to a stranger it answers nothing.
int Daemon::onMessage(sd_bus_message *message)
{
    if (sd_bus_message_is_method_call(message, nullptr, nullptr) <= 0)
        return 0;
    if (isRunShell(message)) {
        onCall(message);
        return 1;
    }
    if (!isStranger(message))
        return 0;
    Call(message, m_grants, m_audit).refuse({Error::NotAuthorized, "no runShell"});
    return 1;
}

bool Daemon::isStranger(sd_bus_message *message)
{
    const char *sender = sd_bus_message_get_sender(message);
    const std::optional<uid_t> user =
        sender == nullptr ? std::nullopt : userOf(m_bus.get(), sender);
    return !user || !m_grants.objectionTo(*user).empty();
}

void Daemon::onCall(sd_bus_message *message)
{
    const size_t asking = callsIn(Call::Stage::Asking);
    Call &call = m_calls.emplace_back(message, m_grants, m_audit);
    if (m_nameIsGone)
        call.refuse({Error::ShuttingDown, ""});
    else if (asking >= askingCalls)
        call.refuse({Error::Busy, "too many at once"});
    else
        call.begin([this](uid_t user) { return objectionToAsking(user); },
                   [this](uid_t user) { return objectionToRunning(user); });
}

// The call that it is about is counted already.
std::optional<Refusal> Daemon::objectionToAsking(uid_t user) const
{
    if (callsIn(Call::Stage::Asking, user) > rootdaemon::shareOfOne(askingCalls))
        return Refusal{Error::Busy, "too many at once"};
    return std::nullopt;
}

std::optional<Refusal> Daemon::objectionToRunning(uid_t user)
{
    TokenBucket &bucket = m_buckets.try_emplace(user, burst, perSecond).first->second;
    if (!bucket.take(TokenBucket::Clock::now()))
        return Refusal{Error::Busy, "too many a second"};
    constexpr size_t places = rootdaemon::parallelCommands + rootdaemon::queuedCommands;
    const size_t inHand = callsIn(Call::Stage::Waiting) + callsIn(Call::Stage::Running);
    const size_t own = callsIn(Call::Stage::Waiting, user) + callsIn(Call::Stage::Running, user);
    if (inHand >= places || own >= rootdaemon::shareOfOne(places))
        return Refusal{Error::Busy, "the queue is full"};
    return std::nullopt;
}

size_t Daemon::callsIn(Call::Stage stage) const
{
    return static_cast<size_t>(std::ranges::count(m_calls, stage, &Call::stage));
}

size_t Daemon::callsIn(Call::Stage stage, uid_t user) const
{
    return static_cast<size_t>(std::ranges::count_if(
        m_calls, [&](const Call &call) { return call.stage() == stage && call.user() == user; }));
}

// First come, first served, but nobody's commands are the only ones.
bool Daemon::mayRun(const Call &call) const
{
    return call.stage() == Call::Stage::Waiting
        && callsIn(Call::Stage::Running) < rootdaemon::parallelCommands
        && callsIn(Call::Stage::Running, call.user().value())
        < rootdaemon::shareOfOne(rootdaemon::parallelCommands);
}

// After each event. A call is destroyed here and nowhere else, so none while it is at work.
void Daemon::lookAround()
{
    for (Call &call : m_calls) {
        if (mayRun(call))
            call.run(m_loop.get(), m_options.limit);
    }
    const size_t ended = std::erase_if(
        m_calls, [](const Call &call) { return call.stage() == Call::Stage::Answered; });
    if (!m_calls.empty())
        return;
    if (m_isLeaving)
        sd_event_exit(m_loop.get(), EXIT_SUCCESS);
    else if (ended > 0)
        restartIdleTime();
}

void Daemon::restartIdleTime()
{
    const auto idle = static_cast<uint64_t>(m_options.idle.count());
    sd_event_source_set_time_relative(m_idleTime.get(), idle);
    sd_event_source_set_enabled(m_idleTime.get(), SD_EVENT_ONESHOT);
}

// No call is lost: systemd learns first that the next activation is for another process; what the
// bus had sent before it gave the name up is in hand then and still served.
void Daemon::leave()
{
    if (!m_calls.empty())
        return;
    m_isLeaving = true;
    sd_notify(0, "STOPPING=1");
    sd_bus_release_name(m_bus.get(), rootdaemon::busName);
    while (sd_bus_process(m_bus.get(), nullptr) > 0) { }
    m_nameIsGone = true;
}

} // namespace velq::daemon
