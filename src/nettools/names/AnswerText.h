#pragma once

#include "nettools/names/NameQuery.h"

#include <string>

namespace velq::nettools
{

/// Tells of an answer as nslookup(1) does: who was asked, then what was said; or that no server
/// could be reached.
void appendAnswer(std::string &out, const std::string &host, const NameAnswer &answer);

} // namespace velq::nettools
