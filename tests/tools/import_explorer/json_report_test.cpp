// SPDX-License-Identifier: BSL-1.0

#include <import_explorer/json_report.hpp>

#include <nlohmann/json.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace explorer {
namespace {

using lf::import::Behavior;
using Json = nlohmann::ordered_json;

constexpr std::chrono::seconds anyTime{3};

/// A report and the text that it has written.
class Written {
  public:
    Written(bool packageImports, ScopeDetail detail)
        : report(createJsonReport(sink, packageImports, detail)) {}

    IReport* operator->() const { return report.get(); }

    std::string const& text() const { return sink.text; }

    std::string finish(Summary const& summary = {}) {
        report->finish(summary, anyTime);
        return sink.text;
    }

  private:
    struct Sink final : ITextSink {
        void write(std::string_view piece) override { text += piece; }

        std::string text;
    };

    Sink sink;
    std::unique_ptr<IReport> report;
};

AnalysedFile analyseText(std::string name, std::string text) {
    return analyse(SourceFile(std::move(name), std::move(text)),
                   {SourceSyntax::Script, Behavior::WithPackageImports, true, false});
}

TEST(JsonReport, HasEverythingInAFixedOrder) {
    AnalysedFile const file = analyseText("some.import", "dynamic import a.b.* p as q.r\n"
                                                         "import é.x\n"
                                                         "import p as q\nfrob");
    Summary summary;
    summary.count(file);
    Written report(true, ScopeDetail::Imports);
    report->add(file);
    EXPECT_EQ(report.finish(summary), R"({
  "schemaVersion": 3,
  "packageImports": true,
  "files": [
    {
      "name": "some.import",
      "scopes": [
        {"name": "", "parent": null, "line": 1, "column": 1, "offset": 0, "length": 0, "imports": [{"command": 1, "entry": 0}, {"command": 2, "entry": 0}]}
      ],
      "commands": [
        {"scope": 0, "dynamic": true, "line": 1, "column": 1, "offset": 0, "length": 29, "arguments": [{"text": "a.b.*", "line": 1, "column": 16, "offset": 15, "length": 5}, {"text": "p", "line": 1, "column": 22, "offset": 21, "length": 1}, {"text": "as", "line": 1, "column": 24, "offset": 23, "length": 2}, {"text": "q.r", "line": 1, "column": 27, "offset": 26, "length": 3}], "entries": []},
        {"scope": 0, "dynamic": false, "line": 2, "column": 1, "offset": 30, "length": 11, "arguments": [{"text": "é.x", "line": 2, "column": 8, "offset": 37, "length": 4}], "entries": [{"kind": "name", "text": "é.x", "introducedName": "x", "rootElement": "é", "argument": 0, "outcome": "added", "earlier": null, "used": false}]},
        {"scope": 0, "dynamic": false, "line": 3, "column": 1, "offset": 42, "length": 13, "arguments": [{"text": "p", "line": 3, "column": 8, "offset": 49, "length": 1}, {"text": "as", "line": 3, "column": 10, "offset": 51, "length": 2}, {"text": "q", "line": 3, "column": 13, "offset": 54, "length": 1}], "entries": [{"kind": "package", "text": "p as q", "introducedName": "q", "rootElement": null, "argument": 2, "outcome": "added", "earlier": null, "used": false}]}
      ],
      "uses": [],
      "diagnostics": [
        {"severity": "error", "key": "MixedImportType", "message": "one command imports either packages or dotted names, not both", "messageArguments": [], "line": 1, "column": 22, "offset": 21, "length": 1, "command": 0, "argument": 1, "note": null},
        {"severity": "error", "key": null, "message": "unknown statement 'frob': expected 'import', 'dynamic import', 'scope', 'use' or '}'", "messageArguments": ["frob"], "line": 4, "column": 1, "offset": 56, "length": 4, "command": null, "argument": null, "note": null}
      ]
    }
  ],
  "failures": [],
  "summary": {"files": 1, "commands": 3, "uses": 0, "entries": 2, "names": 1, "wildcards": 0, "packages": 1, "errors": 2, "warnings": 0}
}
)");
}

TEST(JsonReport, CutsLongTextsAtTheEndOfACharacter) {
    struct {
        std::string_view why;
        std::string text;
        std::string shown;
    } const rows[] = {
        {"fits exactly", std::string(200, 'x'), std::string(200, 'x')},
        {"one byte too long", std::string(201, 'x'), std::string(200, 'x') + "..."},
        {"a character is not split", std::string(199, 'x') + "é", std::string(199, 'x') + "..."},
        {"cut between characters", std::string(198, 'x') + "éé", std::string(198, 'x') + "é..."},
    };

    for (auto const& [why, text, shown] : rows) {
        Written report(true, ScopeDetail::Imports);
        std::string script = "import ";
        script.append(text).append("\nscope ").append(text);
        script.append(" {\nuse a").append(text).append("\nimport 1").append(text);
        report->add(analyseText("some.import", script));
        Json const file = Json::parse(report.finish())["files"][0];
        EXPECT_EQ(file["commands"][0]["arguments"][0]["text"], shown) << why;
        EXPECT_EQ(file["commands"][0]["entries"][0]["text"], shown) << why;
        EXPECT_EQ(file["commands"][0]["entries"][0]["introducedName"], shown) << why;
        EXPECT_EQ(file["scopes"][1]["name"], shown) << why;
        EXPECT_LE(file["uses"][0]["text"].get<std::string>().size(), 203U) << why;
        EXPECT_LE(file["diagnostics"][2]["messageArguments"][0].get<std::string>().size(), 203U)
            << why;
    }
}

TEST(JsonReport, IsWrittenFileByFile) {
    Written report(true, ScopeDetail::Imports);
    report->add(analyseText("first.import", "import a.b\n"));
    std::size_t const afterFirst = report.text().size();
    EXPECT_THAT(report.text(), testing::HasSubstr("first.import"));
    report->add(analyseText("second.import", "import a.b\n"));
    EXPECT_THAT(report.text().substr(afterFirst), testing::HasSubstr("second.import"));
}

TEST(JsonReport, TellsScopesUsesAndNotesByReferences) {
    Written report(true, ScopeDetail::ImportsAndView);
    report->add(analyseText("some.import", "import p a\n"
                                           "scope s {\n"
                                           "import p@2 b\n"
                                           "import p.x\n"
                                           "use p.q\n"
                                           "use \"bb\"\n"
                                           "}"));
    Json const document = Json::parse(report.finish());
    Json const& file = document["files"][0];
    EXPECT_EQ(file["scopes"], Json::parse(R"([
        {"name": "", "parent": null, "line": 1, "column": 1, "offset": 0, "length": 0,
         "imports": [{"command": 0, "entry": 0}, {"command": 0, "entry": 1}],
         "inherited": {"listed": [], "omitted": 0},
         "hidden": {"listed": [], "omitted": 0}},
        {"name": "s", "parent": 0, "line": 2, "column": 1, "offset": 11, "length": 7,
         "imports": [{"command": 1, "entry": 0}, {"command": 1, "entry": 1}],
         "inherited": {"listed": [{"command": 0, "entry": 1}], "omitted": 0},
         "hidden": {"listed": [{"entry": {"command": 0, "entry": 0},
                                "by": {"command": 1, "entry": 0}}], "omitted": 0}}])"));
    EXPECT_EQ(file["uses"], Json::parse(R"([
        {"scope": 1, "text": "p.q", "line": 5, "column": 5, "offset": 49, "length": 3,
         "name": "p", "imports": [{"command": 1, "entry": 0}],
         "wildcards": {"listed": [], "omitted": 0}, "unknown": false, "suggestion": null},
        {"scope": 1, "text": "bb", "line": 6, "column": 5, "offset": 57, "length": 4,
         "name": "bb", "imports": [],
         "wildcards": {"listed": [], "omitted": 0}, "unknown": true,
         "suggestion": {"command": 1, "entry": 1}}])"));
    EXPECT_EQ(file["commands"][1]["entries"][0]["used"], true);
    EXPECT_EQ(file["commands"][2]["entries"][0]["outcome"], "refused");
    EXPECT_EQ(file["commands"][2]["entries"][0]["earlier"],
              Json::parse(R"({"command": 1, "entry": 0})"));
    EXPECT_EQ(file["diagnostics"][0]["note"], Json::parse(R"({"message": "conflicts with 'p@2'",
                              "entry": {"command": 1, "entry": 0}, "line": 3, "column": 8, "offset": 28, "length": 3})"));
    EXPECT_EQ(file["diagnostics"][1]["message"], "unknown name 'bb'; did you mean 'b'?");
}

TEST(JsonReport, CarriesAnyTextIntact) {
    std::string const strange = "a\x1b\"\\\u200B{1}";
    Written report(true, ScopeDetail::Imports);
    report->add(analyseText(strange, "import " + strange));
    Json const document = Json::parse(report.finish());
    EXPECT_EQ(document["files"][0]["name"], strange);
    EXPECT_EQ(document["files"][0]["diagnostics"][0]["messageArguments"][0], strange);
    EXPECT_EQ(document["files"][0]["commands"][0]["arguments"][0]["text"], strange);
}

TEST(JsonReport, ListsWhatCouldNotBeReadEvenUnderANameThatIsNoText) {
    Written report(false, ScopeDetail::Imports);
    report->add(LoadFailure{"a\xFF", "not UTF-8 text: byte 0xC0", 7});
    report->add(LoadFailure{"b", "cannot open: No such file or directory", std::nullopt});
    Json const document = Json::parse(report.finish());
    EXPECT_EQ(document["packageImports"], false);
    EXPECT_EQ(
        document["failures"],
        Json::parse(R"([{"name": "a\ufffd", "message": "not UTF-8 text: byte 0xC0", "offset": 7},
                              {"name": "b", "message": "cannot open: No such file or directory",
                               "offset": null}])"));
}

} // namespace
} // namespace explorer
