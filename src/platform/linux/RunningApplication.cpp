#include "platform/RunningApplication.h"

#include "platform/Bundle.h"
#include "platform/linux/ProcessHandle.h"

#include <csignal>

namespace velq
{

RunningApplication::RunningApplication(qint64 pid, std::shared_ptr<const ProcessHandle> process,
                                       const QString &executable)
    : m_pid(pid)
    , m_process(std::move(process))
{
    const Bundle bundle = Bundle::ofExecutable(executable);
    m_path = bundle.bundlePath();
    m_identifier = bundle.bundleIdentifier();
}

bool RunningApplication::terminate() const
{
    return m_process->send(SIGTERM);
}

} // namespace velq
