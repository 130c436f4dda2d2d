#pragma once

#include "nettools/lib/Tool.h"

#include <string>
#include <string_view>

namespace velq::nettools
{

/// Does what a form about proxies is for; `arguments` are those behind the service's name. Throws
/// Refusal and Misuse.
void performOnProxy(std::string_view form, Arguments arguments, std::string &out);

} // namespace velq::nettools
