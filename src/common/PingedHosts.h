#pragma once

#include <QLatin1String>

#include <array>

/// The hosts whose silence is laid at the name servers' door. The same holds for them as for the
/// probe of PublicHosts.h: they answer echo requests from everywhere, have done so for many years,
/// and belong to somebody who does not mind. Who builds the package sets others with
/// -DVELQ_PINGED_HOST_1=... and so on.
namespace velq::publichosts
{

#ifndef VELQ_PINGED_HOST_1
// The probe's own choice: where all is well this one costs no more than another.
#define VELQ_PINGED_HOST_1 "www.debian.org"
#endif

#ifndef VELQ_PINGED_HOST_2
// In another network than the first, and served from many places too.
#define VELQ_PINGED_HOST_2 "www.kernel.org"
#endif

#ifndef VELQ_PINGED_HOST_3
// An operator with machines of its own on several continents, and no part of the other two.
#define VELQ_PINGED_HOST_3 "www.wikipedia.org"
#endif

/// In the order in which they are asked.
inline constexpr std::array pinged{QLatin1String(VELQ_PINGED_HOST_1),
                                   QLatin1String(VELQ_PINGED_HOST_2),
                                   QLatin1String(VELQ_PINGED_HOST_3)};

} // namespace velq::publichosts
