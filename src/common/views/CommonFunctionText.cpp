#include "common/CommonFunction.h"
#include "common/views/TextBounds.h"

#include <QFont>

namespace velq
{

float CommonFunction::stringWidth(const QString &text, const QFont &dic, float width)
{
    return static_cast<float>(stringRect(text, dic, width).width());
}

QRectF CommonFunction::stringRect(const QString &text, const QFont &dic, float width)
{
    return boundingRectOfText(text, dic, width);
}

} // namespace velq
