#pragma once

#include <QObject>

namespace velq
{

/// Something for a menu's entries to act on: counts the actions that reach it.
class MenuTarget : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE void act(QObject *from)
    {
        ++calls;
        sender = from;
    }
    Q_INVOKABLE void wrongSignature() { ++calls; }

    int calls = 0;
    QObject *sender = nullptr;
};

} // namespace velq
