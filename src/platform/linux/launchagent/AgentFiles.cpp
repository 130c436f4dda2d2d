#include "platform/linux/launchagent/AgentFiles.h"

#include "platform/linux/launchagent/Error.h"
#include "platform/linux/launchagent/UnitText.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

namespace velq::launchagent
{

namespace
{

namespace fs = std::filesystem;

bool isThere(const fs::path &file)
{
    std::error_code ignored;
    return fs::symlink_status(file, ignored).type() != fs::file_type::not_found;
}

std::string contentsOf(const fs::path &file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

bool hasLine(const std::string &text, std::string_view beginning)
{
    return ('\n' + text).find('\n' + std::string(beginning)) != std::string::npos;
}

// A link, or a pipe that would never be read to its end, is nobody's file of ours.
bool isOurs(const fs::path &file, std::string_view mark)
{
    std::error_code ignored;
    return fs::symlink_status(file, ignored).type() == fs::file_type::regular
        && hasLine(contentsOf(file), mark);
}

Error unwritable(const fs::path &file)
{
    return Error{"cannot write '" + file.string() + "': " + std::strerror(errno)};
}

bool writeAll(int descriptor, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t written = write(descriptor, text.data(), text.size());
        if (written <= 0)
            return false;
        text.remove_prefix(static_cast<size_t>(written));
    }
    return fchmod(descriptor, 0644) == 0 && fsync(descriptor) == 0;
}

void replace(const fs::path &file, const std::string &text)
{
    std::error_code ignored;
    fs::create_directories(file.parent_path(), ignored);
    std::string temporary = (file.parent_path() / ("." + file.filename().string() + ".XXXXXX"));
    const int descriptor = mkstemp(temporary.data());
    if (descriptor < 0)
        throw unwritable(file);
    const bool written = writeAll(descriptor, text);
    close(descriptor);
    if (written && rename(temporary.c_str(), file.c_str()) == 0)
        return;
    const int reason = errno;
    unlink(temporary.c_str());
    errno = reason;
    throw unwritable(file);
}

bool write(const fs::path &file, const std::string &text)
{
    if (contentsOf(file) == text)
        return false;
    replace(file, text);
    return true;
}

} // namespace

AgentFiles::AgentFiles(const Domain &domain, const std::string &label)
    : m_unit(domain.units / (label + ".service"))
    , m_link(domain.units / (domain.target + ".wants") / (label + ".service"))
{
    // Not the label alone: that is the name under which a program's own entry would be copied
    // there.
    if (!domain.isSystem)
        m_entry = domain.autostart / (label + ".agent.desktop");
}

bool AgentFiles::unitIsForeign() const
{
    return isThere(m_unit) && !isOurs(m_unit, unitMark);
}

bool AgentFiles::writeUnit(const std::string &text) const
{
    if (unitIsForeign())
        throw Error("'" + m_unit.string() + "' is there already and is no launch agent's");
    return write(m_unit, text);
}

bool AgentFiles::writeAutostart(const std::string &text) const
{
    if (m_entry.empty() || (isThere(m_entry) && !isOurs(m_entry, entryMark)))
        return false;
    return write(m_entry, text);
}

void AgentFiles::remove() const
{
    std::error_code ignored;
    if (isOurs(m_unit, unitMark)) {
        const fs::path target = fs::read_symlink(m_link, ignored);
        if (!target.empty() && (m_link.parent_path() / target).lexically_normal() == m_unit)
            fs::remove(m_link, ignored);
        fs::remove(m_unit, ignored);
    }
    if (!m_entry.empty() && isOurs(m_entry, entryMark))
        fs::remove(m_entry, ignored);
}

} // namespace velq::launchagent
