#include "monitor/MenuInterface.h"

#include "common/Reachability.h"

namespace velq
{

bool MenuInterface::networkConnect()
{
    const auto internet = Reachability::reachabilityForInternetConnection();
    return internet != nullptr && internet->currentReachabilityStatus() == NetworkReachable;
}

} // namespace velq
