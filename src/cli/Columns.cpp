#include "cli/Columns.h"

#include "common/Text.h"

#include <algorithm>

namespace velq::cli
{

namespace
{

struct Range {
    char32_t first;
    char32_t last;
};

// The blocks that are wide or full-width in Unicode's table of East Asian widths.
constexpr Range wideCharacters[] = {
    {0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0xA4CF},   {0xA960, 0xA97C},
    {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF01, 0xFF60},
    {0xFFE0, 0xFFE6},   {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF},
    {0x20000, 0x3FFFD},
};

qsizetype placesOf(char32_t character)
{
    switch (QChar::category(character)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_Enclosing:
    case QChar::Other_Format:
        return 0;
    default:
        return std::ranges::any_of(wideCharacters,
                                   [&](const Range &range) {
                                       return character >= range.first && character <= range.last;
                                   })
            ? 2
            : 1;
    }
}

// On a terminal; the number of characters is another one.
qsizetype widthOf(const QString &text)
{
    qsizetype width = 0;
    for (const char32_t character : text.toUcs4())
        width += placesOf(character);
    return width;
}

QString cell(const QString &text)
{
    return text.isEmpty() ? QStringLiteral("-") : onOneLine(text);
}

QString padded(const QString &text, qsizetype width)
{
    return text + QString(width - widthOf(text), u' ');
}

QList<qsizetype> widthsOf(const QList<QStringList> &rows)
{
    QList<qsizetype> widths;
    for (const QStringList &row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (qsizetype column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], widthOf(cell(row[column])));
    }
    return widths;
}

} // namespace

QString columns(const QList<QStringList> &rows)
{
    const QList<qsizetype> widths = widthsOf(rows);
    QString text;
    for (const QStringList &row : rows) {
        for (qsizetype column = 0; column + 1 < row.size(); ++column)
            text += padded(cell(row[column]), widths[column] + 2);
        text += cell(row.value(row.size() - 1)) + u'\n';
    }
    return text;
}

} // namespace velq::cli
