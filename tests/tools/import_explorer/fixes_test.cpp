// SPDX-License-Identifier: BSL-1.0

#include <import_explorer/edits.hpp>
#include <import_explorer/fixes.hpp>

#include <support/row_name.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace explorer {
namespace {

using testing::ElementsAre;

AnalysisOptions optionsFor(bool warnsOfUnusedImports) {
    return {SourceSyntax::Script, lf::import::Behavior::WithPackageImports, false,
            warnsOfUnusedImports};
}

std::string fix(std::string text, bool warnsOfUnusedImports) {
    return std::string(
        analyseAndFix(SourceFile("any", std::move(text)), optionsFor(warnsOfUnusedImports))
            .file.source.text());
}

struct Row {
    std::string_view why;
    std::string_view before;
    std::string_view after;

    friend void PrintTo(Row const& row, std::ostream* stream) { *stream << row.why; }
};

class Removing : public testing::TestWithParam<Row> {};

TEST_P(Removing, LeavesTheRestAsItIs) {
    EXPECT_EQ(fix(std::string(GetParam().before), true), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(
    Fixes, Removing,
    testing::Values(
        Row{"the line of a command goes", "import a.b\nuse x.y\n", "use x.y\n"},
        Row{"a last line without an end goes", "use x.y\nimport a.b", "use x.y\n"},
        Row{"CR LF goes with the line", "use x.y\r\nimport a.b\r\nuse x.z\r\n",
            "use x.y\r\nuse x.z\r\n"},
        Row{"CR goes with the line", "import a.b\ruse x.y\r", "use x.y\r"},
        Row{"a byte order mark stays", "\xEF\xBB\xBFimport a.b\nuse x.y\n",
            "\xEF\xBB\xBFuse x.y\n"},
        Row{"indentation and semicolon go with the line", "use x.y\n\t  import a.b ; \n",
            "use x.y\n"},
        Row{"a comment behind stays", "  import a.b  # why\n", "  # why\n"},
        Row{"a comment behind a semicolon stays", "import a.b; // why\n", "// why\n"},
        Row{"a statement behind stays", "import a.b; use x.y\n", "use x.y\n"},
        Row{"a statement before stays", "use x.y; import a.b\n", "use x.y;\n"},
        Row{"two commands of a line take it with them", "import a.b; import c.d;\nuse x.y\n",
            "use x.y\n"},
        Row{"a scope around stays", "scope s { import a.b }\n", "scope s { }\n"},
        Row{"a scope of many lines stays", "scope s {\n  import a.b\n}\n", "scope s {\n}\n"},
        Row{"the first argument goes", "import a.b c.d\nuse d\n", "import c.d\nuse d\n"},
        Row{"the last argument goes", "import a.b  c.d # x\nuse b\n", "import a.b # x\nuse b\n"},
        Row{"an argument in the middle goes", "import a.b c.d e.f\nuse b; use f\n",
            "import a.b e.f\nuse b; use f\n"},
        Row{"quotes go with their argument", "import \"a.b\" c.d\nuse d\n", "import c.d\nuse d\n"},
        Row{"empty arguments go with the last import", "import \"\" a.b \"\"\n", ""},
        Row{"empty arguments stay with another", "import \"\" a.b c.d\nuse b\n",
            "import \"\" a.b\nuse b\n"},
        Row{"a package goes with its alias", "import a as b\n", ""},
        Row{"the word dynamic goes with its command", "dynamic import a.b\n", ""},
        Row{"an argument of more than one byte", "import é.図 a.b\nuse b\n", "import a.b\nuse b\n"},
        Row{"a wildcard that may supply a name stays", "import a.* b.*\nuse x\n",
            "import a.* b.*\nuse x\n"},
        Row{"a repetition goes and what is used stays", "import a.b\nimport a.b\nuse b\n",
            "import a.b\nuse b\n"},
        Row{"a repetition goes and then what it repeats", "import a.b\nimport a.b\n", ""},
        Row{"a repeated wildcard goes", "import a.*\nimport c.d a.*\nuse x; use d\n",
            "import a.*\nimport c.d\nuse x; use d\n"},
        Row{"the same package again goes", "import a@1\nimport a@1\nuse a\n",
            "import a@1\nuse a\n"},
        Row{"an alias for what nobody uses goes again", "import a@1\nimport a@2\nuse a\n",
            "import a@1\nuse a\n"},
        Row{"what a refused import conflicts with stays", "import a\nimport b.a\nuse x.y\n",
            "import a\nimport b.a\nuse x.y\n"},
        Row{"a name that keeps a package of another scope from view stays",
            "import p\nscope s {\nimport a.p\nimport p.x\nuse x\n}\nuse p\n",
            "import p\nscope s {\nimport a.p\nimport p.x\nuse x\n}\nuse p\n"},
        Row{"what may be meant by an unknown name stays", "import a.circle\nuse circl\n",
            "import a.circle\nuse circl\n"},
        Row{"all stays in a malformed script", "import a.b\nuse b c\n", "import a.b\nuse b c\n"},
        Row{"all stays in a script of one word", "frobnicate\nimport a.b\n",
            "frobnicate\nimport a.b\n"}),
    support::RowName());

TEST(Fixes, RemoveNothingFromScopesThatLieTooDeepToTell) {
    std::string text = "import used.below\n";
    for (std::size_t level = 0; level <= deepestListedLevel + 1; ++level) {
        text += "scope s {\nimport a.b" + std::to_string(level) + "\n";
    }
    text += "use below\n" + text;
    EXPECT_THAT(fix(text, true), testing::StartsWith("import used.below\n"));
}

class GivingAnAlias : public testing::TestWithParam<Row> {};

TEST_P(GivingAnAlias, KeepsBothPackages) {
    EXPECT_EQ(fix(std::string(GetParam().before), false), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(
    Fixes, GivingAnAlias,
    testing::Values(
        Row{"another version", "import a@1; import a@2 # x\n",
            "import a@1; import a@2 as a2 # x\n"},
        Row{"many versions", "import a@1\nimport a@2\nimport a@3\n",
            "import a@1\nimport a@2 as a2\nimport a@3 as a3\n"},
        Row{"a quoted package", "import a@1\nimport \"a@2\" \"\"\n",
            "import a@1\nimport \"a@2\" as a2 \"\"\n"},
        Row{"an alias that is taken", "import b\nimport a as \"b\"\n",
            "import b\nimport a as b2\n"},
        Row{"a dotted package", "import net.http@1\nimport net.http@2\n",
            "import net.http@1\nimport net.http@2 as http2\n"},
        Row{"a command of its own", "import a@1 b\ndynamic import c a@2 d # x\n",
            "import a@1 b\ndynamic import a@2 as a2; dynamic import c d # x\n"},
        Row{"a command of which nothing is left", "import a@1 b@1\nimport a@2 b@2; use a\n",
            "import a@1 b@1\nimport a@2 as a2; import b@2 as b2; use a\n"},
        Row{"a command of which a repetition is left", "import a@1 b@1\nimport a@1 b@2\n",
            "import a@1 b@1\nimport b@2 as b2\n"},
        Row{"a number that is taken by an import", "import a@1 a2\nimport a@2\n",
            "import a@1 a2\nimport a@2 as a3\n"},
        Row{"a number that is taken by a root", "import a@1\nimport a2.x\nimport a@2\n",
            "import a@1\nimport a2.x\nimport a@2 as a3\n"},
        Row{"a number that is taken by a use", "import a@1\nimport a@2\nuse a2; use a3.x\n",
            "import a@1\nimport a@2 as a4\nuse a2; use a3.x\n"},
        Row{"a number that is taken by another alias", "import a@1 a2@1\nimport a@2\nimport a2@2\n",
            "import a@1 a2@1\nimport a@2 as a3\nimport a2@2 as a22\n"},
        Row{"a name that gives no alias", "import a.2d@1\nimport a.2d@2\n",
            "import a.2d@1\nimport a.2d@2\n"},
        Row{"unused imports without a question", "import a.b\n", "import a.b\n"}),
    support::RowName());

TEST(Fixes, AreCounted) {
    FixedFile const fixed = analyseAndFix(
        SourceFile("any", "import a.b a.b\nimport p p@2 p\nuse p\n"), optionsFor(true));
    // Two repetitions, a new alias, the import that received it, and the import that was repeated.
    EXPECT_EQ(fixed.fixes, 5U);
    EXPECT_EQ(fixed.file.source.text(), "import p\nuse p\n");
}

/// Each dotted import can be removed once the previous one has been removed; before that, its name
/// may hide a package.
std::string makeChain(std::size_t length) {
    std::string packages;
    std::string names;
    for (std::size_t number = 1; number <= length; ++number) {
        std::string const package = "p" + std::to_string(number);
        packages.append("import ").append(package).append("\nuse ").append(package).append("\n");
        names += "scope s {\nimport p" + std::to_string(number + 1) + "." + package + "\n}\n";
    }
    return "scope p {\n" + packages + "}\n" + names;
}

TEST(Fixes, AreAppliedAsLongAsOneEnablesAnother) {
    FixedFile const fixed =
        analyseAndFix(SourceFile("any", makeChain(mostRoundsOfFixes)), optionsFor(true));
    EXPECT_EQ(fixed.fixes, mostRoundsOfFixes);
    EXPECT_TRUE(fixed.file.diagnostics.empty());
}

TEST(Fixes, AreLeftToTheNextRunAfterTheLastRound) {
    FixedFile const fixed =
        analyseAndFix(SourceFile("any", makeChain(mostRoundsOfFixes + 3)), optionsFor(true));
    EXPECT_EQ(fixed.fixes, mostRoundsOfFixes);
    ASSERT_EQ(fixed.file.diagnostics.size(), 3U);
    EXPECT_TRUE(fixed.file.diagnostics.front().fix);
    FixedFile const next =
        analyseAndFix(SourceFile("any", std::string(fixed.file.source.text())), optionsFor(true));
    EXPECT_EQ(next.fixes, 3U);
    EXPECT_TRUE(next.file.diagnostics.empty());
}

TEST(Fixes, HaveWords) {
    EXPECT_EQ(wordsFor({{}, {}}), "remove this import");
    EXPECT_EQ(wordsFor({{}, "a2"}), "import it as '{1}'");
}

TEST(Fixes, OfOneProblemLeaveOthers) {
    AnalysedFile const file = analyse(
        SourceFile("any", "import p\nimport q p@2 p@3\nimport a.b c.d\n"), optionsFor(true));
    std::vector<std::string> results;
    for (Diagnostic const& diagnostic : file.diagnostics) {
        if (diagnostic.fix) {
            results.push_back(applyEdits(file.source.text(), editsFor(file, *diagnostic.fix)));
        }
    }
    EXPECT_THAT(results, ElementsAre("import p\nimport p@2 p@3\nimport a.b c.d\n",
                                     "import p\nimport p@2 as p2; import q p@3\nimport a.b c.d\n",
                                     "import p\nimport p@3 as p3; import q p@2\nimport a.b c.d\n",
                                     "import p\nimport q p@2 p@3\nimport c.d\n",
                                     "import p\nimport q p@2 p@3\nimport a.b\n"));
}

} // namespace
} // namespace explorer
