// SPDX-License-Identifier: BSL-1.0
#include <lf/features/package_imports.hpp>

#include <gtest/gtest.h>

#include <thread>

namespace {

using lf::features::isPackageImportsFeatureOn;
using lf::features::setPackageImportsFeature;

/// Initialized before any test can set the switch.
bool const isOnAtStart = isPackageImportsFeatureOn();

TEST(PackageImportsFeature, IsOnAtStart) {
    EXPECT_TRUE(isOnAtStart);
}

TEST(PackageImportsFeature, IsWhatItWasLastSetTo) {
    bool const before = isPackageImportsFeatureOn();
    for (bool const on : {false, false, true, true, false}) {
        setPackageImportsFeature(on);
        EXPECT_EQ(isPackageImportsFeatureOn(), on);
    }
    setPackageImportsFeature(before);
}

TEST(PackageImportsFeature, IsOneForAllThreads) {
    bool const before = isPackageImportsFeatureOn();
    for (bool const on : {false, true}) {
        std::thread([on] { setPackageImportsFeature(on); }).join();
        EXPECT_EQ(isPackageImportsFeatureOn(), on);
        bool isOnElsewhere = !on;
        std::thread([&isOnElsewhere] { isOnElsewhere = isPackageImportsFeatureOn(); }).join();
        EXPECT_EQ(isOnElsewhere, on);
    }
    setPackageImportsFeature(before);
}

} // namespace
