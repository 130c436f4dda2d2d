#include "support/NetworkNamespace.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sched.h>
#include <unistd.h>

namespace velq::testing
{

namespace
{

void writeFile(const char *path, const std::string &text)
{
    std::ofstream(path) << text;
}

// A user becomes root of a user namespace: enough to own the network namespace inside it.
int becomeNamespaceRoot()
{
    const uid_t user = getuid();
    const gid_t group = getgid();
    if (unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0)
        return -1;
    writeFile("/proc/self/setgroups", "deny");
    writeFile("/proc/self/uid_map", "0 " + std::to_string(user) + " 1");
    writeFile("/proc/self/gid_map", "0 " + std::to_string(group) + " 1");
    return 0;
}

} // namespace

std::string enterNetworkNamespace()
{
    const int result = getuid() == 0 ? unshare(CLONE_NEWNET) : becomeNamespaceRoot();
    if (result != 0)
        return std::string("the kernel gives no network namespace: ") + std::strerror(errno);
    ip("link set lo up");
    return {};
}

void ip(const std::string &arguments)
{
    const std::string line = "ip " + arguments;
    ASSERT_EQ(std::system(line.c_str()), 0) << line;
}

void ipBatch(const std::string &lines)
{
    FILE *batch = popen("ip -batch -", "we");
    ASSERT_NE(batch, nullptr);
    EXPECT_EQ(std::fwrite(lines.data(), 1, lines.size(), batch), lines.size());
    EXPECT_EQ(pclose(batch), 0);
}

} // namespace velq::testing
