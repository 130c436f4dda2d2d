#include "common/NSAlert_Addition.h"

#include "common/AlertPanel.h"

namespace velq
{

std::unique_ptr<NSAlert_Addition> NSAlert_Addition::alertWithMessage(const QString &message,
                                                                     const QString &description,
                                                                     const QString &cancelBtn,
                                                                     CompletionHandler completion,
                                                                     const QStringList &otherBtn)
{
    auto alert = std::make_unique<NSAlert_Addition>();
    alert->m_message = message;
    alert->m_description = description;
    qint64 tag = cancelTag;
    alert->m_buttons.append({cancelBtn, tag});
    for (const QString &title : otherBtn) {
        if (title.isEmpty())
            break;
        alert->m_buttons.append({title, ++tag});
    }
    alert->setCompletionHandler(std::move(completion));
    return alert;
}

void NSAlert_Addition::setCompletionHandler(CompletionHandler completion)
{
    if (completion)
        m_completionHandler = std::move(completion);
}

void NSAlert_Addition::runModal(AlertPanel &panel)
{
    m_panel = &panel;
    panel.runModal(*this);
    m_panel = nullptr;
}

void NSAlert_Addition::buttonPressed(qint64 tag)
{
    if (m_panel != nullptr) {
        m_panel->closeWindow();
        m_panel->stopModal();
    }
    if (m_completionHandler)
        m_completionHandler(tag);
}

} // namespace velq
