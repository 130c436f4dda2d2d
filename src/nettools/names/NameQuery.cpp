// Newer versions would have each call spelled anew; the old spelling is in all of them.
#define CARES_NO_DEPRECATED

#include "nettools/names/NameQuery.h"

#include <ares.h>
#include <arpa/inet.h>
#include <arpa/nameser.h>
#include <array>
#include <memory>
#include <netdb.h>
#include <span>
#include <string_view>
#include <sys/select.h>
#include <sys/time.h>

namespace velq::nettools
{

namespace
{

using Kind = NameAnswer::Kind;

// The second time it waits twice as long.
constexpr int patienceMs = 1600;
constexpr int tries = 2;

// RFC 1035, section 4.1.1.
constexpr size_t headerSize = 12;
constexpr uint8_t authoritativeBit = 0x04;
constexpr uint8_t codeBits = 0x0f;
constexpr std::array<std::string_view, 6> codes{"NOERROR",  "FORMERR", "SERVFAIL",
                                                "NXDOMAIN", "NOTIMP",  "REFUSED"};

struct Destroy {
    void operator()(ares_channeldata *channel) const noexcept { ares_destroy(channel); }
};
using Channel = std::unique_ptr<ares_channeldata, Destroy>;

struct FreeHost {
    void operator()(hostent *host) const noexcept { ares_free_hostent(host); }
};
using Host = std::unique_ptr<hostent, FreeHost>;

Channel openChannel(const std::string &server)
{
    ares_options options{};
    // An answer that says no is an answer, too.
    options.flags = ARES_FLAG_NOCHECKRESP | ARES_FLAG_NOSEARCH;
    options.timeout = patienceMs;
    options.tries = tries;
    ares_channel raw = nullptr;
    if (ares_init_options(&raw, &options, ARES_OPT_FLAGS | ARES_OPT_TIMEOUTMS | ARES_OPT_TRIES)
        != ARES_SUCCESS)
        return nullptr;
    Channel channel(raw);
    return ares_set_servers_csv(raw, server.c_str()) == ARES_SUCCESS ? std::move(channel) : nullptr;
}

std::string textOf(int family, const char *address)
{
    std::array<char, INET6_ADDRSTRLEN> text{};
    return inet_ntop(family, address, text.data(), text.size());
}

void addHost(NameAnswer &answer, const hostent &host)
{
    for (char **alias = host.h_aliases; *alias != nullptr; ++alias)
        answer.names.emplace_back(*alias);
    answer.names.emplace_back(host.h_name);
    for (char **address = host.h_addr_list; *address != nullptr; ++address)
        answer.addresses.push_back(textOf(host.h_addrtype, *address));
}

void readHost(NameAnswer &answer, std::span<const uint8_t> message, ns_type type)
{
    hostent *raw = nullptr;
    const auto size = static_cast<int>(message.size());
    if (type == ns_t_a)
        (void)ares_parse_a_reply(message.data(), size, &raw, nullptr, nullptr);
    else
        (void)ares_parse_aaaa_reply(message.data(), size, &raw, nullptr, nullptr);
    const Host host(raw);
    if (host)
        addHost(answer, *host);
    answer.kind = answer.addresses.empty() ? Kind::NoAddress : Kind::Found;
}

struct Asked {
    NameAnswer &answer;
    ns_type type;
};

void onAnswer(void *asked, int status, int, unsigned char *bytes, int size)
{
    auto &[answer, type] = *static_cast<Asked *>(asked);
    const std::span<const uint8_t> message(bytes, bytes != nullptr ? static_cast<size_t>(size) : 0);
    if (status == ARES_EBADNAME) {
        answer.kind = Kind::NoName;
    } else if (message.size() >= headerSize) {
        const size_t code = message[3] & codeBits;
        answer.authoritative = (message[2] & authoritativeBit) != 0;
        answer.kind = Kind::Failure;
        answer.failure = code < codes.size() ? codes.at(code) : "RESERVED";
        if (code == ns_r_noerror)
            readHost(answer, message, type);
    }
}

void runToTheEnd(ares_channeldata *channel)
{
    while (true) {
        fd_set readable;
        fd_set writable;
        FD_ZERO(&readable);
        FD_ZERO(&writable);
        const int count = ares_fds(channel, &readable, &writable);
        if (count == 0)
            return;
        timeval time{};
        (void)select(count, &readable, &writable, nullptr, ares_timeout(channel, nullptr, &time));
        ares_process(channel, &readable, &writable);
    }
}

} // namespace

NameAnswer lookUp(const std::string &host, const std::string &server)
{
    NameAnswer answer;
    answer.server = server;
    const Channel channel = openChannel(server);
    if (!channel)
        return answer;
    for (const ns_type type : {ns_t_a, ns_t_aaaa}) {
        Asked asked{answer, type};
        ares_query(channel.get(), host.c_str(), ns_c_in, type, onAnswer, &asked);
        runToTheEnd(channel.get());
        if (answer.kind != Kind::NoAddress)
            break;
    }
    return answer;
}

} // namespace velq::nettools
