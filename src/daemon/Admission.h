#pragma once

#include "daemon/Authorised.h"
#include "daemon/Grants.h"
#include "daemon/Handles.h"
#include "daemon/PolkitQuestion.h"
#include "daemon/Refusal.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <sys/types.h>
#include <variant>

namespace velq::daemon
{

/// The user behind a unique bus name, as the bus itself vouches for it; nothing when it does not.
std::optional<uid_t> userOf(sd_bus *bus, const char *uniqueName);

/// One call on its way through the gates, from begin() to a decision. Anything but a clear yes at
/// any of them is a no.
class Admission
{
public:
    using Decision = std::variant<Authorised, Refusal>;
    using Decided = std::function<void(Decision)>;
    /// What speaks against a step for that user; nothing if nothing does.
    using Objection = std::function<std::optional<Refusal>(uid_t)>;

    /// Keeps `message`, which is a method call, only to learn who sent it.
    Admission(sd_bus *bus, const Grants &grants, sd_bus_message *message);
    Admission(const Admission &) = delete;
    Admission &operator=(const Admission &) = delete;
    ~Admission() = default;

    /// `toAsking` is about a question to polkit, and is asked once, by now, of a user with a grant.
    /// `decided` is called once, by now or by the event loop.
    void begin(const Objection &toAsking, Decided decided);

    const std::string &sender() const { return m_sender; }
    const std::optional<Request> &request() const { return m_request; }
    std::optional<uid_t> user() const { return m_user; }
    /// Whether the sender, once known, is still on the bus.
    bool callerIsThere() const;

private:
    std::optional<Refusal> objection(const Objection &toAsking);
    void ask(PolkitQuestion::Asking asking);
    void onAnswer(PolkitQuestion::Answer answer);
    void askPerson();
    void conclude();
    void refuse(Error error, std::string reason);

    sd_bus *m_bus;
    const Grants &m_grants;
    std::string m_sender;
    std::optional<Request> m_request;
    bool m_personMayBeAsked;
    std::optional<uid_t> m_user;
    Decided m_decided;
    std::unique_ptr<PolkitQuestion> m_question;
    Track m_caller; ///< while a person is asked
};

} // namespace velq::daemon
