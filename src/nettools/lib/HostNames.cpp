#include "nettools/lib/HostNames.h"

#include <array>
#include <cstring>
#include <netdb.h>
#include <netinet/in.h>

namespace velq::nettools
{

std::optional<std::string> HostNames::of(const rtnetlink::Address &address)
{
    if (!m_resolverAnswers || address.family != AF_INET)
        return std::nullopt;
    sockaddr_in where{};
    where.sin_family = AF_INET;
    std::memcpy(&where.sin_addr, address.bytes.data(), sizeof where.sin_addr);

    std::array<char, NI_MAXHOST> name{};
    const int result = getnameinfo(reinterpret_cast<const sockaddr *>(&where), sizeof where,
                                   name.data(), name.size(), nullptr, 0, NI_NAMEREQD);
    m_resolverAnswers = result != EAI_AGAIN;
    if (result != 0)
        return std::nullopt;
    return name.data();
}

} // namespace velq::nettools
