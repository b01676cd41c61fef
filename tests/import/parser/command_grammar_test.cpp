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
using support::wildcard;

struct Row {
    std::vector<std::u16string> command;
    std::vector<Outcome> outcomes;
    std::string why;

    friend void PrintTo(Row const& row, std::ostream* stream) { *stream << row.why; }
};

class CommandGrammar : public testing::TestWithParam<Row> {};

TEST_P(CommandGrammar, GivesEachCommandItsOutcome) {
    auto const& [command, outcomes, why] = GetParam();
    EXPECT_EQ(support::parseTexts(command, Behavior::WithPackageImports), outcomes) << why;
}

TEST_P(CommandGrammar, IsTheSameForACommandInASyntaxTree) {
    auto const& [command, outcomes, why] = GetParam();
    EXPECT_EQ(support::parseTree(command, Behavior::WithPackageImports), outcomes) << why;
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(NameLists, CommandGrammar, testing::ValuesIn(std::vector<Row>{
    {{}, {}, "nothing to import"},
    {{u"", u""}, {}, "ignored arguments yield no entries"},
    {{u"a.b.c"}, {fullyQualified(0, u"a.b.c", u"a", u"c")}, "one name"},
    {{u"a.b.c", u"d.e.*"}, {fullyQualified(0, u"a.b.c", u"a", u"c"), wildcard(1, u"d.e.*", u"d")}, "names and wildcards mix"},
    {{u"", u"a.b", u"", u"", u"c.*", u""}, {fullyQualified(1, u"a.b", u"a", u"b"), wildcard(4, u"c.*", u"c")}, "indexes count ignored arguments"},
    {{u"a.b", u"a.b"}, {fullyQualified(0, u"a.b", u"a", u"b"), fullyQualified(1, u"a.b", u"a", u"b")}, "the parser allows repetitions"},
    {{u"a.b", u"mypkg"}, {error(1, "MixedImportType")}, "a package after a name; the name's entry is dropped"},
    {{u"a.*", u"v@1"}, {error(1, "MixedImportType")}, "a versioned package after a wildcard"},
    {{u"a.b", u"as", u"c"}, {error(1, "NamespaceWithAlias")}, "a name has no alias"},
    {{u"a.*", u"as", u"c"}, {error(1, "NamespaceWithAlias")}, "a wildcard has no alias"},
    {{u"a.b", u"c.d", u"as"}, {error(2, "NamespaceWithAlias")}, "the same with several names"},
    {{u"a.b", u"c.d", u"mypkg", u"e.f", u"as"}, {error(2, "MixedImportType")}, "only the first error is reported"},
    {{u"a.b", u"", u"p"}, {error(2, "MixedImportType")}, "ignored arguments shift the index"},
}), support::RowName{});

INSTANTIATE_TEST_SUITE_P(PackageLists, CommandGrammar, testing::ValuesIn(std::vector<Row>{
    {{u"mypkg"}, {package(0, u"mypkg", u"mypkg")}, "one package"},
    {{u"p@^1.2"}, {package(0, u"p@^1.2", u"p")}, "a version does not change the name"},
    {{u"p1", u"p2@1", u"p3"}, {package(0, u"p1", u"p1"), package(1, u"p2@1", u"p2"), package(2, u"p3", u"p3")}, "several packages"},
    {{u"mypkg", u"a.b"}, {error(1, "MixedImportType")}, "a name after a package"},
    {{u"p1", u"p2", u"a.*"}, {error(2, "MixedImportType")}, "a wildcard after packages"},
    {{u"p1", u"p2", u"as", u"x"}, {error(2, "IncorrectNumberOfPackagesForAlias")}, "an alias names one package"},
    {{u"p1", u"p2", u"a.b", u"as"}, {error(2, "MixedImportType")}, "only the next argument is considered"},
    {{u"as", u"p"}, {error(0, "IncorrectNumberOfPackagesForAlias")}, "an alias without a package"},
    {{u"", u"as"}, {error(1, "IncorrectNumberOfPackagesForAlias")}, "an alias after ignored arguments only"},
}), support::RowName{});

INSTANTIATE_TEST_SUITE_P(AliasClauses, CommandGrammar, testing::ValuesIn(std::vector<Row>{
    {{u"mypkg", u"as", u"p"}, {package(2, u"mypkg", u"p")}, "the entry belongs to the alias"},
    {{u"mypkg@>=1,<2", u"as", u"p"}, {package(2, u"mypkg@>=1,<2", u"p")}, "the version stays"},
    {{u"p", u"as", u"p"}, {package(2, u"p", u"p")}, "an alias may equal the name"},
    {{u"p", u"as", u"AS"}, {package(2, u"p", u"AS")}, "only the exact `as` is the keyword"},
    {{u"", u"p", u"", u"as", u"", u"q", u""}, {package(5, u"p", u"q")}, "ignored arguments only change the index"},
    {{u"mypkg", u"as"}, {error(1, "IncorrectNumberOfAlias")}, "no alias"},
    {{u"mypkg", u"as", u"", u""}, {error(1, "IncorrectNumberOfAlias")}, "an ignored argument is not an alias"},
    {{u"mypkg", u"as", u"x", u"y"}, {error(3, "IncorrectNumberOfAlias")}, "two aliases"},
    {{u"mypkg", u"as", u"x", u"", u"a.b"}, {error(4, "IncorrectNumberOfAlias")}, "a name after the clause"},
    {{u"mypkg", u"as", u"x", u"a.*"}, {error(3, "IncorrectNumberOfAlias")}, "a wildcard after the clause"},
    {{u"mypkg", u"as", u"x", u"v@1"}, {error(3, "IncorrectNumberOfAlias")}, "a versioned package after the clause"},
    {{u"mypkg", u"as", u"as"}, {error(2, "MultipleAsClauses")}, "the alias is itself `as`"},
    {{u"mypkg", u"as", u"as", u"x"}, {error(2, "MultipleAsClauses")}, "the following arguments do not matter"},
    {{u"mypkg", u"as", u"x", u"as", u"y"}, {error(3, "MultipleAsClauses")}, "a second clause"},
    {{u"mypkg", u"as", u"a.b"}, {error(2, "InvalidAliasName", {u"a.b"})}, "a name is no alias"},
    {{u"mypkg", u"as", u"a.*"}, {error(2, "InvalidAliasName", {u"a.*"})}, "a wildcard is no alias"},
    {{u"mypkg", u"as", u"v@1"}, {error(2, "InvalidAliasName", {u"v@1"})}, "a versioned package is not an alias"},
    {{u"mypkg", u"as", u"a.b", u"as"}, {error(2, "InvalidAliasName", {u"a.b"})}, "one error a command"},
    {{u"mypkg", u"as", u"for"}, {error(2, "KeywordInImportArgument", {u"for", u"for"})}, "a reserved word is rejected before the grammar runs"},
}), support::RowName{});
// clang-format on

} // namespace
