#include "process/nettools/Golden.h"
#include "process/nettools/ToolRun.h"
#include "unit/platform/propertylist/ListFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>

namespace
{

using testing::HasSubstr;
using testing::MatchesRegex;
using velq::testing::expectGolden;
using velq::testing::list;
using velq::testing::ListFolder;
using velq::testing::runNettool;
using velq::testing::ToolRun;

ToolRun defaults(const std::vector<std::string> &arguments)
{
    return runNettool("defaults", arguments);
}

class DefaultsTest : public testing::Test
{
protected:
    DefaultsTest()
    {
        setenv("HOME", home.path("").c_str(), 1);
        std::filesystem::create_directories(home.path("Library/Preferences"));
    }

    // Expects it to be done in silence.
    static void write(const std::vector<std::string> &arguments)
    {
        std::vector<std::string> words{"write", "com.zelmor.Some"};
        words.insert(words.end(), arguments.begin(), arguments.end());
        const ToolRun run = defaults(words);
        EXPECT_EQ(run.output + run.errors, "");
        EXPECT_EQ(run.status, 0);
    }
    static std::string read(const std::string &key)
    {
        return defaults({"read", "com.zelmor.Some", key}).output;
    }

    const ListFolder home;
    const std::string some = "Library/Preferences/com.zelmor.Some.plist";
};

TEST_F(DefaultsTest, APlainValueIsReadBackAsItWas)
{
    const std::vector<std::string> delay{"com.apple.Safari", "WebKitInitialTimedLayoutDelay"};
    expectGolden("defaults-no-pair", defaults({"read", delay[0], delay[1]}));
    EXPECT_EQ(defaults({"write", delay[0], delay[1], "0.25"}).status, 0);
    expectGolden("defaults-delay", defaults({"read", delay[0], delay[1]}));
    EXPECT_THAT(home.read(home.path("Library/Preferences/com.apple.Safari.plist")),
                HasSubstr("\t<key>WebKitInitialTimedLayoutDelay</key>\n\t<string>0.25</string>\n"));
}

TEST_F(DefaultsTest, EveryTypeIsWrittenAsItself)
{
    write({"text", "-string", "-int"});
    write({"whole", "-int", "-5"});
    write({"real", "-float", "0.25"});
    write({"yes", "-bool", "YES"});
    write({"no", "-boolean", "false"});
    write({"date", "-date", "2001-01-02 03:04:05 +0100"});
    write({"data", "-data", "00 01 fF"});
    write({"array", "-array", "a", "-int", "1"});
    write({"dict", "-dict", "k", "-bool", "true"});
    expectGolden("defaults-types", {home.read(home.path(some)), "", 0});
}

TEST_F(DefaultsTest, ScalarsAreShownPlain)
{
    write({R"({ text = "a b\U7f51\"\n\055"; data = <0001ff>; })"});
    EXPECT_EQ(read("text"), "a b\xe7\xbd\x91\"\n-\n");
    EXPECT_EQ(read("data"), "{length = 3, bytes = 0x0001ff}\n");
    for (const auto &[type, value, shown] : std::vector<std::array<std::string, 3>>{
             {"-int", "0x10", "16\n"},
             {"-int", "-9223372036854775808", "-9223372036854775808\n"},
             {"-float", "+1e300", "1e+300\n"},
             {"-float", "3", "3\n"},
             {"-bool", "no", "0\n"},
             {"-date", "2024-02-29", "2024-02-29 00:00:00 +0000\n"},
             {"-date", "4001-01-01T00:00:00Z", "4001-01-01 00:00:00 +0000\n"}}) {
        write({"key", type, value});
        EXPECT_EQ(read("key"), shown);
    }
}

// The dock's settings as the system that has one shows them, cut short.
TEST_F(DefaultsTest, ListsAreShownInTheOldStyle)
{
    std::string book = "626f6f6b240200000000041030000000";
    book.append(size_t{2} * (548 - 16 - 8), '0').append("0400000000000000");
    write({"{ \"mod-count\" = 4216; loc = \"zh_CN:CN\"; autohide = 1; \"persistent-apps\" = ({"
           "\"tile-type\" = \"file-tile\"; GUID = 4010545205; \"tile-data\" = { book = <"
           + book
           + ">; \"file-label\" = \"Safari\\U6d4f\\U89c8\\U5668\"; \"file-data\" = {"
             "\"_CFURLString\" = \"file:///Applications/Safari.app/\"; }; }; }, { }); "
             "\"persistent-others\" = (); empty = \"\"; }"});
    expectGolden("defaults-dock", defaults({"read", "com.zelmor.Some"}));
}

TEST_F(DefaultsTest, TextsAreEscapedInLists)
{
    write({"list", "-array", "a\"b", "a\\b", "a\tb\nc", "\xf0\x9f\x8d\x8f", "en_US", "-5", "0.5",
           ""});
    expectGolden("defaults-escapes", defaults({"read", "com.zelmor.Some", "list"}));
}

TEST_F(DefaultsTest, AdditionsKeepWhatIsThere)
{
    write({"list", "-array-add", "a"});
    write({"list", "-array-add", "b", "c"});
    write({"map", "-dict-add", "a", "1", "b", "2"});
    write({"map", "-dict-add", "b", "3"});
    expectGolden("defaults-additions", defaults({"read", "com.zelmor.Some"}));
    const ToolRun refused = defaults({"write", "com.zelmor.Some", "map", "-array-add", "d"});
    expectGolden("defaults-wrong-addition", refused);
}

TEST_F(DefaultsTest, AWholeDomainIsReplaced)
{
    write({"old", "value"});
    write({"<dict><key>new</key><true/></dict>"});
    expectGolden("defaults-replaced", defaults({"read", "com.zelmor.Some"}));
    expectGolden("defaults-no-dictionary", defaults({"write", "com.zelmor.Some", "(a)"}));
    EXPECT_EQ(read("new"), "1\n");
}

TEST_F(DefaultsTest, DeletingTakesAKeyOrADomain)
{
    write({"a", "1"});
    write({"b", "2"});
    EXPECT_EQ(defaults({"delete", "com.zelmor.Some", "a"}).status, 0);
    EXPECT_EQ(read("a") + read("b"), "2\n");
    expectGolden("defaults-not-found", defaults({"delete", "com.zelmor.Some", "a"}));
    EXPECT_EQ(defaults({"delete", "com.zelmor.Some"}).status, 0);
    EXPECT_FALSE(std::filesystem::exists(home.path(some)));
    expectGolden("defaults-not-found", defaults({"delete", "com.zelmor.Some"}));
    expectGolden("defaults-not-found", defaults({"delete", "com.zelmor.Some", "a"}));
    expectGolden("defaults-no-domain", defaults({"read", "com.zelmor.Some"}));
}

TEST_F(DefaultsTest, ADomainMayBeAPathOrWhatAllShare)
{
    const std::string path = home.path("list");
    EXPECT_EQ(defaults({"write", path, "key", "of a path"}).status, 0);
    EXPECT_EQ(defaults({"read", path + ".plist", "key"}).output, "of a path\n");
    EXPECT_EQ(defaults({"write", "-g", "key", "of all"}).status, 0);
    EXPECT_EQ(defaults({"read", "NSGlobalDomain", "key"}).output, "of all\n");
    expectGolden("defaults-no-global-pair", defaults({"read", "-g", "none"}));
    write({"key", "of one"});
    expectGolden("defaults-everything", defaults({"read"}));
}

TEST_F(DefaultsTest, BadValuesChangeNothing)
{
    write({"key", "kept"});
    const std::string before = home.read(home.path(some));
    for (const std::vector<std::string> &value :
         std::vector<std::vector<std::string>>{{"-int", "5x"},
                                               {"-int", "99999999999999999999"},
                                               {"-int", ""},
                                               {"-float", "1,5"},
                                               {"-float", ""},
                                               {"-bool", "maybe"},
                                               {"-data", "0"},
                                               {"-data", "xy"},
                                               {"-date", "2001-02-30"},
                                               {"-date", "tomorrow"},
                                               {"-date", "2001-01-01 24:61:00"},
                                               {"-date", "2001-01-01 00:00:00 0100"},
                                               {"{ a = "},
                                               {"( a b )"},
                                               {"<00"},
                                               {"\"open"},
                                               {"<dict><key>a</key></dict>"},
                                               {R"({ a = "\000"; })"},
                                               {"\x1b[0m"},
                                               {"\xff"},
                                               {"-array", "-int", "x"},
                                               {"-dict", "k"},
                                               {"-array", "-int"},
                                               {"a", "b"},
                                               {"-kind", "b"},
                                               {std::string(100, '(') + std::string(100, ')')}}) {
        std::vector<std::string> words{"write", "com.zelmor.Some", "key"};
        words.insert(words.end(), value.begin(), value.end());
        const ToolRun run = defaults(words);
        EXPECT_EQ(run.status, 1) << value.back();
        EXPECT_THAT(run.errors, MatchesRegex("defaults: .*\nDefaults have not been changed\\.\n"));
        EXPECT_EQ(home.read(home.path(some)), before) << value.back();
    }
}

TEST_F(DefaultsTest, WrongCallsAreAnswered)
{
    expectGolden("defaults-without-arguments", defaults({}));
    expectGolden("defaults-unknown-verb", defaults({"find", "x"}));
    for (const std::vector<std::string> &words :
         std::vector<std::vector<std::string>>{{"write"},
                                               {"write", "a"},
                                               {"delete"},
                                               {"read", "a", "b", "c"},
                                               {"delete", "a", "b", "c"},
                                               {"read", ""},
                                               {"read", "a/b"},
                                               {"read", "../a"},
                                               {"read", "-x"},
                                               {"write", "-x", "a", "b"}}) {
        const ToolRun run = defaults(words);
        EXPECT_EQ(run.status, 2) << words.back();
        EXPECT_THAT(run.errors, HasSubstr("\nusage: defaults read"));
    }
}

TEST_F(DefaultsTest, ADamagedListIsToldAndKept)
{
    home.write(some, "<plist><dict>");
    for (const std::vector<std::string> &words :
         std::vector<std::vector<std::string>>{{"read", "com.zelmor.Some"},
                                               {"read", "com.zelmor.Some", "a"},
                                               {"delete", "com.zelmor.Some", "a"}}) {
        const ToolRun run = defaults(words);
        EXPECT_EQ(run.status, 1);
        EXPECT_THAT(run.errors, HasSubstr("com.zelmor.Some.plist is no dictionary of settings"));
    }
    EXPECT_EQ(home.read(home.path(some)), "<plist><dict>");
    const ToolRun written = defaults({"write", "com.zelmor.Some", "a", "b"});
    EXPECT_EQ(written.status, 0);
    EXPECT_THAT(written.errors,
                MatchesRegex("defaults: .* was damaged; it is kept as .*\\.corrupt-.*\n"));
    EXPECT_EQ(read("a"), "b\n");

    home.write(some, "damaged");
    EXPECT_EQ(defaults({"delete", "com.zelmor.Some"}).status, 0);
    EXPECT_FALSE(std::filesystem::exists(home.path(some)));
}

TEST_F(DefaultsTest, AListWithoutRightsIsLeftAlone)
{
    home.write(some, list("<key>a</key><string>b</string>"));
    ASSERT_EQ(chmod(home.path(some).c_str(), 0), 0);
    const auto prepare = [this] {
        home.becomeItsUser();
    };
    std::filesystem::permissions(home.path("Library/Preferences"), std::filesystem::perms(0777));
    for (const std::vector<std::string> &words :
         std::vector<std::vector<std::string>>{{"read", "com.zelmor.Some"},
                                               {"write", "com.zelmor.Some", "a", "c"},
                                               {"delete", "com.zelmor.Some", "a"},
                                               {"delete", "com.zelmor.Some"}}) {
        const ToolRun run = runNettool("defaults", words, prepare);
        EXPECT_EQ(run.status, 1);
        EXPECT_THAT(run.errors, HasSubstr("Permission denied"));
    }
    EXPECT_EQ(home.read(home.path(some)), list("<key>a</key><string>b</string>"));
}

} // namespace
