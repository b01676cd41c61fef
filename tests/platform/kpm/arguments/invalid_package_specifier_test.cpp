// SPDX-License-Identifier: BSL-1.0
#include <kpm/arguments/invalid_package_specifier.hpp>
#include <oxtavel/keldar_components/component_version_range.hpp>

#include <gtest/gtest.h>

#include <exception>

namespace {

using Oxtavel::KeldarComponents::GetComponentVersionRangeFactory;
using InvalidSpecifier =
    foundation::core::except::Exception<kpm::arguments::InvalidPackageSpecifier, std::exception>;

TEST(InvalidPackageSpecifier, IsOneTypeOnBothSidesOfTheLibraryBorder) {
    EXPECT_THROW(GetComponentVersionRangeFactory().Create(u"bad"), InvalidSpecifier);
    EXPECT_THROW(GetComponentVersionRangeFactory().Create(u"bad"), std::exception);
    EXPECT_THROW(throw InvalidSpecifier(), InvalidSpecifier);
}

TEST(InvalidPackageSpecifier, SaysWhatItIs) {
    EXPECT_STREQ(InvalidSpecifier().what(), "invalid package specifier");
}

} // namespace
