#pragma once

#include "nettools/networksetup/DesktopProxies.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace velq::nettools
{

/// The settings org.gnome.system.proxy, which GNOME and its relatives share, by way of
/// gsettings(1).
class GnomeProxies : public DesktopProxies
{
public:
    /// Null when there are no such settings here.
    static std::unique_ptr<GnomeProxies> find();

    std::string name() const override { return "gnome"; }
    bool has(ProxyKind kind) const override;
    std::string addressFor(ProxyKind kind, const std::string &server, uint16_t port) const override;
    ProxyState read() override;
    void write(const ProxyState &before, const ProxyState &after) override;

private:
    GnomeProxies(std::string program, std::string listing);

    std::string listing() const;
    void apply(const ProxyState &before, const ProxyState &after);
    void takeBack(const ProxyState &before);
    void setMode(const ProxyState &before, const ProxyState &after) const;
    void setAddress(std::string_view schema, const std::string &address) const;
    void set(std::string_view schema, const char *key, const std::string &value) const;

    std::string m_program;                ///< the path of gsettings(1)
    std::optional<std::string> m_listing; ///< what find() has read, for the first read()
};

} // namespace velq::nettools
