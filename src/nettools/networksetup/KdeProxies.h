#pragma once

#include "nettools/networksetup/DesktopProxies.h"

#include <memory>
#include <string>

namespace velq::nettools
{

/// KDE's file kioslaverc in $XDG_CONFIG_HOME (~/.config).
class KdeProxies : public DesktopProxies
{
public:
    KdeProxies();
    /// Null when there is no such file.
    static std::unique_ptr<KdeProxies> find();

    std::string name() const override { return "kde"; }
    bool has(ProxyKind kind) const override;
    std::string addressFor(ProxyKind kind, const std::string &server, uint16_t port) const override;
    /// No file is no proxies.
    ProxyState read() override;
    void write(const ProxyState &before, const ProxyState &after) override;

private:
    std::string m_path;
};

} // namespace velq::nettools
