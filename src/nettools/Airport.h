#pragma once

#include "nettools/lib/Tool.h"

namespace velq::nettools
{

/// airport -I: what the computer's Wi-Fi does now, as the tool of that name tells it. Of several
/// radios the one in use.
///
/// A computer without Wi-Fi has nothing to tell: that is a failure, and nothing is on standard
/// output, as where the tool itself is missing.
Outcome airport(Arguments arguments, Output &output);

} // namespace velq::nettools
