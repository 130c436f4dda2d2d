#pragma once

#include "daemon/Admission.h"
#include "daemon/Audit.h"
#include "daemon/Command.h"
#include "daemon/Handles.h"

#include <chrono>
#include <memory>
#include <optional>

namespace velq::daemon
{

/// One runShell, from the message to its answer. Answers and is written down exactly once.
class Call
{
public:
    enum class Stage { Asking, Waiting, Running, Answered };
    using Objection = Admission::Objection;

    Call(sd_bus_message *message, const Grants &grants, Audit &audit);

    /// `toRunning` stands between a call that was admitted and its command.
    void begin(const Objection &toAsking, Objection toRunning);
    void refuse(Refusal refusal);
    /// For one that is Waiting.
    void run(sd_event *loop, std::chrono::microseconds limit);

    Stage stage() const { return m_stage; }
    /// Nothing before it began.
    std::optional<uid_t> user() const { return m_admission.user(); }

private:
    using Clock = std::chrono::steady_clock;

    void onDecided(Admission::Decision decision, const Objection &toRunning);
    void onFinished(Outcome outcome);
    void finish(Audit::Entry entry);

    Message m_message;
    Audit &m_audit;
    Clock::time_point m_received = Clock::now();
    Stage m_stage = Stage::Asking;
    Admission m_admission;
    std::optional<Authorised> m_authorised;
    std::unique_ptr<Command> m_command;
};

} // namespace velq::daemon
