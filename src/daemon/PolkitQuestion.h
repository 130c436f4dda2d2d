#pragma once

#include "daemon/Handles.h"

#include <functional>
#include <string>

namespace velq::daemon
{

/// One question to polkit: may the owner of this unique bus name run commands as root? From
/// construction until it is answered; destroyed earlier, it is withdrawn.
class PolkitQuestion
{
public:
    enum class Answer {
        No, ///< also when polkit is missing, slow, or not understood
        Yes,
        Challenge, ///< yes, if a person proves to be one who may
    };
    using Answered = std::function<void(Answer)>;

    enum class Asking { PolkitAlone, APerson };

    /// `answered` is called once, by the event loop; a question that cannot be sent throws
    /// std::system_error. `program` is for polkit's rules to read.
    PolkitQuestion(sd_bus *bus, const std::string &busName, const std::string &program,
                   Asking asking, Answered answered);
    PolkitQuestion(const PolkitQuestion &) = delete;
    PolkitQuestion &operator=(const PolkitQuestion &) = delete;
    ~PolkitQuestion();

private:
    void onReply(sd_bus_message *reply);

    sd_bus *m_bus;
    std::string m_cancellation; ///< empty when there is nothing to cancel
    Answered m_answered;
    Slot m_slot;
};

} // namespace velq::daemon
