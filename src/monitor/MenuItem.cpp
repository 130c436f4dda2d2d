#include "monitor/MenuItem.h"

#include <QMetaMethod>

namespace velq
{

MenuItem::MenuItem(QString title, QString keyEquivalent, QObject *parent)
    : QObject(parent)
    , m_title(std::move(title))
    , m_keyEquivalent(std::move(keyEquivalent))
{
}

MenuItem *MenuItem::separatorItem(QObject *parent)
{
    auto *item = new MenuItem(QString(), QString(), parent);
    item->m_separator = true;
    return item;
}

void MenuItem::setTitle(const QString &title)
{
    if (m_title == title)
        return;
    m_title = title;
    Q_EMIT changed();
}

void MenuItem::setTarget(QObject *target)
{
    if (m_target == target)
        return;
    m_target = target;
    Q_EMIT changed();
}

void MenuItem::setAction(const QByteArray &action)
{
    if (m_action == action)
        return;
    m_action = action;
    Q_EMIT changed();
}

bool MenuItem::isEnabled() const
{
    if (m_target.isNull() || m_action.isEmpty())
        return false;
    return m_target->metaObject()->indexOfMethod((m_action + "(QObject*)").constData()) >= 0;
}

void MenuItem::choose()
{
    if (isEnabled())
        QMetaObject::invokeMethod(m_target, m_action.constData(), Q_ARG(QObject *, this));
}

} // namespace velq
