#include "nettools/names/AnswerText.h"

#include <gtest/gtest.h>

namespace
{

using velq::nettools::appendAnswer;
using velq::nettools::NameAnswer;
using Kind = NameAnswer::Kind;

std::string textOf(const NameAnswer &answer)
{
    std::string text;
    appendAnswer(text, "www.example.test", answer);
    return text;
}

NameAnswer answerOf(Kind kind)
{
    NameAnswer answer;
    answer.kind = kind;
    answer.server = "192.0.2.53";
    return answer;
}

TEST(AnswerText, AliasesComeBeforeTheAddresses)
{
    NameAnswer answer = answerOf(Kind::Found);
    answer.names = {"www.example.test", "web.example.test", "a.example.test"};
    answer.addresses = {"198.51.100.1", "198.51.100.2"};
    EXPECT_EQ(textOf(answer),
              "Server:\t\t192.0.2.53\n"
              "Address:\t192.0.2.53#53\n"
              "\n"
              "Non-authoritative answer:\n"
              "www.example.test\tcanonical name = web.example.test.\n"
              "web.example.test\tcanonical name = a.example.test.\n"
              "Name:\ta.example.test\n"
              "Address: 198.51.100.1\n"
              "Name:\ta.example.test\n"
              "Address: 198.51.100.2\n"
              "\n");
}

TEST(AnswerText, TheServerThatKeepsTheNameIsNotExcused)
{
    NameAnswer answer = answerOf(Kind::Found);
    answer.authoritative = true;
    answer.names = {"www.example.test"};
    answer.addresses = {"2001:db8::1"};
    EXPECT_EQ(textOf(answer),
              "Server:\t\t192.0.2.53\n"
              "Address:\t192.0.2.53#53\n"
              "\n"
              "Name:\twww.example.test\n"
              "Address: 2001:db8::1\n"
              "\n");
}

TEST(AnswerText, AnErrorIsTheServersOwn)
{
    NameAnswer answer = answerOf(Kind::Failure);
    answer.failure = "NXDOMAIN";
    EXPECT_EQ(textOf(answer),
              "Server:\t\t192.0.2.53\n"
              "Address:\t192.0.2.53#53\n"
              "\n"
              "** server can't find www.example.test: NXDOMAIN\n"
              "\n");
}

TEST(AnswerText, ANameWithoutAnAddress)
{
    EXPECT_EQ(textOf(answerOf(Kind::NoAddress)),
              "Server:\t\t192.0.2.53\n"
              "Address:\t192.0.2.53#53\n"
              "\n"
              "Non-authoritative answer:\n"
              "*** Can't find www.example.test: No answer\n"
              "\n");
}

TEST(AnswerText, SilenceNamesNoServer)
{
    EXPECT_EQ(textOf(answerOf(Kind::Silence)),
              ";; connection timed out; no servers could be reached\n\n");
}

} // namespace
