#pragma once

#include <QLatin1String>

/// What we ask of the public internet, and where on it we lead people, each with the reason for its
/// value. Who builds the package sets others with -DVELQ_PROBE_HOST=... and so on.
///
/// A host that is asked must answer echo requests from everywhere, have done so for many years, and
/// belong to somebody who does not mind.
namespace velq::publichosts
{

#ifndef VELQ_PROBE_HOST
// The web host of the distribution that most of our users run or descend from; on a network of
// many places, so one of them is near. It has answered since 1996.
#define VELQ_PROBE_HOST "www.debian.org"
#endif

/// Asked by ping and for the way that leads to it.
inline constexpr QLatin1String probe{VELQ_PROBE_HOST};

#ifndef VELQ_NAME_SERVER_PROBE_HOST
// Not the probe's name, which a cache may know: this one is for a server to answer. It is the name
// of those who give out names, so there will be one as long as there are any.
#define VELQ_NAME_SERVER_PROBE_HOST "www.iana.org"
#endif

/// The name that the name servers are asked for.
inline constexpr QLatin1String nameServerProbe{VELQ_NAME_SERVER_PROBE_HOST};

#ifndef VELQ_FAQ_PAGE
// Where the same distribution's people answer questions: a page that lives, in many languages, and
// that helps with a router from any maker. Who ships us with a page of their own sets that.
#define VELQ_FAQ_PAGE "https://www.debian.org/support"
#endif

/// The page for a person whose router or provider is at fault.
inline constexpr QLatin1String faqPage{VELQ_FAQ_PAGE};

} // namespace velq::publichosts
