#!/usr/bin/env python3
"""check_documents.py accepts correct documents and reports each kind of mistake."""

import os
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
sys.dont_write_bytecode = True
sys.path.insert(0, str(ROOT / "scripts"))

from check_documents import Document  # noqa: E402

RUN = "<!-- run -->\n```console\n$ echo a; echo b\n{}```\n"
SCHEMA = "tools/import_explorer/report.schema.json"
TABLE = "<!-- fields: {}#Hidden -->\n| field | type | meaning |\n| --- | --- | --- |\n" \
        "| `entry` | [Reference](#reference) | the hidden entry |\n| `by` | [Reference](#reference) | {} |\n\n" \
        "## Reference\n"

RIGHT = {
    "a file": "<!-- file: .ci/run -->\n```sh\n" + (ROOT / ".ci/run").read_text() + "```\n",
    "an excerpt": "<!-- excerpt: .ci/run -->\n```sh\n#!/usr/bin/env bash\n...\n```\n",
    "an output": RUN.format("a\nb\n"),
    "an output with lines left out": RUN.format("...\nb\n"),
    "an output with another time": "<!-- run -->\n```console\n$ echo 0.25 s\n0.001 s\n```\n",
    "commands that a script runs": "<!-- run by: .ci/run -->\n```console\n$ scripts/test.sh\n```\n",
    "commands that are not run": "<!-- not run: it takes an hour -->\n```console\n$ sleep 3600\n```\n",
    "a table of fields": TABLE.format(SCHEMA, "the entry that hides it"),
    "code in another language": "```cpp\nint a[](b);\n```\n",
    "links": "# A *b*, `c`!\n\n[a](other.md) [b](#a-b-c) ![c](other.md) [d](other.md#twice-1) "
             "[e](https://example.org)\n",
    "brackets in code": "`auto f = [](x) {}`\n",
}

WRONG = {
    "another file": "<!-- file: .ci/run -->\n```sh\nexit\n```\n",
    "no excerpt": "<!-- excerpt: .ci/run -->\n```sh\nexit 7\n```\n",
    "an output with another line": RUN.format("a\nc\n"),
    "an output with a line too few": RUN.format("a\n"),
    "an output that ends elsewhere": RUN.format("...\na\n"),
    "commands that the script does not run": "<!-- run by: .ci/run -->\n```console\n$ sleep 3600\n```\n",
    "commands of a missing script": "<!-- run by: no -->\n```console\n$ scripts/test.sh\n```\n",
    "commands that are not run, without a reason": "<!-- not run: -->\n```console\n$ sleep 3600\n```\n",
    "commands without a mark": "```console\n$ sleep 3600\n```\n",
    "an unknown mark": "<!-- runs -->\n```sh\nsleep 3600\n```\n",
    "another table of fields": TABLE.format(SCHEMA, "the hidden entry"),
    "a link to no file": "[a](nowhere.md)\n",
    "a missing image": "![a](nowhere.svg)\n",
    "a link to no heading here": "[a](#b)\n",
    "a link to no heading elsewhere": "[a](other.md#thrice)\n",
    "a link to a heading in code": "[a](#b)\n\n```sh\n# b\n```\n",
}


class CheckDocuments(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.path = Path(folder.name) / "document.md"
        (self.path.parent / "other.md").write_text("# Twice\n\n## Twice\n")

    def problems(self, text, updates=False, allows_unmarked=False):
        self.path.write_text(text)
        return Document(self.path, dict(os.environ), updates, allows_unmarked).check()

    def test_finds_nothing_wrong_where_all_is_right(self):
        for what, text in RIGHT.items():
            with self.subTest(what):
                self.assertEqual(self.problems(text), [])

    def test_finds_what_is_wrong(self):
        for what, text in WRONG.items():
            with self.subTest(what):
                self.assertNotEqual(self.problems(text), [])

    def test_puts_up_with_commands_without_a_mark_on_request(self):
        self.assertEqual(self.problems(WRONG["commands without a mark"], allows_unmarked=True), [])

    def test_writes_what_is_outdated_anew(self):
        for right, wrong in (("an output", "an output with another line"), ("a file", "another file"),
                             ("a table of fields", "another table of fields")):
            with self.subTest(wrong):
                self.assertEqual(self.problems(WRONG[wrong], updates=True), [])
                self.assertEqual(self.path.read_text(), RIGHT[right])

    def test_does_not_write_where_lines_are_left_out(self):
        text = RUN.format("...\na\n")
        self.assertNotEqual(self.problems(text, updates=True), [])
        self.assertEqual(self.path.read_text(), text)


if __name__ == "__main__":
    unittest.main()
