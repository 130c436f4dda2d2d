#include "process/nettools/Golden.h"
#include "process/nettools/ToolRun.h"

#include <gtest/gtest.h>

namespace
{

using velq::testing::expectGolden;
using velq::testing::runNettool;

TEST(LaunchctlTest, ComplainsOfAWrongCall)
{
    expectGolden("launchctl-without-a-verb", runNettool("launchctl", {}));
    expectGolden("launchctl-without-a-verb", runNettool("launchctl", {"start", "/a.plist"}));
    for (const std::vector<std::string> &arguments : std::vector<std::vector<std::string>>{
             {"load"}, {"load", ""}, {"unload", "-w"}, {"load", "/a", "b.plist"}})
        expectGolden("launchctl-without-one-file", runNettool("launchctl", arguments));
}

} // namespace
