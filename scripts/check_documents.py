#!/usr/bin/env python3
"""Checks that the documents say what is.

Every marked block is compared with what it claims to be. The mark is an HTML comment on the line before it:

    <!-- file: PATH -->         the block is that file, whole
    <!-- excerpt: PATH -->      the block is lines that follow each other in that file
    <!-- run -->                each line of the block that starts with "$ " is a command, run in the root
                                folder of the project; what follows it is its output, standard error included
    <!-- run by: PATH -->       the commands of the block stand in that file, which runs them
    <!-- not run: REASON -->    nobody runs these commands, and why
    <!-- fields: PATH#NAME -->  the table lists the fields of an object, the definition NAME of that JSON Schema

In an output or excerpt a line "..." stands for any lines, and times ("0.001 s") are not compared. Every
```console block needs one of these marks. Every relative link and image must lead to a file, and to a heading
where it names one.

    check_documents.py [--bin FOLDER]... [--update] [--allow-unmarked] DOCUMENT...

--bin puts a folder of built programs in front of PATH; --update writes blocks and tables anew, where they have
no "..."; --allow-unmarked puts up with ```console blocks that have no mark. Exit status 1 when something differs.
"""

import argparse
import difflib
import json
import os
import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
FENCE = re.compile(r"(?ms)^(<!-- (?P<mark>[^\n]+) -->\n)?```(?P<language>\w*)\n(?P<body>.*?)^```$")
TABLE = re.compile(r"(?m)^<!-- fields: (?P<path>[^#\s]+)#(?P<name>\w+) -->\n(?P<body>(\|.*\n)*)")
LINK = re.compile(r"\[[^\]]*\]\((?P<target>[^)\s]+)\)")
HEADING = re.compile(r"(?m)^#+ (?P<text>.+)$")


def run(command, environment):
    finished = subprocess.run(["bash", "-c", command], cwd=ROOT, env=environment, text=True,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    return finished.stdout


def commands_of(body):
    return [line[2:] for line in body.splitlines() if line.startswith("$ ")]


def transcript(body, environment):
    """What a block of commands should look like: the commands of `body`, each with its real output."""
    return "".join(f"$ {command}\n{run(command, environment)}" for command in commands_of(body))


def type_of(schema):
    """The type of a field, in words; each definition has a section of its name."""
    if "$ref" in schema:
        name = schema["$ref"].rpartition("/")[2]
        return f"[{name}](#{name.lower()})"
    if "anyOf" in schema:
        return " or ".join(type_of(alternative) for alternative in schema["anyOf"])
    if "const" in schema:
        return f"`{json.dumps(schema['const'])}`"
    if "enum" in schema:
        return ", ".join(f"`{json.dumps(value)}`" for value in schema["enum"])
    if schema["type"] == "array":
        return f"array of {type_of(schema['items'])}"
    types = schema["type"]
    return types if isinstance(types, str) else " or ".join(types)


def table_of_fields(schema, name):
    definition = schema if name == schema["title"] else schema["$defs"][name]
    rows = ["| field | type | meaning |", "| --- | --- | --- |"]
    for field, description in definition["properties"].items():
        rows.append(f"| `{field}` | {type_of(description)} | {description['description']} |")
    return "".join(row + "\n" for row in rows)


def without_times(text):
    return re.sub(r"\d+\.\d+ s\b", "0.001 s", text)


def matches(body, actual):
    lines = without_times(body).splitlines(keepends=True)
    pattern = "".join("(?:.*\n)*?" if line == "...\n" else re.escape(line) for line in lines)
    return re.fullmatch(pattern, without_times(actual)) is not None


def prose_of(text):
    """The text without its code, in which nothing is a link or a heading."""
    return re.sub(r"`[^`\n]*`", lambda code: re.sub(r"[\[\]()]", "", code[0].strip("`")), FENCE.sub("", text))


def anchors_of(document):
    """The anchors of a document's headings, as GitHub makes them."""
    anchors = set()
    for heading in HEADING.finditer(prose_of(document.read_text())):
        words = LINK.sub(lambda link: link[0][1:link[0].index("]")], heading["text"])
        anchor = re.sub(r"[^\w\- ]", "", words.strip().lower()).replace(" ", "-")
        repetition = next(number for number in range(len(anchors) + 1)
                          if (f"{anchor}-{number}" if number else anchor) not in anchors)
        anchors.add(f"{anchor}-{repetition}" if repetition else anchor)
    return anchors


class Document:
    def __init__(self, path, environment, updates, allows_unmarked):
        self.path = path
        self.text = path.read_text()
        self.environment = environment
        self.updates = updates
        self.allows_unmarked = allows_unmarked
        self.problems = []

    def check(self):
        self.text = TABLE.sub(self.check_table, self.text)
        updated = FENCE.sub(self.check_fence, self.text)
        if self.updates:
            self.path.write_text(updated)
        for link in LINK.finditer(prose_of(self.text)):
            self.check_link(link["target"])
        return self.problems

    def place(self, match):
        return f"{self.path}:{self.text.count(chr(10), 0, match.start()) + 1}"

    def compare(self, block, actual, source):
        """The block as it should stay: anew where it is to be updated, else as it is."""
        body = block["body"]
        if matches(body, actual):
            return block[0]
        if self.updates and "...\n" not in body.splitlines(keepends=True):
            return self.text[block.start():block.start("body")] + actual + self.text[block.end("body"):block.end()]
        self.problems += difflib.unified_diff(body.splitlines(), actual.splitlines(), self.place(block), source,
                                              lineterm="")
        return block[0]

    def check_table(self, table):
        schema = json.loads((ROOT / table["path"]).read_text())
        return self.compare(table, table_of_fields(schema, table["name"]), table["path"])

    def check_fence(self, block):
        kind, _, detail = (block["mark"] or "").partition(": ")
        if kind == "file":
            return self.compare(block, (ROOT / detail).read_text(), detail)
        if kind == "run":
            return self.compare(block, transcript(block["body"], self.environment), "what the commands print")
        if kind == "excerpt":
            self.check_excerpt(block, ROOT / detail)
        elif kind == "run by":
            self.check_runner(block, ROOT / detail)
        elif block["mark"] and not (kind == "not run" and detail):
            self.problems.append(f"{self.place(block)}: no block is marked so")
        elif not block["mark"] and block["language"] == "console" and not self.allows_unmarked:
            self.problems.append(f"{self.place(block)}: the block does not say who runs its commands")
        return block[0]

    def check_excerpt(self, block, source):
        if not matches(f"...\n{block['body']}...\n", source.read_text() if source.is_file() else ""):
            self.problems.append(f"{self.place(block)}: the block is no excerpt of {source}")

    def check_runner(self, block, runner):
        script = runner.read_text() if runner.is_file() else ""
        self.problems += [f"{self.place(block)}: {runner} does not run {command}"
                          for command in commands_of(block["body"]) if command not in script]

    def check_link(self, target):
        if re.match(r"[a-z]+:", target):
            return
        path, _, anchor = target.partition("#")
        linked = self.path.parent / path if path else self.path
        if not linked.exists():
            self.problems.append(f"{self.path}: {target} leads to no file")
        elif anchor and anchor not in (anchors_of(linked) if linked.suffix == ".md" else ()):
            self.problems.append(f"{self.path}: {target} leads to no heading")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("--bin", action="append", default=[])
    parser.add_argument("--update", action="store_true")
    parser.add_argument("--allow-unmarked", action="store_true")
    parser.add_argument("documents", nargs="+", type=Path)
    options = parser.parse_args()

    environment = dict(os.environ, PATH=os.pathsep.join([*options.bin, os.environ["PATH"]]), NO_COLOR="1")
    problems = [problem for path in options.documents
                for problem in Document(path, environment, options.update, options.allow_unmarked).check()]
    print("\n".join(problems), end="\n" if problems else "")
    sys.exit(1 if problems else 0)


if __name__ == "__main__":
    main()
