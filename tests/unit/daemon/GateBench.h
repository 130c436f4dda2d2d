#pragma once

#include "daemon/Admission.h"
#include "support/PrivateBus.h"
#include "unit/daemon/TemporaryFolder.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velq::testing
{

/// A bus with three on it, in one event loop: a caller, the gates, and a polkit that answers as the
/// test wants.
class GateBench
{
public:
    enum class Reply {
        Yes,
        YesToNobody, ///< once the caller is off the bus
        No,
        Challenge,
        Silence,
        Error,
        Number,
        TwoBooleans,
        LeaveBus,
    };

    struct Question {
        std::string busName;
        std::string action;
        std::string program;
        uint32_t flags = 0;
        std::string cancellation;
    };

    GateBench();
    GateBench(const GateBench &) = delete;
    GateBench &operator=(const GateBench &) = delete;
    ~GateBench() = default;

    /// What polkit answers to the first question, the second, … and to all after the last.
    void polkitReplies(std::vector<Reply> replies) { m_replies = std::move(replies); }
    /// Takes polkit off the bus.
    void removePolkit() { m_polkit.reset(); }

    /// A call by the caller, with the arguments of sd_bus_message_append.
    template <typename... Arguments> void send(const char *signature, Arguments... arguments)
    {
        daemon::Message message = newCall();
        sd_bus_message_append(message.get(), signature, arguments...);
        deliver(message.get());
    }
    void sendEcho() { send("sas", "/bin/echo", 1, "a"); }
    void sendArguments(int count);
    void letPersonBeAsked() { m_personMayBeAsked = true; }
    /// What speaks against a question to polkit.
    void objectToAsking(daemon::Refusal refusal) { m_objection = std::move(refusal); }
    /// The gates get an echo that says it is from `sender`, as no bus would deliver it.
    void beginAs(const char *sender);
    /// Gives the caller a name besides its unique one.
    void nameCaller(const char *name) const;
    void callerLeaves() { m_caller.reset(); }

    bool runUntil(const std::function<bool()> &condition);
    /// "Authorised", or "ERROR: REASON"; empty when there is no decision in time.
    std::string decision();
    bool isDecided() const { return !m_decision.empty(); }

    const std::vector<Question> &questions() const { return m_questions; }
    const std::vector<std::string> &cancellations() const { return m_cancellations; }
    std::string callerName() const;
    const daemon::Admission &admission() const { return *m_admission; }
    const GrantsFolder &folder() const { return m_folder; }
    void forgetAdmission() { m_admission.reset(); }

private:
    daemon::Bus connected() const;
    daemon::Message newCall() const;
    void begin(sd_bus_message *message);
    void deliver(sd_bus_message *message) const;
    int onCall(sd_bus_message *message);
    int onPolkitCall(sd_bus_message *message);
    int answer(sd_bus_message *message, Reply reply);
    void awaitCallersEnd();

    PrivateBus m_busDaemon;
    GrantsFolder m_folder;
    daemon::Grants m_grants;
    daemon::Event m_loop;
    daemon::Bus m_gates;
    daemon::Bus m_polkit;
    daemon::Bus m_caller;
    std::vector<Reply> m_replies{Reply::Yes};
    std::vector<Question> m_questions;
    std::vector<std::string> m_cancellations;
    bool m_personMayBeAsked = false;
    std::optional<daemon::Refusal> m_objection;
    std::optional<daemon::Admission> m_admission;
    std::string m_decision;
};

} // namespace velq::testing
