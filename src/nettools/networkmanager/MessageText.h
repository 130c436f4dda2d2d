#pragma once

#include "nettools/networkmanager/Bus.h"

#include <string>
#include <string_view>

namespace velq::nettools
{

/// What a message holds, as lines of text: what containers are opened with and closed by, and their
/// values, each behind the letter of its D-Bus type.

/// From the beginning of the message. Throws BusError.
std::string textOf(const Message &message);

/// The other way. False when the text is not whole or was not written by textOf(); what has been
/// appended until then must be thrown away.
bool appendText(const Message &to, std::string_view text);

} // namespace velq::nettools
