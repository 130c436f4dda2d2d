#pragma once

#include <string>
#include <sys/types.h>

namespace velq::daemon
{

/// Whom an administrator has allowed to call: a file etc/velq/authorized.d/UID each, with one line
/// "UID NAME". The name must still be that user's: numbers are given away again. Read anew for
/// every call. What anybody but `owner` could have written is no grant.
class Grants
{
public:
    /// The grants below the folder `root`, which belongs to `owner`, as everything on the way.
    explicit Grants(std::string root = "/", uid_t owner = 0);

    /// Empty when `uid` has a grant; else what is wrong with it, for the journal.
    std::string objectionTo(uid_t uid) const;

private:
    std::string m_root;
    uid_t m_owner;
};

} // namespace velq::daemon
