#include "process/nettools/Golden.h"
#include "process/nettools/ToolRun.h"

#include <gtest/gtest.h>

namespace
{

using velq::testing::expectGolden;
using velq::testing::runNettool;

TEST(NslookupCall, WhatItCannotDoIsMisuse)
{
    expectGolden("nslookup-without-host", runNettool("nslookup", {}));
    expectGolden("nslookup-unexpected-argument", runNettool("nslookup", {"a.test", "192.0.2.53"}));
}

} // namespace
