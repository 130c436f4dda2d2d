#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace velq::rtnetlink
{

/// An IPv4 or IPv6 address. `family` is AF_INET (4 bytes used), AF_INET6 (16 bytes) or AF_UNSPEC:
/// none.
struct Address {
    uint8_t family = 0;
    std::array<uint8_t, 16> bytes{};

    bool isSet() const { return family != 0; }
    size_t size() const;
    /// In numbers, as inet_ntop(3) writes it; empty when there is none.
    std::string text() const;
    bool operator==(const Address &) const = default;
};

} // namespace velq::rtnetlink
