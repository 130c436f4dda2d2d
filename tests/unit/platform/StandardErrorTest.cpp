#include "platform/StandardError.h"

#include "platform/linux/posix/Descriptor.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <string>
#include <sys/ioctl.h>
#include <thread>
#include <unistd.h>

namespace
{

using velq::StandardError;
using velq::posix::Descriptor;

/// Has standard error lead elsewhere.
class Diversion
{
public:
    explicit Diversion(const Descriptor &elsewhere)
        : m_before(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3))
    {
        EXPECT_EQ(dup2(elsewhere.get(), STDERR_FILENO), STDERR_FILENO);
    }
    Diversion(const Diversion &) = delete;
    Diversion &operator=(const Diversion &) = delete;
    ~Diversion() { end(); }

    void end() const { (void)dup2(m_before.get(), STDERR_FILENO); }

private:
    Descriptor m_before;
};

/// Takes the place of standard error and keeps what comes.
class Catcher
{
public:
    Catcher()
    {
        std::array<int, 2> ends{-1, -1};
        EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
        m_reading = Descriptor(ends[0]);
        m_diversion.emplace(Descriptor(ends[1]));
    }

    /// Returns when no more fits in.
    void awaitFull() const
    {
        const int room = fcntl(m_reading.get(), F_GETPIPE_SZ);
        for (int held = 0; held < room; std::this_thread::yield())
            ASSERT_EQ(ioctl(m_reading.get(), FIONREAD, &held), 0);
    }

    /// All of it; nobody can write any more.
    std::string text()
    {
        m_diversion->end();
        return rest();
    }

    /// What comes until nobody can write any more.
    std::string rest()
    {
        std::string all;
        std::array<char, 256> part{};
        ssize_t length = 0;
        while ((length = read(m_reading.get(), part.data(), part.size())) > 0)
            all.append(part.data(), static_cast<size_t>(length));
        return all;
    }

private:
    Descriptor m_reading;
    std::optional<Diversion> m_diversion;
};

void haveToolComplain()
{
    EXPECT_EQ(std::system("echo tool >&2"), 0);
}

TEST(StandardErrorTest, IsSharedWithChildren)
{
    Catcher errors;
    haveToolComplain();
    StandardError::write("program\n");
    EXPECT_EQ(errors.text(), "tool\nprogram\n");
}

TEST(StandardErrorTest, IsKeptFromChildrenForAsLongAsThatIsWanted)
{
    Catcher errors;
    {
        const StandardError::KeptFromChildren alone;
        haveToolComplain();
        StandardError::write("program\n");
    }
    haveToolComplain();
    StandardError::write("again\n");
    EXPECT_EQ(errors.text(), "program\ntool\nagain\n");
}

TEST(StandardErrorTest, IsNotInheritedByAnotherNumberMeanwhile)
{
    Catcher errors;
    {
        const StandardError::KeptFromChildren alone;
        EXPECT_EQ(std::system("for each in 3 4 5 6 7 8 9; do (echo tool >&$each) 2>/dev/null; done;"
                              "true"),
                  0);
    }
    EXPECT_EQ(errors.text(), "");
}

TEST(StandardErrorTest, IsTheTerminalThatItWasWhileItIsKeptFromChildren)
{
    const Descriptor screen(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
    ASSERT_TRUE(screen.isOpen() && unlockpt(screen.get()) == 0);
    const Descriptor terminal(open(ptsname(screen.get()), O_RDWR | O_NOCTTY | O_CLOEXEC));
    const Diversion diversion(terminal);
    EXPECT_TRUE(StandardError::isTerminal());
    const StandardError::KeptFromChildren alone;
    EXPECT_TRUE(StandardError::isTerminal());
}

TEST(StandardErrorTest, LosesNothingToASignal)
{
    Catcher errors;
    struct sigaction nothing = {};
    struct sigaction before = {};
    nothing.sa_handler = [](int) {
    };
    ASSERT_EQ(sigaction(SIGUSR1, &nothing, &before), 0);
    const QByteArray lines(1'000'000, 'x');
    std::thread writer([&] {
        StandardError::write(lines);
        (void)close(STDERR_FILENO);
    });
    errors.awaitFull();
    EXPECT_EQ(pthread_kill(writer.native_handle(), SIGUSR1), 0);
    const std::string text = errors.rest();
    writer.join();
    (void)sigaction(SIGUSR1, &before, nullptr);
    EXPECT_EQ(text.size(), static_cast<size_t>(lines.size()));
}

TEST(StandardErrorTest, IsNoTerminalWhereItIsAPipe)
{
    const Catcher errors;
    EXPECT_FALSE(StandardError::isTerminal());
    const StandardError::KeptFromChildren alone;
    EXPECT_FALSE(StandardError::isTerminal());
}

} // namespace
