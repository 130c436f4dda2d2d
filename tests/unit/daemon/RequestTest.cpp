#include "daemon/Request.h"

#include "unit/daemon/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace
{

namespace fs = std::filesystem;
using velq::daemon::isProgram;
using velq::daemon::isWellFormed;

TEST(RequestTest, APathIsAbsoluteAndGoesNoStepBack)
{
    for (const char *path : {"/bin/sh", "/", "/a..b/..c", "/...", "/no/such"})
        EXPECT_TRUE(isWellFormed({path, {}})) << path;
    for (const char *path :
         {"", "sh", "./sh", "bin/sh", "/bin/../sh", "/..", "/bin/..", " /bin/sh"})
        EXPECT_FALSE(isWellFormed({path, {}})) << path;
}

TEST(RequestTest, APathHas4096BytesAtMost)
{
    EXPECT_TRUE(isWellFormed({"/" + std::string(4095, 'a'), {}}));
    EXPECT_FALSE(isWellFormed({"/" + std::string(4096, 'a'), {}}));
    EXPECT_FALSE(isWellFormed({"/" + std::string(5000, 'a'), {}}));
}

TEST(RequestTest, ThereAre256ArgumentsAtMost)
{
    EXPECT_TRUE(isWellFormed({"/bin/sh", std::vector<std::string>(256, "x")}));
    EXPECT_FALSE(isWellFormed({"/bin/sh", std::vector<std::string>(257, "x")}));
}

TEST(RequestTest, AnArgumentIsWhatTheKernelTakes)
{
    EXPECT_TRUE(isWellFormed({"/bin/sh", {std::string(131071, 'x')}}));
    EXPECT_FALSE(isWellFormed({"/bin/sh", {std::string(131072, 'x')}}));
    EXPECT_FALSE(isWellFormed({"/bin/sh", {std::string(size_t{129} * 1024, 'x')}}));
}

TEST(RequestTest, AllArgumentsTogetherAreAMegabyteAtMost)
{
    EXPECT_TRUE(isWellFormed({"/bin/sh", std::vector<std::string>(8, std::string(131071, 'x'))}));
    std::vector<std::string> tooMuch(8, std::string(131071, 'x'));
    tooMuch.emplace_back("");
    EXPECT_FALSE(isWellFormed({"/bin/sh", tooMuch}));
}

TEST(RequestTest, AProgramIsAnExecutableRegularFile)
{
    const velq::testing::TemporaryFolder folder;
    folder.write("script", "#!/bin/sh\n");
    const fs::path script = folder.path() / "script";
    EXPECT_TRUE(isProgram("/bin/sh"));
    EXPECT_FALSE(isProgram(script));
    fs::permissions(script, fs::perms::group_exec, fs::perm_options::add);
    EXPECT_TRUE(isProgram(script));
    EXPECT_FALSE(isProgram("/no/such/file"));
    EXPECT_FALSE(isProgram("/tmp"));
    EXPECT_FALSE(isProgram("/dev/null"));
    EXPECT_FALSE(isProgram("/etc/passwd/sh"));
}

} // namespace
