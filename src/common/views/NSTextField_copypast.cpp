#include "common/views/NSTextField_copypast.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMetaMethod>
#include <QVariant>

#include <algorithm>
#include <array>

namespace velq
{

namespace
{

struct Shortcut {
    int key;
    const char *slot;
    bool changes;
};

constexpr std::array shortcuts{
    Shortcut{Qt::Key_X, "cut()", true},
    Shortcut{Qt::Key_C, "copy()", false},
    Shortcut{Qt::Key_V, "paste()", true},
    Shortcut{Qt::Key_A, "selectAll()", false},
};

const Shortcut *shortcutOf(const QKeyEvent &event)
{
    if (event.modifiers() != Qt::ControlModifier)
        return nullptr;
    const auto *const found = std::ranges::find(shortcuts, event.key(), &Shortcut::key);
    return found == shortcuts.end() ? nullptr : found;
}

bool sendAction(const Shortcut &shortcut, QWidget *responder)
{
    if (responder == nullptr)
        return false;
    const int index = responder->metaObject()->indexOfMethod(shortcut.slot);
    if (index < 0)
        return false;
    // The slots themselves do not ask.
    if (shortcut.changes && responder->property("readOnly").toBool())
        return true;
    return responder->metaObject()->method(index).invoke(responder, Qt::DirectConnection);
}

// Takes the key presses of all widgets.
class KeyEquivalents : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *receiver, QEvent *event) override
    {
        if (event->type() != QEvent::KeyPress || !receiver->isWidgetType())
            return false;
        const auto &key = static_cast<const QKeyEvent &>(*event);
        return shortcutOf(key) != nullptr && offer(static_cast<QWidget &>(*receiver), key);
    }

private:
    static bool offer(const QWidget &receiver, const QKeyEvent &key)
    {
        const auto fields = receiver.window()->findChildren<QLineEdit *>();
        return std::ranges::any_of(fields, [&key](const QLineEdit *field) {
            return field->isVisible() && performKeyEquivalent(*field, key);
        });
    }
};

void install()
{
    auto *const application = QCoreApplication::instance();
    application->installEventFilter(new KeyEquivalents(application));
}

} // namespace

bool performKeyEquivalent(const QLineEdit &field, const QKeyEvent &event)
{
    const Shortcut *const shortcut = shortcutOf(event);
    return shortcut != nullptr && sendAction(*shortcut, field.window()->focusWidget());
}

void offerKeyEquivalents()
{
    [[maybe_unused]] static const bool once = (install(), true);
}

} // namespace velq
