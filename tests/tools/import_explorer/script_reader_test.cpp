// SPDX-License-Identifier: BSL-1.0

#include <import_explorer/script_reader.hpp>

#include <support/row_name.hpp>

#include <host/catalogue.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace explorer {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Script read(std::string text, SourceSyntax syntax = SourceSyntax::Script) {
    return readScript(SourceFile("test.import", std::move(text)), syntax);
}

/// `import a b` as `import(a)(b)`, with `dynamic` before it where it is.
std::string toText(ImportCommand const& command) {
    std::string text = command.isDynamic ? "dynamic import" : "import";
    for (Word const& argument : command.arguments) {
        text += "(" + argument.text + ")";
    }
    return text;
}

std::string toText(UseOfName const& use) {
    return "use(" + use.name.text + ")";
}

std::vector<std::string> statementsOf(Script const& script) {
    std::vector<std::string> texts;
    for (Statement const& statement : script.statements) {
        texts.push_back(std::visit([](auto const& what) { return toText(what); }, statement));
    }
    return texts;
}

/// `line:column: words`
std::vector<std::string> problemsOf(Script const& script) {
    std::vector<std::string> texts;
    for (Diagnostic const& problem : script.problems) {
        texts.push_back(std::to_string(problem.range.line) + ":" +
                        std::to_string(problem.range.column) + ": " +
                        lf::import::host::fillPlaceholders(problem.words, problem.arguments));
    }
    return texts;
}

ImportCommand const& commandAt(Script const& script, std::size_t index) {
    return std::get<ImportCommand>(script.statements.at(index));
}

struct GoodScript {
    std::string_view why;
    std::string text;
    std::vector<std::string> statements;

    friend void PrintTo(GoodScript const& row, std::ostream* stream) { *stream << row.why; }
};

class AcceptedScript : public testing::TestWithParam<GoodScript> {};

TEST_P(AcceptedScript, HasItsStatementsAndNoProblems) {
    Script const script = read(GetParam().text);
    EXPECT_EQ(statementsOf(script), GetParam().statements);
    EXPECT_THAT(problemsOf(script), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    ScriptReader, AcceptedScript,
    testing::Values(
        GoodScript{"an empty file", "", {}}, GoodScript{"blank lines", "\n  \n\t\n", {}},
        GoodScript{"a command without arguments", "import", {"import"}},
        GoodScript{"an argument is a run of what is not blank",
                   "import a.b.* pkg@^1.2,<3 as x{y}",
                   {"import(a.b.*)(pkg@^1.2,<3)(as)(x{y})"}},
        GoodScript{"a text in quotes may be empty or have blanks",
                   R"(import "" "a b" "x;y#z")",
                   {"import()(a b)(x;y#z)"}},
        GoodScript{"a quote within a word is a character", R"(import a"b")", {R"(import(a"b"))"}},
        GoodScript{"a dynamic command", "  dynamic   import\ta.b", {"dynamic import(a.b)"}},
        GoodScript{"a use", "use c", {"use(c)"}},
        GoodScript{"the empty name can be used", R"(use "")", {"use()"}},
        GoodScript{"a semicolon ends a statement",
                   "import a;import b ;; use c;",
                   {"import(a)", "import(b)", "use(c)"}},
        GoodScript{"comments begin where words do",
                   "# one\n// two\nimport a # three\nimport b// c //four\nimport d#e;#five",
                   {"import(a)", "import(b//)(c)", "import(d#e)"}},
        GoodScript{"scopes nest", "scope a {\nscope \"b c\" {\nimport d\n}\n}", {"import(d)"}},
        GoodScript{"a scope on one line", "scope a { import b.c } scope d{ }", {"import(b.c)"}},
        GoodScript{"lines that end as on other systems",
                   "import a\r\nimport b\r\n",
                   {"import(a)", "import(b)"}},
        GoodScript{"a byte order mark", "\xEF\xBB\xBFimport a", {"import(a)"}},
        GoodScript{"the keywords are arguments elsewhere",
                   "import import use scope dynamic",
                   {"import(import)(use)(scope)(dynamic)"}},
        GoodScript{"a last line without end", "import a\nimport b", {"import(a)", "import(b)"}}),
    support::RowName());

struct BadScript {
    std::string_view why;
    std::string text;
    std::vector<std::string> problems;
    /// What is read all the same.
    std::vector<std::string> statements;

    friend void PrintTo(BadScript const& row, std::ostream* stream) { *stream << row.why; }
};

class MalformedScript : public testing::TestWithParam<BadScript> {};

TEST_P(MalformedScript, IsReportedAndReadOn) {
    Script const script = read(GetParam().text);
    EXPECT_EQ(problemsOf(script), GetParam().problems);
    EXPECT_EQ(statementsOf(script), GetParam().statements);
}

INSTANTIATE_TEST_SUITE_P(
    ScriptReader, MalformedScript,
    testing::Values(
        BadScript{"an unknown statement costs its line",
                  "  frob x; import a\nimport b",
                  {"1:3: unknown statement 'frob': expected 'import', 'dynamic import', 'scope', "
                   "'use' or '}'"},
                  {"import(b)"}},
        BadScript{"a quoted keyword is none",
                  R"("import" a)",
                  {"1:1: unknown statement 'import': expected 'import', 'dynamic import', "
                   "'scope', 'use' or '}'"},
                  {}},
        BadScript{"a quote that does not end",
                  "import a; import b \"c d\nimport e",
                  {"1:20: quoted text is not closed: expected '\"'"},
                  {"import(a)", "import(e)"}},
        BadScript{"text right behind a quote",
                  "import \"a\"b",
                  {"1:8: expected a blank after the quoted text"},
                  {}},
        BadScript{"dynamic what", "dynamic use a", {"1:1: expected 'import' after 'dynamic'"}, {}},
        BadScript{"dynamic and nothing", "dynamic", {"1:1: expected 'import' after 'dynamic'"}, {}},
        BadScript{"a use without name",
                  "use\nuse;",
                  {"1:1: expected a name after 'use'", "2:1: expected a name after 'use'"},
                  {}},
        BadScript{"a use of two names", "use a b", {"1:7: expected only one name after 'use'"}, {}},
        BadScript{"a use with a bad quote",
                  "use \"a",
                  {"1:5: quoted text is not closed: expected '\"'"},
                  {}},
        BadScript{"an end too many",
                  "import a }\n}\nimport b",
                  {"1:10: '}' closes no scope", "2:1: '}' closes no scope"},
                  {"import(a)", "import(b)"}},
        BadScript{"a brace without scope",
                  "{ import a",
                  {"1:1: expected 'scope' and a name before '{'"},
                  {}},
        BadScript{"a scope without end stands where it begins",
                  "scope a {\n  scope b {\n frob\n}\n",
                  {"1:1: scope 'a' is never closed: expected '}'",
                   "3:2: unknown statement 'frob': expected 'import', 'dynamic import', 'scope', "
                   "'use' or '}'"},
                  {}},
        BadScript{"a scope without name is still one",
                  "scope { import a }\nscope {\n}\nimport b",
                  {"1:1: expected a name after 'scope'", "2:1: expected a name after 'scope'"},
                  {"import(a)", "import(b)"}},
        BadScript{"a scope without brace is still one",
                  "scope a\nimport b\n}",
                  {"1:7: expected '{' after the name of the scope"},
                  {"import(b)"}},
        BadScript{"a scope with two names",
                  "scope a b {\n}",
                  {"1:7: expected '{' after the name of the scope"},
                  {}},
        BadScript{
            "a lone scope is reported once", "scope", {"1:1: expected a name after 'scope'"}, {}},
        BadScript{"a scope with a bad quote is still one",
                  "scope \"a {\nimport b\n}",
                  {"1:7: quoted text is not closed: expected '\"'"},
                  {"import(b)"}}),
    support::RowName());

TEST(ScriptReader, KeepsThePlaceOfEachArgumentWithItsQuotes) {
    Script const script = read("\n scope x {\n  import größe.a \"b c\"");
    ImportCommand const& command = commandAt(script, 0);
    ASSERT_EQ(command.arguments.size(), 2U);
    SourceRange const& first = command.arguments[0].range;
    EXPECT_EQ(first.line, 3U);
    EXPECT_EQ(first.column, 10U);
    EXPECT_EQ(first.begin, 21U);
    EXPECT_EQ(first.end, 30U) << "two of the seven characters take two bytes";
    SourceRange const& second = command.arguments[1].range;
    EXPECT_EQ(second.column, 18U) << "columns count characters";
    EXPECT_EQ(second.begin, 31U);
    EXPECT_EQ(second.end, 36U) << "the quotes belong to it";
    EXPECT_EQ(command.range.begin, 14U);
    EXPECT_EQ(command.range.end, 36U);
}

TEST(ScriptReader, CountsTheByteOrderMarkInOffsetsOnly) {
    Script const script = read("\xEF\xBB\xBFimport a");
    EXPECT_EQ(commandAt(script, 0).arguments.at(0).range.begin, 10U);
    EXPECT_EQ(commandAt(script, 0).arguments.at(0).range.column, 8U);
}

TEST(ScriptReader, KnowsTheScopeOfEachStatement) {
    Script const script =
        read("import a\nscope s {\nimport b\nscope t {\nimport c\n}\nuse d\n}\nimport e");
    ASSERT_EQ(script.scopes.size(), 3U);
    EXPECT_EQ(script.scopes[0].parent, std::nullopt);
    EXPECT_EQ(script.scopes[1].name, "s");
    EXPECT_EQ(script.scopes[1].parent, 0U);
    EXPECT_EQ(script.scopes[2].name, "t");
    EXPECT_EQ(script.scopes[2].parent, 1U);
    std::vector<ScopeIndex> scopes;
    for (Statement const& statement : script.statements) {
        scopes.push_back(std::visit([](auto const& what) { return what.scope; }, statement));
    }
    EXPECT_THAT(scopes, ElementsAre(0, 1, 2, 1, 0));
}

TEST(ScriptReader, ReadsScopesOfAnyDepth) {
    constexpr std::size_t depth = 100'000;
    std::string text;
    for (std::size_t level = 0; level < depth; ++level) {
        text += "scope a {\n";
    }
    text += "import b\n";
    Script const script = read(std::move(text));
    EXPECT_EQ(script.scopes.size(), depth + 1);
    EXPECT_EQ(commandAt(script, 0).scope, depth);
    EXPECT_EQ(script.problems.size(), depth) << "each of them lacks its end";
}

struct TextLine {
    std::string_view why;
    std::string text;
    std::vector<std::string> statements;

    friend void PrintTo(TextLine const& row, std::ostream* stream) { *stream << row.why; }
};

class LineOfText : public testing::TestWithParam<TextLine> {};

TEST_P(LineOfText, IsACommandOrSkipped) {
    Script const script = read(GetParam().text, SourceSyntax::Lines);
    EXPECT_EQ(statementsOf(script), GetParam().statements);
    EXPECT_THAT(problemsOf(script), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    ScriptReader, LineOfText,
    testing::Values(
        TextLine{"a command", "  import a.b c.*\r\n", {"import(a.b)(c.*)"}},
        TextLine{"somebody's code", "from a import b\nscope {\nimportant();\nx = \"\n", {}},
        TextLine{"another word that begins alike", "imports a\nimport(a)\nimport# x", {}},
        TextLine{"one semicolon at the end is dropped",
                 "import a;\nimport b ;\nimport c;;\nimport;",
                 {"import(a)", "import(b)", "import(c;)", "import"}},
        TextLine{"a semicolon elsewhere is a character", "import a; b", {"import(a;)(b)"}},
        TextLine{"a comment at the end is dropped",
                 "import a # b\nimport c; // d\nimport e#f g//h",
                 {"import(a)", "import(c)", "import(e#f)(g//h)"}},
        TextLine{"a quote is a character", R"(import "a b" "")", {R"x(import("a)(b")(""))x"}},
        TextLine{"braces are words", "import a { }", {"import(a)({)(})"}}),
    support::RowName());

TEST(ScriptReader, KeepsThePlacesInLinesOfText) {
    Script const script = read("code\n\timport é  a.b ; // c", SourceSyntax::Lines);
    SourceRange const& range = commandAt(script, 0).arguments.at(1).range;
    EXPECT_EQ(range.line, 2U);
    EXPECT_EQ(range.column, 12U);
    EXPECT_EQ(range.begin, 17U);
    EXPECT_EQ(range.end, 20U);
}

} // namespace
} // namespace explorer
