// SPDX-License-Identifier: BSL-1.0

#include <import_explorer/analysis.hpp>

#include <host/catalogue.hpp>

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace explorer {
namespace {

AnalysedFile analyseScript(std::string text, bool warnsOfUnusedImports = false) {
    return analyse(SourceFile("some.import", std::move(text)),
                   {SourceSyntax::Script, lf::import::Behavior::WithPackageImports, true,
                    warnsOfUnusedImports});
}

/// An entry with its line: `a.b.c:7`.
std::string toText(AnalysedFile const& file, EntryReference const& reference) {
    return file.at(reference).text + ":" + std::to_string(file.rangeOf(reference).line);
}

std::string toText(AnalysedFile const& file, AnalysedUse const& use) {
    std::string text = use.name + " =";
    for (EntryReference const& reference : use.imports) {
        text += " " + toText(file, reference);
    }
    for (EntryReference const& reference : use.wildcards.listed) {
        text += " ?" + toText(file, reference);
    }
    if (use.suggestion) {
        text += " ~" + toText(file, *use.suggestion);
    }
    return text + (use.isUnknown() ? " unknown" : "");
}

std::string toText(AnalysedFile const& file, Diagnostic const& diagnostic) {
    std::string text =
        std::to_string(diagnostic.range.line) + ":" + std::to_string(diagnostic.range.column) +
        " " +
        (diagnostic.key.empty()
             ? lf::import::host::fillPlaceholders(diagnostic.words, diagnostic.arguments)
             : diagnostic.key);
    if (diagnostic.note) {
        SourceRange const& noted = describe(file, *diagnostic.note).range;
        text += " -> " + std::to_string(noted.line) + ":" + std::to_string(noted.column);
    }
    return text;
}

std::vector<std::string> diagnosticsOf(AnalysedFile const& file) {
    std::vector<std::string> texts;
    for (Diagnostic const& diagnostic : file.diagnostics) {
        texts.push_back(toText(file, diagnostic));
    }
    return texts;
}

struct UseCase {
    std::string_view why;
    std::string_view script;
    std::vector<std::string> uses;

    friend std::ostream& operator<<(std::ostream& stream, UseCase const& example) {
        return stream << example.why;
    }
};

class Uses : public testing::TestWithParam<UseCase> {};

TEST_P(Uses, AreWhatTheImportsBeforeThemSay) {
    AnalysedFile const file = analyseScript(std::string(GetParam().script));
    std::vector<std::string> uses;
    for (AnalysedUse const& use : file.uses) {
        uses.push_back(toText(file, use));
    }
    EXPECT_EQ(uses, GetParam().uses);
}

INSTANTIATE_TEST_SUITE_P(
    Analysis, Uses,
    testing::Values(
        UseCase{"a package and a name, by what they introduce",
                "import p@1 as q\nimport a.b\nuse q\nuse b",
                {"q = p@1 as q:1", "b = a.b:2"}},
        UseCase{"an import counts from its place on",
                "use b\nimport a.b\nuse b",
                {"b = unknown", "b = a.b:2"}},
        UseCase{"the file is the outermost scope",
                "import a.b\nscope s {\nscope t {\nuse b\n}\n}",
                {"b = a.b:1"}},
        UseCase{"an inner scope comes first, and only for itself",
                "import a.b\nscope s {\nimport c.b\nuse b\n}\nuse b",
                {"b = c.b:3", "b = a.b:1"}},
        UseCase{"a sibling scope is not asked",
                "scope s {\nimport a.bcd\n}\nscope t {\nuse bcd\n}",
                {"bcd = unknown"}},
        UseCase{"the first of two names of a scope", "import a.x b.x\nuse x", {"x = a.x:1"}},
        UseCase{"a name of this scope hides a package further out",
                "import x\nscope s {\nimport a.x\nuse x\n}",
                {"x = a.x:3"}},
        UseCase{"from within another scope both are found: the nearer one is the name",
                "import x\nscope s {\nimport a.x\nscope t {\nuse x\n}\n}",
                {"x = a.x:3 x:1"}},
        UseCase{"from within another scope both are found: the nearer one is the package",
                "import a.x\nscope s {\nimport x\nscope t {\nuse x\n}\n}",
                {"x = x:3 a.x:1"}},
        UseCase{"what nothing introduces may come from a wildcard, the nearest first",
                "import a.*\nscope s {\nimport b.* c.*\nuse x\n}",
                {"x = ?b.*:3 ?c.*:3 ?a.*:1"}},
        UseCase{"a wildcard is seen once, from its nearest scope",
                "import a.* b.*\nscope s {\nimport b.*\nuse x\n}",
                {"x = ?b.*:3 ?a.*:1"}},
        UseCase{"a wildcard supplies what is used behind it",
                "import a.*\nuse x\nuse y\nimport b.*\nuse x",
                {"x = ?a.*:1", "y = ?a.*:1", "x = ?a.*:1 ?b.*:4"}},
        UseCase{"a wildcard supplies its own scope and those within",
                "import a.*\nscope s {\nimport b.*\nuse x\nscope t {\nuse x\n}\n}\nuse x",
                {"x = ?b.*:3 ?a.*:1", "x = ?b.*:3 ?a.*:1", "x = ?a.*:1"}},
        UseCase{"what is introduced needs no wildcard", "import a.* b.x\nuse x", {"x = b.x:1"}},
        UseCase{"of a dotted name the first element",
                "import p as q\nuse q.x.y\nuse a.b",
                {"q = p as q:1", "a ="}},
        UseCase{"which no wildcard supplies", "import a.*\nuse b.c", {"b ="}},
        UseCase{"but a package may introduce a name with dots",
                "import net.http@1\nscope s {\nimport net@1\nuse net.http\n}",
                {"net.http = net.http@1:1"}},
        UseCase{"of which members can be used",
                "import net.http@1 net@1\nuse net.http.get\nuse net.https.get",
                {"net.http = net.http@1:1", "net = net@1:1"}},
        UseCase{"a refused import introduces nothing",
                "import a.xyz\nimport xyz@1\nscope s {\nuse xyz\n}",
                {"xyz = a.xyz:1"}},
        UseCase{"a misspelled name is like a visible one",
                "import shapes.circle\nimport square\nuse circel\nuse squre",
                {"circel = ~shapes.circle:1 unknown", "squre = ~square:2 unknown"}},
        UseCase{"nothing visible is like it", "import a.b\nuse circle", {"circle = unknown"}},
        UseCase{"the empty name", "import a.b\nuse \"\"", {" = unknown"}},
        UseCase{"names of any language", "import a.図形\nuse 図形", {"図形 = a.図形:1"}}));

struct RefusalCase {
    std::string_view why;
    std::string_view script;
    std::vector<std::string> diagnostics;

    friend std::ostream& operator<<(std::ostream& stream, RefusalCase const& example) {
        return stream << example.why;
    }
};

class Refusals : public testing::TestWithParam<RefusalCase> {};

TEST_P(Refusals, PointAtTheEarlierImport) {
    AnalysedFile const file = analyseScript(std::string(GetParam().script));
    EXPECT_EQ(diagnosticsOf(file), GetParam().diagnostics);
}

INSTANTIATE_TEST_SUITE_P(
    Analysis, Refusals,
    testing::Values(
        RefusalCase{"two packages of a name",
                    "import p@1\nimport q as p",
                    {"2:13 PackageRedeclared -> 1:8"}},
        RefusalCase{"in one command", "import p p@2", {"1:10 PackageRedeclared -> 1:8"}},
        RefusalCase{"in two scopes they may be", "import p\nscope s {\nimport p\n}", {}},
        RefusalCase{"a name that a package introduces",
                    "import x\nimport a.x",
                    {"2:8 PrecedenceViolation -> 1:8"}},
        RefusalCase{"a package that a name introduces",
                    "import a.x b.x\ndynamic import x",
                    {"2:16 PrecedenceViolation -> 1:8"}},
        RefusalCase{"a name that begins with a package",
                    "import p as q\nimport q.x",
                    {"2:8 InvalidPackageFunctionAbbreviation -> 1:13"}},
        RefusalCase{"even with one of an enclosing scope",
                    "import p\nscope s {\nscope t {\nimport p.*\n}\n}",
                    {"4:8 InvalidPackageFunctionAbbreviation -> 1:8"}},
        RefusalCase{"a package with which names begin, the first of which is shown",
                    "import p.* p.a\nimport p",
                    {"2:8 InvalidPackageFunctionAbbreviation -> 1:8"}},
        RefusalCase{"which is right when it is dynamic", "import p.*\ndynamic import p", {}},
        RefusalCase{"or when the names are those of an enclosing scope",
                    "import p.*\nscope s {\nimport p\n}",
                    {}},
        RefusalCase{"a repeated dotted import is no mistake", "import a.b a.*\nimport a.b a.*", {}},
        RefusalCase{
            "after a refused import there is no conflict with it",
            "import p\nimport a.p\nimport p.x\nscope s {\nimport a.p\n}",
            {"2:8 PrecedenceViolation -> 1:8", "3:8 InvalidPackageFunctionAbbreviation -> 1:8"}}));

TEST(Analysis, TellsWhatBecameOfEachEntry) {
    AnalysedFile const file = analyseScript("import a.b a.b\nimport b");
    std::vector<AnalysedEntry> const& names = file.commands.at(0).entries;
    EXPECT_EQ(names.at(0).outcome, EntryOutcome::Added);
    EXPECT_EQ(names.at(1).outcome, EntryOutcome::Repeated);
    EXPECT_EQ(names.at(1).earlier, (EntryReference{0, 0}));
    AnalysedEntry const& package = file.commands.at(1).entries.at(0);
    EXPECT_EQ(package.outcome, EntryOutcome::Refused);
    EXPECT_EQ(package.earlier, (EntryReference{0, 0}));
    EXPECT_EQ(file.scopes.at(0).entries, (std::vector{EntryReference{0, 0}}));
}

TEST(Analysis, OnlyParsesLines) {
    AnalysedFile const file =
        analyse(SourceFile("some.txt", "import a.b\nimport b\nuse x"),
                {SourceSyntax::Lines, lf::import::Behavior::WithPackageImports, true, true});
    EXPECT_TRUE(file.diagnostics.empty());
    EXPECT_TRUE(file.uses.empty());
    EXPECT_EQ(file.commands.at(1).entries.at(0).outcome, EntryOutcome::Parsed);
}

TEST(Analysis, WarnsOfImportsThatNoUseReachesOrThatRepeatAnother) {
    AnalysedFile const file = analyseScript("import a.b a.b a.c\nimport p@1 as q c\n"
                                            "import r\nimport w.*\nuse b\nuse r.x\n"
                                            "scope s {\nimport x.* x.y\nuse y\n}",
                                            true);
    EXPECT_EQ(diagnosticsOf(file),
              (std::vector<std::string>{"1:12 this scope already imports 'a.b' -> 1:8",
                                        "1:16 no 'use' reaches the import of 'a.c'",
                                        "2:17 IncorrectNumberOfAlias",
                                        "4:8 no 'use' reaches the import of 'w.*'",
                                        "8:8 no 'use' reaches the import of 'x.*'"}));
}

/// The library's warning may be the reason why nothing uses the import, so it comes first.
TEST(Analysis, WarnsOfWhatAnImportIsBeforeItWarnsThatNoUseReachesIt) {
    AnalysedFile const file =
        analyse(SourceFile("some.import", "import a.for"),
                {SourceSyntax::Script, lf::import::Behavior::WithoutPackageImports, false, true});
    EXPECT_EQ(diagnosticsOf(file),
              (std::vector<std::string>{"1:8 KeywordInImportArgumentWarning",
                                        "1:8 no 'use' reaches the import of 'a.for'"}));
}

TEST(Analysis, ViewsWhatAScopeInheritsAndHides) {
    AnalysedFile const file = analyseScript("import x p\nimport a.* b.* a.n b.y c.y\n"
                                            "scope s {\nimport n y@1\nimport b.* c.x d.n a.n\n"
                                            "scope t {\n}\n}");
    ASSERT_EQ(file.scopes.size(), 3U);
    auto const inheritedBy = [&](ScopeIndex scope) {
        std::vector<std::string> texts;
        for (EntryReference const& entry : file.scopes.at(scope).view->inherited.listed) {
            texts.push_back(toText(file, entry));
        }
        return texts;
    };
    EXPECT_EQ(inheritedBy(0), std::vector<std::string>());
    EXPECT_EQ(inheritedBy(1), (std::vector<std::string>{"p:1", "a.*:2"}));
    EXPECT_EQ(inheritedBy(2),
              (std::vector<std::string>{"n:4", "y@1:4", "p:1", "c.x:5", "b.*:5", "a.*:2"}));
    std::vector<std::string> hidden;
    for (auto const& [entry, by] : file.scopes.at(1).view->hidden.listed) {
        hidden.push_back(toText(file, entry) + " by " + toText(file, by));
    }
    EXPECT_EQ(hidden, (std::vector<std::string>{"x:1 by c.x:5", "a.n:2 by n:4", "b.y:2 by y@1:4",
                                                "c.y:2 by y@1:4", "b.*:2 by b.*:5"}));
    EXPECT_TRUE(file.scopes.at(2).view->hidden.listed.empty());
}

TEST(Analysis, ListsAHundredInheritedEntriesAndCountsTheOthers) {
    std::string script;
    for (int count = 0; count < 103; ++count) {
        script += "import a.b" + std::to_string(count) + "\n";
    }
    AnalysedFile const file = analyseScript(script + "scope s {\n}");
    EXPECT_EQ(file.scopes.at(1).view->inherited.listed.size(), 100U);
    EXPECT_EQ(file.scopes.at(1).view->inherited.omitted, 3U);
}

TEST(Analysis, ListsInheritedEntriesInProportionToTheSizeOfTheFile) {
    std::string script;
    for (int count = 0; count < 50; ++count) {
        script += "import a.b" + std::to_string(count) + "\n";
    }
    for (int count = 0; count < 50; ++count) {
        script += "scope s {\n}\n";
    }
    AnalysedFile const file = analyseScript(script);
    std::size_t listed = 0;
    std::size_t omitted = 0;
    for (AnalysedScope const& scope : file.scopes) {
        listed += scope.view->inherited.listed.size();
        omitted += scope.view->inherited.omitted;
    }
    EXPECT_EQ(listed, script.size() / bytesForEachViewedEntry);
    EXPECT_EQ(listed + omitted, 2500U);
}

TEST(Analysis, ViewsScopesDownToALevel) {
    std::string script;
    for (std::size_t level = 0; level < deepestViewedLevel + 2; ++level) {
        script += "scope s {\n";
    }
    script += "use x\n";
    AnalysedFile const file = analyseScript(script);
    EXPECT_TRUE(file.scopes.at(deepestViewedLevel).view);
    EXPECT_FALSE(file.scopes.at(deepestViewedLevel + 1).view);
    EXPECT_EQ(file.scopes.back().level, deepestViewedLevel + 2);
}

TEST(Analysis, LooksNothingUpInScopesThatLieTooDeep) {
    std::string script = "import a.b\n";
    for (std::size_t level = 0; level < deepestListedLevel; ++level) {
        script += "scope s {\nimport c.d" + std::to_string(level) + "\n";
    }
    AnalysedFile const deep = analyseScript(script + "use b\n");
    ASSERT_EQ(deep.uses.size(), 1U);
    EXPECT_EQ(toText(deep, deep.uses.front()), "b = a.b:1");
    AnalysedFile const tooDeep =
        analyseScript(script + "scope t {\nimport x y@1\nuse b\nscope u {\n}\n}\n");
    EXPECT_TRUE(tooDeep.uses.empty());
    EXPECT_EQ(tooDeep.commands.back().entries.back().outcome, EntryOutcome::Parsed);
    std::vector<std::string> diagnostics;
    for (Diagnostic const& diagnostic : tooDeep.diagnostics) {
        if (diagnostic.words.find("never closed") == std::string_view::npos) {
            diagnostics.push_back(toText(tooDeep, diagnostic));
        }
    }
    EXPECT_EQ(diagnostics,
              std::vector<std::string>{"514:1 scope 't' lies within 256 others with imports: its "
                                       "imports and uses are not looked up"});
}

TEST(Analysis, CountsTheWildcardsThatItDoesNotList) {
    AnalysedFile const file = analyseScript("import a.* b.* c.*\nscope s {\nimport d.* e.* f.* "
                                            "b.*\nuse x\n}\nuse x\n");
    EXPECT_EQ(toText(file, file.uses.at(0)), "x = ?d.*:3 ?e.*:3 ?f.*:3 ?b.*:3 ?a.*:1");
    EXPECT_EQ(file.uses.at(0).wildcards.omitted, 1U);
    EXPECT_EQ(toText(file, file.uses.at(1)), "x = ?a.*:1 ?b.*:1 ?c.*:1");
    EXPECT_EQ(file.uses.at(1).wildcards.omitted, 0U);
}

struct WildcardUse {
    std::string_view why;
    std::string_view script;
    std::vector<std::string> unused;

    friend std::ostream& operator<<(std::ostream& stream, WildcardUse const& example) {
        return stream << example.why;
    }
};

class UsedWildcards : public testing::TestWithParam<WildcardUse> {};

TEST_P(UsedWildcards, AreThoseThatSomeUseReaches) {
    AnalysedFile const file = analyseScript(std::string(GetParam().script), true);
    std::vector<std::string> unused;
    for (Diagnostic const& diagnostic : file.diagnostics) {
        unused.push_back(std::to_string(diagnostic.range.line) + " " + diagnostic.arguments.at(0));
    }
    EXPECT_EQ(unused, GetParam().unused);
}

INSTANTIATE_TEST_SUITE_P(
    Analysis, UsedWildcards,
    testing::Values(
        WildcardUse{"reached from its scope", "import a.*\nuse x", {}},
        WildcardUse{"reached from within", "import a.*\nscope s {\nuse x\n}", {}},
        WildcardUse{
            "imported behind the use", "scope s {\nimport a.*\nuse x\nimport b.*\n}", {"4 b.*"}},
        WildcardUse{"of another scope", "scope s {\nimport a.*\n}\nimport b.*\nuse x", {"2 a.*"}},
        WildcardUse{
            "hidden where the use is", "import a.*\nscope s {\nimport a.*\nuse x\n}", {"1 a.*"}},
        WildcardUse{
            "used before it was hidden", "import a.*\nuse x\nscope s {\nimport a.*\n}", {"4 a.*"}},
        WildcardUse{"used within the scope that hides it later",
                    "import a.*\nscope s {\nuse x\nimport a.*\n}",
                    {"4 a.*"}},
        WildcardUse{"used again behind the scope that hides it",
                    "import a.*\nscope s {\nimport a.*\nuse x\n}\nuse x",
                    {}},
        WildcardUse{"hidden twice",
                    "import a.*\nscope s {\nimport a.*\nscope t {\nimport "
                    "a.*\nuse x\n}\n}",
                    {"1 a.*", "3 a.*"}},
        WildcardUse{"not needed by what is introduced", "import a.* b.x\nuse x", {"1 a.*"}}));

TEST(Analysis, ViewsNoScopesWhereThatWouldTakeTooLong) {
    std::string script = "import";
    for (int number = 0; number < 500; ++number) {
        script += " p" + std::to_string(number);
    }
    script += "\n";
    for (int number = 0; number < 500; ++number) {
        script += "scope s {\n}\n";
    }
    AnalysedFile const file = analyseScript(script);
    EXPECT_TRUE(file.scopes.at(1).view);
    EXPECT_FALSE(file.scopes.back().view);
}

} // namespace
} // namespace explorer
