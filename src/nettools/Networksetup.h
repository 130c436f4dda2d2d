#pragma once

#include "nettools/lib/Tool.h"

namespace velq::nettools
{

/// networksetup FORM [ARGUMENT...]: shows and changes network services as networksetup(8) does,
/// through NetworkManager or else the kernel. The forms are in networksetup/Forms.h.
Outcome networksetup(Arguments arguments, Output &output);

} // namespace velq::nettools
