#include "diagnosis/BinarySwith.h"

#include <QStringList>

#include <algorithm>

namespace velq
{

namespace
{

QString dottedPairs(const QString &digits)
{
    QStringList values;
    values.reserve((digits.size() + 1) / 2);
    for (qsizetype i = 0; i < digits.size(); i += 2)
        values.append(QString::number(16 * BinarySwith::sexadecimalCharactor(digits.mid(i, 1))
                                      + BinarySwith::sexadecimalCharactor(digits.mid(i + 1, 1))));
    return values.join(u'.');
}

} // namespace

int BinarySwith::sexadecimalCharactor(const QString &character)
{
    static const QString digits = QStringLiteral("0123456789abcdef");
    if (character.size() != 1)
        return 0;
    return std::max(0, static_cast<int>(digits.indexOf(character.at(0).toLower())));
}

QString BinarySwith::sexadecimalToIPv4(const QString &digits)
{
    constexpr qsizetype length = 8;
    return digits.size() == length ? dottedPairs(digits) : QStringLiteral("");
}

QString BinarySwith::sexadecimalToDecimal(const QString &digits)
{
    return dottedPairs(QString(digits).remove(QStringLiteral("0x")));
}

} // namespace velq
