#include "common/Image.h"
#include "unit/appaccel/AppNetworkFixture.h"

#include <thread>

namespace
{

using namespace velq;

const QByteArray readsDelay = "defaults read com.apple.Safari WebKitInitialTimedLayoutDelay\n";
const QByteArray readsHosts = "root: cat /etc/hosts|grep accelerated.velq.example\n";

class AppNetworkScannerTest : public velq::testing::AppNetworkTest
{
protected:
    void makeEverythingWrong() const
    {
        setDelay("0.5\n");
        setHosts("");
    }
};

TEST_F(AppNetworkScannerTest, IsOneObjectAProcess)
{
    EXPECT_EQ(&AppNetworkScanner::shareScanner(), &AppNetworkScanner::shareScanner());
}

TEST_F(AppNetworkScannerTest, HasFourItemsFromTheBeginning)
{
    const std::pair<const char16_t *, const char16_t *> texts[] = {
        {u"Safari", u"Adjust\u00a0safari standard delay settings to load pages faster."},
        {u"iCloud",
         u"Speed up the address resolution of iCloud server by accelerating host. Turn on iCloud "
         u"LAN speedup to sync faster between the devices in LAN."},
        {u"iTunes",
         u"Adjust iTunes standard delay settings\u00a0to make its service response faster."},
        {u"AppStore",
         u"Adjust App standard delay settings\u00a0to make its service response faster."}};
    const QStringList images{QStringLiteral("icon_safari"), QStringLiteral("icon_icloud"),
                             QStringLiteral("icon_itunes"), QStringLiteral("icon_app_store")};
    const Scanner::Data data = scanner.data();
    ASSERT_EQ(data->size(), 4);
    for (qsizetype index = 0; index < 4; ++index) {
        const GerenalData &item = *data->at(index);
        EXPECT_EQ(item.title(), QString::fromUtf16(texts[index].first));
        EXPECT_EQ(item.des(), QString::fromUtf16(texts[index].second));
        EXPECT_EQ(item.ignoreKey(), ignoreKeys[index]);
        EXPECT_EQ(item.issue(), 0);
        EXPECT_FALSE(item.noShowIgnore());
        ASSERT_TRUE(item.image() != nullptr && item.selectImage() != nullptr);
        EXPECT_EQ(item.image()->name(), images[index] + QStringLiteral("_normal"));
        EXPECT_EQ(item.selectImage()->name(), images[index] + QStringLiteral("_select"));
    }
    EXPECT_EQ(scanner.errorStatus(), 0);
    EXPECT_FALSE(scanner.needManully());
}

TEST_F(AppNetworkScannerTest, WhatIsAcceleratedIsOn)
{
    scanner.scan();
    for (qsizetype index = 0; index < 4; ++index)
        expectItem(index, true);
    EXPECT_EQ(scanner.errorStatus(), 0);
    EXPECT_EQ(scanner.issueCount(), 0);
    EXPECT_TRUE(delegate.told.isEmpty());
    EXPECT_EQ(tools.log(), readsDelay + readsHosts);
}

TEST_F(AppNetworkScannerTest, SafarisDelayIsTheNumberThatIsReadThatExactly)
{
    const std::pair<QByteArray, bool> delays[] = {
        {"0.25\n", false},
        {"0.25", false},
        {"0.\n25\n", false},
        {".25\n", false},
        {"0.25s\r\n", false},
        {"0.2500000001\n", false},
        {"0.2500001\n", true},
        {"0.5\n", true},
        {"0,25\n", true},
        {"1e999\n", true},
        {"", true},
        {"\xff 0.25\n", true},
        {"The domain/default pair does not exist\n", true},
        {QByteArray(60000, '0') + "\n", true}};
    for (const auto &[output, needed] : delays) {
        setDelay(output);
        EXPECT_EQ(scanner.needOptSafari(), needed) << output.left(40).toStdString();
    }
}

// A part of a number is another number.
TEST_F(AppNetworkScannerTest, ACutDelayIsNotTheAcceleratedOne)
{
    const QByteArray whole = "0.25\n";
    for (qsizetype length = 0; length < whole.size(); ++length) {
        setDelay(whole.left(length));
        EXPECT_EQ(scanner.needOptSafari(), length < 4) << length;
    }
}

TEST_F(AppNetworkScannerTest, HostsAreAcceleratedByAnyLineWithTheDomain)
{
    const std::pair<QByteArray, bool> hosts[] = {
        {"", true},
        {"192.0.2.10  accelerated.velq.example\n198.51.100.10 accelerated.velq.example\n", false},
        {"# no accelerated.velq.example here\r\n", false},
        {"accelerated.velq.exampl", true},
        {"Accelerated.Velq.Example\n", true},
        {QByteArray(10 << 20, 'x'), true}};
    for (const auto &[output, needed] : hosts) {
        setHosts(output);
        EXPECT_EQ(scanner.needModifyHosts(), needed) << output.left(40).toStdString();
    }
}

TEST_F(AppNetworkScannerTest, SafariAloneIsBitOne)
{
    for (const char *delay : {"0.5\n", ""}) {
        delegate.told.clear();
        setDelay(delay);
        scanner.scan();
        expectItem(0, false);
        for (qsizetype index = 1; index < 4; ++index)
            expectItem(index, true);
        EXPECT_EQ(scanner.errorStatus(), 1);
        EXPECT_EQ(delegate.told, QList<qint64>{1});
    }
}

TEST_F(AppNetworkScannerTest, TheHostsAreThreeItemsAndOneBit)
{
    setHosts("");
    scanner.scan();
    expectItem(0, true);
    for (qsizetype index = 1; index < 4; ++index)
        expectItem(index, false);
    EXPECT_EQ(scanner.errorStatus(), 16);
    EXPECT_EQ(scanner.issueCount(), 3);
    EXPECT_EQ(delegate.told, QList<qint64>{16});
}

TEST_F(AppNetworkScannerTest, BothAreToldWhenTheirItemsAreThere)
{
    makeEverythingWrong();
    delegate.onTold = [this](qint64 status) {
        EXPECT_TRUE((scanner.errorStatus() & status) != 0);
        expectItem(status == 1 ? 0 : 3, false);
    };
    scanner.scan();
    EXPECT_EQ(delegate.told, (QList<qint64>{1, 16}));
    EXPECT_EQ(scanner.errorStatus(), 17);
    EXPECT_EQ(scanner.issueCount(), 4);
}

TEST_F(AppNetworkScannerTest, HostsThatAreIgnoredAreStillTold)
{
    makeEverythingWrong();
    for (const auto &item : scanner.array())
        item->resetIgnore();
    scanner.scan();
    for (qsizetype index = 0; index < 4; ++index)
        expectItem(index, true);
    EXPECT_EQ(scanner.errorStatus(), 16) << "unlike Safari's";
    EXPECT_EQ(delegate.told, QList<qint64>{16});
    EXPECT_EQ(scanner.issueCount(), 0);
    EXPECT_EQ(tools.log(), readsDelay + readsHosts) << "both are looked at";
}

TEST_F(AppNetworkScannerTest, EachHostItemIsIgnoredByItself)
{
    setHosts("");
    scanner.array()[2]->resetIgnore();
    scanner.scan();
    expectItem(1, false);
    expectItem(2, true);
    expectItem(3, false);
    EXPECT_EQ(scanner.issueCount(), 2);
}

TEST_F(AppNetworkScannerTest, ANewScanIgnoresNothingForNow)
{
    makeEverythingWrong();
    for (const auto &item : scanner.array())
        item->setHasIgnore(true);
    scanner.scan();
    EXPECT_EQ(scanner.issueCount(), 4);
}

TEST_F(AppNetworkScannerTest, NobodyNeedsToListen)
{
    makeEverythingWrong();
    scanner.setDelegate(nullptr);
    scanner.scan();
    AppNetworkAppdelegate deaf;
    scanner.setDelegate(&deaf);
    scanner.scan();
    EXPECT_EQ(scanner.issueCount(), 4);
}

TEST_F(AppNetworkScannerTest, AScanThatIsOffBeforeItBeginsOnlyForgets)
{
    makeEverythingWrong();
    scanner.scan();
    tools.clearLog();
    std::thread([this] { scanner.stopScan(); }).join();
    scanner.scan();
    EXPECT_EQ(scanner.errorStatus(), 0);
    EXPECT_EQ(scanner.issueCount(), 4) << "the items keep what they have";
    EXPECT_EQ(tools.log(), "");
    scanner.setStopScanFlag(false);
    scanner.scan();
    EXPECT_EQ(scanner.errorStatus(), 17);
}

TEST_F(AppNetworkScannerTest, AStopDuringSafariEndsItBeforeTheHosts)
{
    scanner.scan();
    makeEverythingWrong();
    tools.clearLog();
    delegate.onTold = [this](qint64) {
        std::thread([this] { scanner.stopScan(); }).join();
    };
    scanner.scan();
    EXPECT_EQ(tools.log(), readsDelay);
    EXPECT_EQ(scanner.errorStatus(), 1);
    expectItem(0, false);
    for (qsizetype index = 1; index < 4; ++index)
        expectItem(index, true);
}

TEST_F(AppNetworkScannerTest, AStopDuringTheHostsComesTooLate)
{
    makeEverythingWrong();
    rootDaemon->during(
        "root: ", [this] { scanner.scan(); }, [this] { scanner.stopScan(); });
    EXPECT_EQ(delegate.told, (QList<qint64>{1, 16}));
    EXPECT_EQ(scanner.issueCount(), 4);
}

} // namespace
