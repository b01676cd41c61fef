// SPDX-License-Identifier: BSL-1.0

#include <import_explorer/sarif_report.hpp>

#include <import/messages.hpp>

#include <nlohmann/json.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace explorer {
namespace {

using Json = nlohmann::ordered_json;

struct Sink final : ITextSink {
    void write(std::string_view piece) override { text += piece; }

    std::string text;
};

Json reportOn(std::vector<AnalysedFile> const& files,
              std::vector<LoadFailure> const& failures = {}) {
    Sink sink;
    std::unique_ptr<IReport> const report = createSarifReport(sink);
    for (LoadFailure const& failure : failures) {
        report->add(failure);
    }
    for (AnalysedFile const& file : files) {
        report->add(file);
    }
    report->finish({}, std::chrono::seconds(1));
    return Json::parse(sink.text);
}

AnalysedFile analyseText(std::string name, std::string text) {
    return analyse(SourceFile(std::move(name), std::move(text)),
                   {SourceSyntax::Script, lf::import::Behavior::WithPackageImports, false, true});
}

TEST(SarifReport, HasTheRequiredPropertiesEvenOfNothing) {
    Json const document = reportOn({});
    EXPECT_EQ(document["version"], "2.1.0");
    EXPECT_TRUE(document["$schema"].is_string());
    ASSERT_EQ(document["runs"].size(), 1U);
    Json const& run = document["runs"][0];
    EXPECT_EQ(run["tool"]["driver"]["name"], "import_explorer");
    EXPECT_EQ(run["columnKind"], "unicodeCodePoints");
    EXPECT_EQ(run["newlineSequences"], Json::parse(R"(["\r\n", "\n", "\r"])"));
    EXPECT_EQ(run["results"], Json::array());
    EXPECT_EQ(run["invocations"][0]["executionSuccessful"], true);
}

TEST(SarifReport, HasARuleForEachMessageOfTheLibraryAndEachFinding) {
    Json const document = reportOn({});
    std::set<std::string> rules;
    for (Json const& rule : document["runs"][0]["tool"]["driver"]["rules"]) {
        rules.insert(rule["id"]);
    }
    std::set<std::string> expected{"ScriptProblem", "UnknownName", "UnusedImport", "RepeatedImport",
                                   "ScopeTooDeep"};
    for (lf::import::MessageKey const& message : lf::import::messageKeys) {
        expected.emplace(message.key);
    }
    EXPECT_EQ(rules, expected);
}

TEST(SarifReport, TellsAConflictWithBothPlaces) {
    Json const document =
        reportOn({analyseText("a b/図.import", "import p@1\n  import \"\" é.p\nuse p\n")});
    EXPECT_EQ(document["runs"][0]["results"], Json::parse(R"([{
        "ruleId": "PrecedenceViolation", "level": "error",
        "message": {"text": "'é.p' introduces 'p', which this scope already imports as something else"},
        "locations": [{"physicalLocation": {
            "artifactLocation": {"uri": "a%20b/%E5%9B%B3.import"},
            "region": {"startLine": 2, "startColumn": 13, "endColumn": 16}}}],
        "relatedLocations": [{"message": {"text": "conflicts with 'p@1'"}, "physicalLocation": {
            "artifactLocation": {"uri": "a%20b/%E5%9B%B3.import"},
            "region": {"startLine": 1, "startColumn": 8, "endColumn": 11}}}]}])"));
}

TEST(SarifReport, NamesWhatTheExplorerFindsItself) {
    std::string deep;
    for (std::size_t level = 0; level <= deepestListedLevel; ++level) {
        deep += "scope s {\nimport a.b\n";
    }
    Json const document = reportOn(
        {analyseText("a", "frob\nimport a.b\nuse x\n"), analyseText("/b", deep + "scope t {\n")});
    std::set<std::string> found;
    std::set<std::string> files;
    for (Json const& result : document["runs"][0]["results"]) {
        found.insert(result["ruleId"].get<std::string>() + " " +
                     result["level"].get<std::string>());
        files.insert(result["locations"][0]["physicalLocation"]["artifactLocation"]["uri"]);
        EXPECT_FALSE(result.contains("relatedLocations"));
    }
    EXPECT_EQ(found, (std::set<std::string>{"ScriptProblem error", "UnknownName error",
                                            "UnusedImport warning", "ScopeTooDeep error"}));
    EXPECT_EQ(files, (std::set<std::string>{"a", "file:///b"}));
}

Json fixesOf(std::string text) {
    Json fixes = Json::array();
    Json const document = reportOn({analyseText("a b", std::move(text))});
    for (Json const& result : document["runs"][0]["results"]) {
        if (result.contains("fixes")) {
            fixes.push_back(result["fixes"]);
        }
    }
    return fixes;
}

TEST(SarifReport, ReplacesTheWholeLineOfAnImport) {
    EXPECT_EQ(fixesOf("use x.y\r\nimport a.b\r\n"), Json::parse(R"([[{
        "description": {"text": "remove this import"},
        "artifactChanges": [{"artifactLocation": {"uri": "a%20b"}, "replacements": [
            {"deletedRegion": {"startLine": 2, "startColumn": 1, "endLine": 3, "endColumn": 1}}]}]}]])"));
}

TEST(SarifReport, CountsTheColumnsOfFixesInCharacters) {
    EXPECT_EQ(fixesOf("import é.図 a.b # x\nuse 図; use b\nimport p@1\nuse p; import p@2").dump(),
              Json::parse(R"([[{
        "description": {"text": "import it as 'p2'"},
        "artifactChanges": [{"artifactLocation": {"uri": "a%20b"}, "replacements": [
            {"deletedRegion": {"startLine": 4, "startColumn": 18, "endColumn": 18},
             "insertedContent": {"text": " as p2"}}]}]}]])")
                  .dump());
    EXPECT_EQ(fixesOf("import é.図 é.b # x\nuse 図\n")[0][0]["artifactChanges"][0]["replacements"],
              Json::parse(
                  R"([{"deletedRegion": {"startLine": 1, "startColumn": 11, "endColumn": 15}}])"));
}

TEST(SarifReport, LeavesFixesOutOnceTheyAreManyForTheirText) {
    std::string const text = "import" + std::string(500, ' ') + "a a a a a a a a a\nuse a\n";
    EXPECT_EQ(fixesOf(text).size(), 8U);
    std::string many = "import";
    for (int count = 0; count < 1000; ++count) {
        many += " a";
    }
    EXPECT_EQ(fixesOf(many + "\nuse a\n").size(), 10U + (6 + 2000 + 7) / 4);
}

TEST(SarifReport, LeavesNoTextOfAScriptWithAMeaningInMessages) {
    Json const document = reportOn({analyseText("a", "import {0} [x](1) [y]\n")});
    EXPECT_EQ(document["runs"][0]["results"][0]["message"]["text"],
              "'{{0}}' is neither a dotted name, nor a wildcard, nor a package");
    Json const link = reportOn({analyseText("a", "import [x](1)[y]\n")});
    EXPECT_EQ(link["runs"][0]["results"][0]["message"]["text"],
              R"('[x\](1)[y]' is neither a dotted name, nor a wildcard, nor a package)");
}

TEST(SarifReport, NotifiesOfWhatCouldNotBeRead) {
    Json const document = reportOn({}, {LoadFailure{"a\xFF", "cannot open", {}},
                                        LoadFailure{"b", "not UTF-8 text: byte 0xFF", 7}});
    Json const& invocation = document["runs"][0]["invocations"][0];
    EXPECT_EQ(invocation["executionSuccessful"], false);
    EXPECT_EQ(invocation["toolExecutionNotifications"], Json::parse(R"([{
        "level": "error", "message": {"text": "cannot open"},
        "locations": [{"physicalLocation": {"artifactLocation": {"uri": "a%FF"}}}]},
        {"level": "error", "message": {"text": "not UTF-8 text: byte 0xFF"},
        "locations": [{"physicalLocation": {"artifactLocation": {"uri": "b"},
                                            "region": {"byteOffset": 7, "byteLength": 1}}}]}])"));
}

} // namespace
} // namespace explorer
