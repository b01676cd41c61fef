#!/usr/bin/env python3
"""Checks that the documents say what is: every marked code block is compared with what it claims to be.

A block is marked by an HTML comment on the line before it:

    <!-- file: PATH -->   the block is that file, whole
    <!-- excerpt: PATH -->
                          the block is lines that follow each other in that file
    <!-- run -->          each line of the block that starts with "$ " is a command, run in the root folder
                          of the project; what follows it is its output, standard error included

In an output or excerpt a line "..." stands for any lines, and times ("0.001 s") are not compared.

    check_documents.py [--bin FOLDER]... [--update] DOCUMENT...

--bin puts a folder of built programs in front of PATH; --update writes the blocks anew, where they have no
"...". Exit status 1 when a block differs.
"""

import argparse
import difflib
import os
import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
BLOCK = re.compile(r"(?ms)^<!-- ((?P<part>file|excerpt): (?P<file>\S+)|run) -->\n```\w*\n(?P<body>.*?)^```$")


def run(command, environment):
    finished = subprocess.run(["bash", "-c", command], cwd=ROOT, env=environment, text=True,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    return finished.stdout


def transcript(body, environment):
    """What a block of commands should look like: the commands of `body`, each with its real output."""
    commands = [line for line in body.splitlines() if line.startswith("$ ")]
    return "".join(f"{command}\n{run(command[2:], environment)}" for command in commands)


def without_times(text):
    return re.sub(r"\d+\.\d+ s\b", "0.001 s", text)


def matches(body, actual):
    lines = without_times(body).splitlines(keepends=True)
    pattern = "".join("(?:.*\n)*?" if line == "...\n" else re.escape(line) for line in lines)
    return re.fullmatch(pattern, without_times(actual)) is not None


def check(document, environment, update):
    """The differences found in a document; with `update`, writes what can be written instead."""
    text = document.read_text()
    differences = []

    def compare(block):
        body = block["body"]
        actual = (ROOT / block["file"]).read_text() if block["file"] else transcript(body, environment)
        if matches(f"...\n{body}...\n" if block["part"] == "excerpt" else body, actual):
            return block[0]
        if update and block["part"] != "excerpt" and "...\n" not in body.splitlines(keepends=True):
            return text[block.start():block.start("body")] + actual + text[block.end("body"):block.end()]
        line = text.count("\n", 0, block.start()) + 1
        differences.extend(difflib.unified_diff(body.splitlines(), actual.splitlines(), f"{document}:{line}",
                                                block["file"] or "what the commands print", lineterm=""))
        return block[0]

    updated = BLOCK.sub(compare, text)
    if update:
        document.write_text(updated)
    return differences


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("--bin", action="append", default=[])
    parser.add_argument("--update", action="store_true")
    parser.add_argument("documents", nargs="+", type=Path)
    options = parser.parse_args()

    environment = dict(os.environ, PATH=os.pathsep.join([*options.bin, os.environ["PATH"]]), NO_COLOR="1")
    differences = [line for document in options.documents for line in check(document, environment, options.update)]
    print("\n".join(differences), end="\n" if differences else "")
    sys.exit(1 if differences else 0)


if __name__ == "__main__":
    main()
