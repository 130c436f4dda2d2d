#pragma once

#include "daemon/Journal.h"
#include "daemon/Refusal.h"
#include "daemon/Request.h"
#include "daemon/TokenBucket.h"

#include <chrono>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <sys/types.h>

namespace velq::daemon
{

/// The journal's account of the calls: one record each, but of a user's failed ones so many a
/// second only, lest a stranger fills the disk. The next record says how many are missing.
class Audit
{
public:
    struct Entry {
        std::string sender;
        std::optional<uid_t> user;
        std::optional<Request> request; ///< absent when it was malformed
        std::optional<Refusal> failure; ///< absent when the call was served
        std::chrono::microseconds took{};
        size_t bytes = 0;      ///< of the reply's text
        std::string complaint; ///< what the command printed on standard error
    };

    explicit Audit(Journal journal)
        : m_journal(std::move(journal))
    {
    }

    void write(const Entry &entry);

private:
    bool isOneTooMany(const Entry &entry);

    Journal m_journal;
    std::map<std::optional<uid_t>, TokenBucket> m_failures;
    size_t m_missing = 0;
};

} // namespace velq::daemon
