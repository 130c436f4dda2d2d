#include "platform/ServiceProcess.h"

#include <QByteArray>

#include <unistd.h>

namespace velq
{

// systemd.exec(5): the variable is inherited by children, whose number is another one.
bool startedByServiceManager()
{
    return qgetenv("SYSTEMD_EXEC_PID") == QByteArray::number(getpid());
}

} // namespace velq
