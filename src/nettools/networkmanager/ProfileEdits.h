#pragma once

#include "nettools/networkmanager/Settings.h"
#include "nettools/networkmanager/State.h"
#include "nettools/networksetup/ServiceText.h"

#include <cstdint>
#include <string>
#include <vector>

namespace velq::nettools
{

/// What settings of a profile mean, and the edits that make them mean something else. Settings are
/// the map of maps that a profile is.

ServiceInfo::Method ipv4Method(const Value &settings);
ServiceInfo::Method ipv6Method(const Value &settings);

/// IPv4 by DHCP, without the addresses and the gateway that were set by hand.
std::vector<Edit> dhcpEdits();

std::vector<std::string> dnsServersIn(const Value &settings);
/// In the place of those that come with a lease; none brings those back. Texts that are no
/// addresses are left out.
std::vector<Edit> dnsEdits(const std::vector<std::string> &servers);

/// 0 when the device's own is used.
uint32_t mtuIn(const Value &settings, const Device &device);
std::vector<Edit> mtuEdits(const Device &device, uint32_t mtu);

/// Of the IPv4 routes: the lower one is preferred.
int64_t metricIn(const Value &settings, const Device &device);
std::vector<Edit> metricEdits(int64_t metric);

std::vector<Edit> autoconnectEdits(bool on);

} // namespace velq::nettools
