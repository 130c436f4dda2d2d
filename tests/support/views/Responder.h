#pragma once

#include <QKeyEvent>
#include <QWidget>

#include <functional>

namespace velq::testing
{

/// Takes the focus and the editing actions, but knows no shortcut; tells what it gets.
class Responder : public QWidget
{
    Q_OBJECT

public:
    explicit Responder(std::function<void(const QString &)> tell)
        : m_tell(std::move(tell))
    {
        setFocusPolicy(Qt::StrongFocus);
    }

public Q_SLOTS:
    void cut() { m_tell(QStringLiteral("cut")); }
    void copy() { m_tell(QStringLiteral("copy")); }
    void paste() { m_tell(QStringLiteral("paste")); }
    void selectAll() { m_tell(QStringLiteral("selectAll")); }

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        // Not of modifiers, which are pressed first.
        if (event->key() < Qt::Key_Shift || event->key() > Qt::Key_ScrollLock)
            m_tell(QStringLiteral("key ")
                   + QKeySequence(event->keyCombination()).toString(QKeySequence::PortableText));
    }
    void focusInEvent(QFocusEvent *) override { m_tell(QStringLiteral("focus")); }

private:
    std::function<void(const QString &)> m_tell;
};

} // namespace velq::testing
