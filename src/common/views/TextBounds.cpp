#include "common/views/TextBounds.h"

#include <QString>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>

namespace velq
{

namespace
{

// Positions in a layout are 26.6 fixed point numbers.
constexpr float widestLine = 1 << 24;

QString withLineSeparators(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    text.replace(QLatin1Char('\n'), QChar(QChar::LineSeparator));
    return text;
}

// Places the next line below the others.
void extend(QRectF &bounds, QTextLine line, float width)
{
    line.setLeadingIncluded(true);
    line.setLineWidth(width);
    bounds.setHeight(bounds.height() + line.height());
    bounds.setWidth(std::max(bounds.width(), line.naturalTextWidth()));
}

} // namespace

QRectF boundingRectOfText(const QString &text, const QFont &font, float width)
{
    QRectF bounds;
    if (text.isNull())
        return bounds;
    QTextLayout layout(withLineSeparators(text), font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    const float limit = width > 0 ? std::min(width, widestLine) : widestLine;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine())
        extend(bounds, line, limit);
    layout.endLayout();
    return bounds;
}

} // namespace velq
