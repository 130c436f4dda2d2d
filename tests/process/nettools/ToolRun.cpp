#include "process/nettools/ToolRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velq::testing
{

namespace
{

// A file in memory takes any amount of output without a reader.
class Capture
{
public:
    Capture() { EXPECT_GE(m_descriptor, 0); }
    Capture(const Capture &) = delete;
    Capture &operator=(const Capture &) = delete;
    ~Capture() { close(m_descriptor); }

    int descriptor() const { return m_descriptor; }

    std::string text() const
    {
        std::string result;
        std::array<char, 4096> part{};
        ssize_t got = 0;
        while (
            (got = pread(m_descriptor, part.data(), part.size(), static_cast<off_t>(result.size())))
            > 0)
            result.append(part.data(), static_cast<size_t>(got));
        return result;
    }

private:
    int m_descriptor = memfd_create("capture", MFD_CLOEXEC);
};

int statusOf(pid_t child)
{
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

} // namespace

ToolRun runProgram(const std::string &program, std::vector<std::string> words,
                   const std::function<void()> &prepare)
{
    std::vector<char *> argv(words.size() + 1, nullptr);
    std::ranges::transform(words, argv.begin(), [](std::string &word) { return word.data(); });

    const Capture output;
    const Capture errors;
    const pid_t child = fork();
    if (child == 0) {
        dup2(output.descriptor(), STDOUT_FILENO);
        dup2(errors.descriptor(), STDERR_FILENO);
        prepare();
        execvp(program.c_str(), argv.data());
        _exit(127);
    }
    EXPECT_GT(child, 0);
    const int status = statusOf(child);
    return {output.text(), errors.text(), status};
}

ToolRun runNettool(const std::string &name, const std::vector<std::string> &arguments,
                   const std::function<void()> &prepare)
{
    std::vector<std::string> words = arguments;
    words.insert(words.begin(), name);
    return runProgram(VELQ_NETTOOLS "/" + name, std::move(words), prepare);
}

} // namespace velq::testing
