#include "nettools/lib/Output.h"

#include <cerrno>
#include <cstring>
#include <string_view>
#include <unistd.h>

namespace velq::nettools
{

Outcome Output::failure(int error)
{
    return Outcome::failed(std::string("standard output: ") + std::strerror(error));
}

Output::Output(int descriptor)
    : m_descriptor(descriptor)
{
}

bool Output::flush()
{
    std::string_view rest = m_text;
    while (!rest.empty()) {
        const ssize_t written = write(m_descriptor, rest.data(), rest.size());
        if (written > 0)
            rest.remove_prefix(static_cast<size_t>(written));
        else if (written == 0 || errno != EINTR)
            break;
    }
    const bool complete = rest.empty();
    m_text.clear();
    return complete;
}

} // namespace velq::nettools
