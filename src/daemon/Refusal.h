#pragma once

#include <string>

namespace velq::daemon
{

/// The ways in which a call can fail; each has one name on the bus.
enum class Error {
    NotAuthorized,
    BadArguments,
    Busy,
    Timeout,
    OutputTooLarge,
    SpawnFailed,
    ShuttingDown,
};

/// Why a call was not served. The reason is for the journal.
struct Refusal {
    Error error;
    std::string reason;
};

/// "NotAuthorized", …
const char *nameOf(Error error);

/// What the caller reads: the same words for all reasons, but for a command that did run or was
/// about to.
std::string messageOf(const Refusal &refusal);

} // namespace velq::daemon
