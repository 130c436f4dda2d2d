#include "unit/daemon/GateBench.h"

#include <gtest/gtest.h>

#include <chrono>
#include <type_traits>
#include <unistd.h>

namespace
{

using velq::daemon::Authorised;
using velq::daemon::Request;
using velq::testing::GateBench;
using Reply = GateBench::Reply;

const std::string polkitSaysNo = "NotAuthorized: polkit says no, or nothing";

class AdmissionTest : public ::testing::Test
{
protected:
    GateBench m_bench;
};

static_assert(!std::is_copy_constructible_v<Authorised>);
static_assert(!std::is_constructible_v<Authorised, Request>);

TEST_F(AdmissionTest, AClearYesIsTheOnlyWayIn)
{
    m_bench.sendEcho();
    EXPECT_EQ(m_bench.decision(), "Authorised");
    ASSERT_EQ(m_bench.questions().size(), 1u);
    const GateBench::Question &question = m_bench.questions().front();
    EXPECT_EQ(question.busName, m_bench.callerName());
    EXPECT_EQ(question.action, "com.zelmor.velqdemon.run-shell");
    EXPECT_EQ(question.program, "/bin/echo");
    EXPECT_EQ(question.flags, 0u);
    EXPECT_EQ(question.cancellation, "");
    EXPECT_EQ(m_bench.admission().user(), geteuid());
}

TEST_F(AdmissionTest, EverythingElseFromPolkitIsANo)
{
    for (const Reply reply :
         {Reply::No, Reply::Challenge, Reply::Error, Reply::Number, Reply::TwoBooleans}) {
        GateBench bench;
        bench.polkitReplies({reply});
        bench.sendEcho();
        EXPECT_EQ(bench.decision(), polkitSaysNo) << static_cast<int>(reply);
        EXPECT_EQ(bench.questions().size(), 1u);
    }
}

TEST_F(AdmissionTest, ASilentPolkitIsANoAfterFiveSeconds)
{
    m_bench.polkitReplies({Reply::Silence});
    const auto start = std::chrono::steady_clock::now();
    m_bench.sendEcho();
    EXPECT_EQ(m_bench.decision(), polkitSaysNo);
    const auto took = std::chrono::steady_clock::now() - start;
    EXPECT_GE(took, std::chrono::milliseconds(4900));
    EXPECT_LT(took, std::chrono::seconds(8));
}

TEST_F(AdmissionTest, WithoutPolkitNobodyIsLetIn)
{
    m_bench.removePolkit();
    m_bench.sendEcho();
    EXPECT_EQ(m_bench.decision(), polkitSaysNo);
}

TEST_F(AdmissionTest, APolkitThatDiesIsANo)
{
    m_bench.polkitReplies({Reply::LeaveBus});
    m_bench.sendEcho();
    EXPECT_EQ(m_bench.decision(), polkitSaysNo);
}

TEST_F(AdmissionTest, WithoutAGrantPolkitIsNotAsked)
{
    std::filesystem::remove(m_bench.folder().grant());
    m_bench.sendEcho();
    EXPECT_EQ(m_bench.decision(), "NotAuthorized: no grant");
    EXPECT_TRUE(m_bench.questions().empty());
}

// Nor is a stranger told what is wrong with the call.
TEST_F(AdmissionTest, AStrangersMalformedCallIsNotAuthorized)
{
    std::filesystem::remove(m_bench.folder().grant());
    m_bench.send("s", "/bin/echo");
    EXPECT_EQ(m_bench.decision(), "NotAuthorized: no grant");
}

TEST_F(AdmissionTest, WhereThereIsNoPlacePolkitIsNotAsked)
{
    m_bench.objectToAsking({velq::daemon::Error::Busy, "no place"});
    m_bench.sendEcho();
    EXPECT_EQ(m_bench.decision(), "Busy: no place");
    EXPECT_TRUE(m_bench.questions().empty());
}

TEST_F(AdmissionTest, AStrangerIsNotToldWhetherThereIsAPlace)
{
    std::filesystem::remove(m_bench.folder().grant());
    m_bench.objectToAsking({velq::daemon::Error::Busy, "no place"});
    m_bench.sendEcho();
    EXPECT_EQ(m_bench.decision(), "NotAuthorized: no grant");
}

// A name can change hands between one gate and the next.
TEST_F(AdmissionTest, ASenderIsKnownByItsUniqueNameAlone)
{
    m_bench.nameCaller("com.zelmor.Caller");
    m_bench.beginAs("com.zelmor.Caller");
    EXPECT_EQ(m_bench.decision(), "NotAuthorized: the sender has no unique name");
    EXPECT_TRUE(m_bench.questions().empty());
    GateBench bench;
    bench.beginAs(bench.callerName().c_str());
    EXPECT_EQ(bench.decision(), "Authorised");
}

TEST_F(AdmissionTest, AnotherSignatureIsMalformed)
{
    m_bench.send("s", "/bin/echo");
    EXPECT_EQ(m_bench.decision(), "BadArguments: malformed");
    GateBench more;
    more.send("sass", "/bin/echo", 0, "");
    EXPECT_EQ(more.decision(), "BadArguments: malformed");
    GateBench other;
    other.send("sau", "/bin/echo", 0);
    EXPECT_EQ(other.decision(), "BadArguments: malformed");
    EXPECT_TRUE(m_bench.questions().empty());
}

TEST_F(AdmissionTest, APathThatIsNoneIsMalformed)
{
    m_bench.send("sas", "bin/echo", 0);
    EXPECT_EQ(m_bench.decision(), "BadArguments: malformed");
    EXPECT_TRUE(m_bench.questions().empty());
}

TEST_F(AdmissionTest, WhatIsAuthorisedIsWhatWasSent)
{
    m_bench.send("sas", "/bin/echo", 3, "a b", "", "\n");
    EXPECT_EQ(m_bench.decision(), "Authorised");
    EXPECT_EQ(m_bench.admission().request()->launchPath, "/bin/echo");
    EXPECT_EQ(m_bench.admission().request()->arguments,
              (std::vector<std::string>{"a b", "", "\n"}));
}

TEST_F(AdmissionTest, MoreArgumentsThan256AreMalformed)
{
    m_bench.sendArguments(256);
    EXPECT_EQ(m_bench.decision(), "Authorised");
    GateBench bench;
    bench.sendArguments(257);
    EXPECT_EQ(bench.decision(), "BadArguments: malformed");
}

// Whether a file exists is nothing to tell before it is clear who asks.
TEST_F(AdmissionTest, AMissingFileIsToldToThoseWhoMayKnow)
{
    m_bench.polkitReplies({Reply::No, Reply::Yes});
    m_bench.send("sas", "/no/such/file", 0);
    EXPECT_EQ(m_bench.decision(), polkitSaysNo);
    GateBench bench;
    bench.send("sas", "/no/such/file", 0);
    EXPECT_EQ(bench.decision(), "BadArguments: no program");
}

TEST_F(AdmissionTest, ACallerThatLeavesWhilePolkitThinksGetsNothing)
{
    m_bench.polkitReplies({Reply::Silence});
    m_bench.sendEcho();
    ASSERT_TRUE(m_bench.runUntil([this] { return m_bench.questions().size() == 1; }));
    m_bench.callerLeaves();
    EXPECT_TRUE(m_bench.decision().starts_with("NotAuthorized: "));
}

TEST_F(AdmissionTest, AYesForACallerThatHasLeftIsANo)
{
    m_bench.polkitReplies({Reply::YesToNobody});
    m_bench.sendEcho();
    EXPECT_EQ(m_bench.decision(), "NotAuthorized: the caller has left");
}

TEST_F(AdmissionTest, APersonIsAskedWhereTheCallerAllowsIt)
{
    m_bench.polkitReplies({Reply::Challenge, Reply::Yes});
    m_bench.letPersonBeAsked();
    m_bench.sendEcho();
    EXPECT_EQ(m_bench.decision(), "Authorised");
    ASSERT_EQ(m_bench.questions().size(), 2u);
    EXPECT_EQ(m_bench.questions()[0].flags, 0u);
    EXPECT_EQ(m_bench.questions()[1].flags, 1u);
    EXPECT_NE(m_bench.questions()[1].cancellation, "");
    m_bench.forgetAdmission();
    m_bench.runUntil([] { return true; });
    EXPECT_TRUE(m_bench.cancellations().empty());
}

TEST_F(AdmissionTest, APersonIsAskedOnce)
{
    m_bench.polkitReplies({Reply::Challenge});
    m_bench.letPersonBeAsked();
    m_bench.sendEcho();
    EXPECT_EQ(m_bench.decision(), polkitSaysNo);
    EXPECT_EQ(m_bench.questions().size(), 2u);
}

TEST_F(AdmissionTest, TheQuestionLeavesTheScreenWithTheCaller)
{
    m_bench.polkitReplies({Reply::Challenge, Reply::Silence});
    m_bench.letPersonBeAsked();
    m_bench.sendEcho();
    ASSERT_TRUE(m_bench.runUntil([this] { return m_bench.questions().size() == 2; }));
    EXPECT_FALSE(m_bench.isDecided());
    m_bench.callerLeaves();
    EXPECT_EQ(m_bench.decision(), "NotAuthorized: the caller has left");
    ASSERT_TRUE(m_bench.runUntil([this] { return !m_bench.cancellations().empty(); }));
    EXPECT_EQ(m_bench.cancellations().front(), m_bench.questions()[1].cancellation);
}

} // namespace
