#include "nettools/names/AnswerText.h"

namespace velq::nettools
{

namespace
{

void appendFound(std::string &out, const NameAnswer &answer)
{
    for (size_t at = 0; at + 1 < answer.names.size(); ++at)
        out.append(answer.names[at])
            .append("\tcanonical name = ")
            .append(answer.names[at + 1])
            .append(".\n");
    for (const std::string &address : answer.addresses)
        out.append("Name:\t")
            .append(answer.names.back())
            .append("\nAddress: ")
            .append(address)
            .append("\n");
}

} // namespace

void appendAnswer(std::string &out, const std::string &host, const NameAnswer &answer)
{
    using Kind = NameAnswer::Kind;
    if (answer.kind == Kind::Silence) {
        out += ";; connection timed out; no servers could be reached\n\n";
        return;
    }
    out.append("Server:\t\t").append(answer.server);
    out.append("\nAddress:\t").append(answer.server).append("#53\n\n");
    if (answer.kind == Kind::Failure) {
        out.append("** server can't find ").append(host).append(": ").append(answer.failure);
        out += "\n\n";
        return;
    }
    if (!answer.authoritative)
        out += "Non-authoritative answer:\n";
    if (answer.kind == Kind::Found)
        appendFound(out, answer);
    else
        out.append("*** Can't find ").append(host).append(": No answer\n");
    out += '\n';
}

} // namespace velq::nettools
