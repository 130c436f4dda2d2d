#include "unit/daemon/GateBench.h"

#include "unit/daemon/EventLoop.h"

#include <algorithm>
#include <unistd.h>

namespace velq::testing
{

using daemon::demand;

namespace
{

std::string textOf(const daemon::Admission::Decision &decision)
{
    const auto *refusal = std::get_if<daemon::Refusal>(&decision);
    return refusal == nullptr ? "Authorised"
                              : daemon::nameOf(refusal->error) + (": " + refusal->reason);
}

GateBench::Question questionIn(sd_bus_message *message)
{
    const char *kind = nullptr;
    const char *key = nullptr;
    const char *name = nullptr;
    const char *action = nullptr;
    const char *program = nullptr;
    const char *cancellation = nullptr;
    GateBench::Question question;
    demand(sd_bus_message_read(message, "(sa{sv})sa{ss}us", &kind, 1, &key, "s", &name, &action, 1,
                               &key, &program, &question.flags, &cancellation),
           "CheckAuthorization");
    question.busName = kind == std::string("system-bus-name") ? name : kind;
    question.action = action;
    question.program = program;
    question.cancellation = cancellation;
    return question;
}

} // namespace

GateBench::GateBench()
    : m_grants(m_folder.path(), geteuid())
    , m_loop(newLoop())
    , m_gates(connected())
    , m_polkit(connected())
    , m_caller(connected())
{
    const auto onCall = [](sd_bus_message *message, void *self, sd_bus_error *) {
        return static_cast<GateBench *>(self)->onCall(message);
    };
    demand(sd_bus_add_filter(m_gates.get(), nullptr, onCall, this), "sd_bus_add_filter");
    const auto onPolkitCall = [](sd_bus_message *message, void *self, sd_bus_error *) {
        return static_cast<GateBench *>(self)->onPolkitCall(message);
    };
    demand(sd_bus_add_filter(m_polkit.get(), nullptr, onPolkitCall, this), "sd_bus_add_filter");
    demand(sd_bus_request_name(m_polkit.get(), "org.freedesktop.PolicyKit1", 0), "name");
}

daemon::Bus GateBench::connected() const
{
    sd_bus *bus = nullptr;
    demand(sd_bus_open_user(&bus), "sd_bus_open_user");
    demand(sd_bus_attach_event(bus, m_loop.get(), 0), "sd_bus_attach_event");
    return daemon::Bus(bus);
}

std::string GateBench::callerName() const
{
    const char *name = nullptr;
    demand(sd_bus_get_unique_name(m_caller.get(), &name), "sd_bus_get_unique_name");
    return name;
}

daemon::Message GateBench::newCall() const
{
    const char *gates = nullptr;
    demand(sd_bus_get_unique_name(m_gates.get(), &gates), "sd_bus_get_unique_name");
    sd_bus_message *message = nullptr;
    demand(sd_bus_message_new_method_call(m_caller.get(), &message, gates, "/VelqDamonObject",
                                          "com.zelmor.VelqDamonObject", "runShell"),
           "sd_bus_message_new_method_call");
    return daemon::Message(message);
}

void GateBench::sendArguments(int count)
{
    const daemon::Message message = newCall();
    demand(sd_bus_message_append(message.get(), "s", "/bin/echo"), "append");
    demand(sd_bus_message_open_container(message.get(), 'a', "s"), "open");
    for (int i = 0; i < count; ++i)
        demand(sd_bus_message_append(message.get(), "s", "x"), "append");
    demand(sd_bus_message_close_container(message.get()), "close");
    deliver(message.get());
}

void GateBench::deliver(sd_bus_message *message) const
{
    sd_bus_message_set_allow_interactive_authorization(message, m_personMayBeAsked ? 1 : 0);
    demand(sd_bus_send(m_caller.get(), message, nullptr), "sd_bus_send");
}

int GateBench::onCall(sd_bus_message *message)
{
    if (sd_bus_message_is_method_call(message, nullptr, nullptr) <= 0)
        return 0;
    begin(message);
    return 1;
}

void GateBench::begin(sd_bus_message *message)
{
    m_admission.emplace(m_gates.get(), m_grants, message);
    m_admission->begin(
        [this](uid_t) { return m_objection; },
        [this](const daemon::Admission::Decision &decision) { m_decision += textOf(decision); });
}

void GateBench::beginAs(const char *sender)
{
    const daemon::Message message = newCall();
    demand(sd_bus_message_append(message.get(), "sas", "/bin/echo", 1, "a"), "append");
    demand(sd_bus_message_set_sender(message.get(), sender), "sd_bus_message_set_sender");
    demand(sd_bus_message_seal(message.get(), 1, 0), "sd_bus_message_seal");
    begin(message.get());
}

void GateBench::nameCaller(const char *name) const
{
    demand(sd_bus_request_name(m_caller.get(), name, 0), "sd_bus_request_name");
}

int GateBench::onPolkitCall(sd_bus_message *message)
{
    if (sd_bus_message_is_method_call(message, nullptr, "CancelCheckAuthorization") > 0) {
        const char *cancellation = nullptr;
        demand(sd_bus_message_read(message, "s", &cancellation), "CancelCheckAuthorization");
        m_cancellations.emplace_back(cancellation);
        return sd_bus_reply_method_return(message, "");
    }
    if (sd_bus_message_is_method_call(message, nullptr, "CheckAuthorization") <= 0)
        return 0;
    m_questions.push_back(questionIn(message));
    return answer(message, m_replies.at(std::min(m_questions.size(), m_replies.size()) - 1));
}

int GateBench::answer(sd_bus_message *message, Reply reply)
{
    switch (reply) {
    case Reply::YesToNobody:
        awaitCallersEnd();
        [[fallthrough]];
    case Reply::Yes:
        return sd_bus_reply_method_return(message, "(bba{ss})", 1, 0, 0);
    case Reply::No:
        return sd_bus_reply_method_return(message, "(bba{ss})", 0, 0, 0);
    case Reply::Challenge:
        return sd_bus_reply_method_return(message, "(bba{ss})", 0, 1, 0);
    case Reply::Silence:
        return 1;
    case Reply::Error:
        return sd_bus_reply_method_errorf(message, "org.freedesktop.PolicyKit1.Error.Failed", "no");
    case Reply::Number:
        return sd_bus_reply_method_return(message, "u", 1);
    case Reply::TwoBooleans:
        return sd_bus_reply_method_return(message, "bb", 1, 1);
    case Reply::LeaveBus:
        sd_bus_close(m_polkit.get());
        return 1;
    }
    return 0;
}

// The bus takes its time over a connection that was closed.
void GateBench::awaitCallersEnd()
{
    const std::string name = callerName();
    callerLeaves();
    while (daemon::userOf(m_polkit.get(), name.c_str())) { }
}

bool GateBench::runUntil(const std::function<bool()> &condition)
{
    return testing::runUntil(m_loop.get(), condition);
}

std::string GateBench::decision()
{
    runUntil([this] { return isDecided(); });
    return m_decision;
}

} // namespace velq::testing
