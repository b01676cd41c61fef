#!/usr/bin/env python3
# SPDX-License-Identifier: BSL-1.0
"""Makes small changes to the library, one at a time, and sees whether the unit tests notice.

Works on a copy of the project in a folder of its own; the working tree is never touched. The tests are
built once. For each mutant only the changed file is compiled, and linked with the tests. A mutant survives
when all tests pass; each survivor is printed with its place.

Needs what scripts/test.sh needs. Not part of it: a run over all files takes a while.
"""

import argparse
import concurrent.futures
import dataclasses
import json
import os
import queue
import re
import resource
import shlex
import shutil
import subprocess
import sys
import time
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent

# Most of the rules first.
FILES = """
    parser/classification.cpp parser/command_grammar.cpp parser/import_argument_parser.cpp
    list/adding.cpp list/lookup.cpp list/enumeration.cpp list/import_list.cpp
    list/name_key.hpp list/list_chain.hpp list/import_list.hpp
    entries.cpp rendering.cpp parser/in_place.hpp
""".split()

# What every mutant includes anyhow, compiled in advance. None of it is mutated.
PREAMBLE = """
    <algorithm> <array> <cstddef> <cstdint> <exception> <functional> <iterator> <locale> <memory> <optional>
    <string> <string_view> <tuple> <type_traits> <unordered_map> <unordered_set> <utility> <variant> <vector>
    <range/v3/iterator/default_sentinel.hpp> <range/v3/range/access.hpp> <range/v3/view/any_view.hpp>
    <range/v3/view/facade.hpp> <range/v3/view/ref.hpp> <range/v3/view/remove_if.hpp>
    <import/import.hpp> <import/diagnostics/make_msg_id.hpp>
""".split()

# Big sizes, which take longer than all other tests together.
SLOW_TESTS = "*Thousand*:*Million*"
MEMORY_LIMIT = 4 << 30


# ---- The mutants ----------------------------------------------------------------------------------------


@dataclasses.dataclass(frozen=True)
class Mutant:
    file: str  # below import/
    begin: int
    end: int
    text: str  # in place of what stands there
    source: str = dataclasses.field(repr=False)

    def apply(self):
        return self.source[: self.begin] + self.text + self.source[self.end :]

    def __str__(self):
        def one_line(text):
            return " ".join(text.split()) or "nothing"

        line = self.source.count("\n", 0, self.begin) + 1
        whole = self.source.splitlines()[line - 1].strip()
        before = one_line(self.source[self.begin : self.end])
        return f"import/{self.file}:{line}: {before}  ->  {one_line(self.text)}\n        in: {whole}"


@dataclasses.dataclass
class Token:
    kind: str
    text: str
    begin: int

    @property
    def end(self):
        return self.begin + len(self.text)


TOKEN = re.compile(
    r"""(?P<blank>\s+|//[^\n]*|\#[^\n]*)
      | (?P<literal>(?:u|u8|U|L)?(?:"(?:\\.|[^"\\])*"|'(?:\\.|[^'\\])*'))
      | (?P<number>\d[\w']*)
      | (?P<word>[A-Za-z_]\w*)
      | (?P<sign>::|->|\+\+|--|<=>|<<|>>|&&|\|\||[-+*/%&|^=!<>]=|\[\[|\]\]|.)""",
    re.VERBOSE,
)

OPERATORS = {
    "==": ["!="], "!=": ["=="],
    "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"],
    "&&": ["||"], "||": ["&&"],
    "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["/"], "<<": [">>"], "&": ["|"], "|": ["&"],
    "+=": ["-="], "-=": ["+="], "|=": ["&="],
}  # fmt: skip

# In each of these groups a name is replaced by the one behind it.
ENUMERATORS = [
    ["CheckAncestorList::Yes", "CheckAncestorList::No"],
    ["EntryOrigin::ThisList", "EntryOrigin::Ancestor"],
    ["Kind::Name", "Kind::Package", "Kind::AliasKeyword", "Kind::NothingLeft"],
    ["Behavior::FollowFeatureSwitch", "Behavior::WithoutPackageImports", "Behavior::WithPackageImports"],
    ["Severity::Warning", "Severity::Error"],
    ["std::ios_base::left", "std::ios_base::right"],
]

NOT_A_CALL = "if for while do else switch return template requires noexcept sizeof decltype static_assert".split()


def tokenize(source):
    tokens = [Token(m.lastgroup, m.group(), m.start()) for m in TOKEN.finditer(source)]
    return [token for token in tokens if token.kind != "blank"]


def match_brackets(tokens):
    """Position of each bracket to that of its counterpart; angle brackets are no brackets."""
    partners, stack = {}, []
    for position, token in enumerate(tokens):
        if token.text in ("(", "{", "[", "[["):
            stack.append(position)
        elif token.text in (")", "}", "]", "]]"):
            opening = stack.pop()
            partners[opening], partners[position] = position, opening
    return partners


class MutantMaker:
    """Finds what can be changed in one file, by its tokens; the layout tells operators from the rest."""

    def __init__(self, file, source, definitions):
        self.file, self.source = file, source
        self.tokens = tokenize(source)
        self.partners = match_brackets(self.tokens)
        self.groups = ENUMERATORS + definitions
        self.mutants = []

    def make(self):
        position = 0
        while position < len(self.tokens):
            token = self.tokens[position]
            if token.text == "static_assert" or token.text == "[[":
                opening = position if token.text == "[[" else position + 1
                position = self.partners[opening] + 1
                continue
            self.mutate_operator(position)
            self.mutate_constant(position)
            self.mutate_condition(position)
            self.swap_branches(position)
            self.swap_arguments(position)
            self.mutate_statement(position)
            position += 1
        self.mutate_enumerators()
        unique = dict.fromkeys(self.mutants)
        return sorted(unique, key=lambda mutant: (mutant.begin, mutant.end))

    def add(self, begin, end, text):
        self.mutants.append(Mutant(self.file, begin, end, text, self.source))

    def is_spaced(self, token):
        return self.source[token.begin - 1].isspace() and self.source[token.end].isspace()

    def mutate_operator(self, position):
        token = self.tokens[position]
        if token.text == "!":
            self.add(token.begin, token.end, "")
        elif token.text in ("++", "--"):
            self.add(token.begin, token.end, "--" if token.text == "++" else "++")
        elif token.kind == "sign" and self.is_spaced(token) and not self.is_in_template_head(position):
            for other in OPERATORS.get(token.text, []):
                self.add(token.begin, token.end, other)

    def is_in_template_head(self, position):
        line_begin = self.source.rfind("\n", 0, self.tokens[position].begin) + 1
        return self.source[line_begin:].lstrip().startswith(("template ", "requires "))

    def mutate_constant(self, position):
        token = self.tokens[position]
        if token.text in ("true", "false"):
            self.add(token.begin, token.end, "false" if token.text == "true" else "true")
        elif token.kind == "number" and re.fullmatch(r"\d+", token.text):
            self.add(token.begin, token.end, str(int(token.text) + 1))
            if token.text != "0":
                self.add(token.begin, token.end, str(int(token.text) - 1))
        elif token.kind == "literal":
            quote = token.text[-1]
            self.add(token.begin, token.end, token.text[: token.text.index(quote)] + f"{quote}#{quote}")

    def mutate_enumerators(self):
        for group in self.groups:
            for name, following in zip(group, group[1:] + group[:1]):
                for found in re.finditer(rf"\b{name}\b(?!:)", self.source):
                    if not self.source[: found.start()].rpartition("\n")[2].strip().startswith(("case ", "//")):
                        self.add(*found.span(), following)

    def mutate_condition(self, position):
        token = self.tokens[position]
        if token.text not in ("if", "while") or self.tokens[position + 1].text != "(":
            return
        opening, closing = self.tokens[position + 1], self.tokens[self.partners[position + 1]]
        condition = self.source[opening.end : closing.begin]
        if re.search(r"[^=!<>]=[^=]", condition):  # which declares what it tests
            self.add(closing.begin, closing.begin, "; false")
        else:
            self.add(opening.end, closing.begin, f"!({condition})")

    def swap_branches(self, position):
        if self.tokens[position].text != "?":
            return
        colon = self.find_ahead(position + 1, (":",))
        end = self.find_ahead(colon + 1, (",", ";"))
        first = self.source[self.tokens[position].end : self.tokens[colon].begin]
        second = self.source[self.tokens[colon].end : self.tokens[end].begin]
        self.add(self.tokens[position].end, self.tokens[end].begin, f"{second} :{first}")

    def find_ahead(self, position, texts):
        """The next of these signs at the same level, or the bracket that closes it."""
        while self.tokens[position].text not in (*texts, ")", "}", "]"):
            if self.tokens[position].text in ("(", "{", "[", "[["):
                position = self.partners[position]
            if position + 1 == len(self.tokens):
                break
            position += 1
        return position

    def swap_arguments(self, position):
        if self.tokens[position].text != "(" or position == 0:
            return
        callee = self.tokens[position - 1]
        if not (callee.kind == "word" or callee.text == ">") or callee.text in NOT_A_CALL:
            return
        bounds, at = [self.tokens[position].end], position
        while self.tokens[at].text != ")" or at == position:
            at = self.find_ahead(at + 1, (",", ";"))
            bounds.append(self.tokens[at].begin)
            if self.tokens[at].text == ";":
                return
        ranges = [(begin + (1 if index else 0), end) for index, (begin, end) in enumerate(zip(bounds, bounds[1:]))]
        texts = [self.source[begin:end].strip() for begin, end in ranges]
        if any(re.fullmatch(r"(?:[\w:]+(?:<.*>)?)(?: const)?(?:[&*]+| )[&* .\w]*", text, re.S)
               and not re.fullmatch(r"[\w:]+", text) for text in texts):  # fmt: skip
            return  # parameters of a declaration
        for (first, second), (a, b) in zip(zip(texts, texts[1:]), zip(ranges, ranges[1:])):
            if first != second:
                self.add(a[0], b[1], f"{second}, {first}")

    def mutate_statement(self, position):
        if position and self.tokens[position - 1].text not in ("{", "}", ";", ":"):
            return
        end = self.find_ahead(position, (";",))
        if self.tokens[end].text != ";" or end == position:
            return
        first, following = self.tokens[position], self.tokens[position + 1]
        begin, semicolon = first.begin, self.tokens[end].begin
        text = self.source[begin:semicolon]
        if first.text == "return":
            if following.text == ";":
                self.add(begin, semicolon, "")
            elif self.is_in_void_function(begin):
                self.add(begin, semicolon, "")
            elif text not in ("return {}", "return nullptr", "return std::nullopt"):
                self.add(begin, semicolon, "return {}")
        elif self.is_expression(position) and not re.search(r"= (default|delete)$|\)[^()]*\{", text):
            self.add(begin, semicolon, "")

    def is_in_void_function(self, begin):
        headers = re.findall(r"^[A-Za-z].*", self.source[:begin], re.M)
        return headers[-1].startswith("void ")

    def is_expression(self, position):
        """Whether a statement is none that declares something."""
        if self.tokens[position].text in ("++", "--"):
            return True
        if self.tokens[position].kind != "word" or self.tokens[position].text in NOT_A_CALL:
            return False
        position += 1
        while self.tokens[position].text == "::":
            position += 2
        token = self.tokens[position]
        return token.text in ("(", ".", "->", "=", "+=", "|=", "<<") or (
            token.text == "<" and not self.is_spaced(token) and self.source[token.begin - 1].isalnum()
            and ">(" in self.source[token.begin : token.begin + 120]
        )  # fmt: skip


def message_definitions(root):
    """The makers of messages, grouped by their parameters, so that each can stand for another."""
    text = (root / "import/messages.hpp").read_text()
    groups = {}
    for parameters, name in re.findall(r"constexpr MessageDefinition<([^>]*)>\s+(\w+)", text):
        groups.setdefault(" ".join(parameters.split()), []).append(f"messages::{name}")
    return [group for group in groups.values() if len(group) > 1]


def make_mutants(root, files):
    definitions = message_definitions(root)
    return [
        mutant
        for file in files
        for mutant in MutantMaker(file, (root / "import" / file).read_text(), definitions).make()
    ]


# ---- Building and testing -------------------------------------------------------------------------------


def run(command, **options):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **options)


def must(command, **options):
    result = run(command, **options)
    if result.returncode != 0:
        sys.exit(f"{shlex.join(map(str, command))}\n{result.stdout}")


def limit_memory():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


class Workshop:
    """The copy of the project, built, and what is made of it for each mutant."""

    QUESTION_TESTS = "gleigem_platform_question_tests"
    ALLOCATION_TESTS = "gleigem_allocation_failure_tests"

    def __init__(self, folder, time_limit):
        self.folder, self.time_limit = folder, time_limit
        self.source, self.build = folder / "source", folder / "build"

    def prepare(self, jobs):
        shutil.rmtree(self.source, ignore_errors=True)
        shutil.copytree(PROJECT, self.source, ignore=shutil.ignore_patterns(".git", "build"))
        must(["cmake", "-S", self.source, "-B", self.build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=",
              "-DCMAKE_CXX_FLAGS=-O0 -w", "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON",
              "-DGLEIGEM_BUILD_EXAMPLES=OFF", "-DGLEIGEM_BUILD_TOOLS=OFF", "-DGLEIGEM_INSTALL=OFF"])  # fmt: skip
        self.read_commands()
        must(["ninja", "-C", self.build, f"-j{jobs}", "gleigem", self.QUESTION_TESTS,
              self.ALLOCATION_TESTS, *self.unit_test_objects])  # fmt: skip
        self.compile_preamble()

    def read_commands(self):
        entries = json.loads((self.build / "compile_commands.json").read_text())
        self.objects, self.commands = {}, {}
        for entry in entries:
            output = re.search(r" -o (\S+)", entry["command"]).group(1)
            target = re.search(r"(\w+)\.dir/", output).group(1)
            relative = str(Path(entry["file"]).relative_to(self.source))
            self.objects.setdefault(target, {})[relative] = output
            if target == "gleigem":
                self.commands[relative] = entry["command"]
        foreign = self.objects["gleigem_list_property_tests"]
        self.unit_test_objects = [
            *self.objects["gleigem_tests"].values(),
            *self.objects["gleigem_internal_tests"].values(),
            foreign["tests/import/list/foreign_parent_test.cpp"],
            foreign["tests/support/foreign_import_list.cpp"],
        ]

    def compile_preamble(self):
        self.preamble = self.folder / "preamble.hpp"
        self.preamble.write_text("".join(f"#include {header}\n" for header in PREAMBLE))
        words = shlex.split(next(iter(self.commands.values())))
        output = words.index("-o")
        must([*words[:output], "-x", "c++-header", str(self.preamble), "-o", f"{self.preamble}.gch"])

    def dependents(self, file):
        """The sources of the library that must be compiled again when \\p file changes."""
        if file.endswith(".cpp"):
            return [f"import/{file}"]
        including, pending = set(), [f"import/{file}"]
        while pending:
            header = pending.pop()
            for path in sorted((self.source / "import").rglob("*.?pp")):
                relative = str(path.relative_to(self.source))
                if f"#include <{header}>" in path.read_text() and relative not in including:
                    including.add(relative)
                    pending.append(relative)
        return sorted(relative for relative in including if relative.endswith(".cpp"))

    def test(self, mutant, room):
        """What becomes of a mutant in the working folder \\p room."""
        shutil.rmtree(room, ignore_errors=True)
        copy = room / "import" / mutant.file
        copy.parent.mkdir(parents=True)
        copy.write_text(mutant.apply())
        mutated = {}
        for source in self.dependents(mutant.file):
            mutated[source] = room / (source.replace("/", "_") + ".o")
            if not self.compile(source, room, mutated[source]):
                return "uncompiled"
        library = [str(mutated.get(source, output)) for source, output in self.objects["gleigem"].items()]
        programs = [self.link_unit_tests]
        if mutant.file.startswith(("parser/", "entries.")):
            programs.append(self.link_question_tests)
        programs.append(self.link_allocation_tests)
        for link in programs:
            program = room / "tests"
            if link(library, program).returncode != 0:
                return "uncompiled"
            verdict = self.run_tests(program)
            if verdict != "survived":
                return verdict
        return "survived"

    def compile(self, source, room, output):
        words = shlex.split(self.commands[source])
        mutated = room / source
        words[words.index("-o") + 1] = str(output)
        words[-1] = str(mutated if mutated.exists() else self.source / source)
        words[1:1] = [f"-I{room}", "-include", str(self.preamble)]
        return run(words, cwd=self.build).returncode == 0

    def link(self, objects, libraries, program):
        return run(["g++", "-fuse-ld=gold", *objects, "-o", str(program), *libraries, "-pthread"], cwd=self.build)

    def link_with_platform(self, objects, program):
        platform = ["-Lplatform", "-lgleigem_platform", f"-Wl,-rpath,{self.build}/platform"]
        model = "tests/model/libgleigem_model.a"
        return self.link([*objects, model], [*platform, "-lgmock", "-lgtest", "-lgtest_main"], program)

    def link_unit_tests(self, library, program):
        return self.link_with_platform([*self.unit_test_objects, *library], program)

    def link_allocation_tests(self, library, program):
        return self.link_with_platform([*self.objects[self.ALLOCATION_TESTS].values(), *library], program)

    def link_question_tests(self, library, program):
        objects = [*self.objects[self.QUESTION_TESTS].values(), *library]
        archive = "tests/recording_platform/librecording_platform.a"
        return self.link(objects, [archive, "-lgmock", "-lgtest", "-lgtest_main", "-licuuc"], program)

    def run_tests(self, program):
        command = [str(program), "--gtest_fail_fast", "--gtest_brief=1", f"--gtest_filter=-{SLOW_TESTS}"]
        try:
            result = run(command, timeout=self.time_limit, preexec_fn=limit_memory, errors="replace")
        except subprocess.TimeoutExpired:
            return "timed out"
        return "survived" if result.returncode == 0 else "killed"

    def check_that_tests_pass(self):
        file = "parser/command_grammar.cpp"
        unchanged = Mutant(file, 0, 0, "", (self.source / "import" / file).read_text())
        begin = time.monotonic()
        if self.test(unchanged, self.folder / "room") != "survived":
            sys.exit("the tests do not pass without any mutation")
        return time.monotonic() - begin


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("files", nargs="*", help="below import/, as in list/adding.cpp; all when missing")
    parser.add_argument("--build-dir", type=Path, default=PROJECT / "build/mutants", help="the copy's folder")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), help="mutants at a time")
    parser.add_argument("--time-limit", type=float, default=30, help="seconds for the tests of a mutant")
    parser.add_argument("--list", action="store_true", help="print the mutants and do nothing")
    options = parser.parse_args()

    files = options.files or FILES
    if options.list:
        mutants = make_mutants(PROJECT, files)
        print(*mutants, sep="\n")
        print(f"{len(mutants)} mutants")
        return 0

    workshop = Workshop(options.build_dir.resolve(), options.time_limit)
    workshop.prepare(options.jobs)
    mutants = make_mutants(workshop.source, files)
    print(f"{len(mutants)} mutants of {len(files)} files; "
          f"one takes {workshop.check_that_tests_pass():.1f} s when it survives", flush=True)  # fmt: skip

    rooms = queue.SimpleQueue()
    for number in range(options.jobs):
        rooms.put(workshop.folder / f"room-{number}")

    def judge(mutant):
        room = rooms.get()
        try:
            return workshop.test(mutant, room)
        finally:
            rooms.put(room)

    count = {file: dict.fromkeys(("killed", "timed out", "survived", "uncompiled"), 0) for file in files}
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as executor:
        for mutant, verdict in zip(mutants, executor.map(judge, mutants)):
            count[mutant.file][verdict] += 1
            if verdict == "survived":
                print(f"survived: {mutant}", flush=True)

    row = "{:36}{:>10}{:>11}{:>10}{:>15}"
    print(row.format("", "killed", "timed out", "survived", "not compiled"))
    for file, counts in count.items():
        print(row.format(file, *counts.values()))
    totals = [sum(column) for column in zip(*(counts.values() for counts in count.values()))]
    print(row.format("all", *totals))
    return 1 if totals[2] else 0


if __name__ == "__main__":
    sys.exit(main())
