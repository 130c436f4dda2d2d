#include "cli/Redaction.h"

#include <QJsonArray>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace
{

using velq::cli::Redaction;

QString redacted(const char *text, const QList<Redaction::Names> &names = {})
{
    return Redaction(names).of(QString::fromUtf8(text));
}

struct Case {
    const char *text;
    const char *redacted;
};

class RedactionTest : public testing::TestWithParam<Case>
{
};

TEST_P(RedactionTest, BlanksAddresses)
{
    EXPECT_EQ(redacted(GetParam().text).toStdString(), GetParam().redacted);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, RedactionTest,
    testing::Values(Case{"inet 192.168.1.17/24.", "inet [IPv4 address 1]/24."},
                    Case{"from 10.0.0.1 to 10.0.0.2, not 10.0.0.1",
                         "from [IPv4 address 1] to [IPv4 address 2], not [IPv4 address 1]"},
                    Case{"v10.0.0.1x", "v[IPv4 address 1]x"},
                    Case{"inet6 2001:db8::17/64", "inet6 [IPv6 address 1]/64"},
                    Case{"(fe80::1c2d:3e4f%wlan0)", "([IPv6 address 1])"},
                    Case{"inet6:fe80::1.", "inet[IPv6 address 1]"},
                    Case{"::ffff:10.0.0.1", "[IPv6 address 1]"},
                    Case{"2001:db8:0:1:2:3:4:17, fe80::1%wlx020000000008",
                         "[IPv6 address 1], [IPv6 address 2]"},
                    Case{"02:00:00:ff:fe:00:00:08", "[hardware address 1]"},
                    Case{"ether AA:bb:cc:0d:0e:0f", "ether [hardware address 1]"},
                    Case{"at a:b:c:d:e:f on lan0", "at [hardware address 1] on lan0"},
                    Case{"aa-bb-cc-0d-0e-0f", "[hardware address 1]"},
                    Case{"aabb.cc0d.0e0f", "[hardware address 1]"},
                    Case{"wlx001122AAbbcc and enx001122aabbcc",
                         "wlx[hardware address 1] and enx[hardware address 1]"},
                    Case{"ask proxy.example.org:3128", "ask [name 1]:3128"},
                    Case{"mail anna@example.org", "mail anna@[name 1]"},
                    Case{"http://wpad.corp/wpad.dat", "http://[name 1]/[name 2]"},
                    Case{"http://кэш.пример.рф:3128", "http://[name 1]:3128"},
                    Case{"by cache.xn--e1afmkfd.xn--p1ai.", "by [name 1]."}));

INSTANTIATE_TEST_SUITE_P(
    TextsThatTellNothing, RedactionTest,
    testing::Values(Case{"", ""}, Case{"No problems.", "No problems."},
                    Case{"2026-11-21T14:40:12+01:00", "2026-11-21T14:40:12+01:00"},
                    Case{"127.0.0.1 and ::1 and 0.0.0.0", "127.0.0.1 and ::1 and 0.0.0.0"},
                    Case{"255.255.255.0", "255.255.255.0"},
                    Case{"Linux 6.1.0-18-amd64, Velq 1.0.0", "Linux 6.1.0-18-amd64, Velq 1.0.0"},
                    Case{"systemd 252 (252.39-1~deb12u1)", "systemd 252 (252.39-1~deb12u1)"},
                    Case{"Wi-Fi on wlp2s0", "Wi-Fi on wlp2s0"}));

TEST(RedactionOfNames, BlanksWholeWordsInCapitalsOrNot)
{
    const QList<Redaction::Names> names{
        {QStringLiteral("host"), {QStringLiteral("anna")}},
        {QStringLiteral("home"), {QStringLiteral("/home/anna")}},
        {QStringLiteral("network"), {QStringLiteral("Annas (5 GHz)"), QString()}}};
    EXPECT_EQ(redacted("/home/anna/x of ANNA, not of hanna or annas: Annas (5 GHz)", names),
              QStringLiteral("[home 1]/x of [host 1], not of hanna or annas: [network 1]"));
}

// The domain would tell where the computer stands.
TEST(RedactionOfNames, TheDomainBehindANameIsBlankedToo)
{
    const QList<Redaction::Names> names{{QStringLiteral("host"), {QStringLiteral("annas-pc")}}};
    EXPECT_EQ(redacted("annas-pc.corp.example.com, annas-pc", names),
              QStringLiteral("[host 1].[name 1], [host 1]"));
}

// A small letter that the capital does not match: a dotted I has two characters then.
TEST(RedactionOfNames, CapitalsOfOtherAlphabetsAreTheSameWord)
{
    const QList<Redaction::Names> names{
        {QStringLiteral("network"),
         {QStringLiteral("\u0130stanbul"), QStringLiteral("\u041a\u0430\u0444\u0435")}}};
    EXPECT_EQ(redacted("in \u0130stanbul or \u041a\u0410\u0424\u0415", names),
              QStringLiteral("in [network 1] or [network 2]"));
}

TEST(RedactionOfNames, NamesGoBeforeWhatTellsNothing)
{
    EXPECT_EQ(redacted("by 127.0.0.1", {{QStringLiteral("server"), {QStringLiteral("127.0.0.1")}}}),
              QStringLiteral("by [server 1]"));
}

TEST(RedactionOfValues, ReachesEveryTextAndNoKey)
{
    const QJsonObject value{
        {QStringLiteral("10.0.0.1"),
         QJsonArray{QJsonObject{{QStringLiteral("a"), QStringLiteral("10.0.0.1")}}, 7, true}},
        {QStringLiteral("none"), QJsonValue()}};
    const QJsonObject wanted{
        {QStringLiteral("10.0.0.1"),
         QJsonArray{QJsonObject{{QStringLiteral("a"), QStringLiteral("[IPv4 address 1]")}}, 7,
                    true}},
        {QStringLiteral("none"), QJsonValue()}};
    EXPECT_EQ(Redaction({}).of(QJsonValue(value)).toObject(), wanted);
}

} // namespace
