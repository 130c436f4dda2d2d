#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QString>

namespace velq
{

/// One entry of a menu. It is active exactly while it has a target that answers its action; there
/// is no other switch. Main thread.
class MenuItem : public QObject
{
    Q_OBJECT

public:
    /// `keyEquivalent` is the key that chooses the entry where there is a keyboard and no pointer;
    /// empty for none.
    MenuItem(QString title, QString keyEquivalent, QObject *parent);

    static MenuItem *separatorItem(QObject *parent);
    bool isSeparatorItem() const { return m_separator; }

    QString title() const { return m_title; }
    void setTitle(const QString &title);
    QString keyEquivalent() const { return m_keyEquivalent; }

    /// Not owned; null for none, also once the target is gone.
    QObject *target() const { return m_target; }
    void setTarget(QObject *target);

    /// The name of an invokable method `NAME(QObject *sender)` of the target; empty for none.
    QByteArray action() const { return m_action; }
    void setAction(const QByteArray &action);

    bool isEnabled() const;

    /// The person chose this entry: sends the action to the target, with the entry as the sender.
    /// Without effect while not active.
    void choose();

Q_SIGNALS:
    /// The title, or whether the entry is active, may be another now.
    void changed();

private:
    QString m_title;
    QString m_keyEquivalent;
    QPointer<QObject> m_target;
    QByteArray m_action;
    bool m_separator = false;
};

} // namespace velq
