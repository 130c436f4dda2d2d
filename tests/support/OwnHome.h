#pragma once

#include <QTemporaryDir>

namespace velq::testing
{

/// The home of this test program, and of its user defaults: those are one object a process, so its
/// tests share it.
inline const QTemporaryDir &ownHome()
{
    static const QTemporaryDir home;
    qputenv("HOME", home.path().toLocal8Bit());
    return home;
}

} // namespace velq::testing
