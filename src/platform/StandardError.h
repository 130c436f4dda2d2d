#pragma once

#include <QByteArray>

namespace velq
{

/// Standard error, which a program has in common with the tools that it runs. Any thread.
class StandardError
{
public:
    StandardError() = delete;

    /// For the person, also while child processes are kept from it. What is written in one call
    /// stays together; what cannot be written is lost.
    static void write(const QByteArray &bytes);

    /// Whether a terminal shows it to the person.
    static bool isTerminal();

    /// As long as it lives, child processes that start inherit one that leads nowhere. One at a
    /// time. Where the system has no descriptor left, everything stays as it is.
    class KeptFromChildren
    {
    public:
        KeptFromChildren();
        KeptFromChildren(const KeptFromChildren &) = delete;
        KeptFromChildren &operator=(const KeptFromChildren &) = delete;
        ~KeptFromChildren();
    };
};

} // namespace velq
