#pragma once

#include "daemon/Request.h"

#include <sys/types.h>
#include <utility>

namespace velq::daemon
{

/// A request that has passed every gate. Only Admission makes one, and what starts a command
/// takes nothing else: a check that was forgotten does not compile.
class Authorised
{
public:
    Authorised(Authorised &&) noexcept = default;
    Authorised &operator=(Authorised &&) noexcept = default;

    const Request &request() const { return m_request; }
    /// Who asked for it.
    uid_t user() const { return m_user; }

private:
    friend class Admission;
    friend struct AuthorisedInTests;
    Authorised(Request request, uid_t user)
        : m_request(std::move(request))
        , m_user(user)
    {
    }

    Request m_request;
    uid_t m_user;
};

} // namespace velq::daemon
