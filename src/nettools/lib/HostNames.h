#pragma once

#include "platform/linux/rtnetlink/Address.h"

#include <optional>
#include <string>

namespace velq::nettools
{

/// Names of addresses, as the system's resolver knows them.
class HostNames
{
public:
    /// Blocks as long as the resolver does. When the resolver gets no answer from its server, it is
    /// not asked again: a dead server costs one time-out, not one for every host. Nothing when the
    /// address has no name, or none that can be found out now.
    std::optional<std::string> of(const rtnetlink::Address &address);

private:
    bool m_resolverAnswers = true;
};

} // namespace velq::nettools
