// SPDX-License-Identifier: BSL-1.0

#include <import/import.hpp>

#include <support/make_entries.hpp>

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace lf::import {
namespace {

using resource_core::BaseMsgID;
using support::makeName;
using support::makePackage;

using Command = std::vector<std::u16string>;

// The first message that parsing a command yields.
std::optional<BaseMsgID> messageOf(Command const& command, Behavior behavior) {
    using Invalid = std::pair<InvalidImportEntry, ImportArgumentIndex>;
    auto const parser = createImportArgumentParser(command, behavior);
    for (ParsedImportEntry const& entry : parser->parse()) {
        if (auto const* const invalid = std::get_if<Invalid>(&entry)) {
            return invalid->first.getMsgHolder().getMsgID();
        }
    }
    return std::nullopt;
}

// The message of a list that contains one entry and refuses another.
std::optional<BaseMsgID> messageOf(ImportEntry first, ImportEntry second) {
    auto const list = createImportList(nullptr);
    list->addStaticImportEntry(std::move(first));
    auto const refusal = list->addStaticImportEntry(std::move(second));
    return refusal ? std::optional(refusal->getMsgID()) : std::nullopt;
}

// The severity and number of arguments of a message, which hosts rely on, and an actual message of
// the library.
struct Row {
    std::string_view key;
    Severity severity;
    std::size_t numberOfArguments;
    std::optional<BaseMsgID> produced;
};

// In the order of messageKeys.
std::vector<Row> produceEveryMessage() {
    using enum Severity;
    auto const on = [](Command const& command) {
        return messageOf(command, Behavior::WithPackageImports);
    };
    auto const off = [](Command const& command) {
        return messageOf(command, Behavior::WithoutPackageImports);
    };
    return {
        {"InvalidImportArgument", Error, 1, on({u"1x"})},
        {"MalformedImportArgumentWarning", Warning, 1, off({u"1x.*"})},
        {"KeywordInImportArgument", Error, 2, on({u"a.for"})},
        {"KeywordInImportArgumentWarning", Warning, 2, off({u"a.for"})},
        {"ImportArgumentWithoutDot", Error, 0, off({u"pkg"})},
        {"InvalidAliasName", Error, 1, on({u"pkg", u"as", u"a.b"})},
        {"IncorrectNumberOfAlias", Error, 0, on({u"pkg", u"as"})},
        {"IncorrectNumberOfPackagesForAlias", Error, 0, on({u"as", u"p"})},
        {"MixedImportType", Error, 0, on({u"pkg", u"a.b"})},
        {"MultipleAsClauses", Error, 0, on({u"pkg", u"as", u"as"})},
        {"NamespaceWithAlias", Error, 0, on({u"a.b", u"as", u"c"})},
        {"PackageRedeclared", Error, 1, messageOf(makePackage(u"p"), makePackage(u"p"))},
        {"PrecedenceViolation", Error, 2, messageOf(makePackage(u"p"), makeName(u"a.p"))},
        {"InvalidPackageFunctionAbbreviation", Error, 0,
         messageOf(makePackage(u"p"), makeName(u"p.a"))},
    };
}

TEST(EveryMessageKey, HasTheSeverityAndArgumentsThatHostsKnow) {
    auto const rows = produceEveryMessage();
    ASSERT_EQ(rows.size(), messageKeys.size());
    for (std::size_t index = 0; index < rows.size(); ++index) {
        auto const& [key, severity, numberOfArguments, produced] = rows[index];
        EXPECT_EQ(messageKeys[index].key, key);
        EXPECT_EQ(messageKeys[index].severity, severity) << key;
        EXPECT_EQ(messageKeys[index].numberOfArguments, numberOfArguments) << key;
        EXPECT_EQ(severityOf(key), severity) << key;
    }
}

TEST(EveryMessageKey, IsProducedAsItIsDefined) {
    for (auto const& [key, severity, numberOfArguments, produced] : produceEveryMessage()) {
        ASSERT_TRUE(produced.has_value()) << key;
        EXPECT_EQ(produced->key, key);
        EXPECT_EQ(produced->catalogue, messageCatalogue) << key;
        EXPECT_EQ(produced->arguments.size(), numberOfArguments) << key;
        EXPECT_EQ(InvalidImportEntry(*produced).isWarning(), severity == Severity::Warning) << key;
    }
}

} // namespace
} // namespace lf::import
