#pragma once

#include "platform/linux/rtnetlink/Socket.h"

#include <functional>

namespace velq::rtnetlink
{

/// Told of each record of a table; says whether it wants the rest.
///
/// The tables are read, never cached. Every function that takes a reader is synchronous, sends no
/// packet, and may be called from any thread with a socket of that thread's own; it says false when
/// the answer did not arrive whole. Constants named in the records are those of rtnetlink(7).
template <typename Record> using Reader = std::function<Socket::Visit(const Record &)>;

} // namespace velq::rtnetlink
