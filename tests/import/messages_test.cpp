// SPDX-License-Identifier: BSL-1.0

#include <import/messages.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

namespace lf::import {
namespace {

TEST(Messages, AreOfOneCatalogue) {
    EXPECT_EQ(messageCatalogue, "KELDAR:lang");
}

TEST(Messages, HaveKeysThatDiffer) {
    auto keys = messageKeys;
    std::ranges::sort(keys, {}, &MessageKey::key);
    EXPECT_EQ(std::ranges::adjacent_find(keys, {}, &MessageKey::key), keys.end());
}

TEST(Messages, AreErrorsWhenTheirKeyIsUnknown) {
    for (std::string_view const key :
         {"", "SomethingWarning", "invalidimportargument", "MalformedImportArgumentWarning "}) {
        EXPECT_EQ(severityOf(key), Severity::Error) << key;
    }
}

} // namespace
} // namespace lf::import
