#include "nettools/networksetup/Forms.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

using velq::nettools::Form;
using velq::nettools::networksetupForms;

TEST(Forms, EachIsTheOnlyOneOfItsNameAndHasASentence)
{
    for (const Form &form : networksetupForms) {
        EXPECT_EQ(std::ranges::count(networksetupForms, form.name, &Form::name), 1) << form.name;
        EXPECT_TRUE(form.name.starts_with('-')) << form.name;
        EXPECT_TRUE(form.summary.ends_with('.')) << form.name;
    }
}

} // namespace
