#include "platform/StandardError.h"

#include "platform/linux/posix/Descriptor.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <mutex>
#include <unistd.h>
#include <utility>

namespace velq
{

namespace
{

/// The person's, while the place of standard error is taken by another.
struct Aside {
    std::mutex mutex;
    posix::Descriptor descriptor;

    int current() const { return descriptor.isOpen() ? descriptor.get() : STDERR_FILENO; }
};

Aside &aside()
{
    static Aside instance;
    return instance;
}

} // namespace

// One call of the system's wherever it takes all: others may write there, too.
void StandardError::write(const QByteArray &bytes)
{
    Aside &person = aside();
    const std::scoped_lock lock(person.mutex);
    QByteArrayView rest(bytes);
    while (!rest.isEmpty()) {
        const ssize_t written =
            ::write(person.current(), rest.data(), static_cast<size_t>(rest.size()));
        if (written < 0 && errno != EINTR)
            return;
        rest = rest.sliced(std::max<ssize_t>(written, 0));
    }
}

bool StandardError::isTerminal()
{
    Aside &person = aside();
    const std::scoped_lock lock(person.mutex);
    return isatty(person.current()) == 1;
}

StandardError::KeptFromChildren::KeptFromChildren()
{
    Aside &person = aside();
    const std::scoped_lock lock(person.mutex);
    posix::Descriptor copy(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    const posix::Descriptor nowhere(open("/dev/null", O_WRONLY | O_CLOEXEC));
    if (copy.isOpen() && nowhere.isOpen() && dup2(nowhere.get(), STDERR_FILENO) == STDERR_FILENO)
        person.descriptor = std::move(copy);
}

StandardError::KeptFromChildren::~KeptFromChildren()
{
    Aside &person = aside();
    const std::scoped_lock lock(person.mutex);
    if (person.descriptor.isOpen())
        (void)dup2(person.descriptor.get(), STDERR_FILENO);
    person.descriptor.reset();
}

} // namespace velq
