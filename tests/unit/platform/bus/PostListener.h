#pragma once

#include <QObject>
#include <QStringList>

namespace velq::testing
{

/// Keeps what was posted, each as "NAME: OBJECT", with "(null)" for a null text.
class PostListener : public QObject
{
    Q_OBJECT

public:
    QStringList heard;

public Q_SLOTS:
    void hear(const QString &name, const QString &object)
    {
        const QString shown = object.isNull() ? QStringLiteral("(null)") : object;
        heard.append(QStringLiteral("%1: %2").arg(name, shown));
    }
};

} // namespace velq::testing
