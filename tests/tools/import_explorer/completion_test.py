#!/usr/bin/env python3
"""Tests the completion of import_explorer in bash.

The environment variable IMPORT_EXPLORER names the program, COMPLETION the file that bash loads.
"""

import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

# The arguments are words as split by bash; the last one is completed.
SCRIPT = """
source "$1"
shift
COMP_WORDS=("$@")
COMP_CWORD=$(($# - 1))
_import_explorer
((!${#COMPREPLY[@]})) || printf '%s\\n' "${COMPREPLY[@]}"
"""


def bash(script, *arguments, folder=None):
    return subprocess.run(["bash", "--norc", "-c", script, "bash", *arguments], cwd=folder, check=True, text=True,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT).stdout


class Completion(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        for name in ("one.import", "two words.import", "text.txt", "below/three.import"):
            (self.folder / name).parent.mkdir(exist_ok=True)
            (self.folder / name).touch()

    def complete(self, *words):
        return set(bash(SCRIPT, os.environ["COMPLETION"], "import_explorer", *words, folder=self.folder).splitlines())

    def test_is_registered_for_the_program(self):
        self.assertEqual(bash('source "$1"; complete -p import_explorer', os.environ["COMPLETION"]),
                         "complete -F _import_explorer import_explorer\n")

    def test_offers_the_options_of_the_help(self):
        text = subprocess.run([os.environ["IMPORT_EXPLORER"], "--help"], check=True, text=True,
                              stdout=subprocess.PIPE).stdout
        described = set(re.findall(r"(?m)^  (?:-\w, *)?(--\w+)", text))
        self.assertIn("--fix", described)
        self.assertEqual(self.complete("-"), described)

    def test_offers_the_values_of_the_help(self):
        text = subprocess.run([os.environ["IMPORT_EXPLORER"], "--help"], check=True, text=True,
                              stdout=subprocess.PIPE).stdout
        values = dict(re.findall(r"(?m)^  (--\w+) ([\w]+(?:\|\w+)+)", text))
        self.assertEqual(set(values), {"--format", "--packages", "--feature"})
        for option, listed in values.items():
            self.assertEqual(self.complete(option, ""), set(listed.split("|")))

    def test_narrows_what_it_offers(self):
        rows = [
            (["--f"], {"--feature", "--fix", "--format"}),
            (["--format", "s"], {"sarif"}),
            (["--format", "="], {"text", "json", "sarif"}),
            (["--format", "=", "j"], {"json"}),
            (["--packages", "=", "o"], {"on", "off"}),
            (["--packages", "on", "--js"], {"--json"}),
            (["--xyz"], set()),
            (["--", "-"], set()),
        ]
        for words, expected in rows:
            with self.subTest(words):
                self.assertEqual(self.complete(*words), expected)

    def test_offers_scripts_and_folders(self):
        self.assertEqual(self.complete(""), {"one.import", "two words.import", "below"})
        self.assertEqual(self.complete("--quiet", "t"), {"two words.import"})
        self.assertEqual(self.complete("below/"), {"below/three.import"})

    def test_offers_every_file_for_lines(self):
        self.assertEqual(self.complete("--lines", "t"), {"two words.import", "text.txt"})


if __name__ == "__main__":
    unittest.main()
