#include "platform/linux/rtnetlink/Address.h"

#include <arpa/inet.h>
#include <sys/socket.h>

namespace velq::rtnetlink
{

size_t Address::size() const
{
    switch (family) {
    case AF_INET:
        return sizeof(in_addr);
    case AF_INET6:
        return sizeof(in6_addr);
    default:
        return 0;
    }
}

std::string Address::text() const
{
    std::array<char, INET6_ADDRSTRLEN> buffer{};
    if (!isSet() || inet_ntop(family, bytes.data(), buffer.data(), buffer.size()) == nullptr)
        return {};
    return buffer.data();
}

} // namespace velq::rtnetlink
