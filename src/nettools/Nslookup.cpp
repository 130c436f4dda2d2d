#include "nettools/Nslookup.h"

#include "nettools/lib/Output.h"
#include "nettools/lib/ResolverFile.h"
#include "nettools/names/AnswerText.h"
#include "nettools/names/NameQuery.h"

#include <algorithm>
#include <string>
#include <vector>

namespace velq::nettools
{

namespace
{

// As many as the system's own resolver asks.
constexpr size_t mostServers = 3;

// systemd-resolved speaks for other servers, and its word is no proof that one of them lives.
bool isStub(const std::string &server)
{
    return server == "127.0.0.53" || server == "127.0.0.54";
}

std::vector<std::string> serversIn(const char *file)
{
    auto servers = readNameServers(file);
    if (servers.size() > mostServers)
        servers.resize(mostServers);
    return servers;
}

// The system's resolver, told of no server, looks for one on its own computer.
std::vector<std::string> configuredServers()
{
    auto servers = serversIn(resolverFile);
    if (servers.empty())
        servers.emplace_back("127.0.0.1");
    return servers;
}

bool knows(const NameAnswer &answer)
{
    return answer.kind == NameAnswer::Kind::Found || answer.kind == NameAnswer::Kind::NoAddress
        || answer.failure == "NXDOMAIN";
}

// The first that knows, else what the first said that said anything.
NameAnswer askOneOf(const std::vector<std::string> &servers, const std::string &host)
{
    NameAnswer best;
    for (const std::string &server : servers) {
        NameAnswer answer = lookUp(host, server);
        if (knows(answer) || answer.kind == NameAnswer::Kind::NoName)
            return answer;
        if (best.kind == NameAnswer::Kind::Silence)
            best = std::move(answer);
    }
    return best;
}

// A stub fails the same whether the servers behind it are dead or do not know what to say.
NameAnswer ask(const std::string &host)
{
    const auto servers = configuredServers();
    NameAnswer answer = askOneOf(servers, host);
    if (!knows(answer) && std::ranges::all_of(servers, isStub))
        return askOneOf(serversIn(resolvedServersFile), host);
    return answer;
}

} // namespace

Outcome nslookup(Arguments arguments, Output &output)
{
    if (arguments.empty())
        return Outcome::misused("look up which host?");
    if (arguments.size() > 1)
        return Outcome::misused(std::string("unexpected argument ").append(arguments[1]));
    if (arguments[0].starts_with('-'))
        return Outcome::misused(std::string("unknown option ").append(arguments[0]));
    const std::string host(arguments[0]);
    const NameAnswer answer = ask(host);
    if (answer.kind == NameAnswer::Kind::NoName)
        return Outcome::failed("'" + host + "' is not the name of a host");
    appendAnswer(output.text(), host, answer);
    return {answer.kind == NameAnswer::Kind::Silence || answer.kind == NameAnswer::Kind::Failure
                ? Outcome::failure
                : 0,
            {}};
}

} // namespace velq::nettools
