#include "common/Reachability.h"

#include "common/AssertionFailure.h"
#include "common/NotificationCenter.h"

#include "support/NetworkNamespace.h"

#include <gtest/gtest.h>

namespace
{

using namespace velq;
using velq::testing::ip;

constexpr SCNetworkReachabilityFlags reachable = 2;
constexpr SCNetworkReachabilityFlags connectionRequired = 4;
constexpr SCNetworkReachabilityFlags onTraffic = 8;
constexpr SCNetworkReachabilityFlags intervention = 16;
constexpr SCNetworkReachabilityFlags onDemand = 32;
constexpr SCNetworkReachabilityFlags isDirect = 0x20000;

TEST(ReachabilityTest, TheFlagBitsAreThePlatforms)
{
    EXPECT_EQ(kSCNetworkReachabilityFlagsReachable, reachable);
    EXPECT_EQ(kSCNetworkReachabilityFlagsConnectionRequired, connectionRequired);
    EXPECT_EQ(kSCNetworkReachabilityFlagsConnectionOnTraffic, onTraffic);
    EXPECT_EQ(kSCNetworkReachabilityFlagsInterventionRequired, intervention);
    EXPECT_EQ(kSCNetworkReachabilityFlagsConnectionOnDemand, onDemand);
    EXPECT_EQ(kSCNetworkReachabilityFlagsIsDirect, isDirect);
}

TEST(ReachabilityTest, TheGeneralRule)
{
    const auto status = Reachability::networkStatusForFlags;
    EXPECT_EQ(status(0), NetworkNotReachable);
    EXPECT_EQ(status(reachable), NetworkReachable);
    EXPECT_EQ(status(reachable | connectionRequired), NetworkNotReachable);
    EXPECT_EQ(status(reachable | connectionRequired | onTraffic), NetworkReachable);
    EXPECT_EQ(status(reachable | connectionRequired | onDemand), NetworkReachable);
    EXPECT_EQ(status(reachable | connectionRequired | onDemand | intervention),
              NetworkNotReachable);
    EXPECT_EQ(status(reachable | connectionRequired | onTraffic | intervention),
              NetworkNotReachable);
    EXPECT_EQ(status(reachable | onTraffic | intervention), NetworkReachable);
    EXPECT_EQ(status(connectionRequired | onTraffic), NetworkNotReachable);
    EXPECT_EQ(status(onDemand | onTraffic | isDirect), NetworkNotReachable);
}

// Every combination of the six bits against the rule in one line.
TEST(ReachabilityTest, TheGeneralRuleHoldsForAllCombinations)
{
    for (SCNetworkReachabilityFlags flags = 0; flags < 64; ++flags) {
        const auto has = [flags](SCNetworkReachabilityFlags bit) {
            return (flags & bit) != 0;
        };
        const bool usable = has(reachable)
            && (!has(connectionRequired)
                || ((has(onDemand) || has(onTraffic)) && !has(intervention)));
        EXPECT_EQ(Reachability::networkStatusForFlags(flags) == NetworkReachable, usable) << flags;
    }
}

TEST(ReachabilityTest, TheLocalLinkRuleAsksForDirect)
{
    const auto status = Reachability::localWiFiStatusForFlags;
    EXPECT_EQ(status(reachable), NetworkNotReachable);
    EXPECT_EQ(status(isDirect), NetworkNotReachable);
    EXPECT_EQ(status(reachable | isDirect), NetworkReachable);
    EXPECT_EQ(status(reachable | isDirect | connectionRequired), NetworkReachable);
}

// A target whose flags the test sets, and whose changes it tells.
class ScriptedTarget : public SCNetworkReachability
{
public:
    std::optional<SCNetworkReachabilityFlags> flags;
    bool takesCallback = true;
    bool takesSchedule = true;
    int scheduled = 0;

    std::optional<SCNetworkReachabilityFlags> getFlags() override { return flags; }
    bool setCallback(SCNetworkReachabilityCallBack callback, void *info) override
    {
        m_callback = callback;
        m_info = info;
        return takesCallback;
    }
    bool scheduleWithRunLoop() override
    {
        ++scheduled;
        return takesSchedule;
    }
    bool unscheduleFromRunLoop() override
    {
        --scheduled;
        return true;
    }
    void change() { m_callback(this, flags.value_or(0), m_info); }

private:
    SCNetworkReachabilityCallBack m_callback = nullptr;
    void *m_info = nullptr;
};

class ReachabilityMonitorTest : public ::testing::Test
{
protected:
    ScriptedTarget *target = new ScriptedTarget;
    Reachability monitor{std::unique_ptr<SCNetworkReachability>(target)};
};

TEST_F(ReachabilityMonitorTest, StatusFollowsTheFlags)
{
    target->flags = reachable;
    EXPECT_EQ(monitor.currentReachabilityStatus(), NetworkReachable);
    target->flags = 0;
    EXPECT_EQ(monitor.currentReachabilityStatus(), NetworkNotReachable);
    target->flags = std::nullopt;
    EXPECT_EQ(monitor.currentReachabilityStatus(), NetworkNotReachable);
}

TEST_F(ReachabilityMonitorTest, ConnectionRequiredIsTheFlag)
{
    target->flags = reachable | connectionRequired;
    EXPECT_TRUE(monitor.connectionRequired());
    target->flags = reachable;
    EXPECT_FALSE(monitor.connectionRequired());
    target->flags = std::nullopt;
    EXPECT_FALSE(monitor.connectionRequired());
}

TEST_F(ReachabilityMonitorTest, StartingNeedsBothSteps)
{
    EXPECT_TRUE(monitor.startNotifer());
    target->takesSchedule = false;
    EXPECT_FALSE(monitor.startNotifer());
    target->takesSchedule = true;
    target->takesCallback = false;
    const int before = target->scheduled;
    EXPECT_FALSE(monitor.startNotifer());
    EXPECT_EQ(target->scheduled, before);
}

TEST_F(ReachabilityMonitorTest, StoppingWithoutStartingDoesNothing)
{
    EXPECT_NO_THROW(monitor.stopNotifer());
    Reachability withoutTarget;
    EXPECT_NO_THROW(withoutTarget.stopNotifer());
    EXPECT_FALSE(withoutTarget.startNotifer());
}

TEST_F(ReachabilityMonitorTest, AChangeIsPostedWithTheMonitorAsItsObject)
{
    QObject context;
    QObject *about = nullptr;
    NotificationCenter::defaultCenter().addObserver(
        &context, QStringLiteral("kNetworkReachabilityChangedNotification"), nullptr,
        [&](QObject *object) { about = object; });
    ASSERT_TRUE(monitor.startNotifer());
    target->change();
    EXPECT_EQ(about, &monitor);
}

TEST_F(ReachabilityMonitorTest, StoppingUnschedulesAndLeavesTheCallback)
{
    QObject context;
    int posts = 0;
    NotificationCenter::defaultCenter().addObserver(
        &context, kNetworkReachabilityChangedNotification, &monitor, [&](QObject *) { ++posts; });
    ASSERT_TRUE(monitor.startNotifer());
    EXPECT_EQ(target->scheduled, 1);
    monitor.stopNotifer();
    EXPECT_EQ(target->scheduled, 0);
    target->change();
    EXPECT_EQ(posts, 1);
}

// A target that tells what happens to it in the end.
class MortalTarget : public ScriptedTarget
{
public:
    explicit MortalTarget(QStringList &events)
        : m_events(events)
    {
    }
    MortalTarget(const MortalTarget &) = delete;
    MortalTarget &operator=(const MortalTarget &) = delete;
    ~MortalTarget() override { m_events.append(QStringLiteral("released")); }

    bool unscheduleFromRunLoop() override
    {
        m_events.append(QStringLiteral("unscheduled"));
        return true;
    }

private:
    QStringList &m_events;
};

TEST(ReachabilityEndTest, ItsEndUnschedulesAndReleasesTheTarget)
{
    QStringList events;
    auto monitor = std::make_unique<Reachability>(std::make_unique<MortalTarget>(events));
    ASSERT_TRUE(monitor->startNotifer());
    EXPECT_TRUE(events.isEmpty());
    monitor.reset();
    EXPECT_EQ(events, (QStringList{QStringLiteral("unscheduled"), QStringLiteral("released")}));
}

TEST(ReachabilityLocalLinkTest, UsesTheLocalLinkRule)
{
    auto owned = std::make_unique<ScriptedTarget>();
    ScriptedTarget &target = *owned;
    const Reachability monitor(std::move(owned), true);
    target.flags = reachable;
    EXPECT_EQ(monitor.currentReachabilityStatus(), NetworkNotReachable);
    target.flags = reachable | isDirect;
    EXPECT_EQ(monitor.currentReachabilityStatus(), NetworkReachable);
}

TEST(ReachabilityFactoriesTest, RefuseWhatThePlatformRefuses)
{
    EXPECT_EQ(Reachability::reachabilityWithHostName(QStringLiteral("")), nullptr);
    EXPECT_EQ(Reachability::reachabilityWithAddress(nullptr), nullptr);
    EXPECT_NE(Reachability::reachabilityWithHostName(QStringLiteral("localhost")), nullptr);
    EXPECT_NE(Reachability::reachabilityForInternetConnection(), nullptr);
    EXPECT_NE(Reachability::reachabilityForLocalWiFi(), nullptr);
}

// A default route without a network of its own: reachable, but not direct.
TEST(ReachabilityFactoriesTest, TheLocalLinkMonitorAsksForTheLocalLink)
{
    ENTER_NETWORK_NAMESPACE_OR_SKIP();
    ip("link add lan0 type veth peer name far0");
    ip("link set lan0 up");
    ip("link set far0 up");
    ip("addr add 192.168.7.2/32 dev lan0");
    ip("route add default dev lan0");
    const auto local = Reachability::reachabilityForLocalWiFi();
    EXPECT_EQ(Reachability::reachabilityForInternetConnection()->currentReachabilityStatus(),
              NetworkReachable);
    EXPECT_EQ(local->currentReachabilityStatus(), NetworkNotReachable);
    ip("addr add 192.168.7.3/24 dev lan0");
    EXPECT_EQ(local->currentReachabilityStatus(), NetworkReachable);
}

// No IPv4 address is reachable then, but the internet is.
TEST(ReachabilityFactoriesTest, TheInternetMonitorAsksForAnyRouteToTheOutside)
{
    ENTER_NETWORK_NAMESPACE_OR_SKIP();
    ip("link add lan0 type veth peer name far0");
    ip("link set lan0 up");
    ip("link set far0 up");
    const auto internet = Reachability::reachabilityForInternetConnection();
    EXPECT_EQ(internet->currentReachabilityStatus(), NetworkNotReachable);
    ip("-6 addr add 2001:db8::2/64 dev lan0 nodad");
    ip("-6 route add default via 2001:db8::1 dev lan0");
    EXPECT_EQ(internet->currentReachabilityStatus(), NetworkReachable);
}

template <typename Broken> AssertionFailure failureOf(Broken broken)
{
    try {
        broken();
    } catch (const AssertionFailure &failure) {
        return failure;
    }
    ADD_FAILURE() << "no assertion failed";
    return {"", "", ""};
}

constexpr const char *callbackSignature =
    "void ReachabilityCallback(SCNetworkReachabilityRef, SCNetworkReachabilityFlags, void *)";

TEST(ReachabilityAssertionsTest, TheCallbackWantsItsMonitor)
{
    const auto none = failureOf([] { ReachabilityCallback(nullptr, 0, nullptr); });
    EXPECT_STREQ(none.what(), "info was NULL in ReachabilityCallback");
    EXPECT_EQ(none.function(), callbackSignature);
    EXPECT_EQ(none.file(), "Reachability");

    QObject other;
    const auto wrong = failureOf([&] { ReachabilityCallback(nullptr, 0, &other); });
    EXPECT_STREQ(wrong.what(), "info was wrong class in ReachabilityCallback");
    EXPECT_EQ(wrong.function(), callbackSignature);
}

TEST(ReachabilityAssertionsTest, QuestionsWantATarget)
{
    const Reachability none;
    const auto required = failureOf([&] { (void)none.connectionRequired(); });
    EXPECT_STREQ(required.what(), "connectionRequired called with NULL reachabilityRef");
    EXPECT_EQ(required.file(), "Reachability");
    EXPECT_STREQ(failureOf([&] { (void)none.currentReachabilityStatus(); }).what(),
                 "currentNetworkStatus called with NULL reachabilityRef");
}

TEST(ReachabilityAssertionsDeathTest, UncaughtTheyEndTheProgram)
{
    const auto callWithoutInfo = []() noexcept {
        ReachabilityCallback(nullptr, 0, nullptr);
    };
    EXPECT_DEATH(callWithoutInfo(), "info was NULL in ReachabilityCallback");
}

} // namespace
