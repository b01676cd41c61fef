// SPDX-License-Identifier: BSL-1.0

#include <support/observed_entries.hpp>
#include <support/outcomes.hpp>
#include <support/row_name.hpp>

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace {

using lf::import::Behavior;
using model::Outcome;
using support::error;
using support::fullyQualified;
using support::package;
using support::warning;
using support::wildcard;

struct Row {
    std::vector<std::u16string> command;
    Behavior behavior;
    std::vector<Outcome> outcomes;
    std::string why;

    friend void PrintTo(Row const& row, std::ostream* stream) { *stream << row.why; }
};

class ImportArgumentParser : public testing::TestWithParam<Row> {};

TEST_P(ImportArgumentParser, GivesEachCommandItsOutcome) {
    auto const& [command, behavior, outcomes, why] = GetParam();
    EXPECT_EQ(support::parseTexts(command, behavior), outcomes) << why;
}

TEST_P(ImportArgumentParser, IsTheSameForACommandInASyntaxTree) {
    auto const& [command, behavior, outcomes, why] = GetParam();
    EXPECT_EQ(support::parseTree(command, behavior), outcomes) << why;
}

constexpr auto on = Behavior::WithPackageImports;
constexpr auto off = Behavior::WithoutPackageImports;

// clang-format off
INSTANTIATE_TEST_SUITE_P(Rejections, ImportArgumentParser, testing::ValuesIn(std::vector<Row>{
    {{u"a.b", u"1x", u"c.d", u"as"}, on, {error(1, "InvalidImportArgument", {u"1x"})}, "the rejected argument is the only result; the stray `as` is not reported"},
    {{u"1x", u"2x"}, on, {error(0, "InvalidImportArgument", {u"1x"})}, "only the first of two rejected arguments counts"},
    {{u"as", u"p", u"a.for"}, on, {error(2, "KeywordInImportArgument", {u"a.for", u"for"})}, "a rejected argument in any position takes precedence over the grammar"},
    {{u"", u"", u"*"}, on, {error(2, "InvalidImportArgument", {u"*"})}, "indexes count ignored arguments"},
    {{u"p@?", u"q"}, on, {error(0, "InvalidImportArgument", {u"p@?"})}, "a specifier that the descriptor library rejects"},
    {{u"a.b", u"as", u"c"}, off, {error(1, "ImportArgumentWithoutDot")}, "without package imports there is no alias clause"},
    {{u"mypkg"}, off, {error(0, "ImportArgumentWithoutDot")}, "without package imports there are no packages"},
    {{u"a.b", u".*"}, off, {warning(1, "MalformedImportArgumentWarning", {u".*"})}, "a wildcard without a prefix is rejected with a warning's key"},
}), support::RowName{});

INSTANTIATE_TEST_SUITE_P(Warnings, ImportArgumentParser, testing::ValuesIn(std::vector<Row>{
    {{u"1a.*"}, off, {wildcard(0, u"1a.*", u"1a"), warning(0, "MalformedImportArgumentWarning", {u"1a.*"})}, "a warning follows its entry, with the same index"},
    {{u"a.for"}, off, {fullyQualified(0, u"a.for", u"a", u"for"), warning(0, "KeywordInImportArgumentWarning", {u"a.for", u"for"})}, "names can have a warning, too"},
    {{u"", u"1a.*", u"x.y", u"b.end"}, off,
     {wildcard(1, u"1a.*", u"1a"), warning(1, "MalformedImportArgumentWarning", {u"1a.*"}), fullyQualified(2, u"x.y", u"x", u"y"),
      fullyQualified(3, u"b.end", u"b", u"end"), warning(3, "KeywordInImportArgumentWarning", {u"b.end", u"end"})}, "a warning never stops the parse"},
    {{u"1a.b", u"a..b", u".x"}, off,
     {fullyQualified(0, u"1a.b", u"1a", u"b"), fullyQualified(1, u"a..b", u"a", u"b"), fullyQualified(2, u".x", u"", u"x")}, "the legacy grammar accepts most malformed names"},
}), support::RowName{});

INSTANTIATE_TEST_SUITE_P(OtherBehaviors, ImportArgumentParser, testing::ValuesIn(std::vector<Row>{
    {{u"mypkg"}, static_cast<Behavior>(3), {package(0, u"mypkg", u"mypkg")}, "an unnamed value means on"},
    {{u"mypkg"}, static_cast<Behavior>(-1), {package(0, u"mypkg", u"mypkg")}, "an unnamed value means on"},
}), support::RowName{});
// clang-format on

} // namespace
