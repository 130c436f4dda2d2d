#include "platform/linux/propertylist/DictionaryFile.h"
#include "platform/linux/propertylist/ListFile.h"
#include "unit/platform/propertylist/ListFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

using testing::ElementsAre;
using testing::MatchesRegex;
using testing::SizeIs;
using velq::propertylist::editDictionary;
using velq::propertylist::makeFolderOf;
using velq::propertylist::readDictionary;
using velq::propertylist::writeDictionary;
using velq::testing::inChild;
using velq::testing::list;
using velq::testing::ListFolder;
using velq::testing::setting;
using velq::testing::textIn;

constexpr auto damagedOnes = {"", "<plist version=\"1.0\"><dict>", "no list", "bplist00"};

class DictionaryFileTest : public testing::Test
{
protected:
    mode_t modeOf(const std::string &path) const
    {
        struct stat status = {};
        EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
        return status.st_mode & 07777U;
    }

    ListFolder folder;
    const std::string file = folder.path("a.plist");
};

TEST_F(DictionaryFileTest, AMissingFileIsMade)
{
    EXPECT_TRUE(readDictionary(file).isMissing());
    EXPECT_FALSE(editDictionary(file, setting("key", "value")).error);
    EXPECT_EQ(textIn(file, "key"), "value");
    EXPECT_EQ(modeOf(file), 0600U);
    EXPECT_THAT(folder.names(), ElementsAre("a.plist"));
}

TEST_F(DictionaryFileTest, OtherKeysAndTheModeStay)
{
    folder.write("a.plist", list("<key>old</key><string>stays</string>"));
    chmod(file.c_str(), 0640);
    EXPECT_FALSE(editDictionary(file, setting("key", "value")).error);
    EXPECT_EQ(textIn(file, "old"), "stays");
    EXPECT_EQ(textIn(file, "key"), "value");
    EXPECT_EQ(modeOf(file), 0640U);
}

TEST_F(DictionaryFileTest, TheOwnerStays)
{
    if (getuid() != 0)
        GTEST_SKIP() << "only root changes files of others";
    folder.write("a.plist", list(""));
    ASSERT_EQ(chown(file.c_str(), 12345, 54321), 0);
    EXPECT_FALSE(editDictionary(file, setting("key", "value")).error);
    struct stat status = {};
    ASSERT_EQ(stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 12345U);
    EXPECT_EQ(status.st_gid, 54321U);
}

TEST_F(DictionaryFileTest, ADamagedFileIsKeptAside)
{
    for (const char *const damaged : damagedOnes) {
        folder.write("a.plist", damaged);
        EXPECT_TRUE(readDictionary(file).isDamaged());
        const auto edited = editDictionary(file, setting("key", "value"));
        EXPECT_FALSE(edited.error);
        EXPECT_THAT(edited.damaged,
                    MatchesRegex(".*/a\\.plist\\.corrupt-[0-9]+T[0-9]+Z(-[0-9]+)?"));
        EXPECT_EQ(folder.read(edited.damaged), damaged);
        EXPECT_EQ(textIn(file, "key"), "value");
    }
    // Each of them, though they came within the same second.
    EXPECT_THAT(folder.names(), SizeIs(damagedOnes.size() + 1));
}

TEST_F(DictionaryFileTest, AnotherListIsKeptAside)
{
    folder.write("a.plist", "<plist version=\"1.0\"><array/></plist>");
    EXPECT_TRUE(readDictionary(file).isDamaged());
    EXPECT_NE(editDictionary(file, setting("key", "value")).damaged, "");
}

TEST_F(DictionaryFileTest, AFileThatNobodyChangesStays)
{
    folder.write("a.plist", "damaged");
    EXPECT_FALSE(editDictionary(file, [](void *) { return false; }).error);
    EXPECT_EQ(folder.read(file), "damaged");
    EXPECT_THAT(folder.names(), ElementsAre("a.plist"));
}

TEST_F(DictionaryFileTest, ValuesThatNoListCanHoldChangeNothing)
{
    folder.write("a.plist", "damaged");
    EXPECT_EQ(editDictionary(file, setting("key", "\x1b")).error, std::errc::illegal_byte_sequence);
    EXPECT_EQ(folder.read(file), "damaged");
    EXPECT_THAT(folder.names(), ElementsAre("a.plist"));
}

TEST_F(DictionaryFileTest, WritingReplacesWhateverWasThere)
{
    folder.write("a.plist", "damaged");
    EXPECT_FALSE(
        writeDictionary(file, readDictionary(folder.write("b", list(""))).dictionary.get()));
    EXPECT_TRUE(readDictionary(file).dictionary != nullptr);
    EXPECT_THAT(folder.names(), ElementsAre("a.plist", "b"));
}

TEST_F(DictionaryFileTest, WhatIsNoFileIsLeftAlone)
{
    ASSERT_EQ(mkdir(file.c_str(), 0700), 0);
    EXPECT_EQ(readDictionary(file).error, std::errc::is_a_directory);
    EXPECT_EQ(editDictionary(file, setting("key", "value")).error, std::errc::is_a_directory);

    const std::string fifo = folder.path("fifo");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    EXPECT_EQ(editDictionary(fifo, setting("key", "value")).error, std::errc::invalid_argument);
    EXPECT_THAT(folder.names(), ElementsAre("a.plist", "fifo"));
}

TEST_F(DictionaryFileTest, AnEnormousFileIsLeftAlone)
{
    folder.write("a.plist", "");
    ASSERT_EQ(truncate(file.c_str(), off_t{1} << 40), 0);
    EXPECT_EQ(editDictionary(file, setting("key", "value")).error, std::errc::file_too_large);
    EXPECT_THAT(folder.names(), ElementsAre("a.plist"));
}

TEST_F(DictionaryFileTest, AFileWithoutRightsIsLeftAlone)
{
    folder.write("a.plist", list(""));
    ASSERT_EQ(chmod(file.c_str(), 0), 0);
    EXPECT_EQ(inChild([&] {
                  folder.becomeItsUser();
                  return editDictionary(file, setting("key", "value")).error.value();
              }),
              EACCES);
    EXPECT_EQ(folder.read(file), list(""));
    EXPECT_THAT(folder.names(), ElementsAre("a.plist"));
}

TEST_F(DictionaryFileTest, AFolderWithoutRightsStaysAsItIs)
{
    folder.write("a.plist", list(""));
    ASSERT_EQ(chmod(folder.path("").c_str(), 0555), 0);
    EXPECT_EQ(inChild([&] {
                  folder.becomeItsUser();
                  return editDictionary(file, setting("key", "value")).error.value();
              }),
              EACCES);
    EXPECT_EQ(folder.read(file), list(""));
}

TEST_F(DictionaryFileTest, AFullDiskLosesNothing)
{
    const std::string before = list("<key>old</key><string>stays</string>");
    const std::string damaged = folder.path("damaged.plist");
    EXPECT_EQ(inChild([&] {
                  if (unshare(CLONE_NEWNS) != 0)
                      return -1;
                  mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
                  mount("none", folder.path("").c_str(), "tmpfs", 0, "size=16k");
                  folder.write("a.plist", before);
                  folder.write("damaged.plist", "damaged");
                  const std::string large(12 << 10, 'a');
                  if (editDictionary(file, setting("key", large)).error
                      != std::errc::no_space_on_device)
                      return 1;
                  if (editDictionary(damaged, setting("key", large)).error
                      != std::errc::no_space_on_device)
                      return 2;
                  if (folder.read(file) != before || folder.read(damaged) != "damaged")
                      return 3;
                  return folder.names().size() == 2 ? 0 : 4;
              }),
              getuid() == 0 ? 0 : -1);
}

TEST_F(DictionaryFileTest, LinksLeadToTheFileThatIsMeant)
{
    ASSERT_EQ(mkdir(folder.path("real").c_str(), 0700), 0);
    folder.write("real/a.plist", list("<key>old</key><string>stays</string>"));
    ASSERT_EQ(symlink("real/a.plist", folder.path("link").c_str()), 0);
    ASSERT_EQ(symlink(folder.path("link").c_str(), file.c_str()), 0);
    EXPECT_FALSE(editDictionary(file, setting("key", "value")).error);
    EXPECT_EQ(textIn(folder.path("real/a.plist"), "old"), "stays");
    EXPECT_EQ(textIn(folder.path("real/a.plist"), "key"), "value");
    EXPECT_THAT(folder.names(), ElementsAre("a.plist", "link", "real"));

    unlink(folder.path("real/a.plist").c_str());
    EXPECT_FALSE(editDictionary(file, setting("key", "new")).error);
    EXPECT_EQ(textIn(folder.path("real/a.plist"), "key"), "new");
}

TEST_F(DictionaryFileTest, LinksInACircleAreNoFile)
{
    ASSERT_EQ(symlink("a.plist", file.c_str()), 0);
    EXPECT_EQ(editDictionary(file, setting("key", "value")).error,
              std::errc::too_many_symbolic_link_levels);
    EXPECT_THAT(folder.names(), ElementsAre("a.plist"));
}

TEST_F(DictionaryFileTest, FoldersAreMadeForTheirOwnerAlone)
{
    const std::string deep = folder.path("one/two/three.plist");
    EXPECT_FALSE(makeFolderOf(deep));
    EXPECT_FALSE(makeFolderOf(deep));
    EXPECT_EQ(modeOf(folder.path("one")), 0700U);
    EXPECT_EQ(modeOf(folder.path("one/two")), 0700U);
    EXPECT_EQ(makeFolderOf(folder.write("file", "") + "/one/two"), std::errc::not_a_directory);
}

} // namespace
