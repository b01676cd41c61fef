// SPDX-License-Identifier: BSL-1.0
#include <host_testing/matchers.hpp>

#include <support/make_entries.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace lf::import::host_testing {
namespace {

using support::makeName;
using support::makePackage;
using support::makeWildcard;
using testing::AllOf;
using testing::ElementsAre;
using testing::Not;

/// The failure message of a test if \p value does not match; empty if it matches.
template <typename Value, typename Matcher>
std::string failureOf(Value const& value, Matcher const& matcher) {
    testing::Matcher<Value const&> const specific(matcher);
    testing::StringMatchResultListener listener;
    if (specific.MatchAndExplain(value, &listener)) {
        return {};
    }
    std::ostringstream text;
    specific.DescribeTo(&text);
    return text.str() + ", " + listener.str();
}

auto parse(std::vector<std::u16string> const& command) {
    return std::move(createImportArgumentParser(command, Behavior::WithPackageImports)->parse());
}

TEST(ImportsName, LooksAtTheIntroducedNameOfAnEntry) {
    EXPECT_THAT(makeName(u"a.b"), ImportsName("b"));
    EXPECT_THAT(makePackage(u"matrix", u"m"), ImportsName("m"));
    EXPECT_THAT(ImportEntry(makePackage(u"größe", u"höhe")), ImportsName("höhe"));
    EXPECT_THAT(makeName(u"a.b"), Not(ImportsName("a.b")));
    EXPECT_THAT(makeWildcard(u"a.*"), Not(ImportsName("")));
    EXPECT_EQ(failureOf(makeName(u"a.b"), ImportsName("c")),
              "imports the name c, which imports a.b");
}

TEST(ImportsName, LooksIntoWhatAParserReturns) {
    EXPECT_THAT(parse({u"a.b", u"c.d"}), ElementsAre(ImportsName("b"), ImportsName("d")));
    EXPECT_THAT(
        host::readCommand(std::vector<std::u16string>{u"a.b"}, Behavior::WithPackageImports),
        ElementsAre(ImportsName("b")));
    EXPECT_EQ(failureOf(parse({u"1x"}).front(), ImportsName("x")),
              "imports the name x, which is error InvalidImportArgument(\"1x\")");
}

TEST(ImportsName, LooksANameUpInAListAndItsAncestors) {
    std::shared_ptr<IImportList> const outer = createImportList(nullptr);
    auto const inner = createImportList(outer);
    outer->addStaticImportEntry(makeName(u"a.b"));
    inner->addStaticImportEntry(makePackage(u"p"));
    EXPECT_THAT(*inner, AllOf(ImportsName("b"), ImportsName("p")));
    EXPECT_THAT(*outer, Not(ImportsName("p")));
    EXPECT_EQ(failureOf(*inner, ImportsName("c")), "imports the name c, which sees a.b and p");
}

TEST(ImportsName, LooksANameUpInAScope) {
    host::Scope<int> scope;
    auto const added = scope.addStatic(makeName(u"a.b"), 1);
    EXPECT_THAT(scope, ImportsName("b"));
    EXPECT_THAT(added, ImportsName("b"));
    EXPECT_THAT(scope.resolve("b").imports, ElementsAre(ImportsName("b")));
    EXPECT_EQ(failureOf(host::Scope<int>(), ImportsName("b")),
              "imports the name b, which sees nothing");
}

TEST(IsImport, ComparesAnEntryWithWhatAUserWouldWrite) {
    EXPECT_THAT(parse({u"matrix@^2", u"as", u"m"}), ElementsAre(IsImport("matrix@^2 as m")));
    EXPECT_THAT(makeWildcard(u"a.*"), IsImport("a.*"));
    EXPECT_THAT(makeName(u"a.b"), Not(IsImport("b")));
    EXPECT_THAT(parse({u"1x"}), Not(ElementsAre(IsImport("1x"))));
    EXPECT_EQ(failureOf(makeName(u"a.b"), IsImport("a.c")), "is the import a.c, which imports a.b");
}

TEST(IsRefusedWith, LooksAtTheKeyOfADiagnostic) {
    EXPECT_THAT(parse({u"1x"}), ElementsAre(IsRefusedWith("InvalidImportArgument")));
    EXPECT_THAT(parse({u"a.b"}), Not(ElementsAre(IsRefusedWith("InvalidImportArgument"))));
    EXPECT_EQ(failureOf(parse({u"a.for"}).front(), IsRefusedWith("MixedImportType")),
              "is refused with MixedImportType, which is error KeywordInImportArgument(\"a.for\", "
              "\"for\")");
    EXPECT_EQ(failureOf(makeName(u"a.b"), IsRefusedWith("MixedImportType")),
              "is refused with MixedImportType, which imports a.b");
}

TEST(IsRefusedWith, ComparesTheArguments) {
    auto const parsed = parse({u"a.for"});
    EXPECT_THAT(parsed.front(), IsRefusedWith("KeywordInImportArgument", {"a.for", "for"}));
    EXPECT_THAT(parsed.front(), Not(IsRefusedWith("KeywordInImportArgument", {"a.for"})));
    EXPECT_EQ(failureOf(parsed.front(), IsRefusedWith("KeywordInImportArgument", {"for", "a"})),
              "is refused with KeywordInImportArgument about for and a, which is error "
              "KeywordInImportArgument(\"a.for\", \"for\")");
}

TEST(IsRefusedWith, LooksAtTheResultOfAnAddition) {
    auto const list = createImportList(nullptr);
    host::Scope<int> scope;
    EXPECT_THAT(list->addStaticImportEntry(makePackage(u"p")),
                Not(IsRefusedWith("PackageRedeclared")));
    EXPECT_THAT(list->addStaticImportEntry(makePackage(u"p@2")),
                IsRefusedWith("PackageRedeclared", {"p@2"}));
    EXPECT_THAT(scope.addStatic(makeName(u"a.b"), 1), Not(IsRefusedWith("PrecedenceViolation")));
    EXPECT_THAT(scope.addStatic(makeName(u"a.b"), 2), Not(IsRefusedWith("PrecedenceViolation")));
    EXPECT_THAT(scope.addStatic(makePackage(u"b"), 3), IsRefusedWith("PrecedenceViolation"));
    EXPECT_EQ(
        failureOf(list->addStaticImportEntry(makeName(u"x.y")), IsRefusedWith("PackageRedeclared")),
        "is refused with PackageRedeclared, which is about no entry");
}

TEST(IsRefusedWith, KnowsOnlyTheLibrarysCatalogue) {
    resource_core::BaseMsgID const foreign{{}, "mine", "MixedImportType"};
    EXPECT_THAT(foreign, Not(IsRefusedWith("MixedImportType")));
}

TEST(AtArgument, LooksAtThePositionOfAnElement) {
    auto const parsed = parse({u"", u"a.b"});
    EXPECT_THAT(parsed, ElementsAre(AllOf(AtArgument(1), ImportsName("b"))));
    EXPECT_EQ(failureOf(parsed.front(), AtArgument(0)), "is at argument 0, which is at argument 1");
    EXPECT_THAT(
        host::readCommand(std::vector<std::u16string>{u"a.b", u"1x"}, Behavior::WithPackageImports),
        ElementsAre(AtArgument(1)));
}

TEST(TheMatchers, DescribeWhatDoesNotHold) {
    EXPECT_EQ(testing::DescribeMatcher<ImportEntry const&>(Not(ImportsName("b"))),
              "does not import the name b");
    EXPECT_EQ(testing::DescribeMatcher<ImportEntry const&>(Not(IsImport("a.b"))),
              "is not the import a.b");
    EXPECT_EQ(
        testing::DescribeMatcher<InvalidImportEntry const&>(Not(IsRefusedWith("MixedImportType"))),
        "is not refused with MixedImportType");
    EXPECT_EQ(testing::DescribeMatcher<ParsedImportEntry const&>(Not(AtArgument(2))),
              "is not at argument 2");
}

} // namespace
} // namespace lf::import::host_testing
