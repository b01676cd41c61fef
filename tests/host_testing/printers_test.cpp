// SPDX-License-Identifier: BSL-1.0
#include <host_testing/printers.hpp>

#include <support/make_entries.hpp>

#include <host_testing/quoted.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace lf::import::host_testing {
namespace {

using resource_core::BaseMsgID;
using resource_core::GenericMsgIDHolder;
using support::makeName;
using support::makePackage;
using support::makeWildcard;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::PrintToString;

BaseMsgID message() {
    return {{u"a.for", u"for"}, "KELDAR:lang", "KeywordInImportArgument"};
}

/// An inner list with a package, and an outer one with a name and a wildcard.
struct Nested {
    Nested() {
        outer->addStaticImportEntry(makeName(u"a.b"));
        outer->addStaticImportEntry(makeWildcard(u"c.*"));
        inner->addStaticImportEntry(makePackage(u"matrix@2", u"m"));
    }

    std::shared_ptr<IImportList> outer = createImportList(nullptr);
    std::unique_ptr<IImportList> inner = createImportList(outer);
};

TEST(ThePrinters, PrintMessagesWithSeverityAndArguments) {
    std::string const text = R"(error KeywordInImportArgument("a.for", "for"))";
    EXPECT_EQ(PrintToString(message()), text);
    EXPECT_EQ(PrintToString(GenericMsgIDHolder(message())), text);
    EXPECT_EQ(PrintToString(InvalidImportEntry(message())), text);
    EXPECT_THAT(PrintToString(std::optional(GenericMsgIDHolder(message()))), HasSubstr(text));
}

TEST(ThePrinters, PrintWarningsAsSuch) {
    BaseMsgID warning = message();
    warning.key = "KeywordInImportArgumentWarning";
    EXPECT_EQ(PrintToString(warning), "warning KeywordInImportArgumentWarning(\"a.for\", \"for\")");
}

TEST(ThePrinters, PrintTheCatalogueOfAForeignMessage) {
    EXPECT_EQ(PrintToString(BaseMsgID{{}, "mine", "Key"}), "error mine:Key()");
}

TEST(ThePrinters, PrintAMovedFromEntry) {
    InvalidImportEntry entry(message());
    InvalidImportEntry const taken(std::move(entry));
    // NOLINTNEXTLINE(bugprone-use-after-move): the moved-from entry is printed.
    EXPECT_EQ(PrintToString(entry), "no message");
}

TEST(ThePrinters, PrintWhatAParserReturns) {
    std::vector<std::u16string> const command{u"matrix@^2", u"as", u"m"};
    auto const parser = createImportArgumentParser(command, Behavior::WithPackageImports);
    auto const& parsed = parser->parse();
    EXPECT_THAT(describe(parsed), ElementsAre("2: matrix@^2 as m"));
    EXPECT_THAT(PrintToString(parsed), HasSubstr("value 2: matrix@^2 as m"));
}

TEST(ThePrinters, PrintWhatReadCommandReturns) {
    std::vector<std::u16string> const alias{u"", u"matrix@^2", u"as", u"m"};
    auto const items = host::readCommand(alias, Behavior::WithPackageImports);
    EXPECT_THAT(describe(items), ElementsAre("3 of 1: matrix@^2 as m"));
    EXPECT_THAT(PrintToString(items), HasSubstr("value 3 of 1: matrix@^2 as m"));
    std::vector<std::u16string> const wrong{u"a.b", u"1x"};
    auto const problems = host::readCommand(wrong, Behavior::WithPackageImports);
    EXPECT_THAT(PrintToString(problems), HasSubstr("value 1: error InvalidImportArgument(\"1x\")"));
}

TEST(ThePrinters, PrintWhatAListSees) {
    Nested const lists;
    EXPECT_EQ(PrintToString(*lists.inner), "import list of a.b, c.* and matrix@2 as m");
    EXPECT_EQ(PrintToString(*lists.outer), "import list of a.b and c.*");
    EXPECT_EQ(PrintToString(*createImportList(nullptr)), "import list of nothing");
}

TEST(ThePrinters, PrintWhatALookupFinds) {
    Nested const lists;
    constexpr auto yes = IImportList::CheckAncestorList::Yes;
    auto const package = lists.inner->findPackageImportEntry(u"m", yes);
    auto const name = lists.inner->findFullyQualifiedImportEntry(u"b", yes);
    ASSERT_TRUE(package && name);
    EXPECT_EQ(PrintToString(*package), "matrix@2 as m of this list");
    EXPECT_EQ(PrintToString(*name), "a.b of an ancestor");
}

TEST(ThePrinters, PrintWhatBecameOfAnAddition) {
    auto const outer = std::make_shared<host::Scope<int>>();
    host::Scope<int> inner(outer);
    auto const stored = outer->addStatic(makePackage(u"m"), 7);
    auto const name = inner.addStatic(makeName(u"a.b"), 8);
    auto const repeated = inner.addStatic(makeName(u"a.b"), 9);
    auto const refused = inner.addStatic(makeName(u"m.b"), 10);
    EXPECT_THAT(PrintToString(stored), HasSubstr("value stored m at 7"));
    EXPECT_THAT(PrintToString(name), HasSubstr("value stored a.b at 8"));
    EXPECT_THAT(PrintToString(repeated), HasSubstr("value repeats a.b at 8"));
    EXPECT_THAT(PrintToString(refused),
                HasSubstr("value refused: error InvalidPackageFunctionAbbreviation(), against m at "
                          "7, 1 scopes out"));
    EXPECT_EQ(PrintToString(host::Repeated<int>{nullptr}), "repeats an import of a foreign list");
    EXPECT_EQ(PrintToString(host::Refused<int>{GenericMsgIDHolder(message()), std::nullopt}),
              "refused: error KeywordInImportArgument(\"a.for\", \"for\")");
}

TEST(ThePrinters, PrintEnumeratorsAndKeys) {
    using host::ImportKind;
    EXPECT_EQ(PrintToString(Severity::Error), "error");
    EXPECT_EQ(PrintToString(Severity::Warning), "warning");
    EXPECT_EQ(PrintToString(EntryOrigin::ThisList), "this list");
    EXPECT_EQ(PrintToString(EntryOrigin::Ancestor), "an ancestor");
    EXPECT_EQ(PrintToString(ImportKind::Package), "package");
    EXPECT_EQ(PrintToString(ImportKind::FullyQualified), "name");
    EXPECT_EQ(PrintToString(ImportKind::Wildcard), "wildcard");
    EXPECT_EQ(PrintToString(messageKeys.front()), messageKeys.front().key);
}

TEST(Quoted, TellsDifferentTextsApart) {
    EXPECT_EQ(quoted(u"a.b *"), "\"a.b *\"");
    EXPECT_EQ(quoted(u"\"\\\u00E9\n"), "\"\\u0022\\u005C\\u00E9\\u000A\"");
    EXPECT_NE(quoted(std::u16string(1, char16_t{0xD800})),
              quoted(std::u16string(1, char16_t{0xD801})));
}

} // namespace
} // namespace lf::import::host_testing
