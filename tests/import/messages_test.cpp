// SPDX-License-Identifier: BSL-1.0

#include <import/messages.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace lf::import {
namespace {

TEST(Messages, AreOfOneCatalogue) {
    EXPECT_EQ(messageCatalogue, "KELDAR:lang");
}

// The host's catalogue is written against these facts, so they are pinned here once more.
TEST(Messages, HaveTheKeysSeveritiesAndArgumentsThatHostsKnow) {
    struct Row {
        std::string_view key;
        Severity severity;
        std::size_t numberOfArguments;
    };

    constexpr std::array rows{
        Row{"InvalidImportArgument", Severity::Error, 1},
        Row{"MalformedImportArgumentWarning", Severity::Warning, 1},
        Row{"KeywordInImportArgument", Severity::Error, 2},
        Row{"KeywordInImportArgumentWarning", Severity::Warning, 2},
        Row{"ImportArgumentWithoutDot", Severity::Error, 0},
        Row{"InvalidAliasName", Severity::Error, 1},
        Row{"IncorrectNumberOfAlias", Severity::Error, 0},
        Row{"IncorrectNumberOfPackagesForAlias", Severity::Error, 0},
        Row{"MixedImportType", Severity::Error, 0},
        Row{"MultipleAsClauses", Severity::Error, 0},
        Row{"NamespaceWithAlias", Severity::Error, 0},
        Row{"PackageRedeclared", Severity::Error, 1},
        Row{"PrecedenceViolation", Severity::Error, 2},
        Row{"InvalidPackageFunctionAbbreviation", Severity::Error, 0},
    };
    ASSERT_EQ(rows.size(), messageKeys.size());
    for (std::size_t index = 0; index < rows.size(); ++index) {
        EXPECT_EQ(messageKeys[index].key, rows[index].key);
        EXPECT_EQ(messageKeys[index].severity, rows[index].severity) << rows[index].key;
        EXPECT_EQ(messageKeys[index].numberOfArguments, rows[index].numberOfArguments)
            << rows[index].key;
        EXPECT_EQ(severityOf(rows[index].key), rows[index].severity) << rows[index].key;
    }
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
