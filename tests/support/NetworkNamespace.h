#pragma once

#include <string>

namespace velq::testing
{

/// Moves the calling process into a network namespace of its own, empty but for the loopback link,
/// so that a test can make and break a network without touching the machine's. Works as root, and
/// as a user where the kernel allows user namespaces. Needs a process that runs a single thread.
///
/// Returns the reason why the kernel refused, empty on success.
std::string enterNetworkNamespace();

/// Runs `ip` with these arguments (through the shell); fails the running test when it fails.
void ip(const std::string &arguments);

/// Runs a list of `ip` command lines, one a line and without the word itself, in one process.
void ipBatch(const std::string &lines);

} // namespace velq::testing

/// Skips the test with the reason where the kernel gives no namespace; a machine with CI set must
/// give one.
#define ENTER_NETWORK_NAMESPACE_OR_SKIP()                                                          \
    if (const std::string refused = velq::testing::enterNetworkNamespace(); !refused.empty()) {    \
        ASSERT_EQ(getenv("CI"), nullptr) << refused;                                               \
        GTEST_SKIP() << refused;                                                                   \
    }                                                                                              \
    static_assert(true)
