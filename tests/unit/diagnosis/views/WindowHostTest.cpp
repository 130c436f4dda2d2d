#include "diagnosis/views/WindowHost.h"

#include "common/NSAlert_Addition.h"
#include "diagnosis/views/IPErrorView.h"
#include "diagnosis/views/ProxyControlView.h"
#include "support/Waiting.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QPointer>
#include <QThread>
#include <QTimer>
#include <gtest/gtest.h>

#include <thread>

namespace
{

using namespace velq;
using velq::testing::waitUntil;

class WindowHostTest : public ::testing::Test
{
protected:
    WindowHost host;
};

TEST_F(WindowHostTest, MakesTheTwoViews)
{
    const auto error = host.createIPErrorView(QStringLiteral("Ethernet"));
    EXPECT_NE(dynamic_cast<IPErrorView *>(error.get()), nullptr);
    const auto proxies = host.createProxyControlView({{}, {}}, {});
    EXPECT_NE(dynamic_cast<ProxyControlView *>(proxies.get()), nullptr);
    EXPECT_EQ(proxies->height(), 60);
}

TEST_F(WindowHostTest, TheLastHolderMayBeAnotherThread)
{
    auto view = host.createIPErrorView(QStringLiteral("Ethernet"));
    QPointer<QThread> endedOn;
    QObject::connect(
        view.get(), &QObject::destroyed, QCoreApplication::instance(),
        [&] { endedOn = QThread::currentThread(); }, Qt::DirectConnection);
    std::thread([last = std::move(view)]() mutable { last.reset(); }).join();
    EXPECT_EQ(endedOn, nullptr);
    EXPECT_TRUE(waitUntil([&] { return endedOn != nullptr; }));
    EXPECT_EQ(endedOn, QCoreApplication::instance()->thread());
}

TEST_F(WindowHostTest, AViewMayEndWithTheWindowThatShowsIt)
{
    auto window = std::make_unique<QWidget>();
    auto view = host.createIPErrorView(QStringLiteral("Ethernet"));
    const QPointer<QWidget> alive(view.get());
    view->setParent(window.get());
    window.reset();
    EXPECT_EQ(alive, nullptr);
    std::thread([last = std::move(view)]() mutable { last.reset(); }).join();
    velq::testing::settle();
}

TEST_F(WindowHostTest, AClickMayMakeTheHolderLetGoOfTheView)
{
    std::shared_ptr<QWidget> view;
    view = host.createProxyControlView({{}}, [&](const QObject &) { view.reset(); });
    const QPointer<QWidget> alive(view.get());
    view->findChild<QCheckBox *>()->click();
    EXPECT_NE(alive, nullptr);
    EXPECT_TRUE(waitUntil([&] { return alive == nullptr; }));
}

TEST_F(WindowHostTest, ShowsAlertsInItsWindow)
{
    QWidget window;
    WindowHost windowed(&window);
    qint64 told = 0;
    const auto alert = NSAlert_Addition::alertWithMessage(
        QStringLiteral("message"), QStringLiteral("description"), QStringLiteral("OK"),
        [&](qint64 tag) { told = tag; }, {});
    QTimer::singleShot(0, &window, [&] {
        auto *const dialog = window.findChild<QDialog *>();
        ASSERT_NE(dialog, nullptr);
        dialog->close();
    });
    windowed.runModal(*alert);
    EXPECT_EQ(told, NSAlert_Addition::cancelTag);
}

} // namespace
