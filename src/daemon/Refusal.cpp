#include "daemon/Refusal.h"

namespace velq::daemon
{

const char *nameOf(Error error)
{
    switch (error) {
    case Error::NotAuthorized:
        return "NotAuthorized";
    case Error::BadArguments:
        return "BadArguments";
    case Error::Busy:
        return "Busy";
    case Error::Timeout:
        return "Timeout";
    case Error::OutputTooLarge:
        return "OutputTooLarge";
    case Error::SpawnFailed:
        return "SpawnFailed";
    case Error::ShuttingDown:
        return "ShuttingDown";
    }
    return "NotAuthorized";
}

std::string messageOf(const Refusal &refusal)
{
    switch (refusal.error) {
    case Error::NotAuthorized:
        return "Not authorized";
    case Error::BadArguments:
        return "The launch path or the arguments cannot be run";
    case Error::Busy:
        return "Too many commands at once";
    case Error::Timeout:
        return "The command took too long and was ended";
    case Error::OutputTooLarge:
        return "The command printed too much and was ended";
    case Error::SpawnFailed:
        return "The command failed: " + refusal.reason;
    case Error::ShuttingDown:
        return "The service is shutting down";
    }
    return "";
}

} // namespace velq::daemon
