#!/usr/bin/env python3
"""Compares the manual page of import_explorer with its help.

The environment variable IMPORT_EXPLORER names the program, MANUAL the page.
"""

import os
import re
import subprocess
import unittest
from pathlib import Path

PAGE = Path(os.environ["MANUAL"]).read_text(encoding="utf-8")
TEXT = re.sub(r"\\f[BIRP]|\\[,/&]", "", PAGE).replace("\\-", "-")


class Manual(unittest.TestCase):
    def test_has_the_sections_of_a_manual_page(self):
        sections = re.findall(r"(?m)^\.SH (.*)$", PAGE)
        for section in ("NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "EXAMPLES"):
            self.assertIn(section, sections)

    def test_describes_each_option_of_the_help(self):
        text = subprocess.run([os.environ["IMPORT_EXPLORER"], "--help"], check=True, text=True,
                              stdout=subprocess.PIPE).stdout
        options = re.findall(r"(?m)^  (?:-\w, *)?(--\w+)", text)
        self.assertGreater(len(options), 5)
        for option in options:
            self.assertRegex(TEXT, rf"(?m)^\.TP\n.*{option}\b.*\n\w")

    def test_names_the_exit_statuses(self):
        for status in range(4):
            self.assertRegex(TEXT, rf"(?m)^\.TP\n{status}\n\w")

    def test_does_not_name_the_build_tree(self):
        self.assertNotIn(str(Path(os.environ["IMPORT_EXPLORER"]).parent), PAGE)


if __name__ == "__main__":
    unittest.main()
