#pragma once

#include "daemon/Audit.h"
#include "daemon/Call.h"
#include "daemon/Grants.h"
#include "daemon/Handles.h"
#include "daemon/Options.h"
#include "daemon/TokenBucket.h"

#include <list>
#include <map>
#include <optional>
#include <sys/types.h>

namespace velq::daemon
{

/// The object on the system bus, the calls in hand, and the daemon's own coming and going. One
/// thread, one event loop.
class Daemon
{
public:
    /// Takes the bus name. Blocks SIGTERM and SIGCHLD in this thread, for supervisors too. Throws
    /// std::system_error when there is no bus, or it does not give the name.
    explicit Daemon(const Options &options);
    Daemon(const Daemon &) = delete;
    Daemon &operator=(const Daemon &) = delete;
    ~Daemon() = default;

    /// Until it was idle for long enough, it is told to end, or the bus is gone. The exit status.
    int run();

private:
    void openBus();
    void watchLoop();
    int onMessage(sd_bus_message *message);
    void onCall(sd_bus_message *message);
    bool isStranger(sd_bus_message *message);
    std::optional<Refusal> objectionToAsking(uid_t user) const;
    std::optional<Refusal> objectionToRunning(uid_t user);
    size_t callsIn(Call::Stage stage) const;
    size_t callsIn(Call::Stage stage, uid_t user) const;
    bool mayRun(const Call &call) const;
    void lookAround();
    void restartIdleTime();
    void leave();

    Options m_options;
    Grants m_grants;
    Audit m_audit;
    Event m_loop;
    Bus m_bus;
    Slot m_object;
    Slot m_filter;
    EventSource m_signalSource;
    EventSource m_afterEach;
    EventSource m_idleTime;
    std::map<uid_t, TokenBucket> m_buckets;
    std::list<Call> m_calls;
    bool m_isLeaving = false;
    bool m_nameIsGone = false;
};

} // namespace velq::daemon
