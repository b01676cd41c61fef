// SPDX-License-Identifier: BSL-1.0
#include <cppcompat/span.hpp>

#include <gtest/gtest.h>

#include <span>
#include <string>
#include <type_traits>
#include <vector>

namespace {

TEST(Span, IsTheStandardOne) {
    static_assert(std::is_same_v<cppcompat::span<int const>, std::span<int const>>);

    std::vector<std::u16string> const texts{u"a", u"b"};
    cppcompat::span<std::u16string const> const span = texts;
    EXPECT_EQ(span.data(), texts.data());
    EXPECT_EQ(span.size(), texts.size());
}

} // namespace
