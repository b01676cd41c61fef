#!/usr/bin/env python3
"""Stops a program in gdb and compares what gdb prints, word by word, with what a developer should read.

    printers_test.py [--document FILE] [--prefix FOLDER --libdir FOLDER] PROGRAM

PROGRAM is main.cpp. The printers are those beside its library or, with --prefix, those of the library that was
installed there, in the library folder --libdir. What --document shows of PROGRAM in gdb is compared as well. Exit
status 77 where gdb is missing or may not trace programs.
"""

import argparse
import os
import re
import shutil
import subprocess
import sys
from pathlib import Path

SKIPPED = 77
MARK = "@@@@"
KEYWORD = 'KELDAR:lang:KeywordInImportArgument("a.while", "while")'
SOME_KEY = r'some:catalogue:SomeKey(7, "na\"rrow\n", "wide � 円")'
NO_MEMORY = "<not readable: Cannot access memory at address ADDRESS>"
NO_VECTOR = "<not readable: a vector that was not constructed>"
NO_VARIANT = "<not readable: a variant that was not constructed>"


def memory(array, type_name):
    return f"*(lf::import::{type_name} const*)&{array}"


# An expression, its output in gdb with ADDRESS for each address except null, and the reason. Commands affect all later
# cases.
CASES = [
    ("name", "a.b.c", "a name is printed as written"),
    ("unicodeName", "Größe.図形.円", "UTF-16 is decoded"),
    ("wildcard", "a.b.*", "a wildcard is printed as written"),
    ("package", "matrix", "a package without an alias has one name"),
    ("aliased", "matrix@^2.1 as m", "an alias is shown"),
    ("ranged", "p@>=1.2.3-rc.1+b7,<2,~1,=1,>0,<=9,4,*", "every relation, a pre-release and a build"),
    ("invalid", f"diagnostic {KEYWORD}", "a diagnostic has its key and arguments"),
    ("specifier", "matrix@^2.1", "the target of a reference"),
    ("*&name", "a.b.c", "what a pointer leads to"),
    ("message", SOME_KEY, "a message has arguments of three kinds"),
    ("holder", SOME_KEY, "a holder shows its message"),
    ("emptyHolder", "<empty>", "a holder of nothing"),
    ("nameInVariant", "a.b.c", "a variant is printed like its entry"),
    ("wildcardInVariant", "a.b.*", "a variant is printed like its entry"),
    ("packageInVariant", "matrix@^2.1 as m", "a variant is printed like its entry"),
    ("parsedPackage", "argument 2: matrix@^2.1 as m", "a parsed entry has the argument's index"),
    ("parsedInvalid", f"argument 1: diagnostic {KEYWORD}", "a parsed entry has the argument's index"),
    ("*outer._M_ptr",
     "import list of 0 names, 1 wildcard, 0 packages = {parent = 0x0, wildcard 0 = a.b.*}",
     "an outermost list has no parent"),
    ("*inner._M_ptr",
     "import list of 2 names, 0 wildcards, 1 package = {parent = ADDRESS, name 0 = a.b.c, "
     "name 1 = Größe.図形.円, package 0 = matrix@^2.1 as m}",
     "a list shows its parent and its own entries"),
    ("*((lf::import::ImportList const*)inner._M_ptr)->parent._M_ptr",
     "import list of 0 names, 1 wildcard, 0 packages = {parent = 0x0, wildcard 0 = a.b.*}",
     "the pointer leads to the parent"),
    ("*empty._M_ptr", "import list of 0 names, 0 wildcards, 0 packages = {parent = ADDRESS}", "a list without entries"),
    ("movedFromName", "<moved from>", "a moved-from name has no text"),
    ("movedFromPackage", "<moved from>", "a moved-from package has no name"),
    ("movedFromInvalid", "diagnostic <empty>", "a moved-from diagnostic has no message"),
    (memory("zeros", "WildcardImportEntry"), "<moved from>", "zeros look like an empty text"),
    (memory("zeros", "InvalidImportEntry"), "diagnostic <empty>", "nor from an empty holder"),
    (memory("zeros", "IImportList"), "{_vptr.IImportList = 0x0}", "gdb prints lists of unknown types"),
    (memory("ascending", "FullyQualifiedImportEntry"), NO_MEMORY, "a text with an invalid pointer"),
    (memory("ascending", "WildcardImportEntry"), NO_MEMORY, "a text with an invalid pointer"),
    (memory("ascending", "PackageImportEntry"), NO_MEMORY, "a text with an invalid pointer"),
    (memory("ascending", "InvalidImportEntry"), NO_MEMORY, "a message with an invalid pointer"),
    (memory("ascending", "ImportEntry"), NO_VARIANT, "an alternative that does not exist"),
    (memory("ascending", "ParsedImportEntry"), NO_VARIANT, "an alternative that does not exist"),
    (memory("ascending", "ImportList"), NO_VECTOR, "a vector with invalid pointers"),
    (memory("highest", "ImportEntry"), "<valueless>", "a variant whose assignment threw an exception"),
    (memory("highest", "ParsedImportEntry"), "<valueless>", "a variant whose assignment threw an exception"),
    ("set print elements 3", None, "texts are truncated as by gdb"),
    ("name", "a.b...", "texts are truncated as by gdb"),
    ("package", "mat...", "texts are truncated as by gdb"),
    ("set print elements 1", None, "arguments are truncated as well"),
    ("message", "s...:S...(7, ...)", "arguments are truncated as well"),
    ("set print elements 200", None, "back to all"),
    ("set target-charset ASCII", None, "a terminal that cannot print these characters"),
    ("unicodeName", r"Gr\xf6\xdfe.\u56f3\u5f62.\u5186", "a terminal that cannot print these characters"),
]
INSTALLED_CASES = CASES[:1]


def documented(path):
    """The cases that a document shows as a session of gdb."""
    session = re.findall(r"(?m)^\(gdb\) print (.+)\n\$\d+ = (.+)$", Path(path).read_text(encoding="utf-8"))
    return [(expression, comparable(text), f"so says {path}") for expression, text in session]


def comparable(text):
    """Replaces addresses except null, and uses g++'s name for the pointer to a virtual table."""
    return re.sub(r"0x[1-9a-f][0-9a-f]*", "ADDRESS", text).replace("_vptr$", "_vptr.")


def skip(reason):
    print(f"Skipped: {reason}")
    sys.exit(SKIPPED)


def where_the_printers_are(arguments):
    """The gdb options to use before loading the program, and the commands to run afterwards."""
    program_folder = os.path.dirname(os.path.abspath(arguments.program))
    if arguments.prefix is None:
        return [f"add-auto-load-safe-path {os.path.dirname(os.path.dirname(program_folder))}"], []
    libraries = os.path.join(arguments.prefix, arguments.libdir)
    return ([f"set auto-load scripts-directory {arguments.prefix}/share/gdb/auto-load",
             f"add-auto-load-safe-path {arguments.prefix}"],
            [f"set environment LD_LIBRARY_PATH {libraries}"])


def script_of(cases):
    for index, (expression, expected, _) in enumerate(cases):
        if expected is None:
            yield expression
        else:
            yield f"echo \\n{MARK}{index}\\n"
            yield f"output {expression}"
    yield f"echo \\n{MARK}\\n"
    yield "info sharedlibrary libgleigem.so"


def run_gdb(arguments, cases):
    before, after = where_the_printers_are(arguments)
    commands = [*after, "break stopHere", "run", "up", *script_of(cases)]
    early = ["set disable-randomization off", "set debuginfod enabled off", "set width 0", *before]
    options = [word for command in early for word in ("-iex", command)]
    options += [word for command in commands for word in ("-ex", command)]
    return subprocess.run(["gdb", "-nx", "-batch", *options, arguments.program], text=True, encoding="utf-8",
                          stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          env={**os.environ, "LC_ALL": "C.UTF-8"}).stdout


def printed(output):
    """The output of gdb by index of the case."""
    parts = re.split(rf"(?m)^{MARK}(\d*)\n", output)
    return {int(index): comparable(text.strip()) for index, text in zip(parts[1::2], parts[2::2]) if index}


def report_differences(cases, texts):
    differences = 0
    for index, (expression, expected, why) in enumerate(cases):
        if expected is not None and texts.get(index) != expected:
            print(f"{expression} ({why})\n    printed:  {texts.get(index)}\n    expected: {expected}")
            differences += 1
    return differences


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--document")
    parser.add_argument("--prefix")
    parser.add_argument("--libdir")
    parser.add_argument("program")
    arguments = parser.parse_args()

    if shutil.which("gdb") is None:
        skip("there is no gdb")
    cases = CASES if arguments.prefix is None else INSTALLED_CASES
    if arguments.document is not None:
        cases = documented(arguments.document) + cases
    output = run_gdb(arguments, cases)
    if re.search(r"(?i)ptrace: operation not permitted|could not trace the inferior", output):
        skip("gdb may not trace programs here")
    differences = report_differences(cases, printed(output))
    if arguments.prefix is not None and os.path.join(arguments.prefix, arguments.libdir, "libgleigem.so") not in output:
        print("The library in use is not the installed one.")
        differences += 1
    if differences:
        print(f"\nFull output of gdb:\n{output}")
    sys.exit(differences != 0)


if __name__ == "__main__":
    main()
