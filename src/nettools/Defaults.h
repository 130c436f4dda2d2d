#pragma once

#include "nettools/lib/Tool.h"

namespace velq::nettools
{

/// `defaults`: reads, writes and deletes user settings, which are property lists in the home
/// folder, one a domain. Shows texts and numbers as they are, dictionaries and arrays in the old
/// style of property lists.
Outcome defaults(Arguments arguments, Output &output);

} // namespace velq::nettools
