#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <functional>
#include <memory>

namespace velq
{

class AlertPanel;

/// A message to the person with buttons to answer it by, which tells a handler the tag of the one
/// that was clicked. Main thread.
class NSAlert_Addition
{
public:
    /// Called with the clicked button's tag.
    using CompletionHandler = std::function<void(qint64 tag)>;

    struct Button {
        QString title;
        qint64 tag;
    };

    /// The tag of the first button, which is the one that Return presses; each further button's is
    /// one more.
    static constexpr qint64 cancelTag = 1000;

    /// An alert that is not yet shown. `otherBtn` ends at its first null or empty title.
    static std::unique_ptr<NSAlert_Addition>
    alertWithMessage(const QString &message, const QString &description, const QString &cancelBtn,
                     CompletionHandler completion, const QStringList &otherBtn);

    /// An empty handler is ignored: the earlier one stays.
    void setCompletionHandler(CompletionHandler completion);

    QString message() const { return m_message; }
    QString description() const { return m_description; }
    const QList<Button> &buttons() const { return m_buttons; }

    /// Shows it in the panel until a button has been clicked.
    void runModal(AlertPanel &panel);
    /// What the panel's buttons do: the window closes, the modal run ends, the handler is told.
    void buttonPressed(qint64 tag);

private:
    QString m_message;
    QString m_description;
    QList<Button> m_buttons;
    CompletionHandler m_completionHandler;
    AlertPanel *m_panel = nullptr;
};

} // namespace velq
