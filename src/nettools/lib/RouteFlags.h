#pragma once

#include <cstdint>
#include <string>

namespace velq::nettools
{

/// What the letters of the column "Flags" mean, in the order in which they are printed; from public
/// documentation of the BSD netstat(1).
namespace flag
{

inline constexpr uint32_t up = 1U << 0;         ///< U usable
inline constexpr uint32_t gateway = 1U << 1;    ///< G through another host
inline constexpr uint32_t host = 1U << 2;       ///< H to one host
inline constexpr uint32_t reject = 1U << 3;     ///< R refused, and the sender told
inline constexpr uint32_t dynamic = 1U << 4;    ///< D set by a redirect
inline constexpr uint32_t multicast = 1U << 5;  ///< m to a group
inline constexpr uint32_t cloning = 1U << 6;    ///< C hosts get entries of their own when used
inline constexpr uint32_t linkInfo = 1U << 7;   ///< L leads to a hardware address
inline constexpr uint32_t configured = 1U << 8; ///< S set by the system's configuration or by hand
inline constexpr uint32_t protocol1 = 1U << 9;  ///< 1 set by a routing daemon
inline constexpr uint32_t wasCloned = 1U << 10; ///< W came out of a cloning route
inline constexpr uint32_t protocolCloning = 1U << 11; ///< c protocols make entries of it when used
inline constexpr uint32_t blackhole = 1U << 12;       ///< B dropped without a word
inline constexpr uint32_t broadcast = 1U << 13;       ///< b to all hosts of a network
inline constexpr uint32_t interfaceScope = 1U << 14;  ///< I good on this interface alone
inline constexpr uint32_t interfaceReference = 1U << 15; ///< i other routes lean on it
inline constexpr uint32_t router = 1U << 16;             ///< r a default router
inline constexpr uint32_t global = 1U << 17;             ///< g good for any address

} // namespace flag

/// The letters of `flags`, an or of the flags above.
std::string flagLetters(uint32_t flags);

} // namespace velq::nettools
