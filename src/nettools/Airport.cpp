#include "nettools/Airport.h"

#include "nettools/lib/Options.h"
#include "nettools/lib/Output.h"
#include "nettools/networkmanager/NetworkManager.h"
#include "nettools/networkmanager/Told.h"
#include "nettools/wifi/KernelWifi.h"
#include "nettools/wifi/ManagedWifi.h"
#include "nettools/wifi/WifiText.h"

namespace velq::nettools
{

namespace
{

// A radio that NetworkManager leaves to others is the kernel's to tell of.
std::optional<WifiState> readWifi()
{
    const auto manager = told(&NetworkManager::connect);
    auto wifi = manager ? managedWifi(manager->state()) : std::nullopt;
    return wifi ? wifi : kernelWifi();
}

} // namespace

Outcome airport(Arguments arguments, Output &output)
{
    const Options options = readOptions(arguments, "I");
    if (!options.complaint.empty())
        return Outcome::misused(options.complaint);
    if (!options.has('I'))
        return Outcome::misused("only what Wi-Fi does now can be shown");
    try {
        const auto wifi = readWifi();
        if (!wifi)
            return Outcome::failed("this computer has no Wi-Fi");
        appendWifi(output.text(), *wifi);
    } catch (const Refusal &refusal) {
        return Outcome::failed(refusal.what());
    }
    return Outcome::done();
}

} // namespace velq::nettools
