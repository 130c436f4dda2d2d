#include "cli/Findings.h"

#include "scanner/NetData.h"

#include <QJsonDocument>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace
{

using namespace velq;
using cli::Findings;

std::shared_ptr<NetStatus> line(bool error, const QString &name, const QString &des = {})
{
    return std::make_shared<NetStatus>(NetStatus{error, name, des, nullptr});
}

std::shared_ptr<NetData> item(const char *title, qint64 issue, const NetData::StatusList &lines)
{
    auto data = std::make_shared<NetData>();
    data->setTitle(QString::fromUtf8(title));
    data->setIssue(issue);
    data->setErrorStatus(lines);
    return data;
}

class FindingsTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        static const QTemporaryDir home;
        qputenv("HOME", home.path().toLocal8Bit());
    }

    const std::shared_ptr<NetData> m_good =
        item("Good ", 0, {line(false, QStringLiteral("Normal"), QStringLiteral("As it should."))});
    const std::shared_ptr<NetData> m_bad =
        item("Bad", 2,
             {line(true, QStringLiteral("Abnormal"), QStringLiteral("One.")),
              line(true, QStringLiteral("\u4ee3\u7406."))});
    const std::shared_ptr<NetData> m_new = item("New", 0, {});
};

TEST_F(FindingsTest, NothingFoundIsSaid)
{
    const Findings findings{0, 0, {}, Scanner::Data({m_good})};
    EXPECT_TRUE(findings.areClean());
    EXPECT_EQ(findings.text(), QStringLiteral("Good\n    Normal: As it should.\nNo problems.\n"));
}

TEST_F(FindingsTest, EachLineAndWhatTheDelegateWasToldIsSaid)
{
    const Findings findings{0x1010, 2, {16, 4096, 16}, Scanner::Data({m_bad, m_new})};
    EXPECT_FALSE(findings.areClean());
    EXPECT_EQ(findings.text(),
              QStringLiteral("Bad\n  ! Abnormal: One.\n  ! \u4ee3\u7406.\nNew\n    not checked\n"
                             "2 problems (bits: 16, 4096; told: 16, 4096, 16).\n"));
}

TEST_F(FindingsTest, AnIssueWithoutALineIsStillOne)
{
    m_new->setIssue(1);
    const Findings findings{65536, 1, {}, Scanner::Data({m_new})};
    EXPECT_EQ(findings.text(),
              QStringLiteral("New\n  ! abnormal\n1 problem (bits: 65536; told: none).\n"));
}

TEST_F(FindingsTest, AnIgnoredItemIsMarked)
{
    m_bad->setHasIgnore(true);
    const Findings findings{16, 0, {16}, Scanner::Data({m_bad})};
    EXPECT_TRUE(findings.text().startsWith(QStringLiteral("Bad (ignored)\n")));
    EXPECT_TRUE(findings.text().endsWith(
        QStringLiteral("\nNo problems but ignored ones (bits: 16; told: 16).\n")));
    EXPECT_FALSE(findings.areClean());
}

TEST_F(FindingsTest, ALineFeedMakesNoLine)
{
    m_new->addStatus(line(false, QStringLiteral("A\nB"), QStringLiteral("C\x1b[2J")));
    const Findings findings{0, 0, {}, Scanner::Data({m_new})};
    EXPECT_EQ(findings.text(), QStringLiteral("New\n    A B: C [2J\nNo problems.\n"));
}

TEST_F(FindingsTest, WhenStoppedTheLastResultIsLeftOut)
{
    const Findings findings{16, 2, {16}, Scanner::Data({m_good, m_bad, m_new})};
    EXPECT_EQ(findings.textWhenStopped(),
              QStringLiteral("Good\n    Normal: As it should.\nBad\n    not checked\n"
                             "New\n    not checked\nStopped before the scan was over.\n"));
}

TEST_F(FindingsTest, WhenStoppedAtOnceNothingWasChecked)
{
    const Findings findings{0, 0, {}, Scanner::Data({m_new, m_new})};
    EXPECT_EQ(findings.textWhenStopped(),
              QStringLiteral("New\n    not checked\nNew\n    not checked\n"
                             "Stopped before the scan was over.\n"));
}

TEST_F(FindingsTest, ProgramsGetTheRecordsByTheirPropertiesNames)
{
    m_bad->setDes(QStringLiteral("Why"));
    m_bad->setIgnoreKey(QStringLiteral("BadKey"));
    m_bad->setNoShowIgnore(true);
    const Findings findings{1, 2, {1}, Scanner::Data({m_bad})};
    const auto wanted = QJsonDocument::fromJson(R"({
        "errorStatus": 1, "issueCount": 2, "delegate": [1], "items": [
            {"title": "Bad", "des": "Why", "ignoreKey": "BadKey", "issue": 2, "ignore": false,
             "noShowIgnore": true, "errorStatus": [
                {"error": true, "name": "Abnormal", "des": "One."},
                {"error": true, "name": "代理.", "des": null}]}]})");
    EXPECT_EQ(QJsonDocument(findings.json()).toJson(), wanted.toJson());
}

TEST_F(FindingsTest, AnItemOfAnotherKindAndAScannerWithoutItemsHaveNoLines)
{
    const Findings other{0, 0, {}, Scanner::Data({std::make_shared<GerenalData>()})};
    const auto record = other.json()[QStringLiteral("items")][0];
    EXPECT_TRUE(record[QStringLiteral("title")].isNull());
    EXPECT_TRUE(record[QStringLiteral("errorStatus")].isArray());
    const Findings none{0, 0, {}, std::nullopt};
    EXPECT_EQ(none.text(), QStringLiteral("No problems.\n"));
}

} // namespace
