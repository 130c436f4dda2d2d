#pragma once

#include "nettools/lib/Tool.h"

#include <string>

namespace velq::nettools
{

/// Text on its way to a descriptor, which stays the caller's. Nothing leaves before flush(), so
/// that a table goes out in one write and a reader never sees half of a line.
class Output
{
public:
    /// How a tool ends whose standard output does not take what it has to say; for that errno.
    static Outcome failure(int error);

    explicit Output(int descriptor);

    /// What is not written yet; append to it.
    std::string &text() { return m_text; }

    /// Writes all of it. False, with errno set, when the descriptor does not take it; what was not
    /// written is then lost.
    bool flush();

private:
    int m_descriptor;
    std::string m_text;
};

} // namespace velq::nettools
