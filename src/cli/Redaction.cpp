#include "cli/Redaction.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QSysInfo>

#include <algorithm>
#include <pwd.h>
#include <unistd.h>

namespace velq::cli
{

namespace
{

// In doubt a text that is no address is blanked, too.
constexpr char octets[] = "(?:[0-9a-f]{1,2}[:-]){5,}[0-9a-f]{1,2}"
                          "|(?:[0-9a-f]{4}\\.){2}[0-9a-f]{4}"
                          "|(?<![0-9a-f])[0-9a-f]{12}(?![0-9a-f])";
constexpr char ipv6[] = R"([0-9a-f]*:[0-9a-f]*:[0-9a-f:.]*(?:%[\w.-]+)?)";
constexpr char ipv4[] = R"((?<!\d)(?<!\d\.)\d{1,3}(?:\.\d{1,3}){3}(?!\d))";
constexpr char domain[] = R"((?<![\w-])(?:[\w-]+\.)+(?:xn--[a-z0-9-]+|\p{L}{2,})(?![\w-]))";

bool matches(const char *pattern, const QString &word)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(QLatin1StringView(pattern)),
                              QRegularExpression::CaseInsensitiveOption)
        .match(word)
        .hasMatch();
}

// Times of the day, addresses that every computer has, masks, and names of Velq's own files.
bool tellsNothing(const QString &word)
{
    return matches("\\d{1,2}:\\d{2}:\\d{2}|::1?|127\\.[\\d.]+|0\\.0\\.0\\.0|255\\.[\\d.]+"
                   "|com\\.zelmor\\..*",
                   word);
}

// Longer ones first: one may be the beginning of another.
QString alternatives(QStringList words)
{
    std::ranges::sort(words, std::ranges::greater(), &QString::size);
    for (QString &word : words)
        word = QRegularExpression::escape(word);
    return QStringLiteral("(?<!\\w)(?:%1)(?!\\w)").arg(words.join(u'|'));
}

} // namespace

Redaction::Redaction(const QList<Names> &names)
{
    QStringList words;
    for (const Names &some : names)
        for (const QString &word : some.words)
            if (!word.trimmed().isEmpty()) {
                m_kinds.insert(word.trimmed().toLower(), some.kind);
                words.append(word.trimmed());
            }
    QStringList parts;
    for (const char *const pattern : {octets, ipv6, ipv4, domain})
        parts.append(QLatin1StringView(pattern));
    if (!words.isEmpty())
        parts.prepend(alternatives(words));
    m_private = QRegularExpression(parts.join(u'|'),
                                   QRegularExpression::CaseInsensitiveOption
                                       | QRegularExpression::UseUnicodePropertiesOption);
}

QList<Redaction::Names> Redaction::ofThisPerson()
{
    const QString host = QSysInfo::machineHostName();
    QList<Names> names;
    // That one is called so everywhere, as is a computer that nobody gave a name.
    if (host != QLatin1String("localhost") && host != QSysInfo::productType())
        names.append({QStringLiteral("host"), {host, host.section(u'.', 0, 0)}});
    // Root's are the same everywhere.
    if (QDir::homePath() != QLatin1String("/root"))
        names.append({QStringLiteral("home"), {QDir::homePath()}});
    const passwd *const entry = getuid() != 0 ? getpwuid(getuid()) : nullptr;
    if (entry == nullptr)
        return names;
    const QString fullName = QString::fromLocal8Bit(entry->pw_gecos).section(u',', 0, 0);
    names.append({QStringLiteral("person"), {QString::fromLocal8Bit(entry->pw_name), fullName}});
    return names;
}

QString Redaction::of(const QString &text)
{
    QString result;
    qsizetype end = 0;
    for (const QRegularExpressionMatch &match : m_private.globalMatch(text)) {
        result += QStringView(text).sliced(end, match.capturedStart() - end);
        result += blank(match.captured());
        end = match.capturedEnd();
    }
    result += QStringView(text).sliced(end);
    return text.isNull() ? text : result;
}

QJsonValue Redaction::of(const QJsonValue &value)
{
    if (value.isString())
        return of(value.toString());
    if (value.isArray()) {
        QJsonArray array = value.toArray();
        for (QJsonValueRef element : array)
            element = of(QJsonValue(element));
        return array;
    }
    if (!value.isObject())
        return value;
    QJsonObject object = value.toObject();
    for (auto member = object.begin(); member != object.end(); ++member)
        member.value() = of(QJsonValue(member.value()));
    return object;
}

QString Redaction::blank(const QString &word)
{
    if (!m_kinds.contains(word.toLower()) && tellsNothing(word))
        return word;
    return numbered(kindOf(word), word.toLower());
}

QString Redaction::kindOf(const QString &word) const
{
    if (const auto found = m_kinds.constFind(word.toLower()); found != m_kinds.constEnd())
        return *found;
    if (matches(octets, word))
        return QStringLiteral("hardware address");
    if (matches(ipv4, word))
        return QStringLiteral("IPv4 address");
    return word.contains(u':') ? QStringLiteral("IPv6 address") : QStringLiteral("name");
}

QString Redaction::numbered(const QString &kind, const QString &word)
{
    QString &blank = m_blanks[word];
    if (blank.isNull())
        blank = QStringLiteral("[%1 %2]").arg(kind).arg(++m_counts[kind]);
    return blank;
}

} // namespace velq::cli
