#pragma once

#include <QString>

namespace velq
{

/// Application bundles as files. What stands at a bundle's path is at every moment, whatever fails
/// or dies, a whole bundle or nothing. Any thread and process; two that work at the same path take
/// turns.
class BundleFiles
{
public:
    BundleFiles() = delete;

    /// Copies the bundle at `from`, all of it with its permissions, to `to`, whose folder exists
    /// and where nothing is yet. Symbolic links inside it stay links; one that leads out of it, as
    /// the helpers' do where it was built, becomes a copy of the file that it leads to: the copy
    /// needs nothing of where it came from. False when nothing was copied.
    static bool copy(const QString &from, const QString &to);

    /// Removes the bundle at `path`. False when it is still there, or was not.
    static bool remove(const QString &path);
};

} // namespace velq
