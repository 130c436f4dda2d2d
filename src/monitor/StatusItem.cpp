#include "monitor/StatusItem.h"

namespace velq
{

void StatusItem::setView(StatusItemView *view)
{
    if (m_view == view)
        return;
    m_view = view;
    Q_EMIT viewChanged();
}

void StatusItem::setText(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    Q_EMIT textChanged();
}

} // namespace velq
