// SPDX-License-Identifier: BSL-1.0

#include <import/import.hpp>

#include <support/make_entries.hpp>

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace lf::import {
namespace {

using resource_core::BaseMsgID;
using support::makeName;
using support::makePackage;

using Command = std::vector<std::u16string>;

// The first message that a command yields.
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

// The message with which a list that has one entry refuses another.
std::optional<BaseMsgID> messageOf(ImportEntry first, ImportEntry second) {
    auto const list = createImportList(nullptr);
    list->addStaticImportEntry(std::move(first));
    auto const refusal = list->addStaticImportEntry(std::move(second));
    return refusal ? std::optional(refusal->getMsgID()) : std::nullopt;
}

// By key, a message that the library itself has made.
std::map<std::string_view, std::optional<BaseMsgID>> produceEveryMessage() {
    auto const on = [](Command const& command) {
        return messageOf(command, Behavior::WithPackageImports);
    };
    auto const off = [](Command const& command) {
        return messageOf(command, Behavior::WithoutPackageImports);
    };
    return {
        {"InvalidImportArgument", on({u"1x"})},
        {"MalformedImportArgumentWarning", off({u"1x.*"})},
        {"KeywordInImportArgument", on({u"a.for"})},
        {"KeywordInImportArgumentWarning", off({u"a.for"})},
        {"ImportArgumentWithoutDot", off({u"pkg"})},
        {"InvalidAliasName", on({u"pkg", u"as", u"a.b"})},
        {"IncorrectNumberOfAlias", on({u"pkg", u"as"})},
        {"IncorrectNumberOfPackagesForAlias", on({u"as", u"p"})},
        {"MixedImportType", on({u"pkg", u"a.b"})},
        {"MultipleAsClauses", on({u"pkg", u"as", u"as"})},
        {"NamespaceWithAlias", on({u"a.b", u"as", u"c"})},
        {"PackageRedeclared", messageOf(makePackage(u"p"), makePackage(u"p"))},
        {"PrecedenceViolation", messageOf(makePackage(u"p"), makeName(u"a.p"))},
        {"InvalidPackageFunctionAbbreviation", messageOf(makePackage(u"p"), makeName(u"p.a"))},
    };
}

TEST(EveryMessageKey, IsProducedAsItIsDefined) {
    auto const produced = produceEveryMessage();
    for (MessageKey const& defined : messageKeys) {
        ASSERT_TRUE(produced.contains(defined.key))
            << defined.key << " is produced by nothing here";
        auto const& message = produced.at(defined.key);
        ASSERT_TRUE(message.has_value()) << defined.key;
        EXPECT_EQ(message->key, defined.key);
        EXPECT_EQ(message->catalogue, messageCatalogue) << defined.key;
        EXPECT_EQ(message->arguments.size(), defined.numberOfArguments) << defined.key;
        EXPECT_EQ(InvalidImportEntry(*message).isWarning(), defined.severity == Severity::Warning)
            << defined.key;
    }
    EXPECT_EQ(produced.size(), messageKeys.size());
}

} // namespace
} // namespace lf::import
