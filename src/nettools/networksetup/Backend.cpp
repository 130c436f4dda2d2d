#include "nettools/networksetup/Backend.h"

#include "nettools/networkmanager/NetworkManagerBackend.h"
#include "nettools/networksetup/KernelBackend.h"

namespace velq::nettools
{

std::unique_ptr<Backend> openBackend()
{
    auto backend = openNetworkManager();
    return backend ? std::move(backend) : openKernel();
}

} // namespace velq::nettools
