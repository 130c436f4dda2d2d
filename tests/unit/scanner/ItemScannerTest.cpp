#include "scanner/ItemScanner.h"

#include "support/OwnHome.h"

#include <gtest/gtest.h>

namespace
{

using namespace velq;

class TwoItems : public ItemScanner
{
public:
    TwoItems()
        : ItemScanner({std::make_shared<NetData>(), std::make_shared<NetData>()})
    {
        (void)velq::testing::ownHome();
    }

    using ItemScanner::forgetLastScan;
    using ItemScanner::isIgnored;
    using ItemScanner::setResult;
};

TEST(ItemScannerTest, HandsOutItsItemsInOrder)
{
    const TwoItems scanner;
    const Scanner::Data data = scanner.data();
    ASSERT_TRUE(data.has_value());
    ASSERT_EQ(data->size(), 2);
    EXPECT_EQ((*data)[0], scanner.array()[0]);
    EXPECT_EQ((*data)[1], scanner.array()[1]);
}

TEST(ItemScannerTest, ItsIssuesAreThoseOfTheItems)
{
    const TwoItems scanner;
    EXPECT_EQ(scanner.issueCount(), 0);
    scanner.array()[0]->setIssue(1);
    scanner.array()[1]->setIssue(2);
    EXPECT_EQ(scanner.issueCount(), 3);
    scanner.array()[1]->setHasIgnore(true);
    EXPECT_EQ(scanner.issueCount(), 1);
}

TEST(ItemScannerTest, OtherItemsMayTakeTheirPlace)
{
    TwoItems scanner;
    const auto item = std::make_shared<NetData>();
    item->setIssue(5);
    scanner.setArray({item});
    EXPECT_EQ(scanner.issueCount(), 5);
    EXPECT_EQ(scanner.array(), ItemScanner::Array{item});
}

TEST(ItemScannerTest, AStopHoldsUntilTheFlagIsLowered)
{
    TwoItems scanner;
    EXPECT_FALSE(scanner.stopScanFlag() || scanner.stopFixFlag());
    scanner.stopScan();
    EXPECT_TRUE(scanner.stopScanFlag());
    EXPECT_FALSE(scanner.stopFixFlag());
    scanner.stopSpeedup();
    EXPECT_TRUE(scanner.stopFixFlag());
    scanner.forgetLastScan();
    EXPECT_TRUE(scanner.stopScanFlag() && scanner.stopFixFlag());
    scanner.setStopScanFlag(false);
    scanner.setStopFixFlag(false);
    EXPECT_FALSE(scanner.stopScanFlag() || scanner.stopFixFlag());
}

TEST(ItemScannerTest, ANewScanForgetsTheOldOnesBitsAndWhatWasIgnored)
{
    TwoItems scanner;
    scanner.setErrorStatus(17);
    scanner.array()[1]->setHasIgnore(true);
    scanner.array()[1]->setIssue(1);
    scanner.forgetLastScan();
    EXPECT_EQ(scanner.errorStatus(), 0);
    EXPECT_FALSE(scanner.array()[1]->hasIgnore());
    EXPECT_EQ(scanner.issueCount(), 1) << "the items keep their results";
}

TEST(ItemScannerTest, AnItemThatIsLeftOutGoesWithoutResults)
{
    const TwoItems scanner;
    scanner.setResult(1, {.error = true, .name = {}, .des = {}, .subErrorView = nullptr});
    scanner.setResult(2, {.error = true, .name = {}, .des = {}, .subErrorView = nullptr});
    EXPECT_TRUE(scanner.array()[0]->errorStatus().isEmpty());
    EXPECT_EQ(scanner.array()[1]->errorStatus().size(), 1);
    EXPECT_EQ(scanner.issueCount(), 1);
    EXPECT_FALSE(scanner.isIgnored(2));
}

TEST(ItemScannerTest, IgnoringForGoodIsTheItemsOwnChoice)
{
    const TwoItems scanner;
    scanner.array()[0]->setIgnoreKey(QStringLiteral("ItemScannerKey"));
    scanner.array()[0]->resetIgnore();
    scanner.array()[1]->setHasIgnore(true);
    EXPECT_TRUE(scanner.isIgnored(0));
    EXPECT_FALSE(scanner.isIgnored(1));
}

} // namespace
