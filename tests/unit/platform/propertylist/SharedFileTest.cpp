#include "platform/linux/propertylist/DictionaryFile.h"
#include "platform/linux/propertylist/FileLock.h"
#include "unit/platform/propertylist/ListFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <set>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace
{

using testing::ElementsAre;
using velq::propertylist::editDictionary;
using velq::propertylist::entriesOf;
using velq::propertylist::FileLock;
using velq::propertylist::readDictionary;
using velq::testing::ListFolder;
using velq::testing::setting;
using velq::testing::textIn;

// Each edit waits for the disk, which may be busy.
constexpr int keysOfEach = 50;

// Processes that end with the test that started them.
class Writer
{
public:
    explicit Writer(const std::function<int()> &work)
        : m_process(fork())
    {
        if (m_process == 0)
            _exit(work());
    }
    Writer(const Writer &) = delete;
    Writer &operator=(const Writer &) = delete;
    ~Writer()
    {
        if (m_process > 0) {
            kill(m_process, SIGKILL);
            waitpid(m_process, nullptr, 0);
        }
    }

    int wait()
    {
        int status = -1;
        waitpid(m_process, &status, 0);
        m_process = -1;
        return status;
    }

private:
    pid_t m_process;
};

class SharedFileTest : public testing::Test
{
protected:
    int setKeys(const std::string &prefix, int count) const
    {
        for (int i = 0; i < count; ++i) {
            if (editDictionary(file, setting(prefix + std::to_string(i), "set")).error)
                return 1;
        }
        return 0;
    }

    // Written by setKeys(), once each.
    size_t keysWith(const std::string &prefix) const
    {
        std::set<std::string> keys;
        for (const auto &entry : entriesOf(readDictionary(file).dictionary.get())) {
            if (entry.key.starts_with(prefix))
                keys.insert(entry.key);
        }
        return keys.size();
    }

    ListFolder folder;
    const std::string file = folder.path("a.plist");
};

TEST_F(SharedFileTest, TwoProcessesLoseNoKey)
{
    Writer one([this] { return setKeys("one", keysOfEach); });
    Writer two([this] { return setKeys("two", keysOfEach); });
    EXPECT_EQ(one.wait(), 0);
    EXPECT_EQ(two.wait(), 0);
    EXPECT_EQ(keysWith("one"), size_t{keysOfEach});
    EXPECT_EQ(keysWith("two"), size_t{keysOfEach});
    EXPECT_THAT(folder.names(), ElementsAre("a.plist"));
}

TEST_F(SharedFileTest, TwoThreadsLoseNoKey)
{
    std::thread one([this] { EXPECT_EQ(setKeys("one", 50), 0); });
    std::thread two([this] { EXPECT_EQ(setKeys("two", 50), 0); });
    one.join();
    two.join();
    EXPECT_EQ(keysWith("one"), 50U);
    EXPECT_EQ(keysWith("two"), 50U);
}

TEST_F(SharedFileTest, AReaderSeesWholeListsOnly)
{
    ASSERT_FALSE(editDictionary(file, setting("one0", "set")).error);
    Writer writer([this] { return setKeys("one", 100); });
    size_t most = 0;
    while (most < 100) {
        const auto read = readDictionary(file);
        ASSERT_FALSE(read.error) << read.error.message();
        const size_t count = entriesOf(read.dictionary.get()).size();
        ASSERT_GE(count, most);
        most = count;
    }
    EXPECT_EQ(writer.wait(), 0);
}

TEST_F(SharedFileTest, AKilledWriterLeavesTheOldOrTheNewList)
{
    size_t most = 0;
    for (int round = 0; round < 40; ++round) {
        Writer writer([&, this] { return setKeys(std::to_string(round) + "-", 1000); });
        // It has written at least once more, and is somewhere in the middle of the next.
        size_t count = most;
        while (count <= most) {
            const auto read = readDictionary(file);
            ASSERT_TRUE(!read.error || read.isMissing()) << read.error.message();
            count = read.dictionary ? entriesOf(read.dictionary.get()).size() : 0;
        }
        usleep(static_cast<useconds_t>(round) * 37);
        most = count;
    }
    const auto read = readDictionary(file);
    ASSERT_FALSE(read.error) << read.error.message();
    EXPECT_GE(entriesOf(read.dictionary.get()).size(), most);

    // What the killed left locks nothing, and goes with the next one who writes.
    EXPECT_FALSE(editDictionary(file, setting("last", "set")).error);
    EXPECT_EQ(textIn(file, "last"), "set");
    EXPECT_THAT(folder.names(), ElementsAre("a.plist"));
}

TEST_F(SharedFileTest, AnOldLockLocksNothing)
{
    folder.write(".a.plist.lock", "");
    folder.write(".a.plist.new", "half a li");
    EXPECT_FALSE(editDictionary(file, setting("key", "value")).error);
    EXPECT_THAT(folder.names(), ElementsAre("a.plist"));
}

TEST_F(SharedFileTest, OnlyOneHoldsTheLock)
{
    std::array<int, 2> locked{};
    ASSERT_EQ(pipe(locked.data()), 0);
    auto mine = std::make_unique<FileLock>(file);
    ASSERT_FALSE(mine->error());
    Writer other([&, this] {
        const FileLock its(file);
        return its.error() || write(locked[1], "x", 1) != 1 ? 1 : 0;
    });
    close(locked[1]);
    // As long as this one is held the other's word cannot be in the pipe.
    ASSERT_FALSE(editDictionary(folder.path("b.plist"), setting("key", "value")).error);
    mine.reset();
    char word = 0;
    EXPECT_EQ(read(locked[0], &word, 1), 1);
    EXPECT_EQ(other.wait(), 0);
    close(locked[0]);
}

TEST_F(SharedFileTest, AFolderThatIsNotThereHasNoLock)
{
    EXPECT_EQ(FileLock(folder.path("none/a.plist")).error(), std::errc::no_such_file_or_directory);
    EXPECT_TRUE(editDictionary(folder.path("none/a.plist"), setting("key", "value")).error);
}

} // namespace
