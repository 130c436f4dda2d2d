#pragma once

#include <QJsonValue>
#include <QString>

namespace velq::cli
{

/// A text for programs; an absent one (null) is null.
inline QJsonValue jsonOf(const QString &text)
{
    return text.isNull() ? QJsonValue() : QJsonValue(text);
}

} // namespace velq::cli
