#pragma once

#include "nettools/networkmanager/Bus.h"
#include "nettools/networksetup/Backend.h"

#include <string>

namespace velq::nettools
{

/// What went wrong on the bus, for a person.
std::string sentence(const BusError &error);

/// Does the work; what the bus says is thrown as the Refusal that says the same.
template <typename Work> auto told(Work work)
{
    try {
        return work();
    } catch (const BusError &error) {
        throw Refusal(sentence(error));
    }
}

} // namespace velq::nettools
