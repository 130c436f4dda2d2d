#include "common/NotificationCenter.h"

#include <QMutexLocker>

#include <algorithm>

namespace velq
{

NotificationCenter &NotificationCenter::defaultCenter()
{
    static NotificationCenter center;
    return center;
}

void NotificationCenter::addObserver(QObject *context, const QString &name, const QObject *object,
                                     Observer observer)
{
    const QMutexLocker lock(&m_mutex);
    m_entries.push_back({context, name, object, std::move(observer)});
}

void NotificationCenter::removeObserver(const QObject *context)
{
    const QMutexLocker lock(&m_mutex);
    std::erase_if(m_entries, [&](const Entry &entry) { return entry.context == context; });
}

// The observers are called without the lock, so that they may use the centre themselves.
void NotificationCenter::post(const QString &name, QObject *object)
{
    for (const Entry &entry : matching(name, object)) {
        if (!entry.context.isNull())
            entry.observer(object);
    }
}

std::vector<NotificationCenter::Entry> NotificationCenter::matching(const QString &name,
                                                                    const QObject *object)
{
    const QMutexLocker lock(&m_mutex);
    std::erase_if(m_entries, [](const Entry &entry) { return entry.context.isNull(); });
    std::vector<Entry> found;
    std::ranges::copy_if(m_entries, std::back_inserter(found), [&](const Entry &entry) {
        return entry.name == name && (entry.object == nullptr || entry.object == object);
    });
    return found;
}

} // namespace velq
