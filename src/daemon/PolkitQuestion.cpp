#include "daemon/PolkitQuestion.h"

#include "platform/linux/rootdaemon/Contract.h"

#include <chrono>
#include <utility>

namespace velq::daemon
{

namespace
{

constexpr char polkitName[] = "org.freedesktop.PolicyKit1";
constexpr char polkitPath[] = "/org/freedesktop/PolicyKit1/Authority";
constexpr char polkitInterface[] = "org.freedesktop.PolicyKit1.Authority";

constexpr std::chrono::microseconds polkitLimit = std::chrono::seconds{5};

constexpr uint32_t allowUserInteraction = 1;

Message methodCall(sd_bus *bus, const char *method)
{
    sd_bus_message *message = nullptr;
    demand(sd_bus_message_new_method_call(bus, &message, polkitName, polkitPath, polkitInterface,
                                          method),
           "sd_bus_message_new_method_call");
    return Message(message);
}

PolkitQuestion::Answer answerIn(sd_bus_message *reply)
{
    int isAuthorized = 0;
    int isChallenge = 0;
    if (sd_bus_message_is_method_error(reply, nullptr) != 0
        || sd_bus_message_has_signature(reply, "(bba{ss})") <= 0
        || sd_bus_message_enter_container(reply, 'r', "bba{ss}") <= 0
        || sd_bus_message_read(reply, "bb", &isAuthorized, &isChallenge) <= 0)
        return PolkitQuestion::Answer::No;
    if (isAuthorized == 1)
        return PolkitQuestion::Answer::Yes;
    return isChallenge == 1 ? PolkitQuestion::Answer::Challenge : PolkitQuestion::Answer::No;
}

} // namespace

PolkitQuestion::PolkitQuestion(sd_bus *bus, const std::string &busName, const std::string &program,
                               Asking asking, Answered answered)
    : m_bus(bus)
    , m_answered(std::move(answered))
{
    const bool asksPerson = asking == Asking::APerson;
    // A caller has one question open with a person at most in each of its calls, and none of
    // another's name can be cancelled.
    if (asksPerson)
        m_cancellation = "velq-" + std::to_string(reinterpret_cast<uintptr_t>(this));
    const Message call = methodCall(bus, "CheckAuthorization");
    demand(sd_bus_message_append(call.get(), "(sa{sv})sa{ss}us", "system-bus-name", 1, "name", "s",
                                 busName.c_str(), rootdaemon::actionId, 1, "program",
                                 program.c_str(), asksPerson ? allowUserInteraction : 0,
                                 m_cancellation.c_str()),
           "sd_bus_message_append");

    const std::chrono::microseconds limit =
        asksPerson ? rootdaemon::authorizationLimit : polkitLimit;
    const auto onReply = [](sd_bus_message *reply, void *self, sd_bus_error *) {
        static_cast<PolkitQuestion *>(self)->onReply(reply);
        return 1;
    };
    sd_bus_slot *slot = nullptr;
    demand(sd_bus_call_async(bus, &slot, call.get(), onReply, this,
                             static_cast<uint64_t>(limit.count())),
           "sd_bus_call_async");
    m_slot.reset(slot);
}

PolkitQuestion::~PolkitQuestion()
{
    if (m_cancellation.empty())
        return;
    (void)sd_bus_call_method_async(m_bus, nullptr, polkitName, polkitPath, polkitInterface,
                                   "CancelCheckAuthorization", nullptr, nullptr, "s",
                                   m_cancellation.c_str());
}

void PolkitQuestion::onReply(sd_bus_message *reply)
{
    const Answer answer = answerIn(reply);
    // One that ran out of time is still on a person's screen.
    if (sd_bus_message_is_method_error(reply, nullptr) == 0)
        m_cancellation.clear();
    std::exchange(m_answered, nullptr)(answer);
}

} // namespace velq::daemon
