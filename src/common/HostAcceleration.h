#pragma once

#include <QLatin1String>

#include <algorithm>
#include <string_view>

/// What the acceleration of hosts writes into the system's hosts file. Who builds the package for a
/// network that has accelerators sets them with -DVELQ_ACCELERATED_DOMAIN=... and so on.
///
/// All three stand, unquoted, in command lines that root runs.
namespace velq::hostacceleration
{

// Nobody's accelerators are ours to give away, and a wrong address in the hosts file breaks
// somebody's line. These belong to nobody for good: the name to examples (RFC 2606), the addresses
// to documentation (RFC 5737). Whoever gets these lines loses nothing by them.
#ifndef VELQ_ACCELERATED_DOMAIN
#define VELQ_ACCELERATED_DOMAIN "accelerated.velq.example"
#endif
#ifndef VELQ_ACCELERATED_ADDRESS_1
#define VELQ_ACCELERATED_ADDRESS_1 "192.0.2.10"
#endif
#ifndef VELQ_ACCELERATED_ADDRESS_2
#define VELQ_ACCELERATED_ADDRESS_2 "198.51.100.10"
#endif

/// The domain alone tells whether a hosts file is accelerated.
inline constexpr QLatin1String domain{VELQ_ACCELERATED_DOMAIN};

/// The lines, without a line feed at the end.
inline constexpr QLatin1String lines{VELQ_ACCELERATED_ADDRESS_1 "  " VELQ_ACCELERATED_DOMAIN "\n" //
                                     VELQ_ACCELERATED_ADDRESS_2 " " VELQ_ACCELERATED_DOMAIN};

static_assert(
    std::ranges::all_of(std::string_view(VELQ_ACCELERATED_DOMAIN VELQ_ACCELERATED_ADDRESS_1
                                             VELQ_ACCELERATED_ADDRESS_2),
                        [](char each) {
                            return (each >= 'a' && each <= 'z') || (each >= 'A' && each <= 'Z')
                                || (each >= '0' && each <= '9') || each == '.' || each == '-';
                        }),
    "a domain and addresses are letters, digits, dots and hyphens");

} // namespace velq::hostacceleration
