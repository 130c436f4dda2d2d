#include "common/Image.h"
#include "unit/optimize/OptimizeFixture.h"

#include <thread>

namespace
{

using namespace velq;

struct ItemTexts {
    const char16_t *title;
    const char16_t *des;
    const char16_t *fine;
    const char16_t *fineDes;
    const char16_t *problem;
    const char16_t *problemDes;
};

// \u00a0 are no-break spaces.
const ItemTexts texts[] = {
    {u"Optimize Network Card Priority",
     u"When both cable network and wireless network are used simultaneously, Velq will "
     u"automatically use the faster one.",
     u"Good", u"Your network runs at its top performance", u"Not Good",
     u"The speed of Network card 1 is faster than Network card 2. Please switch to Network card "
     u"1."},
    {u"Optimize\u00a0MTU Detection",
     u"Most network equipment' MTU is 1500 bytes. If your local machine's MTU is bigger than the "
     u"gateway's MTU, large data package will be split to transmit.",
     u"Good", u"The MTU is set reasonably.", u"Not Good",
     u"The MTU is set\u00a0unreasonably\u00a0which may slow down your network speed."},
    {u"Flush Ethernet Cards Cache",
     u"OS X keeps a local cache of Ethernet Cards Cache when you surfing the Internet. But "
     u"sometimes it may be necessary to reset the cache immediately.",
     u"No need to flush", u"Please enjoy smooth surfing.", u"Recommend to flush",
     u"Too many Network card caches, which may slow down your surfing speed."},
    {u"Optimize & Protect\u00a0DNS",
     u"DNS Optimization can make your website parsed by DNS server quicker and load your website "
     u"faster.",
     u"Connectivity: Good", u"All is good. Please enjoy smooth surfing.", u"Connectivity: Bad",
     u"Please switch to a faster DNS server."},
};

class OptimizeScannerTest : public velq::testing::OptimizeTest
{
protected:
    // Its one line, and the issue that goes with it.
    void expectResult(qsizetype index, bool error) const
    {
        const auto item = scanner.array().value(index);
        ASSERT_EQ(item->errorStatus().size(), 1) << index;
        const NetStatus &line = *item->errorStatus()[0];
        EXPECT_EQ(line.error, error) << index;
        EXPECT_EQ(line.name, QString::fromUtf16(error ? texts[index].problem : texts[index].fine));
        EXPECT_EQ(line.des,
                  QString::fromUtf16(error ? texts[index].problemDes : texts[index].fineDes));
        EXPECT_EQ(line.subErrorView, nullptr);
        EXPECT_EQ(item->issue(), error ? 1 : 0) << index;
    }

    void expectOnly(qint64 bits, qsizetype problem) const
    {
        EXPECT_EQ(scanner.errorStatus(), bits);
        for (qsizetype index = 0; index < 4; ++index)
            expectResult(index, index == problem);
        EXPECT_EQ(scanner.issueCount(), problem < 0 ? 0 : 1);
        EXPECT_EQ(delegate.told, problem < 0 ? QList<qint64>() : QList<qint64>{bits});
    }
};

TEST_F(OptimizeScannerTest, IsOneObjectAProcess)
{
    EXPECT_EQ(&OptimizeScanner::shareScanner(), &OptimizeScanner::shareScanner());
}

TEST_F(OptimizeScannerTest, HasFourItemsFromTheBeginning)
{
    const Scanner::Data data = scanner.data();
    ASSERT_EQ(data->size(), 4);
    for (qsizetype index = 0; index < 4; ++index) {
        const GerenalData &item = *data->at(index);
        EXPECT_EQ(item.title(), QString::fromUtf16(texts[index].title));
        EXPECT_EQ(item.des(), QString::fromUtf16(texts[index].des));
        EXPECT_EQ(item.ignoreKey(), ignoreKeys[index]);
        EXPECT_EQ(item.issue(), 0);
        EXPECT_FALSE(item.noShowIgnore());
        EXPECT_TRUE(scanner.array()[index]->errorStatus().isEmpty());
    }
    EXPECT_EQ(scanner.errorStatus(), 0);
    EXPECT_EQ(scanner.MTU(), 0);
    EXPECT_FALSE(scanner.needManully());
}

TEST_F(OptimizeScannerTest, TheItemsHaveTheirImages)
{
    const QStringList names{QStringLiteral("icon_nic"), QStringLiteral("icon_mtu"),
                            QStringLiteral("icon_cardscache"), QStringLiteral("icon_dns_optimize")};
    for (qsizetype index = 0; index < names.size(); ++index) {
        const GerenalData &item = *scanner.array()[index];
        ASSERT_NE(item.image(), nullptr) << index;
        EXPECT_EQ(item.image()->name(), names[index] + QStringLiteral("_normal"));
        ASSERT_NE(item.selectImage(), nullptr) << index;
        EXPECT_EQ(item.selectImage()->name(), names[index] + QStringLiteral("_select"));
    }
}

TEST_F(OptimizeScannerTest, AFineComputerHasNoIssue)
{
    scanner.scan();
    expectOnly(0, -1);
}

TEST_F(OptimizeScannerTest, WhatItAsksInWhichOrder)
{
    scanner.scan();
    EXPECT_EQ(
        tools.log(),
        "networksetup -listallhardwareports|grep -A 1 'Ethernet'|grep 'Device'|awk '{print $2}'\n"
        "networksetup -listallhardwareports|grep -A 1 'Wi-Fi'|grep 'Device'|awk '{print $2}'\n"
        "ifconfig eth0 |grep 'status'|awk '{print $2}'\n"
        "ifconfig wlan0 |grep 'status'|awk '{print $2}'\n"
        "ifconfig eth0 | grep 'inet '|awk '{print $2}'\n"
        "ifconfig wlan0 | grep 'inet '|awk '{print $2}'\n"
        "route -n get www.debian.org|grep 'interface' | awk -F ': ' '{print $2}'\n"
        "route -n get www.debian.org|grep 'interface' | awk -F ': ' '{print $2}'\n"
        "ifconfig eth0 |grep 'mtu' |awk '{print $4}'\n"
        "ping -c2 www.debian.org\n"
        "ping -c2 www.kernel.org\n"
        "ping -c2 www.wikipedia.org\n");
}

TEST_F(OptimizeScannerTest, WiFiBesideEthernetIsBitOne)
{
    setCurrent("wlan0");
    scanner.scan();
    expectOnly(1, 0);
}

TEST_F(OptimizeScannerTest, AnMTUBesideTheUsualIsBitSixteen)
{
    for (const char *mtu : {"1492", "9000", ""}) {
        delegate.told.clear();
        setDevice("eth0", true, true, mtu);
        scanner.scan();
        expectOnly(16, 1);
    }
}

TEST_F(OptimizeScannerTest, ACacheThatWasNeverFlushedIsBit256InEveryScan)
{
    setFlushed({});
    for (int scans = 0; scans < 3; ++scans) {
        delegate.told.clear();
        scanner.scan();
        expectOnly(256, 2);
    }
}

TEST_F(OptimizeScannerTest, AHostThatKeepsSilentIsBit4096)
{
    setPing("www.kernel.org", "Request timeout for icmp_seq 0\n");
    scanner.scan();
    expectOnly(4096, 3);
}

TEST_F(OptimizeScannerTest, EverythingWrongIsAllBitsInOrder)
{
    makeEverythingWrong();
    scanner.scan();
    EXPECT_EQ(scanner.errorStatus(), 1 + 16 + 256 + 4096);
    EXPECT_EQ(delegate.told, (QList<qint64>{1, 16, 256, 4096}));
    EXPECT_EQ(scanner.issueCount(), 4);
    for (qsizetype index = 0; index < 4; ++index)
        expectResult(index, true);
}

TEST_F(OptimizeScannerTest, TheDelegateIsToldWhenTheItemAndTheBitAreThere)
{
    makeEverythingWrong();
    QList<qint64> bits;
    delegate.onTold = [&](qint64) {
        bits.append(scanner.errorStatus());
        expectResult(bits.size() - 1, true);
    };
    scanner.scan();
    EXPECT_EQ(bits, (QList<qint64>{1, 17, 273, 4369}));
}

TEST_F(OptimizeScannerTest, NobodyNeedsToListen)
{
    makeEverythingWrong();
    scanner.setDelegate(nullptr);
    scanner.scan();
    EXPECT_EQ(scanner.issueCount(), 4);
    OptimizeScannerDelegate deaf;
    scanner.setDelegate(&deaf);
    scanner.scan();
    EXPECT_EQ(scanner.issueCount(), 4);
}

TEST_F(OptimizeScannerTest, WhatIsIgnoredIsFineButLookedAt)
{
    makeEverythingWrong();
    for (qsizetype index = 0; index < 4; ++index)
        scanner.array()[index]->resetIgnore();
    scanner.scan();
    expectOnly(0, -1);
    EXPECT_TRUE(tools.log().contains("networksetup"));
    EXPECT_TRUE(tools.log().contains("grep 'mtu'"));
    EXPECT_TRUE(tools.log().contains("ping"));
    EXPECT_EQ(scanner.MTU(), 1492);
}

TEST_F(OptimizeScannerTest, ANewScanIgnoresNothingForNow)
{
    makeEverythingWrong();
    for (const auto &item : scanner.array())
        item->setHasIgnore(true);
    scanner.scan();
    EXPECT_EQ(scanner.issueCount(), 4);
}

TEST_F(OptimizeScannerTest, EachResultHasAListOfItsOwn)
{
    scanner.scan();
    const NetData::StatusList before = scanner.array()[1]->errorStatus();
    setDevice("eth0", true, true, "9000");
    scanner.scan();
    EXPECT_FALSE(before.value(0)->error);
    expectOnly(16, 1);
}

TEST_F(OptimizeScannerTest, AScanThatIsOffBeforeItBeginsOnlyForgets)
{
    makeEverythingWrong();
    scanner.scan();
    tools.clearLog();
    delegate.told.clear();
    std::thread([this] { scanner.stopScan(); }).join();
    for (int scans = 0; scans < 2; ++scans) {
        scanner.scan();
        EXPECT_EQ(scanner.errorStatus(), 0);
        EXPECT_EQ(scanner.issueCount(), 4) << "the items keep what they have";
    }
    EXPECT_EQ(tools.log(), "");
    EXPECT_TRUE(delegate.told.isEmpty());
    scanner.setStopScanFlag(false);
    scanner.scan();
    EXPECT_EQ(scanner.errorStatus(), 4369);
}

class StoppedOptimizeScan : public OptimizeScannerTest, public ::testing::WithParamInterface<int>
{
};

// From another thread while the check runs; what is behind keeps what it had.
TEST_P(StoppedOptimizeScan, EndsBeforeTheNextCheck)
{
    scanner.scan();
    makeEverythingWrong();
    const QList<qint64> all{1, 16, 256, 4096};
    const QList<qint64> reached = all.mid(0, GetParam());
    delegate.onTold = [&](qint64 status) {
        if (status == reached.last())
            std::thread([this] { scanner.stopScan(); }).join();
    };
    scanner.scan();
    EXPECT_EQ(delegate.told, reached);
    qint64 bits = 0;
    for (const qint64 bit : reached)
        bits |= bit;
    EXPECT_EQ(scanner.errorStatus(), bits);
    EXPECT_EQ(scanner.issueCount(), GetParam());
    for (qsizetype index = 0; index < 4; ++index)
        expectResult(index, index < GetParam());
}

INSTANTIATE_TEST_SUITE_P(AfterEach, StoppedOptimizeScan, ::testing::Range(1, 5));

} // namespace
