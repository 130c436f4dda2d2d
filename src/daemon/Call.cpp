#include "daemon/Call.h"

#include "daemon/PlainText.h"
#include "platform/linux/rootdaemon/Contract.h"

#include <system_error>
#include <utility>

namespace velq::daemon
{

Call::Call(sd_bus_message *message, const Grants &grants, Audit &audit)
    : m_message(sd_bus_message_ref(message))
    , m_audit(audit)
    , m_admission(sd_bus_message_get_bus(message), grants, message)
{
}

void Call::begin(const Objection &toAsking, Objection toRunning)
{
    m_admission.begin(toAsking,
                      [this, toRunning = std::move(toRunning)](Admission::Decision decision) {
                          onDecided(std::move(decision), toRunning);
                      });
}

void Call::onDecided(Admission::Decision decision, const Objection &toRunning)
{
    if (Refusal *refusal = std::get_if<Refusal>(&decision)) {
        refuse(std::move(*refusal));
        return;
    }
    if (std::optional<Refusal> refusal = toRunning(m_admission.user().value())) {
        refuse(std::move(*refusal));
        return;
    }
    m_authorised.emplace(std::move(std::get<Authorised>(decision)));
    m_stage = Stage::Waiting;
}

void Call::run(sd_event *loop, std::chrono::microseconds limit)
{
    // It may have waited for minutes.
    if (!m_admission.callerIsThere()) {
        refuse({Error::NotAuthorized, "the caller has left"});
        return;
    }
    m_stage = Stage::Running;
    try {
        m_command = std::make_unique<Command>(loop, *m_authorised, limit, [this](Outcome outcome) {
            onFinished(std::move(outcome));
        });
    } catch (const std::system_error &failure) {
        refuse({Error::SpawnFailed, failure.code().message()});
    }
}

void Call::onFinished(Outcome outcome)
{
    Audit::Entry entry;
    entry.failure = std::move(outcome.failure);
    entry.complaint = std::move(outcome.complaint);
    if (!entry.failure) {
        const std::string text = validText(outcome.output);
        entry.bytes = text.size();
        // To one who has left, into the void.
        (void)sd_bus_reply_method_return(m_message.get(), "s", text.c_str());
    }
    finish(std::move(entry));
}

void Call::refuse(Refusal refusal)
{
    Audit::Entry entry;
    entry.failure = std::move(refusal);
    finish(std::move(entry));
}

void Call::finish(Audit::Entry entry)
{
    m_stage = Stage::Answered;
    if (entry.failure) {
        const std::string name =
            rootdaemon::interfaceName + std::string(".Error.") + nameOf(entry.failure->error);
        (void)sd_bus_reply_method_errorf(m_message.get(), name.c_str(), "%s",
                                         messageOf(*entry.failure).c_str());
    }
    entry.sender = m_admission.sender();
    entry.user = m_admission.user();
    entry.request = m_admission.request();
    entry.took = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - m_received);
    m_audit.write(entry);
}

} // namespace velq::daemon
