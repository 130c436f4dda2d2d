#include "PlainView.h"
#include "common/views/NSView_BackgroudColor.h"

#include <gtest/gtest.h>

namespace
{

using namespace velq;

TEST(FirstFillTest, SwitchesTheGradientsOfAllViewsOn)
{
    PlainView view(Qt::white);
    view.resize(20, 10);
    setGradientColor(view, {{0, Qt::red}, {1, Qt::red}});
    EXPECT_EQ(count(view.drawn(), Qt::white), 200);
    EXPECT_EQ(getGradientColor(view).size(), 2);

    // Even no colour, for another view, is a first call.
    PlainView other(Qt::white);
    setBackgroundColor(other, {});
    EXPECT_EQ(count(view.drawn(), Qt::red), 200);
}

} // namespace
