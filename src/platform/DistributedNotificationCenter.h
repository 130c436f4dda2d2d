#pragma once

#include <QObject>
#include <QString>

namespace velq
{

/// Notifications between the processes of one session: a name and a text, the object. On Linux the
/// signal com.zelmor.DistributedNotificationCenter.Posted(s name, s object) of the session bus, on
/// the path /com/zelmor/DistributedNotificationCenter; no object is sent as the empty text.
///
/// Without a session bus nothing is heard and nothing is posted. Belongs to the thread that made
/// it.
class DistributedNotificationCenter : public QObject
{
    Q_OBJECT

public:
    explicit DistributedNotificationCenter(QObject *parent = nullptr);

    /// Posts to every process that listens, this one included. Waits until the bus has it, for a
    /// second at most, and for nobody who listens: the program may end right behind it.
    void post(const QString &name, const QString &object);

Q_SIGNALS:
    /// Somebody posted. Observers choose by name.
    void posted(const QString &name, const QString &object);
};

} // namespace velq
