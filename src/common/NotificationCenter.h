#pragma once

#include <QMutex>
#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <vector>

namespace velq
{

/// Notifications inside this process: a name and the object that it is about.
///
/// Observers are called on the posting thread, in the order in which they were added, before
/// post() returns. Any thread may add, remove and post; an observer may do so from inside its call.
/// A context dies on the thread that posts what it observes, or is removed before.
class NotificationCenter
{
public:
    using Observer = std::function<void(QObject *object)>;

    /// The process's centre.
    static NotificationCenter &defaultCenter();

    /// Calls `observer` for each notification of that name about `object` (null: about any) until
    /// `context` is gone or removed. Owns neither.
    void addObserver(QObject *context, const QString &name, const QObject *object,
                     Observer observer);
    /// Ends all of `context`'s observing.
    void removeObserver(const QObject *context);

    void post(const QString &name, QObject *object);

private:
    struct Entry {
        QPointer<QObject> context;
        QString name;
        const QObject *object;
        Observer observer;
    };
    std::vector<Entry> matching(const QString &name, const QObject *object);

    QMutex m_mutex;
    std::vector<Entry> m_entries;
};

} // namespace velq
