#!/usr/bin/python3
# SPDX-License-Identifier: BSL-1.0
"""Makes one change at a time in a file of the library and checks whether the unit tests notice.

    mutate.py [--list] [--time-limit SECONDS] FILE...        as in mutate.py import/list/adding.cpp

libclang finds the places to change. All work is done in a copy of the project below build/mutants, built
without optimisation; the working tree is not touched. Mutants with which all tests pass are printed: each one
is either a missing test or a change without effect. Exits with 1 if there are any.
"""

import argparse
import collections
import dataclasses
import json
import os
import re
import resource
import shlex
import shutil
import subprocess
import sys
from pathlib import Path

from clang import cindex
from clang.cindex import CursorKind

PROJECT = Path(__file__).resolve().parent.parent
WORK = PROJECT / "build/mutants"
SOURCE, BUILD = WORK / "source", WORK / "build"
MEMORY_LIMIT = 4 << 30

# What must fail for a mutant: programs, and which of their tests. Tests that compare with the model at length, or use
# big sizes, are left out.
TESTS = {
    "tests/gleigem_tests": "-*Thousand*:*Million*",
    "tests/gleigem_internal_tests": "*",
    "tests/import/list/gleigem_list_property_tests": "ForeignParent*",
    "tests/import/parser/gleigem_platform_question_tests": "*",
    "tests/reliability/gleigem_allocation_failure_tests": "*",
}

OPERATORS = {
    "==": ["!="], "!=": ["=="],
    "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"],
    "&&": ["||"], "||": ["&&"],
    "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["/"], "<<": [">>"], "&": ["|"], "|": ["&"],
    "+=": ["-="], "-=": ["+="], "|=": ["&="],
}  # fmt: skip


@dataclasses.dataclass(frozen=True)
class Mutant:
    begin: int
    end: int
    text: str  # replaces the text of the range

    def apply(self, source):
        return source[: self.begin] + self.text + source[self.end :]

    def describe(self, path, source):
        line = source.count("\n", 0, self.begin)
        before, after = (" ".join(text.split()) or "nothing" for text in (source[self.begin : self.end], self.text))
        return f"{path}:{line + 1}: {before}  ->  {after}\n        in: {source.splitlines()[line].strip()}"


class MutantMaker:
    """Walks the syntax tree of one file. Sources must be ASCII, so that bytes are characters."""

    def __init__(self, path, arguments):
        self.path = str(path)
        self.source = path.read_text(encoding="ascii")
        self.mutants = {}
        unit = cindex.Index.create().parse(self.path, args=arguments)
        errors = [str(each) for each in unit.diagnostics if each.severity >= cindex.Diagnostic.Error]
        if errors:
            sys.exit("\n".join(errors))
        for cursor in unit.cursor.get_children():
            if cursor.location.file and cursor.location.file.name == self.path:
                self.walk(cursor, returns_nothing=False)
        self.change_keys()

    def range(self, cursor):
        return cursor.extent.start.offset, cursor.extent.end.offset

    def text(self, cursor):
        begin, end = self.range(cursor)
        return self.source[begin:end]

    def add(self, begin, end, text):
        if self.source[begin:end] != text:
            self.mutants[Mutant(begin, end, text)] = None

    def replace(self, cursor, text):
        self.add(*self.range(cursor), text)

    def walk(self, cursor, returns_nothing):
        if cursor.kind == CursorKind.STATIC_ASSERT:
            return
        if cursor.kind.is_declaration() and cursor.result_type.kind != cindex.TypeKind.INVALID:
            returns_nothing = cursor.result_type.kind == cindex.TypeKind.VOID
        children = list(cursor.get_children())
        self.change(cursor, children, returns_nothing)
        for child in children[1 if cursor.kind == CursorKind.CASE_STMT else 0 :]:
            self.walk(child, returns_nothing)

    def change(self, cursor, children, returns_nothing):
        kind = cursor.kind
        self.change_operator(cursor, children)
        if kind in (CursorKind.IF_STMT, CursorKind.WHILE_STMT):
            self.negate(children)
        elif kind == CursorKind.CONDITIONAL_OPERATOR:
            self.swap(*children[1:])
        elif kind == CursorKind.CXX_BOOL_LITERAL_EXPR:
            self.replace(cursor, "false" if self.text(cursor) == "true" else "true")
        elif kind == CursorKind.INTEGER_LITERAL and self.text(cursor).isdigit():
            value = int(self.text(cursor))
            self.replace(cursor, str(value + 1))
            self.replace(cursor, str(abs(value - 1)))
        elif kind in (CursorKind.STRING_LITERAL, CursorKind.CHARACTER_LITERAL) and not self.is_key(cursor):
            self.replace(cursor, re.sub(r"""(["']).*\1""", r"\1#\1", self.text(cursor)))
        elif kind == CursorKind.DECL_REF_EXPR:
            self.change_enumerator(cursor)
        elif kind == CursorKind.RETURN_STMT:
            self.change_return(cursor, children, returns_nothing)
        elif kind == CursorKind.COMPOUND_STMT:
            self.remove_statements(children)
        elif kind == CursorKind.CALL_EXPR and not re.match(r"operator\W", cursor.spelling):
            arguments = list(cursor.get_arguments())
            for first, second in zip(arguments, arguments[1:]):
                if first and second and self.type_of(first) == self.type_of(second):
                    self.swap(first, second)

    def is_key(self, cursor):
        """Whether a literal is a template argument, which only change_keys can replace by another that compiles."""
        return self.source[self.range(cursor)[0] - 1] == "<"

    @staticmethod
    def type_of(cursor):
        return re.sub(r"\bconst\b|[&\s]", "", cursor.type.get_canonical().spelling)

    def change_operator(self, cursor, children):
        begin, _ = self.range(cursor)
        if cursor.kind == CursorKind.UNARY_OPERATOR and self.source[begin] == "!":
            self.add(begin, begin + 1, "")
        elif cursor.kind == CursorKind.UNARY_OPERATOR and self.source[begin : begin + 2] in ("++", "--"):
            self.add(begin, begin + 2, "--" if self.source[begin] == "+" else "++")
        # An operator is between its operands, whether it is built-in, overloaded or rewritten.
        for first, second in zip(children, children[-1:]):
            end, begin = self.range(first)[1], self.range(second)[0]
            between = self.source[end:begin]
            for other in OPERATORS.get(between.strip(), []):
                self.add(end, begin, between.replace(between.strip(), other))

    def negate(self, children):
        """The condition is the last child before the statement."""
        leading = [child for child in children if child.kind.is_expression() or child.kind.is_declaration()
                   or child.kind == CursorKind.DECL_STMT]  # fmt: skip
        declared = [child for child in leading if not child.kind.is_expression()]
        if declared and self.source[self.range(declared[-1])[1]] == ")":
            self.add(self.range(declared[-1])[1], self.range(declared[-1])[1], "; false")
        elif leading and not self.text(leading[-1]).startswith("!"):
            self.replace(leading[-1], f"!({self.text(leading[-1])})")

    def swap(self, first, second):
        (begin, first_end), (second_begin, end) = self.range(first), self.range(second)
        self.add(begin, end, self.text(second) + self.source[first_end:second_begin] + self.text(first))

    def change_enumerator(self, cursor):
        """Replaces an enumerator by the next one of its enumeration."""
        definition = cursor.referenced
        if definition is None or definition.kind != CursorKind.ENUM_CONSTANT_DECL:
            return
        names = [each.spelling for each in definition.semantic_parent.get_children()]
        following = names[(names.index(definition.spelling) + 1) % len(names)]
        end = self.range(cursor)[1]
        self.add(end - len(definition.spelling), end, following)

    def change_return(self, cursor, children, returns_nothing):
        if not children or returns_nothing:
            self.replace(cursor, "return" if children else "")
        elif self.text(children[0]) not in ("{}", "nullptr", "std::nullopt"):
            self.replace(children[0], "{}")

    def remove_statements(self, children):
        for child in children:
            if child.kind.is_expression():
                self.replace(child, "")

    def change_keys(self):
        """Replaces the key of a message by the next one that takes the same arguments."""
        messages = (PROJECT / "import/messages.hpp").read_text(encoding="ascii")
        groups = collections.defaultdict(list)
        for parameters, key in re.findall(r'MessageDefinition<(.*)>\{"(\w+)"', messages):
            groups[parameters].append(key)
        following = {key: other for group in groups.values() for key, other in zip(group, group[1:] + group[:1])}
        for found in re.finditer(r'makeMsg(?:ID|Holder)<"(\w+)">', self.source):
            self.add(*found.span(1), following[found[1]])


def run(command, **options):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False, **options)


def must(command):
    finished = run(command)
    if finished.returncode != 0:
        sys.exit(f"{shlex.join(map(str, command))}\n{finished.stdout}")


def build():
    return ["ninja", "-C", BUILD, *(Path(program).name for program in TESTS)]


def prepare():
    """Creates and configures the copy. Files keep their times, so that only changed ones are rebuilt."""
    shutil.rmtree(SOURCE, ignore_errors=True)
    shutil.copytree(PROJECT, SOURCE, ignore=shutil.ignore_patterns(".git", "build"))
    must(["cmake", "-S", SOURCE, "-B", BUILD, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=", "-DCMAKE_CXX_FLAGS=-O0 -w",
          "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON", "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON",
          "-DGLEIGEM_BUILD_EXAMPLES=OFF", "-DGLEIGEM_INSTALL=OFF"])  # fmt: skip


def compile_arguments(path):
    """The commands of the file or, for a header, of any source of the library."""
    entries = json.loads((BUILD / "compile_commands.json").read_text())
    commands = {Path(entry["file"]): entry["command"] for entry in entries if "gleigem.dir" in entry["command"]}
    command = shlex.split(commands.get(path, next(iter(commands.values()))))
    flags = [word for word in command[1:] if word.startswith(("-I", "-D", "-std", "-isystem"))]
    version = re.search(r"libclang-(\d+)", cindex.conf.get_filename())[1]
    resources = run([f"clang-{version}", "-print-resource-dir"]).stdout.strip()
    return ["-x", "c++", *flags, f"-I{SOURCE}", "-isystem", f"{resources}/include"]


def limit_memory():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def verdict(time_limit):
    if run(build()).returncode != 0:
        return "not compiled"
    for program, tests in TESTS.items():
        command = [BUILD / program, "--gtest_fail_fast", "--gtest_brief=1", f"--gtest_filter={tests}"]
        try:
            if run(command, timeout=time_limit, preexec_fn=limit_memory, errors="replace").returncode != 0:
                return "killed"
        except subprocess.TimeoutExpired:
            return "timed out"
    return "survived"


def try_mutants(file, maker, time_limit):
    """The number of mutants by verdict; prints those that survive."""
    path, counts = SOURCE / file, collections.Counter()
    try:
        for mutant in sorted(maker.mutants, key=lambda each: (each.begin, each.end)):
            path.write_text(mutant.apply(maker.source), encoding="ascii")
            result = verdict(time_limit)
            counts[result] += 1
            if result == "survived":
                print(f"survived: {mutant.describe(file, maker.source)}", flush=True)
    finally:
        path.write_text(maker.source, encoding="ascii")
    return counts


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("files", nargs="+", metavar="FILE", type=Path)
    parser.add_argument("--list", action="store_true", help="only print the mutants")
    parser.add_argument("--time-limit", type=float, default=300, help="seconds for each test program of a mutant")
    options = parser.parse_args()

    os.chdir(PROJECT)
    prepare()
    if not options.list and (result := verdict(options.time_limit)) != "survived":
        sys.exit(f"the tests without mutation: {result}")
    survivors = 0
    for file in options.files:
        maker = MutantMaker(SOURCE / file, compile_arguments(SOURCE / file))
        if options.list:
            print(*(mutant.describe(file, maker.source) for mutant in maker.mutants), sep="\n")
            continue
        counts = try_mutants(file, maker, options.time_limit)
        survivors += counts["survived"]
        print(f"{file}: {len(maker.mutants)} mutants,", ", ".join(f"{count} {word}" for word, count in counts.items()))
    return 1 if survivors else 0


if __name__ == "__main__":
    sys.exit(main())
