#include "nettools/Ifconfig.h"

#include "nettools/lib/InterfaceText.h"
#include "nettools/lib/Kernel.h"
#include "nettools/lib/Output.h"

#include <cerrno>
#include <cstring>

namespace velq::nettools
{

namespace
{

Outcome showAll(Output &output)
{
    const auto tables = readInterfaces();
    if (!tables)
        return Outcome::failed(std::string("cannot read the interfaces: ") + std::strerror(errno));
    for (const rtnetlink::Link &link : tables->links)
        appendInterface(output.text(), link, tables->addresses);
    return Outcome::done();
}

Outcome noSuchInterface(std::string_view name)
{
    return Outcome::failed(
        std::string("interface ").append(name).append(" does not exist; ifconfig -a shows all"));
}

Outcome showOne(std::string_view name, Output &output)
{
    const auto tables = readInterfaces();
    if (!tables)
        return Outcome::failed(std::string("cannot read the interfaces: ") + std::strerror(errno));
    const rtnetlink::Link *link = tables->linkNamed(name);
    if (link == nullptr)
        return noSuchInterface(name);
    appendInterface(output.text(), *link, tables->addresses);
    return Outcome::done();
}

Outcome switchOne(std::string_view name, bool up)
{
    auto socket = rtnetlink::Socket::open();
    const auto link = socket ? rtnetlink::linkNamed(*socket, name) : std::nullopt;
    if (!link)
        return noSuchInterface(name);
    if (rtnetlink::setLinkUp(*socket, link->index, up))
        return Outcome::done();
    return Outcome::failed(std::string("cannot switch ")
                               .append(name)
                               .append(up ? " on: " : " off: ")
                               .append(std::strerror(errno)));
}

} // namespace

Outcome ifconfig(Arguments arguments, Output &output)
{
    if (arguments.empty() || (arguments.size() == 1 && arguments[0] == "-a"))
        return showAll(output);
    if (arguments[0].starts_with('-'))
        return Outcome::misused(std::string("unknown option ").append(arguments[0]));
    if (arguments.size() == 1)
        return showOne(arguments[0], output);
    if (arguments.size() == 2 && (arguments[1] == "up" || arguments[1] == "down"))
        return switchOne(arguments[0], arguments[1] == "up");
    return Outcome::misused(R"(an interface can be shown, or switched "up" or "down")");
}

} // namespace velq::nettools
