#pragma once

#include <QString>

#include <memory>

class QLockFile;

namespace velq
{

/// One running instance a session: held from claim() until destroyed, and let go by the system when
/// the process dies. On Linux a name on the session bus; where there is no bus, a lock in the
/// user's runtime folder.
class SingleInstance
{
public:
    SingleInstance();
    SingleInstance(const SingleInstance &) = delete;
    SingleInstance &operator=(const SingleInstance &) = delete;
    ~SingleInstance();

    /// False when another process of the session holds `identifier`; then it may be tried again.
    /// One identifier per object.
    bool claim(const QString &identifier);

private:
    bool lock(const QString &identifier);

    QString m_busName;
    std::unique_ptr<QLockFile> m_lock;
};

} // namespace velq
