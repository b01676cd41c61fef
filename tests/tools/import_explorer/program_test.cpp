// SPDX-License-Identifier: BSL-1.0

/// \file
/// Tests the program through its command line, as users run it.

#include "running.hpp"

#include <nlohmann/json.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;

using support::Outcome;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// Replaces the time at the end of the summary, if there is one, by `TIME s`.
std::string withoutTime(std::string report) {
    std::size_t const comma = report.rfind(", ");
    if (report.ends_with(" s\n") && comma != std::string::npos) {
        report.erase(comma);
        report += ", TIME s\n";
    }
    return report;
}

/// The files with a problem at the first argument of their first line, in the order of the report.
std::vector<std::string> filesWithProblems(std::string const& report) {
    std::vector<std::string> names;
    std::istringstream lines(report);
    for (std::string line; std::getline(lines, line);) {
        std::size_t const place = line.find(":1:8: error:");
        if (place != std::string::npos) {
            names.push_back(line.substr(0, place));
        }
    }
    return names;
}

class Program : public testing::Test {
  protected:
    void write(fs::path const& name, std::string_view contents) const {
        folder.write(name, contents);
    }

    Outcome run(std::string const& commandLine) const {
        Outcome outcome = support::runInShell(commandLine, folder.path());
        outcome.output = withoutTime(std::move(outcome.output));
        return outcome;
    }

    Outcome runOnTerminal(std::string const& commandLine) const {
        return support::runOnTerminal(commandLine, folder.path());
    }

    support::TemporaryFolder folder;
};

TEST_F(Program, ShowsEntriesAndDiagnosticsInSourceOrder) {
    write("some.import", "# a comment\n"
                         "scope s {\n"
                         "    import a.b.c long.name.* \"\" d.e\n"
                         "    import pkg@^1.2 as p; dynamic import x  # why not\n"
                         "    import a.b \"not a name\"\n"
                         "    frob\n"
                         "    import\n"
                         "}\n");
    Outcome const outcome = run("import_explorer some.import");
    EXPECT_EQ(outcome.output,
              R"(some.import
   3 | import a.b.c long.name.* "" d.e
     |   [0]  name      a.b.c        introduces c  root a
     |   [1]  wildcard  long.name.*                root long
     |   [3]  name      d.e          introduces e  root d
   4 | import pkg@^1.2 as p
     |   [2]  package   pkg@^1.2 as p  introduces p
   4 | dynamic import x
     |   [0]  package   x  introduces x
some.import:5:16: error: 'not a name' is neither a dotted name, nor a wildcard, nor a package [InvalidImportArgument]
   5 |     import a.b "not a name"
     |                ^~~~~~~~~~~~
some.import:6:5: error: unknown statement 'frob': expected 'import', 'dynamic import', 'scope', 'use' or '}'
   6 |     frob
     |     ^~~~
   7 | import
     |   nothing to import

1 file, 5 commands: 5 entries (2 names, 1 wildcard, 2 packages), 2 errors, 0 warnings, TIME s
)");
    EXPECT_EQ(outcome.errorOutput, "");
    EXPECT_EQ(outcome.status, 1);
}

TEST_F(Program, ShowsOnlyDiagnosticsAndTheSummaryWhenQuiet) {
    write("some.import", "import a.b\nimport a.1\n");
    EXPECT_EQ(
        run("import_explorer --quiet some.import").output,
        R"(some.import:2:8: error: 'a.1' is neither a dotted name, nor a wildcard, nor a package [InvalidImportArgument]
   2 | import a.1
     |        ^~~
1 file, 2 commands: 1 entry (1 name, 0 wildcards, 0 packages), 1 error, 0 warnings, TIME s
)");
}

TEST_F(Program, ShowsAWarningBesideItsEntryAndSucceeds) {
    write("some.import", "import a.for\nimport 1a.*\n");
    Outcome const outcome = run("import_explorer --packages off some.import");
    EXPECT_EQ(outcome.output,
              R"(some.import
   1 | import a.for
     |   [0]  name      a.for  introduces for  root a
some.import:1:8: warning: 'a.for' introduces 'for', which is a reserved word [KeywordInImportArgumentWarning]
   1 | import a.for
     |        ^~~~~
   2 | import 1a.*
     |   [0]  wildcard  1a.*    root 1a
some.import:2:8: warning: the wildcard '1a.*' has no prefix of valid names [MalformedImportArgumentWarning]
   2 | import 1a.*
     |        ^~~~

1 file, 2 commands: 2 entries (1 name, 1 wildcard, 0 packages), 0 errors, 2 warnings, TIME s
)");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(Program, AsksTheFeatureSwitchUnlessToldOtherwise) {
    write("some.import", "import pkg\n");
    std::string const refusal = "[ImportArgumentWithoutDot]";
    EXPECT_EQ(run("import_explorer some.import").status, 0);
    EXPECT_THAT(run("import_explorer --feature off some.import").output, HasSubstr(refusal));
    EXPECT_THAT(run("import_explorer --feature off --packages follow some.import").output,
                HasSubstr(refusal));
    EXPECT_EQ(run("import_explorer --feature off --packages on some.import").status, 0);
    EXPECT_THAT(run("import_explorer --feature on --packages off some.import").output,
                HasSubstr(refusal));
}

TEST_F(Program, AlignsCaretsBelowTabsAndWideCharacters) {
    write("some.import", "\timport\t図形.円 cafe\u0301.a for.\n");
    EXPECT_EQ(run("import_explorer --quiet some.import").output,
              "some.import:1:22: error: 'for.' is neither a dotted name, nor a wildcard, nor a "
              "package [InvalidImportArgument]\n"
              "   1 | \timport\t図形.円 cafe\u0301.a for.\n"
              "     | \t      \t               ^~~~\n"
              "1 file, 1 command: 0 entries (0 names, 0 wildcards, 0 packages), 1 error, 0 "
              "warnings, TIME s\n");
}

TEST_F(Program, TakesAByteOrderMarkAndCarriageReturns) {
    write("some.import", "\xEF\xBB\xBFimport a.b\r\nimport for\r\n");
    Outcome const outcome = run("import_explorer some.import");
    EXPECT_EQ(outcome.output,
              R"(some.import
   1 | import a.b
     |   [0]  name      a.b  introduces b  root a
some.import:2:8: error: 'for' cannot be imported: 'for' is a reserved word [KeywordInImportArgument]
   2 | import for
     |        ^~~

1 file, 2 commands: 1 entry (1 name, 0 wildcards, 0 packages), 1 error, 0 warnings, TIME s
)");
}

TEST_F(Program, KeepsEscapeSequencesAwayFromTheTerminal) {
    write("some.import", "import a.\x1b[31m\n\x1b]0;x\x07\n");
    for (std::string const options : {"", "--packages off ", "--lines "}) {
        std::string const output = run("import_explorer " + options + "some.import").output;
        EXPECT_THAT(output, Not(HasSubstr("\x1b")));
        EXPECT_THAT(output, HasSubstr("a.<U+001B>[31m"));
    }
    write("a\x1b[1m.import", "import a.b c\n");
    EXPECT_THAT(run("import_explorer ./a*.import").output,
                HasSubstr("./a<U+001B>[1m.import:1:12:"));
}

TEST_F(Program, ReadsAnyTextLineByLine) {
    write("code.py", "from x import y\nimport os.path;  # why\nprint(\"}\")\n");
    EXPECT_EQ(run("import_explorer --lines code.py").output, R"(code.py
   2 | import os.path
     |   [0]  name      os.path  introduces path  root os

1 file, 1 command: 1 entry (1 name, 0 wildcards, 0 packages), 0 errors, 0 warnings, TIME s
)");
}

TEST_F(Program, ReadsStandardInput) {
    Outcome const outcome = run("printf 'import a.b\\nimport 1' | import_explorer -");
    EXPECT_THAT(outcome.output, StartsWith("<stdin>\n   1 | import a.b\n"));
    EXPECT_THAT(outcome.output, HasSubstr("<stdin>:2:8: error: "));
    EXPECT_EQ(outcome.status, 1);
}

TEST_F(Program, WalksFoldersInSortedOrderAndLeavesOutWhatIsNotMeant) {
    for (char const* name : {"t/b.import", "t/a/z.import", "t/a/y.import", "t/c.txt", "t/a.import",
                             "t/.git/x.import", "t/.hidden.import"}) {
        write(name, "import 1\n");
    }
    fs::create_directory_symlink(folder.path() / "t", folder.path() / "t/a/loop");
    EXPECT_THAT(filesWithProblems(run("import_explorer t").output),
                ElementsAre("t/a/y.import", "t/a/z.import", "t/a.import", "t/b.import"));
    EXPECT_THAT(filesWithProblems(run("import_explorer --lines t").output),
                ElementsAre("t/a/y.import", "t/a/z.import", "t/a.import", "t/b.import", "t/c.txt"));
    EXPECT_THAT(filesWithProblems(run("import_explorer t/c.txt t/.git").output),
                ElementsAre("t/c.txt", "t/.git/x.import"))
        << "a file named on the command line is read, whatever its name is";
}

TEST_F(Program, ReportsFilesThatAreNoTextAndGoesOn) {
    write("a.import", "import a\n\xC3(\n");
    write("c.import", "import c\n");
    Outcome const outcome = run("import_explorer --quiet a.import missing c.import");
    EXPECT_EQ(outcome.output,
              "a.import: error: not UTF-8 text: byte 0xC3 at offset 9\n"
              "missing: error: cannot open: No such file or directory\n"
              "1 file, 1 command: 1 entry (0 names, 0 wildcards, 1 package), 2 errors, 0 warnings, "
              "TIME s\n");
    EXPECT_EQ(outcome.errorOutput, "");
    EXPECT_EQ(outcome.status, 1);
}

TEST_F(Program, ReportsAFileThatCannotBeRead) {
    // The mode allows reading, but reading fails even for the superuser.
    Outcome const outcome = run("import_explorer --quiet /proc/self/mem");
    EXPECT_THAT(outcome.output,
                StartsWith("/proc/self/mem: error: cannot read: Input/output error\n"));
    EXPECT_EQ(outcome.status, 1);
}

TEST_F(Program, WritesTheSameJsonDocumentEveryTime) {
    write("a.import", "import a.b\nimport 1\n");
    write("b.import", "import \xFF");
    Outcome const first = run("import_explorer --json --packages off . missing");
    Outcome const second = run("import_explorer --json --packages off . missing");
    EXPECT_EQ(first.output, second.output);
    EXPECT_EQ(first.status, 1);
    auto const document = nlohmann::json::parse(first.output);
    EXPECT_EQ(document["schemaVersion"], 3);
    EXPECT_EQ(document["packageImports"], false);
    EXPECT_EQ(document["files"].size(), 1U);
    EXPECT_EQ(document["files"][0]["diagnostics"][0]["key"], "ImportArgumentWithoutDot");
    EXPECT_EQ(document["failures"].size(), 2U);
    EXPECT_EQ(document["failures"][0]["name"], "./b.import");
    EXPECT_EQ(document["failures"][0]["offset"], 7);
    EXPECT_EQ(document["summary"]["errors"], 3);
}

TEST_F(Program, WritesTheFormatThatIsAskedFor) {
    write("some.import", "import 1\n");
    EXPECT_THAT(run("import_explorer --format text some.import").output,
                StartsWith("some.import\nsome.import:1:8:"));
    EXPECT_EQ(run("import_explorer --format json some.import").output,
              run("import_explorer --json some.import").output);
    Outcome const sarif = run("import_explorer --format sarif some.import");
    EXPECT_EQ(sarif.status, 1);
    EXPECT_EQ(nlohmann::json::parse(sarif.output)["runs"][0]["results"][0]["ruleId"],
              "InvalidImportArgument");
    EXPECT_EQ(run("import_explorer --format json --json some.import").status, 2);
    EXPECT_EQ(run("import_explorer --format xml some.import").status, 2);
}

std::string readFile(fs::path const& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST_F(Program, ShowsFixesBelowDiagnostics) {
    write("some.import", "import p@1 a.b\nimport p@1; import p@2; import a.b a.b\n");
    EXPECT_EQ(
        run("import_explorer --quiet --unused some.import").output,
        R"(some.import:1:12: error: one command imports either packages or dotted names, not both [MixedImportType]
   1 | import p@1 a.b
     |            ^~~
some.import:2:8: warning: no 'use' reaches the import of 'p@1'
   2 | import p@1; import p@2; import a.b a.b
     |        ^~~
some.import:2:20: error: this scope already imports a package under the name that 'p@2' introduces [PackageRedeclared]
   2 | import p@1; import p@2; import a.b a.b
     |                    ^~~
some.import:2:8: note: conflicts with 'p@1'
   2 | import p@1; import p@2; import a.b a.b
     |        ^~~
     | fix: import it as 'p2'
some.import:2:32: warning: no 'use' reaches the import of 'a.b'
   2 | import p@1; import p@2; import a.b a.b
     |                                ^~~
some.import:2:36: warning: this scope already imports 'a.b'
   2 | import p@1; import p@2; import a.b a.b
     |                                    ^~~
some.import:2:32: note: 'a.b' is imported here
   2 | import p@1; import p@2; import a.b a.b
     |                                ^~~
     | fix: remove this import
1 file, 4 commands: 3 entries (2 names, 0 wildcards, 1 package), 2 errors, 3 warnings, TIME s
)");
}

TEST_F(Program, FixesFilesAndReportsOnWhatIsLeft) {
    write("a/one.import", "import p@1\r\nimport p@2\r\nuse p; use x\r\n");
    write("a/two.import", "import c.d\n# text\n");
    write("a/three.import", "use a.b\n");
    Outcome const first = run("import_explorer --quiet --fix --unused a");
    EXPECT_EQ(first.status, 1);
    EXPECT_EQ(readFile(folder.path() / "a/one.import"), "import p@1\r\nuse p; use x\r\n");
    EXPECT_EQ(readFile(folder.path() / "a/two.import"), "# text\n");
    EXPECT_EQ(readFile(folder.path() / "a/three.import"), "use a.b\n");
    EXPECT_EQ(first.output, R"(a/one.import:2:12: error: unknown name 'x'
   2 | use p; use x
     |            ^
3 files, 1 command: 1 entry (0 names, 0 wildcards, 1 package), 1 error, 0 warnings, 3 fixes applied, TIME s
)");
    Outcome const second = run("import_explorer --quiet --fix --unused a");
    EXPECT_THAT(second.output, Not(HasSubstr("applied")));
    EXPECT_EQ(readFile(folder.path() / "a/one.import"), "import p@1\r\nuse p; use x\r\n");
}

TEST_F(Program, FixesNothingButWhatTheReportWouldShow) {
    write("some.import", "import c.d c.d\nimport p@1\nimport p@2\n");
    EXPECT_EQ(run("import_explorer --fix some.import").status, 0);
    EXPECT_EQ(readFile(folder.path() / "some.import"),
              "import c.d c.d\nimport p@1\nimport p@2 as p2\n");
}

TEST_F(Program, ReportsAFileThatItCannotFix) {
    write("some.import", "import c.d\n");
    write("other.import", "import c.d\n");
    fs::create_hard_link(folder.path() / "some.import", folder.path() / "linked.import");
    Outcome const outcome = run("import_explorer --fix --unused --quiet some.import other.import");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.output,
                StartsWith("some.import: error: cannot fix: it has other hard links\n1 file, "));
    EXPECT_EQ(readFile(folder.path() / "some.import"), "import c.d\n");
    EXPECT_EQ(readFile(folder.path() / "other.import"), "");
}

TEST_F(Program, FixesNoStandardInputAndNoLines) {
    for (std::string const arguments : {"--fix -", "--fix --lines some.import"}) {
        Outcome const outcome = run("import_explorer " + arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_THAT(outcome.errorOutput, StartsWith("import_explorer: error: ")) << arguments;
    }
}

TEST_F(Program, TellsHowItIsUsed) {
    Outcome const help = run("import_explorer --help");
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.output, HasSubstr("import_explorer [OPTIONS]"));
    EXPECT_THAT(help.output, HasSubstr("Examples:"));
    Outcome const version = run("import_explorer --version");
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.output, "import_explorer (gleigem) " GLEIGEM_VERSION "\n");
}

TEST_F(Program, RefusesAWrongCommandLine) {
    for (std::string const arguments :
         {"", "--packages maybe x", "--feature follow x", "--no-such-option x", "--packages"}) {
        Outcome const outcome = run("import_explorer " + arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_EQ(outcome.output, "") << arguments;
        EXPECT_THAT(outcome.errorOutput, StartsWith("import_explorer: error: ")) << arguments;
        EXPECT_THAT(outcome.errorOutput, HasSubstr("--help")) << arguments;
    }
}

TEST_F(Program, UsesColoursOnATerminalOnly) {
    if (!support::canMakeTerminals()) {
        GTEST_SKIP() << "There is no pseudo-terminal here.";
    }
    write("some.import", "import 1\n");
    std::string const command = "import_explorer some.import";
    EXPECT_THAT(runOnTerminal("TERM=xterm NO_COLOR= " + command).output,
                HasSubstr("\x1b[1;31merror:\x1b[0m"));
    EXPECT_THAT(runOnTerminal("TERM=xterm NO_COLOR=1 " + command).output, Not(HasSubstr("\x1b")));
    EXPECT_THAT(runOnTerminal("TERM=dumb NO_COLOR= " + command).output, Not(HasSubstr("\x1b")));
    EXPECT_THAT(runOnTerminal("TERM=xterm NO_COLOR= " + command + " | cat").output,
                Not(HasSubstr("\x1b")));
}

TEST_F(Program, EndsQuietlyWhenNobodyReadsItsOutput) {
    std::string script;
    for (int count = 0; count < 20'000; ++count) {
        script += "import a.b c.d\n";
    }
    write("some.import", script);
    Outcome const outcome =
        run("{ import_explorer some.import; echo $? >status; } | head -n 1; cat status");
    EXPECT_EQ(outcome.output, "some.import\n0\n");
    EXPECT_EQ(outcome.errorOutput, "");
}

TEST_F(Program, FailsWhenItsOutputIsLost) {
    write("some.import", "import a.b\n");
    for (std::string const options : {"", "--json ", "--version "}) {
        Outcome const outcome = run("import_explorer " + options + "some.import >/dev/full");
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.errorOutput,
                  "import_explorer: error: cannot write the output: No space left on device\n");
    }
}

TEST_F(Program, ReadsDeepScopesAndLongLines) {
    std::string deep;
    std::string closing;
    for (int count = 0; count < 50'000; ++count) {
        deep += "scope s {\n";
        closing += "}\n";
    }
    write("deep.import", deep + "import a.b\n" + closing);
    write("long.import", "import " + std::string(200'000, 'x') + ".1\n");
    EXPECT_EQ(run("import_explorer --quiet deep.import").status, 0);
    Outcome const outcome = run("import_explorer --quiet long.import");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_LT(outcome.output.size(), 1000U);
}

TEST_F(Program, KeepsListsForDeepScopes) {
    constexpr int depth = 100'000;
    std::string deep = "import a.b\n";
    std::string closing;
    for (int count = 0; count < depth; ++count) {
        deep += "scope s {\n";
        closing += "}\n";
    }
    write("deep.import", deep + "import c.d\nuse b\n" + closing);
    Outcome const quiet = run("import_explorer --unused deep.import");
    EXPECT_THAT(quiet.output, HasSubstr("|   is  name      a.b  line 1, file\n"));
    EXPECT_THAT(quiet.output, HasSubstr("no 'use' reaches the import of 'c.d'"));
    Outcome const drawn = run("import_explorer --scopes deep.import | tail -n 5 | tr -d ' │└─'");
    EXPECT_THAT(drawn.output,
                StartsWith("scopesline100001,level100000\nimportsnamec.dline100002\n"));
    EXPECT_EQ(run("import_explorer --json --scopes deep.import >document").status, 0);
}

TEST_F(Program, ShowsUsesAndConflictsWhereTheyAre) {
    write("some.import", "import p@1 as m\n"
                         "scope s {\n"
                         "    import a.b a.b w.* m.x\n"
                         "    import m.y\n"
                         "    use m.x; use b\n"
                         "    use bx\n"
                         "    use a.b\n"
                         "}\n"
                         "use n\n");
    Outcome const outcome = run("import_explorer some.import");
    EXPECT_EQ(outcome.output, R"(some.import
   1 | import p@1 as m
     |   [2]  package   p@1 as m  introduces m
   3 | import a.b a.b w.* m.x
     |   [0]  name      a.b  introduces b  root a
     |   [1]  name      a.b  introduces b  root a  repeats line 3
     |   [2]  wildcard  w.*                root w
     |   [3]  name      m.x  introduces x  root m  refused
some.import:3:24: error: a dotted import must not begin with the name that a package import introduces [InvalidPackageFunctionAbbreviation]
   3 |     import a.b a.b w.* m.x
     |                        ^~~
some.import:1:15: note: conflicts with 'p@1 as m'
   1 | import p@1 as m
     |               ^
some.import:4:12: error: a dotted import must not begin with the name that a package import introduces [InvalidPackageFunctionAbbreviation]
   4 |     import m.y
     |            ^~~
some.import:1:15: note: conflicts with 'p@1 as m'
   1 | import p@1 as m
     |               ^
   5 | use m.x
     |   m is  package   p@1 as m  line 1, file
   5 | use b
     |   is  name      a.b  line 3, scope s
   6 | use bx
     |   maybe  wildcard  w.*  line 3, scope s
   7 | use a.b
     |   written in full: needs no import
some.import:9:5: error: unknown name 'n'
   9 | use n
     |     ^

1 file, 3 commands: 4 entries (2 names, 1 wildcard, 1 package), 3 errors, 0 warnings, TIME s
)");
    EXPECT_EQ(outcome.status, 1);
}

TEST_F(Program, HasNoScopesInLines) {
    for (std::string const option : {"--scopes", "--unused"}) {
        Outcome const outcome = run("import_explorer --lines " + option + " x");
        EXPECT_EQ(outcome.status, 2) << option;
        EXPECT_THAT(outcome.errorOutput, HasSubstr("excludes")) << option;
    }
    write("code.txt", "import a.b\nimport a.b\nimport b\n");
    EXPECT_EQ(run("import_explorer --lines code.txt").status, 0);
}

TEST_F(Program, SaysThatAFolderCannotBeEntered) {
    write("t/a.import", "import a.b\n");
    write("t/closed/b.import", "import a.b\n");
    write("t/closed/further/c.import", "import a.b\n");
    // The superuser can enter any folder unless these capabilities are dropped.
    Outcome const outcome = run("[ $(id -u) = 0 ] && limit='setpriv "
                                "--bounding-set=-dac_override,-dac_read_search'; chmod 644 "
                                "t/closed; $limit import_explorer --quiet t; status=$?; chmod 755 "
                                "t/closed; exit $status");
    EXPECT_THAT(outcome.output, HasSubstr("t/closed/b.import: error: cannot open: "
                                          "Permission denied\n"));
    EXPECT_THAT(outcome.output, HasSubstr("t/closed/further: error: cannot read the folder: "
                                          "Permission denied\n"));
    EXPECT_THAT(outcome.output, HasSubstr("1 file, 1 command"));
    EXPECT_EQ(outcome.status, 1);
}

TEST_F(Program, SaysThatAPathIsTooLong) {
    write("t/a.import", "import a.b\n");
    // Unlike sh, bash can enter a folder whose path is too long.
    Outcome const outcome =
        run("bash -c 'cd t; for i in {1..25}; do mkdir $0; cd $0; done; echo import a.b >b.import' "
            "$(printf '%0200d' 0); import_explorer --quiet t; status=$?; rm -rf t; exit $status");
    EXPECT_THAT(outcome.output, HasSubstr("error: cannot read the folder: File name too long\n"));
    EXPECT_THAT(outcome.output, HasSubstr("1 file, 1 command"));
    EXPECT_EQ(outcome.status, 1);
}

TEST_F(Program, SaysThatSymbolicLinksInAFolderAreNotFollowed) {
    write("elsewhere/a.import", "import a.b\n");
    write("t/notes.txt", "import a.b\n");
    fs::create_symlink("../elsewhere/a.import", folder.path() / "t/script.import");
    fs::create_symlink("../elsewhere/nothing", folder.path() / "t/broken.import");
    fs::create_directory_symlink("../elsewhere", folder.path() / "t/folder");
    fs::create_symlink("notes.txt", folder.path() / "t/other.txt");
    std::string const reason =
        ": error: a symbolic link in a folder is not followed: name it to read it\n";
    std::string const links = "t/broken.import" + reason + "t/folder" + reason;
    Outcome const scripts = run("import_explorer --quiet t");
    EXPECT_THAT(scripts.output, StartsWith(links + "t/script.import" + reason + "0 files"));
    EXPECT_EQ(scripts.status, 1);
    Outcome const allFiles = run("import_explorer --quiet --lines t");
    EXPECT_THAT(allFiles.output,
                StartsWith(links + "t/other.txt" + reason + "t/script.import" + reason + "1 file"));
    EXPECT_EQ(run("import_explorer --quiet t/script.import t/folder").status, 0)
        << "a link named on the command line is followed";
}

TEST_F(Program, SaysThatSomethingNamedLikeAScriptIsNoFile) {
    fs::create_directories(folder.path() / "t");
    Outcome const outcome = run("mkfifo t/pipe.import t/pipe; import_explorer --quiet t");
    EXPECT_THAT(outcome.output, StartsWith("t/pipe.import: error: not a file\n0 files"));
    EXPECT_EQ(outcome.status, 1);
}

#ifndef GLEIGEM_SANITIZER

TEST_F(Program, GoesOnWithTheNextFileWhenMemoryDoesNotSuffice) {
    std::string costly;
    for (int count = 0; count < 1'000'000; ++count) {
        costly += "} ";
    }
    write("a.import", "import a.b\n");
    write("b.import", costly);
    write("c.import", "import c.d\n");
    Outcome const outcome = run("ulimit -v 160000; import_explorer a.import b.import c.import");
    EXPECT_EQ(outcome.output, R"(a.import
   1 | import a.b
     |   [0]  name      a.b  introduces b  root a

b.import: error: out of memory
c.import
   1 | import c.d
     |   [0]  name      c.d  introduces d  root c

2 files, 2 commands: 2 entries (2 names, 0 wildcards, 0 packages), 1 error, 0 warnings, TIME s
)");
    EXPECT_EQ(outcome.errorOutput, "");
    EXPECT_EQ(outcome.status, 3);
    Outcome const document =
        run("ulimit -v 160000; import_explorer --json a.import b.import c.import");
    EXPECT_EQ(document.status, 3);
    auto const report = nlohmann::json::parse(document.output);
    EXPECT_EQ(report["files"].size(), 2U);
    EXPECT_EQ(report["failures"][0]["message"], "out of memory");
}

#endif

TEST_F(Program, LeavesNoColourBehindWhenItIsInterrupted) {
    write("some.import", "import 1\n");
    Outcome const outcome =
        runOnTerminal("sleep 9 | TERM=xterm NO_COLOR= import_explorer some.import - & "
                      "sleep 1; kill -TERM $!; wait $!");
    EXPECT_THAT(outcome.output, HasSubstr("\x1b[1;31merror:"));
    EXPECT_THAT(outcome.output, testing::EndsWith("\x1b[0m"));
    EXPECT_EQ(outcome.status, 128 + SIGTERM);
}

TEST_F(Program, DoesNotShowALineForEachOfItsManyProblems) {
    write("some.import", "} } } } } } } } } } } } }\n");
    std::string const output = run("import_explorer --quiet some.import").output;
    EXPECT_THAT(output, HasSubstr("     |                   ^\n"
                                  "     | the line of further problems is not shown\n"
                                  "some.import:1:21: error: '}' closes no scope\n"
                                  "some.import:1:23: error: '}' closes no scope\n"));
}

TEST_F(Program, DoesNotShowAllOfManyWildcards) {
    write("some.import", "import a.* b.* c.* d.* e.* f.* g.*\nuse x\n");
    EXPECT_THAT(run("import_explorer some.import").output,
                HasSubstr("     |   maybe  wildcard  e.*  line 1, file\n"
                          "     |   maybe  further 2 wildcards, not shown\n"));
}

TEST_F(Program, ReadsLinesThatEndWithCarriageReturns) {
    write("some.import", "import a.b\rimport 1\ruse b\r");
    Outcome const outcome = run("import_explorer --quiet some.import");
    EXPECT_THAT(outcome.output, StartsWith("some.import:2:8: error: "));
    EXPECT_THAT(outcome.output, HasSubstr("   2 | import 1\n"));
    EXPECT_THAT(outcome.output, HasSubstr("1 file, 2 commands: 1 entry"));
}

TEST_F(Program, ReadsTheExamplesAsTheyAreMeant) {
    std::string const examples = "'" EXAMPLES_FOLDER "'";
    EXPECT_EQ(run("import_explorer --quiet " + examples + "/tour.import").status, 1);
    EXPECT_EQ(run("import_explorer --quiet --packages off " + examples + "/legacy.import").status,
              1);
}

} // namespace
