// SPDX-License-Identifier: BSL-1.0

#include <import_explorer/json_report.hpp>

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>

namespace explorer {
namespace {

using lf::import::Behavior;
using Json = nlohmann::ordered_json;

constexpr std::chrono::seconds anyTime{3};

AnalysedFile analyseText(std::string name, std::string text) {
    return analyse(SourceFile(std::move(name), std::move(text)), SourceSyntax::Script,
                   Behavior::WithPackageImports);
}

TEST(JsonReport, HasEverythingInAFixedOrder) {
    AnalysedFile const file = analyseText("some.import", "dynamic import a.b.* p as q.r\n"
                                                         "import é.x\n"
                                                         "import p as q\nfrob");
    Summary summary;
    summary.count(file);
    auto const report = createJsonReport(true);
    EXPECT_EQ(report->add(file), "");
    EXPECT_EQ(report->finish(summary, anyTime), R"({
  "schemaVersion": 1,
  "packageImports": true,
  "files": [
    {
      "name": "some.import",
      "commands": [
        {
          "dynamic": true,
          "line": 1,
          "column": 1,
          "offset": 0,
          "length": 29,
          "arguments": [
            {
              "text": "a.b.*",
              "line": 1,
              "column": 16,
              "offset": 15,
              "length": 5
            },
            {
              "text": "p",
              "line": 1,
              "column": 22,
              "offset": 21,
              "length": 1
            },
            {
              "text": "as",
              "line": 1,
              "column": 24,
              "offset": 23,
              "length": 2
            },
            {
              "text": "q.r",
              "line": 1,
              "column": 27,
              "offset": 26,
              "length": 3
            }
          ],
          "entries": []
        },
        {
          "dynamic": false,
          "line": 2,
          "column": 1,
          "offset": 30,
          "length": 11,
          "arguments": [
            {
              "text": "é.x",
              "line": 2,
              "column": 8,
              "offset": 37,
              "length": 4
            }
          ],
          "entries": [
            {
              "kind": "name",
              "text": "é.x",
              "introducedName": "x",
              "rootElement": "é",
              "argument": 0
            }
          ]
        },
        {
          "dynamic": false,
          "line": 3,
          "column": 1,
          "offset": 42,
          "length": 13,
          "arguments": [
            {
              "text": "p",
              "line": 3,
              "column": 8,
              "offset": 49,
              "length": 1
            },
            {
              "text": "as",
              "line": 3,
              "column": 10,
              "offset": 51,
              "length": 2
            },
            {
              "text": "q",
              "line": 3,
              "column": 13,
              "offset": 54,
              "length": 1
            }
          ],
          "entries": [
            {
              "kind": "package",
              "text": "p as q",
              "introducedName": "q",
              "rootElement": null,
              "argument": 2
            }
          ]
        }
      ],
      "diagnostics": [
        {
          "severity": "error",
          "key": "MixedImportType",
          "message": "one command imports either packages or dotted names, not both",
          "messageArguments": [],
          "line": 1,
          "column": 22,
          "offset": 21,
          "length": 1,
          "command": 0,
          "argument": 1
        },
        {
          "severity": "error",
          "key": null,
          "message": "unknown statement 'frob': expected 'import', 'dynamic import', 'scope', 'use' or '}'",
          "messageArguments": [
            "frob"
          ],
          "line": 4,
          "column": 1,
          "offset": 56,
          "length": 4,
          "command": null,
          "argument": null
        }
      ]
    }
  ],
  "failures": [],
  "summary": {
    "files": 1,
    "commands": 3,
    "entries": 2,
    "names": 1,
    "wildcards": 0,
    "packages": 1,
    "errors": 2,
    "warnings": 0
  }
}
)");
}

TEST(JsonReport, CarriesAnyTextIntact) {
    std::string const strange = "a\x1b\"\\\u200B{1}";
    auto const report = createJsonReport(true);
    report->add(analyseText(strange, "import " + strange));
    Json const document = Json::parse(report->finish({}, anyTime));
    EXPECT_EQ(document["files"][0]["name"], strange);
    EXPECT_EQ(document["files"][0]["diagnostics"][0]["messageArguments"][0], strange);
    EXPECT_EQ(document["files"][0]["commands"][0]["arguments"][0]["text"], strange);
}

TEST(JsonReport, ListsWhatCouldNotBeReadEvenUnderANameThatIsNoText) {
    auto const report = createJsonReport(false);
    report->add(LoadFailure{"a\xFF", "not UTF-8 text: byte 0xC0", 7});
    report->add(LoadFailure{"b", "cannot open: No such file or directory", std::nullopt});
    Json const document = Json::parse(report->finish({}, anyTime));
    EXPECT_EQ(document["packageImports"], false);
    EXPECT_EQ(
        document["failures"],
        Json::parse(R"([{"name": "a\ufffd", "message": "not UTF-8 text: byte 0xC0", "offset": 7},
                              {"name": "b", "message": "cannot open: No such file or directory",
                               "offset": null}])"));
}

} // namespace
} // namespace explorer
