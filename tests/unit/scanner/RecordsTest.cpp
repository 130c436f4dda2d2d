#include "common/Image.h"
#include "platform/Bundle.h"
#include "platform/PropertyList.h"
#include "scanner/NSButton_service.h"
#include "scanner/NetData.h"
#include "scanner/NetworkService.h"
#include "scanner/ProxyServer.h"
#include "scanner/Scanner.h"
#include "support/OwnHome.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace
{

using namespace velq;

TEST(ScannerTest, TheBaseDoesNothing)
{
    Scanner scanner;
    scanner.scan();
    scanner.stopScan();
    scanner.speedup();
    scanner.stopSpeedup();
    EXPECT_EQ(scanner.issueCount(), 0);
    EXPECT_FALSE(scanner.data().has_value());
    EXPECT_FALSE(scanner.needManully());
}

TEST(ScannerTest, KeepsWhetherItIsInUse)
{
    Scanner scanner;
    EXPECT_FALSE(scanner.disable());
    scanner.setDisable(true);
    EXPECT_TRUE(scanner.disable());
}

TEST(ScannerTest, MayKeepThatElsewhere)
{
    struct Elsewhere : Scanner {
        bool disable() const override { return *kept; }
        void setDisable(bool disable) override { *kept = disable; }
        std::shared_ptr<bool> kept = std::make_shared<bool>(false);
    } elsewhere;
    Scanner &scanner = elsewhere;
    scanner.setDisable(true);
    EXPECT_TRUE(scanner.disable() && *elsewhere.kept);
    EXPECT_FALSE(elsewhere.Scanner::disable());
}

TEST(ScannerTest, CountsItsIssueField)
{
    struct Counting : Scanner {
        Counting() { m_issue = 3; }
    };
    EXPECT_EQ(Counting().issueCount(), 3);
}

class IgnoringTest : public ::testing::Test
{
protected:
    QVariant stored(const QString &key) const
    {
        return PropertyList::dictionaryFromFile(file).value_or(QVariantMap()).value(key);
    }

    const QString file =
        velq::testing::ownHome().filePath(QStringLiteral("Library/Preferences/test_scanner.plist"));
};

TEST_F(IgnoringTest, AnItemWhoseKeyWasNeverWrittenIsNotIgnored)
{
    GerenalData item;
    item.setIgnoreKey(QStringLiteral("NetworkKey1"));
    EXPECT_FALSE(item.ignore());
    EXPECT_FALSE(stored(QStringLiteral("NetworkKey1")).isValid());
}

TEST_F(IgnoringTest, TheChoiceIsTurnedRoundAndStored)
{
    const QString key = QStringLiteral("NetworkKey2");
    GerenalData item;
    item.setIgnoreKey(key);
    item.resetIgnore();
    EXPECT_TRUE(item.ignore());
    EXPECT_EQ(stored(key), QVariant(true));
    item.resetIgnore();
    EXPECT_FALSE(item.ignore());
    EXPECT_EQ(stored(key), QVariant(false));
}

TEST_F(IgnoringTest, AnIgnoredItemOfTheDiagnosisHasNoIssue)
{
    NetData item;
    item.setIgnoreKey(QStringLiteral("NetworkKey3"));
    item.setIssue(1);
    EXPECT_EQ(item.issue(), 1);
    item.resetIgnore();
    EXPECT_EQ(item.issue(), 0);
    item.resetIgnore();
    EXPECT_EQ(item.issue(), 1);
}

TEST_F(IgnoringTest, OneThatIsIgnoredForNowHasNoIssueEither)
{
    NetData item;
    item.setIgnoreKey(QStringLiteral("NetworkKey4"));
    item.setIssue(2);
    item.setHasIgnore(true);
    EXPECT_EQ(item.issue(), 0);
    item.setHasIgnore(false);
    EXPECT_EQ(item.issue(), 2);
}

TEST_F(IgnoringTest, OtherItemsKeepTheirIssue)
{
    GerenalData item;
    item.setIgnoreKey(QStringLiteral("OptimizeKey1"));
    item.setIssue(1);
    item.resetIgnore();
    item.setHasIgnore(true);
    EXPECT_EQ(item.issue(), 1);
}

TEST(RecordsTest, StartOutEmpty)
{
    const GerenalData item;
    EXPECT_TRUE(item.title().isNull() && item.des().isNull() && item.ignoreKey().isNull());
    EXPECT_TRUE(item.image() == nullptr && item.selectImage() == nullptr);
    EXPECT_EQ(item.issue(), 0);
    EXPECT_FALSE(item.hasIgnore() || item.noShowIgnore());

    const NetStatus status;
    EXPECT_FALSE(status.error);
    EXPECT_TRUE(status.name.isNull() && status.des.isNull() && status.subErrorView == nullptr);

    const NetworkService service;
    EXPECT_TRUE(service.netType.isNull() && service.ipAdds.isNull() && service.interface.isNull());
    EXPECT_FALSE(service.enabled || service.isActive);

    const ProxyServer proxy;
    EXPECT_TRUE(proxy.proxyType.isNull() && proxy.serverIP.isNull() && proxy.port.isNull());
    EXPECT_FALSE(proxy.enabled || proxy.authenticated);
}

TEST(RecordsTest, AnItemsTitleGoesFirst)
{
    auto item = std::make_unique<GerenalData>();
    item->setTitle(QStringLiteral("Title"));
    item->setDes(QStringLiteral("A sentence."));
    bool hadTitle = true;
    bool hadDes = false;
    const GerenalData *const ending = item.get();
    const auto look = [&](const Image *last) {
        hadTitle = !ending->title().isNull();
        hadDes = !ending->des().isNull();
        delete last;
    };
    item->setImage(std::shared_ptr<Image>(new Image(QString(), {}), look));
    item.reset();
    EXPECT_FALSE(hadTitle);
    EXPECT_TRUE(hadDes);
}

TEST(RecordsTest, AStatusListIsReplacedWhole)
{
    NetData item;
    item.addStatus(std::make_shared<NetStatus>());
    const auto fresh = std::make_shared<NetStatus>();
    item.setErrorStatus({});
    item.addStatus(fresh);
    EXPECT_EQ(item.errorStatus(), NetData::StatusList{fresh});
}

TEST(RecordsTest, AnItemIsMadeOfItsTextsAndImages)
{
    (void)velq::testing::ownHome();
    QFile picture(QDir(Bundle::mainBundle().resourcePath())
                      .filePath(QStringLiteral("icon_records_normal.png")));
    ASSERT_TRUE(picture.open(QIODevice::WriteOnly));
    const auto item = NetData::make({.title = QStringLiteral("Title"),
                                     .des = QStringLiteral("A sentence."),
                                     .image = QStringLiteral("icon_records"),
                                     .ignoreKey = QStringLiteral("Key"),
                                     .noShowIgnore = true});
    EXPECT_EQ(item->title(), QStringLiteral("Title"));
    EXPECT_EQ(item->des(), QStringLiteral("A sentence."));
    ASSERT_NE(item->image(), nullptr);
    EXPECT_EQ(item->image()->name(), QStringLiteral("icon_records_normal"));
    EXPECT_EQ(item->selectImage(), nullptr);
    EXPECT_EQ(item->ignoreKey(), QStringLiteral("Key"));
    EXPECT_TRUE(item->noShowIgnore());
    EXPECT_TRUE(item->errorStatus().isEmpty());
    EXPECT_EQ(item->issue(), 0);
}

TEST(RecordsTest, AResultIsOneLineAndItsIssue)
{
    (void)velq::testing::ownHome();
    NetData item;
    item.setResult({.error = true,
                    .name = QStringLiteral("Abnormal"),
                    .des = QStringLiteral("No."),
                    .subErrorView = nullptr});
    const NetData::StatusList before = item.errorStatus();
    ASSERT_EQ(before.size(), 1);
    EXPECT_TRUE(before[0]->error);
    EXPECT_EQ(before[0]->name, QStringLiteral("Abnormal"));
    EXPECT_EQ(before[0]->des, QStringLiteral("No."));
    EXPECT_EQ(item.issue(), 1);

    item.setResult(
        {.error = false, .name = QStringLiteral("Normal"), .des = {}, .subErrorView = nullptr});
    ASSERT_EQ(item.errorStatus().size(), 1);
    EXPECT_EQ(item.errorStatus()[0]->name, QStringLiteral("Normal"));
    EXPECT_EQ(item.issue(), 0);
    EXPECT_TRUE(before[0]->error) << "who holds the old line keeps it";
}

TEST(ButtonIndexTest, IsWhatWasSetAndZeroBefore)
{
    QObject button;
    EXPECT_EQ(getIndex(button), 0);
    setIndex(button, -5);
    EXPECT_EQ(getIndex(button), -5);
    setIndex(button, qint64{1} << 40);
    EXPECT_EQ(getIndex(button), qint64{1} << 40);
}

} // namespace
