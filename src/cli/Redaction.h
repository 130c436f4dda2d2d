#pragma once

#include <QHash>
#include <QJsonValue>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

namespace velq::cli
{

/// Takes out of texts what is nobody's business: addresses, hardware addresses (in the names of
/// devices, too), names of computers and domains, and the names that it is told. The same word
/// becomes the same "[kind number]" each time. One thread.
class Redaction
{
public:
    /// Words that are blanked wherever they stand alone, in capitals or not, and what as.
    struct Names {
        QString kind;
        QStringList words;
    };

    explicit Redaction(const QList<Names> &names);

    /// This person and this computer: account, full name, home folder, host name.
    static QList<Names> ofThisPerson();

    QString of(const QString &text);
    /// All texts in it; keys stay.
    QJsonValue of(const QJsonValue &value);

private:
    QString blank(const QString &word);
    QString kindOf(const QString &word) const;
    QString numbered(const QString &kind, const QString &word);

    QHash<QString, QString> m_kinds; ///< of the names, in small letters
    QRegularExpression m_private;
    QHash<QString, QString> m_blanks;
    QHash<QString, int> m_counts;
};

} // namespace velq::cli
