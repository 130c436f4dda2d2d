#pragma once

#include "common/NSAlert_Addition.h"
#include "diagnosis/DiagnosisHost.h"
#include "diagnosis/NetworkScanner.h"
#include "platform/UserDefaults.h"
#include "scanner/NetworkErrorDelegate.h"
#include "support/Waiting.h"
#include "unit/diagnosis/FakeComputer.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QThread>
#include <gtest/gtest.h>

#include <future>
#include <optional>

namespace velq::testing
{

inline bool isMainThread()
{
    return QThread::currentThread() == QCoreApplication::instance()->thread();
}

/// What the tools' log says of a command line that the root daemon was given.
inline QByteArray asRoot(const QByteArray &commandLine)
{
    return "root: " + commandLine + '\n';
}

struct RecordingDelegate : NetworkErrorDelegate {
    void networkErrorStatus(qint64 status) override { told.append(status); }
    QList<qint64> told;
};

/// Answers every alert by the button of that tag, or not at all, and gives views that tell where
/// they end.
struct RecordingHost : DiagnosisHost {
    void runModal(NSAlert_Addition &alert) override
    {
        EXPECT_TRUE(isMainThread());
        QStringList texts{alert.message(), alert.description()};
        for (const NSAlert_Addition::Button &button : alert.buttons())
            texts.append(button.title);
        alerts.append(texts);
        if (answer.has_value())
            alert.buttonPressed(*answer);
    }

    std::shared_ptr<QWidget> createIPErrorView(const QString &service) override
    {
        errorViews.append(service);
        return view();
    }

    std::shared_ptr<QWidget> createProxyControlView(const QList<ProxyServer> &proxies,
                                                    CloseProxy close) override
    {
        proxyViews.append(proxies);
        closeProxy = std::move(close);
        return view();
    }

    std::shared_ptr<QWidget> view()
    {
        EXPECT_TRUE(isMainThread());
        // A view may outlive the host of its test.
        const std::shared_ptr<int> pixels(new int(0), [ended = ended](const int *last) {
            EXPECT_TRUE(isMainThread());
            ++*ended;
            delete last;
        });
        return {pixels, reinterpret_cast<QWidget *>(pixels.get())};
    }

    std::optional<qint64> answer = NSAlert_Addition::cancelTag;
    QList<QStringList> alerts;
    QStringList errorViews;
    QList<QList<ProxyServer>> proxyViews;
    CloseProxy closeProxy;
    const std::shared_ptr<int> ended = std::make_shared<int>(0); ///< so many views have
};

inline const QStringList routerAlert{
    QStringLiteral("The IP address of router is abnormal."),
    QStringLiteral("Please check the settings of your router or contact ISP."),
    QStringLiteral("OK"), QStringLiteral("Feedback")};

/// A computer of fake tools without root, browser or bus, a person's empty home, and the shared
/// scanner as if it were new.
class DiagnosisTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        // The standard defaults are one object a process, so all tests share a home.
        static const QTemporaryDir home;
        qputenv("HOME", home.path().toLocal8Bit());
        qputenv("XDG_RUNTIME_DIR", home.path().toLocal8Bit());
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
    }

    DiagnosisTest()
    {
        net_connect = false;
        tools.add(QStringLiteral("pkexec"), "exit 126");
        makeNew(shared);
        for (const std::shared_ptr<NetData> &item : shared.array())
            UserDefaults::standardUserDefaults().removeObjectForKey(item->ignoreKey());
    }
    ~DiagnosisTest() override
    {
        makeNew(shared);
        settle();
    }

    /// Does it on a thread that is not the main one, which runs its event loop meanwhile.
    static void inBackground(const std::function<void()> &work)
    {
        const std::future<void> done = std::async(std::launch::async, work);
        EXPECT_TRUE(waitUntil(
            [&] { return done.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
    }

    static NetworkService service(const QString &name, const QString &device, bool active = true)
    {
        NetworkService made;
        made.netType = made.name = name;
        made.interface = device;
        made.isActive = made.enabled = active;
        return made;
    }

    static QList<ProxyServer> proxiesOf(const QStringList &kinds)
    {
        QList<ProxyServer> proxies;
        for (const QString &kind : kinds) {
            ProxyServer proxy;
            proxy.proxyType = kind;
            proxy.enabled = true;
            proxies.append(proxy);
        }
        return proxies;
    }

    FakeTools tools;
    FakeComputer computer;
    NetworkScanner &shared = NetworkScanner::shareScanner();

private:
    static void makeNew(NetworkScanner &scanner)
    {
        scanner.setStopScanFlag(false);
        scanner.setStopFixFlag(false);
        scanner.setDelegate(nullptr);
        scanner.setHost(nullptr);
        scanner.setErrorStatus(0);
        scanner.setServices({});
        scanner.setProxies({});
        for (const std::shared_ptr<NetData> &item : scanner.array()) {
            item->setIssue(0);
            item->setHasIgnore(false);
            item->setErrorStatus({});
        }
    }
};

} // namespace velq::testing
