#pragma once

#include "diagnosis/NetworkScanner.h"
#include "optimize/OptimizeScanner.h"
#include "platform/UserDefaults.h"
#include "scanner/OptimizeScannerDelegate.h"
#include "support/FakeTool.h"
#include "support/OwnHome.h"

#include <QDateTime>
#include <QFile>
#include <gtest/gtest.h>

namespace velq::testing
{

/// A computer of fake tools: Ethernet is eth0, Wi-Fi is wlan0, both up with an address and an MTU
/// of 1500, all hosts answer, and the traffic takes eth0.
class OptimizeTest : public ::testing::Test
{
protected:
    class TestedScanner : public OptimizeScanner
    {
    };

    class Delegate : public OptimizeScannerDelegate
    {
    public:
        void optimizeScannerStatus(qint64 status) override
        {
            told.append(status);
            if (onTold)
                onTold(status);
        }

        QList<qint64> told;
        std::function<void(qint64)> onTold;
    };

    OptimizeTest()
    {
        (void)ownHome();
        tools.addPrinting(QStringLiteral("networksetup"),
                          "\nHardware Port: Ethernet\nDevice: eth0\nEthernet Address: 02\n"
                          "\nHardware Port: Wi-Fi\nDevice: wlan0\nEthernet Address: 03\n");
        const QByteArray folder = tools.path(QString()).toLocal8Bit();
        tools.addLogging(QStringLiteral("ifconfig"),
                         "cat '" + folder + "'/ifconfig.\"$1\" 2>/dev/null");
        tools.addLogging(QStringLiteral("ping"),
                         "for host; do :; done; cat '" + folder + "'/ping.\"$host\" 2>/dev/null");
        setDevice("eth0", true, true, "1500");
        setDevice("wlan0", true, true, "1500");
        setCurrent("eth0");
        setFlushed(QDateTime::currentDateTimeUtc());
        for (const QString &key : ignoreKeys)
            UserDefaults::standardUserDefaults().removeObjectForKey(key);
        NetworkScanner::shareScanner().services().clear();
        scanner.setDelegate(&delegate);
    }

    void write(const QString &name, const QByteArray &content) const
    {
        QFile file(tools.path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    void setDevice(const char *name, bool active, bool hasAddress, const QByteArray &mtu) const
    {
        write(QStringLiteral("ifconfig.%1").arg(QLatin1String(name)),
              QByteArray(name) + ": flags=8863<UP> mtu " + mtu + '\n'
                  + (hasAddress ? "\tinet 192.0.2.7 netmask 0xffffff00\n" : "\tinet6 fe80::1\n")
                  + (active ? "\tstatus: active\n" : "\tstatus: inactive\n"));
    }

    /// Which device the traffic takes; null for none.
    void setCurrent(const char *device) const
    {
        net_connect = device != nullptr;
        tools.addPrinting(QStringLiteral("route"),
                          device == nullptr ? QByteArray()
                                            : "  interface: " + QByteArray(device) + '\n');
    }

    void setPing(const char *host, const QByteArray &output) const
    {
        write(QStringLiteral("ping.%1").arg(QLatin1String(host)), output);
    }

    /// Invalid for never.
    static void setFlushed(const QDateTime &date)
    {
        UserDefaults::standardUserDefaults().setObject(date.isValid() ? date : QVariant(),
                                                       QStringLiteral("cacheDate"));
    }

    void addService(const char *name, const char *device) const
    {
        NetworkService service;
        service.netType = QString::fromUtf8(name);
        service.name = service.netType;
        service.interface = QString::fromUtf8(device);
        NetworkScanner::shareScanner().services().append(service);
    }

    /// From here on every check finds its problem.
    void makeEverythingWrong() const
    {
        setDevice("wlan0", true, true, "1492");
        setCurrent("wlan0");
        setFlushed({});
        setPing("www.debian.org", "Request timeout for icmp_seq 0\n");
    }

    const QStringList ignoreKeys{QStringLiteral("OptimizeKey1"), QStringLiteral("OptimizeKey2"),
                                 QStringLiteral("OptimizeKey3"), QStringLiteral("OptimizeKey4")};
    FakeTools tools;
    Delegate delegate;
    TestedScanner scanner;
};

} // namespace velq::testing
