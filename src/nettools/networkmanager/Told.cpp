#include "nettools/networkmanager/Told.h"

namespace velq::nettools
{

std::string sentence(const BusError &error)
{
    if (error.isDenial())
        return "you have not the right to change the network";
    if (error.isAbsence())
        return "NetworkManager has stopped, or answers no more";
    return std::string("NetworkManager refuses: ") + error.what();
}

} // namespace velq::nettools
