#pragma once

#include <string>
#include <vector>

namespace velq::nettools
{

/// What became of asking for a host's address.
struct NameAnswer {
    enum class Kind {
        Silence,   ///< no server has answered
        Found,     ///< `addresses` are its
        NoAddress, ///< there is such a name, but it has none
        Failure,   ///< a server has answered with an error
        NoName,    ///< nobody was asked: the name is no name
    };

    Kind kind = Kind::Silence;
    std::string server;  ///< who has answered, as an IP address
    std::string failure; ///< "NXDOMAIN", "SERVFAIL", …: the error, as servers' manuals write it
    bool authoritative = false;
    std::vector<std::string> names; ///< what the host is called, each an alias of the next
    std::vector<std::string> addresses;
};

/// Asks one server, an IP address, for the IPv4 addresses of a host, and for its IPv6 ones when it
/// has no others. The name is taken as it stands. Blocks five seconds at most; no other server and
/// no file of this computer is consulted.
NameAnswer lookUp(const std::string &host, const std::string &server);

} // namespace velq::nettools
