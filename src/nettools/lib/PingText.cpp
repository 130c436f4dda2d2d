#include "nettools/lib/PingText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <optional>

namespace velq::nettools
{

namespace
{

// The text between two others, the first of which may be empty and stands at the beginning.
std::optional<std::string_view> between(std::string_view text, std::string_view before,
                                        std::string_view after)
{
    const size_t begin = text.find(before);
    if (begin == std::string_view::npos)
        return std::nullopt;
    const size_t from = begin + before.size();
    const size_t end = after.empty() ? text.size() : text.find(after, from);
    if (end == std::string_view::npos)
        return std::nullopt;
    return text.substr(from, end - from);
}

// "icmp_seq=7" counts from 1, and from 0 again after 65,535.
std::string sequenceBefore(std::string_view number)
{
    unsigned value = 0;
    std::from_chars(number.data(), number.data() + number.size(), value);
    return std::to_string((value + 65535) % 65536);
}

// PING probe.test (192.168.77.1) 56(84) bytes of data.
std::string heading(std::string_view line)
{
    const auto size = between(line, ") ", "(");
    if (!size)
        return std::string(line);
    return std::string(line.substr(0, line.find(") ") + 1))
        .append(": ")
        .append(*size)
        .append(" data bytes");
}

// 64 bytes from 192.168.77.1: icmp_seq=1 ttl=64 time=0.045 ms
std::string echo(std::string_view line)
{
    const auto number = between(line, "icmp_seq=", " ");
    if (!number)
        return std::string(line);
    const size_t at = line.find("icmp_seq=") + std::string_view("icmp_seq=").size();
    return std::string(line.substr(0, at))
        .append(sequenceBefore(*number))
        .append(line.substr(at + number->size()));
}

// From 192.168.77.2 icmp_seq=1 Destination Host Unreachable
std::string refusal(std::string_view line)
{
    const auto from = between(line, "From ", " icmp_seq=");
    const auto reason = between(line, "icmp_seq=", "");
    const size_t blank = reason ? reason->find(' ') : std::string_view::npos;
    if (!from || blank == std::string_view::npos)
        return std::string(line);
    return std::string("92 bytes from ")
        .append(*from)
        .append(": ")
        .append(reason->substr(blank + 1));
}

// 2 packets transmitted, 1 received, +1 errors, 50% packet loss, time 1001ms
std::string losses(std::string_view line)
{
    const auto received = between(line, "transmitted, ", " received");
    const size_t percent = line.find("% packet loss");
    const size_t number = line.rfind(' ', percent);
    if (!received || percent == std::string_view::npos || number == std::string_view::npos)
        return std::string(line);
    const std::string share(line.substr(number + 1, percent - number - 1));
    std::array<char, 32> rounded{};
    (void)std::snprintf(rounded.data(), rounded.size(), "%.1f",
                        std::strtod(share.c_str(), nullptr));
    return std::string(line.substr(0, line.find(',') + 2))
        .append(*received)
        .append(" packets received, ")
        .append(rounded.data())
        .append("% packet loss");
}

// rtt min/avg/max/mdev = 0.045/0.052/0.060/0.007 ms
std::string times(std::string_view line)
{
    const auto figures = between(line, " = ", " ms");
    return figures ? std::string("round-trip min/avg/max/stddev = ").append(*figures).append(" ms")
                   : std::string(line);
}

} // namespace

std::string pingLine(std::string_view line)
{
    if (line.starts_with("PING "))
        return heading(line);
    if (const auto number = between(line, "no answer yet for icmp_seq=", ""))
        return "Request timeout for icmp_seq " + sequenceBefore(*number);
    if (line.starts_with("From "))
        return refusal(line);
    if (line.find(" bytes from ") != std::string_view::npos)
        return echo(line);
    if (line.find(" packets transmitted, ") != std::string_view::npos)
        return losses(line);
    // How many echoes were on their way at once; nobody else tells.
    if (line.starts_with("pipe "))
        return {};
    if (line.starts_with("rtt "))
        return times(line);
    return std::string(line);
}

} // namespace velq::nettools
