#include "nettools/networksetup/Commands.h"

#include "nettools/lib/Output.h"
#include "nettools/networksetup/Backend.h"
#include "nettools/networksetup/ProxyCommands.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <charconv>
#include <optional>

namespace velq::nettools
{

namespace
{

struct Call {
    Backend &backend;
    Arguments arguments;
    std::string &out;
};

const Port &named(const Backend &backend, std::string_view name)
{
    const Port *port = portNamed(backend.ports(), name);
    if (port == nullptr)
        throw Refusal(std::string(name).append(" is not a recognized network service"));
    return *port;
}

const Port &subject(const Call &call)
{
    return named(call.backend, call.arguments[0]);
}

// The loopback is listed for those who read lists; it has nothing to set.
const Port &changeable(const Backend &backend, std::string_view name)
{
    const Port &port = named(backend, name);
    if (port.kind == Port::Kind::Loopback)
        throw Refusal(port.name + " has no settings");
    return port;
}

std::string addressFrom(std::string_view word)
{
    std::string text(word);
    std::array<unsigned char, sizeof(in6_addr)> address{};
    if (inet_pton(AF_INET, text.c_str(), address.data()) != 1
        && inet_pton(AF_INET6, text.c_str(), address.data()) != 1)
        throw Misuse("'" + text + "' is not an IP address");
    return text;
}

uint32_t mtuFrom(std::string_view word)
{
    // The smallest that IPv4 can live with, and the largest that its packets can have.
    constexpr uint32_t smallest = 68;
    constexpr uint32_t largest = 65535;
    uint32_t mtu = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), mtu);
    if (error != std::errc() || end != word.data() + word.size() || mtu < smallest || mtu > largest)
        throw Misuse("'" + std::string(word) + "' is not a number from 68 to 65535");
    return mtu;
}

void setEnabled(const Call &call)
{
    const bool on = switchFrom(call.arguments[1]);
    const Port &port = subject(call);
    if (port.kind != Port::Kind::Loopback || !on)
        call.backend.setEnabled(changeable(call.backend, port.name), on);
}

void setDnsServers(const Call &call)
{
    const Arguments words = call.arguments.subspan(1);
    std::vector<std::string> servers;
    if (words.size() != 1 || (words[0] != "empty" && words[0] != "Empty"))
        std::ranges::transform(words, std::back_inserter(servers), addressFrom);
    call.backend.setDnsServers(changeable(call.backend, call.arguments[0]), servers);
}

void order(const Call &call)
{
    std::vector<Port> first;
    for (const std::string_view name : call.arguments) {
        const Port &port = named(call.backend, name);
        const bool again = std::ranges::find(first, port.device, &Port::device) != first.end();
        if (port.kind != Port::Kind::Loopback && !again)
            first.push_back(port);
    }
    call.backend.order(first);
}

struct Command {
    std::string_view form;
    void (*run)(const Call &call);
};

constexpr std::array commands = std::to_array<Command>({
    {"-listallhardwareports",
     [](const Call &call) {
         appendHardwarePorts(call.out, call.backend.ports());
     }},
    {"-listallnetworkservices",
     [](const Call &call) {
         appendServices(call.out, call.backend.services());
     }},
    {"-listnetworkserviceorder",
     [](const Call &call) {
         appendServiceOrder(call.out, call.backend.services());
     }},
    {"-getnetworkserviceenabled",
     [](const Call &call) {
         appendEnabled(call.out, call.backend.isEnabled(subject(call)));
     }},
    {"-setnetworkserviceenabled", setEnabled},
    {"-getinfo",
     [](const Call &call) {
         appendInfo(call.out, subject(call), call.backend.info(subject(call)));
     }},
    {"-setdhcp",
     [](const Call &call) {
         call.backend.setDhcp(changeable(call.backend, call.arguments[0]));
     }},
    {"-getdnsservers",
     [](const Call &call) {
         appendDnsServers(call.out, subject(call).name, call.backend.dnsServers(subject(call)));
     }},
    {"-setdnsservers", setDnsServers},
    {"-ordernetworkservices", order},
    {"-getMTU",
     [](const Call &call) {
         appendMtu(call.out, call.backend.mtu(subject(call)));
     }},
    {"-setMTU",
     [](const Call &call) {
         const uint32_t mtu = mtuFrom(call.arguments[1]);
         call.backend.setMtu(changeable(call.backend, call.arguments[0]), mtu);
     }},
    {"-restore",
     [](const Call &call) {
         call.backend.restore(changeable(call.backend, call.arguments[0]));
     }},
});

} // namespace

bool switchFrom(std::string_view word)
{
    if (word != "on" && word != "off")
        throw Misuse("'" + std::string(word) + "' is neither on nor off");
    return word == "on";
}

void perform(std::string_view form, Arguments arguments, Output &output)
{
    auto backend = openBackend();
    const auto *command = std::ranges::find(commands, form, &Command::form);
    if (command != commands.end()) {
        command->run({*backend, arguments, output.text()});
        return;
    }
    (void)named(*backend, arguments[0]);
    // Root's connections are not for the process that may become a person's now.
    backend.reset();
    performOnProxy(form, arguments.subspan(1), output.text());
}

} // namespace velq::nettools
