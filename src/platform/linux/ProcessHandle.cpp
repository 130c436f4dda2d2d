#include "platform/linux/ProcessHandle.h"

#include <sys/syscall.h>
#include <unistd.h>

namespace velq
{

std::shared_ptr<const ProcessHandle> ProcessHandle::open(pid_t pid)
{
    const auto descriptor = static_cast<int>(syscall(SYS_pidfd_open, pid, 0));
    return descriptor < 0 ? nullptr : std::make_shared<const ProcessHandle>(descriptor);
}

ProcessHandle::ProcessHandle(int descriptor)
    : m_descriptor(descriptor)
{
}

ProcessHandle::~ProcessHandle()
{
    close(m_descriptor);
}

bool ProcessHandle::send(int signal) const
{
    return syscall(SYS_pidfd_send_signal, m_descriptor, signal, nullptr, 0) == 0;
}

} // namespace velq
