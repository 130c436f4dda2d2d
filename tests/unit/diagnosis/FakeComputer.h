#pragma once

#include "support/FakeTool.h"

#include <QByteArray>

namespace velq::testing
{

/// What the tools say of a computer; each change is made before install(). As it is made, the
/// internet does not answer, and every check passes: one service, on the loopback device with its
/// real address, and another one listed last.
struct FakeComputer {
    QByteArray enabled = "Enabled";
    QByteArray status = "active";
    QByteArray netmask = "0xff000000";
    QByteArray gateway = "127.0.0.254";
    QByteArray lookup = "Name:\twww.iana.org";
    QByteArray ping = "Request timeout for icmp_seq 0";
    /// The tool's word for the proxies that are on, such as "webproxy", between blanks.
    QByteArray proxies = " ";
    /// A shell command that the tool runs first.
    QByteArray beforePing;
    QByteArray beforeRoute;
    QByteArray beforeLookup;
    QByteArray beforeProxies;

    void install(const FakeTools &tools) const
    {
        tools.addLogging(QStringLiteral("networksetup"),
                         R"sh(case $1 in
-listallhardwareports) printf '\nHardware Port: Ethernet\nDevice: lo\nEthernet Address: 02\n\nHardware Port: Last\nDevice: l\nEthernet Address: 03\n' ;;
-getnetworkserviceenabled) echo ')sh"
                             + enabled + R"sh(' ;;
-get*) )sh" + (beforeProxies.isEmpty() ? "" : beforeProxies + "\n")
                             + R"sh(case ')sh" + proxies + R"sh(' in
    *" ${1#-get} "*) printf 'Enabled: Yes\nServer: 192.0.2.9\nPort: 8080\nAuthenticated Proxy Enabled: 0\n' ;;
    *) printf 'Enabled: No\nServer: \nPort: 0\nAuthenticated Proxy Enabled: 0\n' ;;
    esac ;;
esac)sh");
        tools.addLogging(QStringLiteral("ifconfig"),
                         "printf '\\tinet 127.0.0.1 netmask " + netmask + "\\n\\tstatus: " + status
                             + "\\n'");
        tools.addLogging(QStringLiteral("route"),
                         beforeRoute + "\nprintf '    gateway: " + gateway
                             + "\\n  interface: lo\\n'");
        tools.addLogging(QStringLiteral("nslookup"), beforeLookup + "\necho '" + lookup + "'");
        tools.addLogging(QStringLiteral("ping"), beforePing + "\necho '" + ping + "'");
    }
};

} // namespace velq::testing
