#include "unit/diagnosis/DiagnosisFixture.h"

#include <QFile>

#include <thread>

namespace
{

using namespace velq;
using velq::testing::FakeComputer;
using velq::testing::RecordingDelegate;
using velq::testing::waitUntil;

// A place in the scan that a tool holds up, and how many items have their result when it was
// stopped there.
struct Place {
    const char *name;
    QByteArray FakeComputer::*before;
    qsizetype written;
    qint64 errorStatus;
};

class StopTest : public velq::testing::DiagnosisTest, public ::testing::WithParamInterface<Place>
{
protected:
    void start()
    {
        const QByteArray reached = tools.path(QStringLiteral("reached")).toLocal8Bit();
        const QByteArray go = tools.path(QStringLiteral("go")).toLocal8Bit();
        computer.*GetParam().before =
            "touch '" + reached + "'; until [ -e '" + go + "' ]; do sleep 0.01; done";
        computer.install(tools);
        scan = std::async(std::launch::async, [this] { shared.scan(); });
        ASSERT_TRUE(
            waitUntil([this] { return QFile::exists(tools.path(QStringLiteral("reached"))); }));
    }

    void finish()
    {
        QFile go(tools.path(QStringLiteral("go")));
        ASSERT_TRUE(go.open(QIODevice::WriteOnly));
        go.close();
        scan.get();
    }

    qsizetype written() const
    {
        return std::ranges::count_if(shared.array(), [](const std::shared_ptr<NetData> &item) {
            return !item->errorStatus().isEmpty();
        });
    }

    RecordingDelegate delegate;
    std::future<void> scan;
};

TEST_P(StopTest, EndsAtTheNextCheckPoint)
{
    shared.setDelegate(&delegate);
    start();
    std::thread([this] { shared.stopScan(); }).join();
    finish();
    EXPECT_EQ(written(), GetParam().written);
    EXPECT_EQ(shared.errorStatus(), GetParam().errorStatus);
    EXPECT_TRUE(delegate.told.isEmpty());
}

// The last check is not looked behind: a scan that comes so far says what it has found.
INSTANTIATE_TEST_SUITE_P(Places, StopTest,
                         ::testing::Values(Place{"Probe", &FakeComputer::beforePing, 0, 0},
                                           Place{"Address", &FakeComputer::beforeRoute, 2, 0},
                                           Place{"NameServer", &FakeComputer::beforeLookup, 3, 0},
                                           Place{"Proxy", &FakeComputer::beforeProxies, 3, 65536}),
                         [](const auto &place) { return std::string(place.param.name); });

class RacingStopTest : public velq::testing::DiagnosisTest
{
};

// Between the link and the address no tool runs that could hold the scan there; but what an earlier
// one has left with the link's item ends then.
TEST_F(RacingStopTest, MayComeWithTheLinksResult)
{
    computer.install(tools);
    NetData &link = *shared.array()[0];
    link.setErrorStatus({std::make_shared<NetStatus>()});
    link.errorStatus().first()->subErrorView = std::shared_ptr<QWidget>(
        static_cast<QWidget *>(nullptr), [this](QWidget *) { shared.stopScan(); });
    shared.scan();
    ASSERT_EQ(link.errorStatus().size(), 1);
    EXPECT_EQ(link.errorStatus().first()->name, QStringLiteral("Normal"));
    EXPECT_TRUE(shared.array()[1]->errorStatus().isEmpty());
    EXPECT_EQ(shared.errorStatus(), 0);
    EXPECT_FALSE(tools.log().contains("route"));
}

TEST_F(RacingStopTest, MayComeAtAnyMoment)
{
    computer.install(tools);
    for (int i = 0; i < 10; ++i) {
        shared.setStopScanFlag(false);
        auto scan = std::async(std::launch::async, [this] { shared.scan(); });
        std::thread([this, i] {
            std::this_thread::sleep_for(std::chrono::milliseconds(20 * i));
            shared.stopScan();
            shared.stopSpeedup();
        }).join();
        scan.get();
        EXPECT_TRUE(shared.stopScanFlag() && shared.stopFixFlag());
        EXPECT_TRUE(shared.errorStatus() == 0 || shared.errorStatus() == 65536);
    }
}

} // namespace
