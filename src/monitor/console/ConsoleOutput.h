#pragma once

#include <QObject>
#include <QString>

namespace velq
{

/// Lines on standard output, each with the local time in front and written out at once. Main
/// thread.
class ConsoleOutput : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    void writeLine(const QString &text);

Q_SIGNALS:
    /// Nobody reads any more, or the disk is full: the line was lost.
    void failed();
};

} // namespace velq
