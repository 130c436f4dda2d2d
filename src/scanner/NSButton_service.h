#pragma once

#include <QObject>
#include <QVariant>

namespace velq
{

/// An integer that a button carries along, so that one action can serve many buttons.

inline void setIndex(QObject &button, qint64 index)
{
    button.setProperty("index", index);
}

/// 0 when none was set.
inline qint64 getIndex(const QObject &button)
{
    return button.property("index").toLongLong();
}

} // namespace velq
