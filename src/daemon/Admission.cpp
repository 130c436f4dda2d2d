#include "daemon/Admission.h"

#include <system_error>
#include <utility>

namespace velq::daemon
{

std::optional<uid_t> userOf(sd_bus *bus, const char *uniqueName)
{
    sd_bus_creds *raw = nullptr;
    if (sd_bus_get_name_creds(bus, uniqueName, SD_BUS_CREDS_EUID, &raw) < 0)
        return std::nullopt;
    const Credentials credentials(raw);
    uid_t user = 0;
    // What libsystemd has looked up in /proc is nobody's word.
    if ((sd_bus_creds_get_augmented_mask(raw) & SD_BUS_CREDS_EUID) != 0
        || sd_bus_creds_get_euid(raw, &user) < 0)
        return std::nullopt;
    return user;
}

Admission::Admission(sd_bus *bus, const Grants &grants, sd_bus_message *message)
    : m_bus(bus)
    , m_grants(grants)
    , m_request(requestIn(message))
    , m_personMayBeAsked(sd_bus_message_get_allow_interactive_authorization(message) > 0)
{
    const char *sender = sd_bus_message_get_sender(message);
    m_sender = sender == nullptr ? "" : sender;
}

void Admission::begin(const Objection &toAsking, Decided decided)
{
    m_decided = std::move(decided);
    if (std::optional<Refusal> refusal = objection(toAsking))
        refuse(refusal->error, std::move(refusal->reason));
    else
        ask(PolkitQuestion::Asking::PolkitAlone);
}

std::optional<Refusal> Admission::objection(const Objection &toAsking)
{
    if (!m_sender.starts_with(':'))
        return Refusal{Error::NotAuthorized, "the sender has no unique name"};
    m_user = userOf(m_bus, m_sender.c_str());
    if (!m_user)
        return Refusal{Error::NotAuthorized, "the bus does not know the sender's user"};
    if (std::string reason = m_grants.objectionTo(*m_user); !reason.empty())
        return Refusal{Error::NotAuthorized, std::move(reason)};
    if (!m_request)
        return Refusal{Error::BadArguments, "malformed"};
    return toAsking(*m_user);
}

void Admission::ask(PolkitQuestion::Asking asking)
{
    try {
        m_question = std::make_unique<PolkitQuestion>(
            m_bus, m_sender, m_request->launchPath, asking,
            [this](PolkitQuestion::Answer answer) { onAnswer(answer); });
    } catch (const std::system_error &) {
        refuse(Error::NotAuthorized, "polkit cannot be asked");
    }
}

void Admission::onAnswer(PolkitQuestion::Answer answer)
{
    if (answer == PolkitQuestion::Answer::Yes)
        conclude();
    else if (answer == PolkitQuestion::Answer::Challenge
             && std::exchange(m_personMayBeAsked, false))
        askPerson();
    else
        refuse(Error::NotAuthorized, "polkit says no, or nothing");
}

// The question leaves the screen when the caller leaves the bus.
void Admission::askPerson()
{
    const auto onGone = [](sd_bus_track *, void *self) {
        static_cast<Admission *>(self)->refuse(Error::NotAuthorized, "the caller has left");
        return 1;
    };
    sd_bus_track *track = nullptr;
    if (sd_bus_track_new(m_bus, &track, onGone, this) < 0) {
        refuse(Error::NotAuthorized, "the caller cannot be watched");
        return;
    }
    m_caller.reset(track);
    if (sd_bus_track_add_name(track, m_sender.c_str()) < 0)
        refuse(Error::NotAuthorized, "the caller has left");
    else
        ask(PolkitQuestion::Asking::APerson);
}

bool Admission::callerIsThere() const
{
    return userOf(m_bus, m_sender.c_str()) == m_user;
}

void Admission::conclude()
{
    if (!callerIsThere())
        refuse(Error::NotAuthorized, "the caller has left");
    else if (!isProgram(m_request->launchPath))
        refuse(Error::BadArguments, "no program");
    else
        std::exchange(m_decided, nullptr)(Authorised(*m_request, *m_user));
}

void Admission::refuse(Error error, std::string reason)
{
    m_caller.reset();
    m_question.reset();
    if (m_decided)
        std::exchange(m_decided, nullptr)(Refusal{error, std::move(reason)});
}

} // namespace velq::daemon
