#pragma once

#include "platform/linux/rtnetlink/Links.h"
#include "platform/linux/rtnetlink/Routes.h"

namespace velq
{

/// Whether what is sent along the route goes out: one of its links, at least, is up and has a
/// carrier. A tunnel carries nothing by itself: it counts only while some other link carries. Any
/// thread.
bool isUsable(const rtnetlink::Route &route);

/// Up, with a carrier, and with a wire or a radio behind it: no loopback, no tunnel, and none of
/// the bridges and wires that connect containers.
bool carriesByItself(const rtnetlink::Link &link);

} // namespace velq
