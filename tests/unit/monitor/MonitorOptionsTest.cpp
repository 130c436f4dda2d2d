#include "monitor/MonitorOptions.h"

#include <gtest/gtest.h>

namespace
{

using velq::MonitorOptions;
using Request = MonitorOptions::Request;

MonitorOptions parsed(std::initializer_list<const char *> arguments)
{
    QStringList list;
    for (const char *argument : arguments)
        list.append(QString::fromUtf8(argument));
    return MonitorOptions::parse(list);
}

TEST(MonitorOptionsTest, KnowsItsOptions)
{
    EXPECT_EQ(parsed({}).request, Request::Run);
    EXPECT_EQ(parsed({"--console"}).request, Request::RunInConsole);
    EXPECT_EQ(parsed({"--help"}).request, Request::ShowHelp);
    EXPECT_EQ(parsed({"-h"}).request, Request::ShowHelp);
    EXPECT_EQ(parsed({"--version"}).request, Request::ShowVersion);
}

TEST(MonitorOptionsTest, RefusesEverythingElseAndNamesIt)
{
    EXPECT_EQ(parsed({"--consol"}).request, Request::Refuse);
    EXPECT_EQ(parsed({"--console", "more"}).unknown, QStringLiteral("more"));
    EXPECT_EQ(parsed({""}).request, Request::Refuse);
}

TEST(MonitorOptionsTest, TheUsageIsOneLine)
{
    EXPECT_FALSE(MonitorOptions::usage().contains(QLatin1Char('\n')));
    EXPECT_TRUE(MonitorOptions::help().startsWith(MonitorOptions::usage()));
}

} // namespace
