#pragma once

#include "nettools/lib/Tool.h"

namespace velq::nettools
{

/// ping [-c COUNT] [-D] [-s SIZE] HOST: asks a host for echoes by the system's own ping, and tells
/// of them as ping(8) of BSD systems does: a lost reply is put into words. -D forbids that packets
/// are taken to pieces on the way.
///
/// Ends with the system's ping's status.
Outcome ping(Arguments arguments, Output &output);

} // namespace velq::nettools
