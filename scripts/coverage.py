#!/usr/bin/env python3
# SPDX-License-Identifier: BSL-1.0
"""coverage.py BUILD-FOLDER: prints which lines and branches of import/ the tests in that build have reached.

Branches that the compiler generates only for exceptions do not count. A line or branch in a template or in a
header is reached if any of its instances is.
"""

import collections
import json
import subprocess
import sys
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent

# Lines that no test can reach, by their text, and why.
UNREACHABLE = {
    ("import/parser/import_argument_parser.cpp", 'assert(command.tree != nullptr && "a command view has a tree");'):
        "a failing assertion, which ends the test process before it writes counts",
    ("import/parser/import_argument_parser.cpp", 'assert(cursor == 0 && entries.empty() && "a parser parses once");'):
        "the same",
    ("import/parser/command_grammar.cpp", "switch (peek()) {"):
        "the compiler's branch for a value that is not an enumerator",
    ("import/diagnostics/make_msg_id.hpp", "resource_core::BaseMsgID message{.arguments = {},"):
        "cleanup of a partially constructed object, which gcov does not attribute to an exception",
    ("import/parser/classification.cpp", "};"): "the same",
    ("import/parser/classification.cpp",
     "return FullyQualifiedImportArgument{.rootElement = std::u16string(name.rootElement),"): "the same, by g++ 14",
    ("import/parser/classification.cpp",
     "return WildcardImportArgument{.rootElement = std::u16string(name.rootElement),"): "the same, by g++ 14",
    ("import/parser/classification.cpp", ".rawArgument = std::u16string(name.rawArgument),"): "the same, by g++ 16",
    ("import/diagnostics/make_msg_id.hpp", ".catalogue = std::string(messageCatalogue),"): "the same, by g++ 16",
    ("import/diagnostics/make_msg_id.hpp", ".key = std::string(key.view())};"): "the same, by g++ 16",
    ("import/list/lookup.cpp",
     "if (auto const answer = ((**foreign).*Kind::ask)(name.text, CheckAncestorList::Yes)) {"):
        "the compiler's branch for a pointer to a non-virtual member function",
    ("import/list/enumeration.cpp",
     "return VisibleAndForeignEntries<Entry>(list, ((*foreign).*getter)(check));"): "the same",
    ("import/list/import_list.cpp", "return list != nullptr && &typeid(*list) == &typeid(ImportList)"):
        "the compiler's null check in typeid",
    ("import/list/name_hash.cpp", "static HashKey const key;"):
        "a second thread that waits while the first one creates the key",
    ("import/list/name_hash.cpp", "if (getentropy(&seed, sizeof seed) != 0) {"):
        "an operating system without random numbers",
    ("import/list/name_hash.cpp",
     'throw std::system_error(errno, std::generic_category(), "no key for the hashes of names");'): "the same",
    ("import/messages.hpp",
     "constexpr explicit MessageKey(MessageDefinition<Arguments...> const& definition) noexcept"):
        "only evaluated at compile time",
    ("import/messages.hpp", ": key(definition.key),"): "the same",
    ("import/messages.hpp", "severity(definition.severity),"): "the same",
    ("import/messages.hpp", "numberOfArguments(sizeof...(Arguments)) {}"): "the same",
    ("import/messages.hpp", "keysOf(std::tuple<Definitions...> const& definitions) noexcept {"): "the same",
    ("import/messages.hpp",
     "return std::apply([](auto const&... each) { return std::array{MessageKey(each)...}; },"): "the same",
    ("import/messages.hpp", "definitions);"): "the same",
}  # fmt: skip


def read_objects(build):
    """The output of gcov for each object file that has run."""
    for data in sorted(build.rglob("*.gcda")):
        command = ["gcov", "--json-format", "--stdout", "--branch-probabilities", str(data)]
        output = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=True, cwd=build)
        yield from (json.loads(line) for line in output.stdout.splitlines() if line)


class FileCoverage:
    def __init__(self):
        self.lines = collections.Counter()
        self.branches = collections.Counter()

    def add(self, line):
        number = line["line_number"]
        self.lines[number] += line["count"]
        real = [branch for branch in line["branches"] if not branch["throw"]]
        if len(real) > 1:  # else the other ways out are exceptions
            for position, branch in enumerate(real):
                self.branches[number, len(real), position] += branch["count"]


def collect(build):
    files = collections.defaultdict(FileCoverage)
    for report in read_objects(build):
        for file in report["files"]:
            path = Path(report["current_working_directory"], file["file"]).resolve()
            if path.is_relative_to(PROJECT / "import"):
                for line in file["lines"]:
                    files[str(path.relative_to(PROJECT))].add(line)
    return files


def percentage(counter):
    reached = sum(count > 0 for count in counter.values())
    share = 100 * reached / len(counter) if counter else 100
    return f"{reached:5} of{len(counter):5} {share:5.1f} %"


def outdated_reasons():
    """Reasons for lines that no longer exist."""
    return [f"{file}: {text}" for file, text in UNREACHABLE
            if text not in map(str.strip, (PROJECT / file).read_text().splitlines())]


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    if outdated_reasons():
        sys.exit("\n".join(["reasons for lines that no longer exist:", *outdated_reasons()]))
    files = collect(Path(sys.argv[1]).resolve())
    if not files:
        sys.exit("no test has been run in that build")
    lines, branches = collections.Counter(), collections.Counter()
    print(f"{'':42}{'lines':>21}{'branches':>21}")
    for name, coverage in sorted(files.items()):
        print(f"{name:42}{percentage(coverage.lines)}{percentage(coverage.branches)}")
        lines.update({(name, key): count for key, count in coverage.lines.items()})
        branches.update({(name, key): count for key, count in coverage.branches.items()})
    print(f"{'all':42}{percentage(lines)}{percentage(branches)}")

    missed = {(name, line): "line" for (name, line), count in lines.items() if count == 0}
    for (name, (line, _, _)), count in branches.items():
        if count == 0:
            missed.setdefault((name, line), "branch")
    unexplained = 0
    for (name, line), kind in sorted(missed.items()):
        text = (PROJECT / name).read_text().splitlines()[line - 1].strip()
        reason = UNREACHABLE.get((name, text))
        unexplained += reason is None
        print(f"{name}:{line}: {kind} not reached: {text}" + (f"\n    {reason}" if reason else ""))
    return 1 if unexplained else 0


if __name__ == "__main__":
    sys.exit(main())
