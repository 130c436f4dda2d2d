#pragma once

#include "nettools/lib/Kernel.h"
#include "nettools/networksetup/Backend.h"

namespace velq::nettools
{

/// The network as the kernel has it, where no network manager keeps settings: what is changed holds
/// until the next start. A service is enabled when its device is up. For what the kernel knows
/// nothing of, what is there is used: systemd-resolved or /etc/resolv.conf for DNS servers, a DHCP
/// client, systemd-networkd.
class KernelBackend : public Backend
{
public:
    explicit KernelBackend(KernelTables tables);

    const std::vector<Port> &ports() const override { return m_ports; }
    std::vector<Service> services() override;
    bool isEnabled(const Port &port) override;
    void setEnabled(const Port &port, bool enabled) override;
    ServiceInfo info(const Port &port) override;
    void setDhcp(const Port &port) override;
    std::vector<std::string> dnsServers(const Port &port) override;
    void setDnsServers(const Port &port, const std::vector<std::string> &servers) override;
    Mtu mtu(const Port &port) override;
    void setMtu(const Port &port, uint32_t mtu) override;
    void order(const std::vector<Port> &first) override;
    void restore(const Port &port) override;

private:
    const rtnetlink::Link &linkOf(const Port &port) const;

    KernelTables m_tables;
    std::vector<Port> m_ports;
};

/// Throws Refusal when the kernel does not answer.
std::unique_ptr<Backend> openKernel();

} // namespace velq::nettools
