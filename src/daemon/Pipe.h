#pragma once

#include "platform/linux/posix/Descriptor.h"

namespace velq::daemon
{

/// Neither end survives an exec. The reading end does not block.
struct Pipe {
    /// Throws std::system_error.
    Pipe();

    posix::Descriptor readingEnd;
    posix::Descriptor writingEnd;
};

} // namespace velq::daemon
