# SPDX-License-Identifier: BSL-1.0
"""CONTRIBUTING.md names every file that lists all message keys, and at most seven steps for a new key."""

import re
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
FOLDERS = "benchmarks cmake debugger docs examples fuzz host import packaging platform scripts tests tools".split()
MOST_FILES = 7


def message_keys():
    return re.findall(r'MessageDefinition<.*>\{"(\w+)"', (ROOT / "import/messages.hpp").read_text())


def project_files():
    yield from (path for path in ROOT.iterdir() if path.is_file())
    for folder in FOLDERS:
        yield from (path for path in (ROOT / folder).rglob("*") if path.is_file())


def files_with_all(keys):
    for path in project_files():
        words = set(re.findall(r"\w+", path.read_text(errors="replace")))
        if words.issuperset(keys):
            yield str(path.relative_to(ROOT))


def section(heading):
    text = (ROOT / "CONTRIBUTING.md").read_text()
    return re.search(rf"(?ms)^## {heading}\n(.*?)^## ", text)[1]


class MessageKeys(unittest.TestCase):
    def test_are_listed_only_where_the_guide_says(self):
        self.assertGreater(len(message_keys()), 2)
        guide = section("Add a message key") + section("Change or add a rule")
        named = {target.split("#")[0] for target in re.findall(r"\]\(([^)]+)\)", guide)}
        listing = set(files_with_all(message_keys()))
        self.assertIn("import/messages.hpp", listing)
        self.assertEqual(listing - named, set())

    def test_need_few_files(self):
        steps = re.findall(r"(?m)^\d+\. ", section("Add a message key"))
        self.assertLessEqual(len(steps), MOST_FILES)


if __name__ == "__main__":
    unittest.main()
