#pragma once

#include <cstdint>
#include <optional>

namespace velq
{

/// Whether a default route of the family (AF_INET, AF_INET6) leads out now: one that is usable,
/// in the main table or in one that a rule leads to, and that no better route of its table refuses.
/// For IPv6 the machine must also have an address that is good beyond its link. Nothing when the
/// kernel does not answer. Any thread.
std::optional<bool> defaultRouteLeadsOut(uint8_t family);

} // namespace velq
