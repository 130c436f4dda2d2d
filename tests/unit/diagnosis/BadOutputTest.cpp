#include "diagnosis/BinarySwith.h"
#include "diagnosis/HardwarePorts.h"
#include "unit/diagnosis/DiagnosisFixture.h"

#include <QMap>

#include <set>

namespace
{

using namespace velq;

// A question to the engine, and what it makes of a tool's output.
struct Question {
    const char *name;
    QMap<QString, QByteArray> tools; ///< their good outputs
    std::function<QString(NetworkScanner &)> ask;
    QString good;
    QString negative;
    QString crlf; ///< the answer to lines that end in two characters, which are not cut off
};

std::ostream &operator<<(std::ostream &stream, const Question &question)
{
    return stream << question.name;
}

QString yesOrNo(bool answer)
{
    return answer ? QStringLiteral("yes") : QStringLiteral("no");
}

// One without a hardware address is one that was cut.
QString inOneText(const QList<NetworkService> &services)
{
    QStringList texts;
    for (const NetworkService &each : services) {
        if (!each.macAdds.isEmpty())
            texts += each.netType + u' ' + each.interface + u' ' + each.macAdds;
    }
    return texts.join(u'|');
}

// All kinds have the same, which is told once.
QString inOneText(const QList<ProxyServer> &proxies)
{
    QStringList texts;
    for (const ProxyServer &each : proxies)
        texts += each.port.isEmpty() ? each.serverIP : each.serverIP + u' ' + each.port;
    texts.removeDuplicates();
    return texts.join(u'|');
}

const QString networksetup = QStringLiteral("networksetup");
const QByteArray ports = "\nHardware Port: LAN\nDevice: lo\nEthernet Address: 02\n"
                         "\nHardware Port: Last\nDevice: l\nEthernet Address: 03\n";

const std::vector<Question> questions{
    {"HardwarePorts",
     {{networksetup, ports}},
     [](NetworkScanner &) { return inOneText(hardwarePorts()); },
     QStringLiteral("LAN lo 02"),
     QString(),
     QStringLiteral("LAN\r lo\r 02\r")},
    {"SearchServices",
     {{networksetup, ports}},
     [](NetworkScanner &scanner) {
         scanner.services().clear();
         scanner.searchNetworkSerices();
         return inOneText(scanner.services());
     },
     QStringLiteral("LAN lo 02"),
     QString(),
     QStringLiteral("LAN\r lo\r 02\r")},
    {"InterfaceForService",
     {{networksetup, ports}},
     [](NetworkScanner &) {
         return NetworkScanner::networkInterfaceForService(QStringLiteral("LAN"));
     },
     QStringLiteral("lo"),
     QString(),
     QStringLiteral("lo\r")},
    {"IsActive",
     {{QStringLiteral("ifconfig"), "\tether 02\n\tstatus: active\n"}},
     [](NetworkScanner &) {
         return yesOrNo(NetworkScanner::networkServiceIsActive(QStringLiteral("lo")));
     },
     QStringLiteral("yes"),
     QStringLiteral("no"),
     QStringLiteral("no")},
    {"IsNotActive",
     {{QStringLiteral("ifconfig"), "\tether 02\n\tstatus: inactive\n"}},
     [](NetworkScanner &) {
         return yesOrNo(NetworkScanner::networkServiceIsActive(QStringLiteral("lo")));
     },
     QStringLiteral("no"),
     QStringLiteral("no"),
     QStringLiteral("no")},
    {"HasConnectivity",
     {{QStringLiteral("ping"), "64 bytes from 192.0.2.1: icmp_seq=0 ttl=64 time=3 ms\n"}},
     [](NetworkScanner &) { return yesOrNo(NetworkScanner::hasConnectivity()); },
     QStringLiteral("yes"),
     QStringLiteral("no"),
     QStringLiteral("yes")},
    {"CurrentInterface",
     {{QStringLiteral("route"), "   route to: www.debian.org\n  interface: wlan0\n"}},
     [](NetworkScanner &scanner) {
         scanner.services().clear();
         net_connect = true;
         return NetworkScanner::currentNetworkInterface();
     },
     QStringLiteral("wlan0"),
     QString(),
     QStringLiteral("wlan0\r")},
    {"Services",
     {{networksetup, "An asterisk (*) denotes\nLAN\n*Wi-Fi\n"}},
     [](NetworkScanner &scanner) { return scanner.networkServices().join(u'|'); },
     QStringLiteral("LAN|*Wi-Fi"),
     QString(),
     QStringLiteral("LAN\r|*Wi-Fi\r")},
    {"IsEnabled",
     {{networksetup, "Enabled\n"}},
     [](NetworkScanner &scanner) {
         return yesOrNo(scanner.isEnabledForService(QStringLiteral("LAN")));
     },
     QStringLiteral("yes"),
     QStringLiteral("no"),
     QStringLiteral("yes")},
    {"IsNotEnabled",
     {{networksetup, "Disabled\n"}},
     [](NetworkScanner &scanner) {
         return yesOrNo(scanner.isEnabledForService(QStringLiteral("LAN")));
     },
     QStringLiteral("no"),
     QStringLiteral("no"),
     QStringLiteral("no")},
    {"RouteAddress",
     {{QStringLiteral("route"), "    gateway: 127.0.0.9\n"}},
     [](NetworkScanner &scanner) { return scanner.getRouteAddress(); },
     QStringLiteral("127.0.0.9"),
     QString(),
     QStringLiteral("127.0.0.9\r")},
    {"Netmask",
     {{QStringLiteral("route"), "  interface: lo\n"},
      {QStringLiteral("ifconfig"), "\tinet 127.0.0.1 netmask 0xff000000\n"}},
     [](NetworkScanner &scanner) { return BinarySwith::sexadecimalToIPv4(scanner.getNetmask()); },
     QStringLiteral("255.0.0.0"),
     QString(),
     QString()},
    // The negative answer is that the address is wrong.
    {"AddressIsWrong",
     {{QStringLiteral("route"), "    gateway: 127.0.0.9\n  interface: lo\n"},
      {QStringLiteral("ifconfig"), "\tinet 127.0.0.1 netmask 0xff000000\n"}},
     [](NetworkScanner &scanner) {
         NetworkService service;
         service.interface = QStringLiteral("lo");
         service.isActive = true;
         scanner.setServices({service});
         return yesOrNo(scanner.checkIPIsWrong());
     },
     QStringLiteral("no"),
     QStringLiteral("yes"),
     QStringLiteral("no")},
    {"HasRouter",
     {{networksetup, "IP address: 10.0.0.7\nRouter: 10.0.0.1\nIPv6: Automatic\n"}},
     [](NetworkScanner &scanner) {
         scanner.setServices({NetworkService()});
         scanner.services().first().netType = QStringLiteral("LAN");
         return yesOrNo(scanner.hasRouterIP());
     },
     QStringLiteral("yes"),
     QStringLiteral("no"),
     QStringLiteral("yes")},
    {"NameServersFail",
     {{QStringLiteral("nslookup"), ";; connection timed out; no servers could be reached\n"}},
     [](NetworkScanner &scanner) { return yesOrNo(scanner.isDNSServiceError()); },
     QStringLiteral("yes"),
     QStringLiteral("no"),
     QStringLiteral("yes")},
    {"NameServersAnswer",
     {{QStringLiteral("nslookup"), "Name:\twww.iana.org\nAddress: 192.0.2.1\n"}},
     [](NetworkScanner &scanner) { return yesOrNo(scanner.isDNSServiceError()); },
     QStringLiteral("no"),
     QStringLiteral("no"),
     QStringLiteral("no")},
    {"Proxies",
     {{networksetup, "Enabled: Yes\nServer: h\nPort: 80\nAuthenticated: 0\n"}},
     [](NetworkScanner &scanner) {
         NetworkService service;
         service.name = QStringLiteral("LAN");
         service.interface = QStringLiteral("lo");
         service.isActive = true;
         scanner.setServices({service});
         return inOneText(scanner.serviceProxy());
     },
     QStringLiteral("h 80"),
     QString(),
     QString()},
};

class BadOutputTest : public velq::testing::DiagnosisTest,
                      public ::testing::WithParamInterface<Question>
{
protected:
    void SetUp() override
    {
        for (const char *tool : {"networksetup", "ifconfig", "route", "nslookup", "ping"})
            tools.add(QString::fromLatin1(tool), "exit 1");
        for (const auto &[tool, output] : GetParam().tools.asKeyValueRange())
            say(tool, output);
    }

    // Without a log, which would take longer than the tool.
    void say(const QString &tool, const QByteArray &output) const
    {
        tools.addPrinting(tool, output);
        tools.add(tool,
                  "exec cat '" + tools.path(tool + QStringLiteral(".output")).toLocal8Bit() + "'");
    }

    void sayAll(const std::function<QByteArray(const QByteArray &)> &changed) const
    {
        for (const auto &[tool, output] : GetParam().tools.asKeyValueRange())
            say(tool, changed(output));
    }

    QString answer() { return GetParam().ask(shared); }
};

TEST_P(BadOutputTest, AGoodOneIsUnderstood)
{
    EXPECT_EQ(answer(), GetParam().good);
}

TEST_P(BadOutputTest, AToolThatIsMissingIsTheNegativeAnswer)
{
    for (const QString &tool : GetParam().tools.keys())
        tools.add(tool, "exec /nonexistent/tool");
    EXPECT_EQ(answer(), GetParam().negative);
}

TEST_P(BadOutputTest, NoneIsTheNegativeAnswer)
{
    sayAll([](const QByteArray &) { return QByteArray(); });
    EXPECT_EQ(answer(), GetParam().negative);
}

// The end of a text may be missing, but it is never another one.
TEST_P(BadOutputTest, ACutOneIsNoOtherAnswer)
{
    for (const auto &[tool, output] : GetParam().tools.asKeyValueRange()) {
        for (qsizetype length = 0; length < output.size(); ++length) {
            say(tool, output.left(length));
            const QString found = answer();
            EXPECT_TRUE(found == GetParam().negative || GetParam().good.startsWith(found))
                << output.left(length).toStdString() << ": " << found.toStdString();
        }
        say(tool, output);
    }
}

TEST_P(BadOutputTest, LinesOfAnotherSystem)
{
    sayAll([](QByteArray output) { return output.replace("\n", "\r\n"); });
    EXPECT_EQ(answer(), GetParam().crlf);
}

// What the shell does not cut down to a few lines must fit into a pipe.
TEST_P(BadOutputTest, MegabytesOfNonsense)
{
    const std::set<std::string> unfiltered{
        "HasConnectivity", "Services",          "IsEnabled", "IsNotEnabled",
        "NameServersFail", "NameServersAnswer", "Proxies"};
    const qsizetype most = unfiltered.contains(GetParam().name) ? 65536 : 10 * 1024 * 1024;
    sayAll([&](const QByteArray &) { return QByteArray(most, '7'); });
    EXPECT_EQ(answer(), GetParam().negative);
    const QByteArray line = QByteArray(99, 'x') + '\n';
    sayAll([&](const QByteArray &) { return line.repeated(most / line.size()); });
    if (GetParam().name == std::string("Services"))
        EXPECT_EQ(answer().size(), (most / line.size() - 1) * line.size() - 1);
    else
        EXPECT_EQ(answer(), GetParam().negative);
}

TEST_P(BadOutputTest, BytesThatAreNoText)
{
    sayAll([&](const QByteArray &) { return QByteArray("\xff\xfe\n\x80\n\0\n", 7); });
    EXPECT_EQ(answer(), GetParam().negative);
}

INSTANTIATE_TEST_SUITE_P(Questions, BadOutputTest, ::testing::ValuesIn(questions),
                         [](const auto &question) { return std::string(question.param.name); });

} // namespace
