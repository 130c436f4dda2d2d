#include "common/NotificationCenter.h"

#include <gtest/gtest.h>

namespace
{

using velq::NotificationCenter;

class NotificationCenterTest : public testing::Test
{
protected:
    NotificationCenter::Observer count()
    {
        return [this](QObject *object) {
            ++calls;
            last = object;
        };
    }

    const QString name = QStringLiteral("name");
    NotificationCenter center;
    QObject context;
    QObject subject;
    int calls = 0;
    QObject *last = nullptr;
};

TEST_F(NotificationCenterTest, ObserversOfTheNameAreCalledWithTheObject)
{
    center.addObserver(&context, name, nullptr, count());
    center.post(name, &subject);
    center.post(QStringLiteral("other"), &context);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(last, &subject);
}

TEST_F(NotificationCenterTest, AnObserverOfOneObjectHearsOfNoOther)
{
    center.addObserver(&context, name, &subject, count());
    center.post(name, &context);
    EXPECT_EQ(calls, 0);
    center.post(name, &subject);
    EXPECT_EQ(calls, 1);
}

TEST_F(NotificationCenterTest, RemovedOrGoneObserversHearNothing)
{
    center.addObserver(&context, name, nullptr, count());
    center.removeObserver(&context);
    {
        QObject shortLived;
        center.addObserver(&shortLived, name, nullptr, count());
    }
    center.post(name, &subject);
    EXPECT_EQ(calls, 0);
}

TEST_F(NotificationCenterTest, AnObserverMayRemoveItselfWhileCalled)
{
    center.addObserver(&context, name, nullptr, [this](QObject *) {
        ++calls;
        center.removeObserver(&context);
    });
    center.post(name, &subject);
    center.post(name, &subject);
    EXPECT_EQ(calls, 1);
}

TEST_F(NotificationCenterTest, ThereIsOneDefaultCenter)
{
    EXPECT_EQ(&NotificationCenter::defaultCenter(), &NotificationCenter::defaultCenter());
}

} // namespace
