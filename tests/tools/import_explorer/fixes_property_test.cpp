// SPDX-License-Identifier: BSL-1.0

#include <import_explorer/edits.hpp>

#include <gtest/gtest.h>

// Must be included after GoogleTest.
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace explorer {
namespace {

/// Uses few names, so that imports repeat, hide and conflict with each other.
rc::Gen<std::string> anyStatement() {
    auto const dotted = rc::gen::element<std::string>("p.q", "q.p", "p.r", "r.q", "q.*", "p.*",
                                                      "r.*", "\"q.r\"", "\"\"");
    auto const package = rc::gen::element<std::string>("p", "q", "p@1", "p@2", "r", "\"\"", "r2");
    auto const aliased = rc::gen::element<std::string>("p as q", "q@1 as p", "r as p", "r as r2");
    auto const command = rc::gen::oneOf(
        rc::gen::map(rc::gen::resize(4, rc::gen::container<std::vector<std::string>>(dotted)),
                     [](std::vector<std::string> const& arguments) {
                         std::string text;
                         for (std::string const& argument : arguments) {
                             text += " " + argument;
                         }
                         return text;
                     }),
        rc::gen::map(rc::gen::pair(package, package),
                     [](auto const& both) { return " " + both.first + "  " + both.second; }),
        rc::gen::map(aliased, [](std::string const& text) { return "\t" + text; }));
    auto const import = rc::gen::map(
        rc::gen::pair(rc::gen::element<std::string>("import", "import", "dynamic import"), command),
        [](auto const& both) { return both.first + both.second; });
    auto const other = rc::gen::element<std::string>(
        "use p", "use q", "use r", "use x", "use p.q.x", "use r2", "scope s {", "scope s {", "}");
    return rc::gen::weightedOneOf<std::string>({{3, import}, {2, other}});
}

/// A script whose scopes are closed, sometimes with an unknown statement.
rc::Gen<std::string> anyScript() {
    return rc::gen::exec([] {
        std::string text;
        std::size_t depth = 0;
        for (std::string const& statement :
             *rc::gen::resize(15, rc::gen::container<std::vector<std::string>>(anyStatement()))) {
            if (statement == "}" && depth == 0) {
                continue;
            }
            if (statement == "}") {
                --depth;
            } else if (statement.ends_with('{')) {
                ++depth;
            }
            text += *rc::gen::element<std::string>("", "  ", "\t") + statement +
                    *rc::gen::element<std::string>("\n", "\n", "\r\n", "\r", " ; ", ";", " # x\n");
        }
        while (depth-- > 0) {
            text += "\n}";
        }
        return text + *rc::gen::weightedElement<std::string>({{9, "\n"}, {1, "\nsurplus\n"}});
    });
}

AnalysedFile analyseText(std::string text, bool warnsOfUnusedImports) {
    return analyse(SourceFile("any", std::move(text)),
                   {SourceSyntax::Script, lf::import::Behavior::WithPackageImports, false,
                    warnsOfUnusedImports});
}

std::string describe(AnalysedFile const& file, std::vector<EntryReference> const& references) {
    std::string text;
    for (EntryReference const& reference : references) {
        text += " " + file.at(reference).text;
    }
    return text;
}

/// What fixes must not change: the meaning of each use, and all errors without a fix.
std::vector<std::string> meaningOf(AnalysedFile const& file) {
    std::vector<std::string> lines;
    for (AnalysedUse const& use : file.uses) {
        lines.push_back(use.use.name.text + ":" + describe(file, use.imports) + " |" +
                        describe(file, use.wildcards.listed) +
                        std::to_string(use.wildcards.omitted));
    }
    for (Diagnostic const& diagnostic : file.diagnostics) {
        if (diagnostic.severity == lf::import::Severity::Error && !diagnostic.fix &&
            diagnostic.finding != Finding::UnknownName) {
            std::string line = diagnostic.key;
            for (std::string const& argument : diagnostic.arguments) {
                line += " " + argument;
            }
            lines.push_back(line);
        }
    }
    return lines;
}

std::size_t countFixes(AnalysedFile const& file) {
    return static_cast<std::size_t>(
        std::ranges::count_if(file.diagnostics, [](auto const& each) { return bool(each.fix); }));
}

/// Fixes keep every comment; line ends may be removed with their lines.
std::size_t countComments(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::count(text, '#'));
}

RC_GTEST_PROP(FixesProperty, AllTogetherKeepTheMeaningAndLeaveNothingToFix, ()) {
    std::string const script = *anyScript();
    bool const warns = *rc::gen::arbitrary<bool>();
    AnalysisOptions const options{SourceSyntax::Script, lf::import::Behavior::WithPackageImports,
                                  false, warns};
    FixedFile const fixed = analyseAndFix(SourceFile("any", script), options);
    RC_LOG() << script << "becomes\n" << fixed.file.source.text();
    RC_ASSERT(countFixes(fixed.file) == 0U);
    RC_ASSERT(meaningOf(fixed.file) == meaningOf(analyseText(script, warns)));
    RC_ASSERT(countComments(fixed.file.source.text()) == countComments(script));
    FixedFile const again =
        analyseAndFix(SourceFile("any", std::string(fixed.file.source.text())), options);
    RC_ASSERT(again.fixes == 0U);
    RC_ASSERT(again.file.source.text() == fixed.file.source.text());
}

RC_GTEST_PROP(FixesProperty, EachAloneKeepsTheMeaning, ()) {
    std::string const script = *anyScript();
    AnalysedFile const file = analyseText(script, true);
    std::vector<std::string> const meaning = meaningOf(file);
    for (Diagnostic const& diagnostic : file.diagnostics) {
        if (!diagnostic.fix) {
            continue;
        }
        std::string const text = applyEdits(script, editsFor(file, *diagnostic.fix));
        RC_LOG() << script << "becomes\n" << text;
        AnalysedFile const after = analyseText(text, true);
        RC_ASSERT(meaningOf(after) == meaning);
        RC_ASSERT(text != script);
    }
}

RC_GTEST_PROP(FixesProperty, LeaveNoRepetitionAnywhere, ()) {
    std::string const script = *anyScript();
    FixedFile const fixed = analyseAndFix(
        SourceFile("any", script),
        {SourceSyntax::Script, lf::import::Behavior::WithPackageImports, false, true});
    for (Diagnostic const& diagnostic : fixed.file.diagnostics) {
        RC_ASSERT(!(diagnostic.key.empty() && diagnostic.finding == Finding::RepeatedImport));
        RC_ASSERT(diagnostic.key != "PackageRedeclared");
    }
}

} // namespace
} // namespace explorer
