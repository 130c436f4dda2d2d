#include "common/Text.h"

#include <QStringDecoder>

#include <algorithm>

namespace velq
{

QString decodedUtf8(QByteArrayView bytes)
{
    // A byte order mark is a character like any other here: nothing of a tool's answer is dropped.
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringConverter::Flag::Stateless
                               | QStringConverter::Flag::ConvertInitialBom);
    const QString text = decoder(bytes);
    if (decoder.hasError())
        return {};
    return text.isNull() ? QStringLiteral("") : text;
}

QString shown(const QString &text)
{
    return text.isNull() ? QStringLiteral("(null)") : text;
}

QString onOneLine(QString text)
{
    const auto isControl = [](QChar each) {
        return each.category() == QChar::Other_Control || each == QChar::LineSeparator
            || each == QChar::ParagraphSeparator;
    };
    std::ranges::replace_if(text, isControl, QChar(QLatin1Char(' ')));
    return text;
}

} // namespace velq
