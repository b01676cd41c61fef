// SPDX-License-Identifier: BSL-1.0
#include <host_testing/host_testing.hpp>

#include <gtest/gtest.h>

namespace {

TEST(AnAdoptersPlatform, KeepsTheContract) {
    for (auto const& promise : lf::import::host_testing::checkContract(u"pkg", u"pkg@^1.2")) {
        EXPECT_TRUE(promise.isKept()) << promise;
    }
}

} // namespace
