#include "monitor/tray/DBusMenu.h"

#include "monitor/Menu.h"
#include "monitor/tray/DBusMenuAdaptor.h"

namespace velq
{

namespace
{

constexpr int root = 0;

// An underscore alone would underline the letter behind it.
QString label(const QString &title)
{
    return QString(title).replace(QLatin1Char('_'), QLatin1String("__"));
}

QVariantMap allProperties(const MenuItem &item)
{
    if (item.isSeparatorItem())
        return {{QStringLiteral("type"), QStringLiteral("separator")}};
    return {{QStringLiteral("label"), label(item.title())},
            {QStringLiteral("accessible-desc"), item.title()},
            {QStringLiteral("enabled"), item.isEnabled()}};
}

QVariantMap only(const QStringList &names, const QVariantMap &properties)
{
    if (names.isEmpty())
        return properties;
    QVariantMap wanted;
    for (const QString &name : names)
        if (const auto found = properties.constFind(name); found != properties.constEnd())
            wanted.insert(name, *found);
    return wanted;
}

QVariantMap difference(const QVariantMap &now, const QVariantMap &before)
{
    QVariantMap changed;
    for (auto property = now.cbegin(); property != now.cend(); ++property)
        if (before.value(property.key()) != property.value())
            changed.insert(property.key(), property.value());
    return changed;
}

} // namespace

DBusMenu::DBusMenu(QObject *parent)
    : QObject(parent)
    , m_adaptor(new DBusMenuAdaptor(this))
{
    // Several properties that change in one go make one signal.
    m_sendSoon.setSingleShot(true);
    m_sendSoon.setInterval(0);
    connect(&m_sendSoon, &QTimer::timeout, this, &DBusMenu::sendChanges);
}

void DBusMenu::setMenu(Menu *menu)
{
    if (m_menu == menu)
        return;
    if (!m_menu.isNull())
        m_menu->disconnect(&m_sendSoon);
    m_menu = menu;
    if (!m_menu.isNull())
        connect(m_menu, &Menu::itemChanged, &m_sendSoon, qOverload<>(&QTimer::start));
    m_sent.clear();
    for (const int id : ids())
        m_sent.append(properties(id));
    Q_EMIT m_adaptor->LayoutUpdated(++m_revision, root);
}

bool DBusMenu::knows(int id) const
{
    return id >= root && id <= count();
}

QVariantMap DBusMenu::properties(int id, const QStringList &names) const
{
    if (id == root)
        return only(names, {{QStringLiteral("children-display"), QStringLiteral("submenu")}});
    const MenuItem *found = item(id);
    return found == nullptr ? QVariantMap() : only(names, allProperties(*found));
}

DBusMenuLayout DBusMenu::layout(int id, int depth, const QStringList &names) const
{
    DBusMenuLayout layout{id, properties(id, names), {}};
    if (id == root && depth != 0)
        for (int child = 1; child <= count(); ++child)
            layout.children.append({child, properties(child, names), {}});
    return layout;
}

QList<int> DBusMenu::ids() const
{
    QList<int> ids;
    for (int id = root; id <= count(); ++id)
        ids.append(id);
    return ids;
}

void DBusMenu::clicked(int id)
{
    if (MenuItem *chosen = item(id); chosen != nullptr)
        QMetaObject::invokeMethod(chosen, &MenuItem::choose, Qt::QueuedConnection);
}

MenuItem *DBusMenu::item(int id) const
{
    return id > root && id <= count() ? m_menu->items().at(id - 1) : nullptr;
}

qsizetype DBusMenu::count() const
{
    return m_menu.isNull() ? 0 : m_menu->items().size();
}

// An entry has the same properties all its life, so none is ever told to be gone.
void DBusMenu::sendChanges()
{
    QList<DBusMenuItem> updated;
    for (int id = root; id < m_sent.size(); ++id) {
        const QVariantMap before = std::exchange(m_sent[id], properties(id));
        if (const QVariantMap changed = difference(m_sent.at(id), before); !changed.isEmpty())
            updated.append({id, changed});
    }
    if (!updated.isEmpty())
        Q_EMIT m_adaptor->ItemsPropertiesUpdated(updated, {});
}

} // namespace velq
