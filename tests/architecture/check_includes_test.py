# SPDX-License-Identifier: BSL-1.0
"""scripts/check_includes.py finds what it is there to find, in small projects made for it."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SCRIPT = Path(__file__).resolve().parents[2] / "scripts/check_includes.py"
DOCUMENT = "docs/architecture.md"

# A file of each kind, all of them empty.
PROJECT_FILES = """
    platform/lf/util/identifier.hpp platform/lf/util/identifier.cpp
    import/platform.hpp import/entries.hpp import/entries.cpp import/diagnostics/make_msg_id.hpp
    import/parser/classification.hpp import/parser/classification.cpp import/list/lookup.hpp import/list/lookup.cpp
    host/text.hpp host_testing/matchers.hpp host_testing/recording/recorder.hpp
    tools/import_explorer/main.cpp examples/own_platform/main.cpp
    examples/own_platform/platform/lfu/words.hpp
    tests/support/rows.hpp tests/import/entries_test.cpp
""".split()

WRONG = [
    ("platform/lf/util/identifier.cpp", "<import/entries.hpp>", "the platform knows nothing of the library"),
    ("platform/lf/util/identifier.hpp", "<import/entries.hpp>", "nor do its headers"),
    ("platform/lf/util/identifier.hpp", "<unicode/uchar.h>", "ICU stays in the platform's sources"),
    ("import/entries.cpp", "<unicode/uchar.h>", "and out of the library"),
    ("import/list/lookup.cpp", "<unicode/uchar.h>", "all of it"),
    ("import/entries.hpp", "<lf/util/identifier.hpp>", "only one header includes the host's"),
    ("import/parser/classification.cpp", "<lf/util/identifier.hpp>", "for private files as well"),
    ("import/entries.hpp", "<import/diagnostics/make_msg_id.hpp>", "public headers do not include private ones"),
    ("import/entries.hpp", "<import/list/lookup.hpp>", "of either kind"),
    ("import/entries.cpp", "<import/list/lookup.hpp>", "the value model knows no list"),
    ("import/parser/classification.cpp", "<import/list/lookup.hpp>", "the parser knows no list"),
    ("import/list/lookup.cpp", "<import/parser/classification.hpp>", "the list knows no parser"),
    ("import/list/lookup.cpp", '"../parser/classification.hpp"', "by no other spelling either"),
    ("import/entries.cpp", "<support/rows.hpp>", "the library knows no tests"),
    ("import/list/lookup.cpp", "<range/v3/all.hpp>", "nobody includes all of range-v3"),
    ("tests/import/entries_test.cpp", "<bits/stdc++.h>", "nor the standard library's insides"),
    ("host/text.hpp", "<import/list/lookup.hpp>", "the host kit is on the public headers alone"),
    ("host/text.hpp", "<unicode/uchar.h>", "and needs no library of its own"),
    ("host/text.hpp", "<host_testing/matchers.hpp>", "nor tests"),
    ("host/text.hpp", "<gtest/gtest.h>", "nor a framework for them"),
    ("host_testing/matchers.hpp", "<host_testing/recording/recorder.hpp>", "the test kit works on any platform"),
    ("import/entries.hpp", "<host/text.hpp>", "the library knows no host"),
    ("tools/import_explorer/main.cpp", "<import/list/lookup.hpp>", "the tool shows what hosts can do"),
    ("tools/import_explorer/main.cpp", "<import/diagnostics/make_msg_id.hpp>", "and hosts make none of its messages"),
    ("examples/own_platform/main.cpp", "<lf/util/identifier.hpp>", "another platform is not the reference"),
    ("examples/own_platform/platform/lfu/words.hpp", "<import/entries.hpp>", "and knows nothing of the library"),
]

RIGHT = [
    ("platform/lf/util/identifier.cpp", "<unicode/uchar.h>", "the platform's sources use ICU"),
    ("import/platform.hpp", "<lf/util/identifier.hpp>", "it includes the host's headers"),
    ("import/entries.hpp", "<import/platform.hpp>", "public headers go through it"),
    ("import/parser/classification.cpp", "<import/diagnostics/make_msg_id.hpp>", "the parser makes messages"),
    ("import/list/lookup.cpp", "<import/list/lookup.hpp>", "a layer may include itself"),
    ("import/entries.cpp", "<vector>", "the standard library is everybody's"),
    ("examples/own_platform/main.cpp", "<lfu/words.hpp>", "a host includes its own platform"),
    ("host/text.hpp", "<import/entries.hpp>", "the host kit is on the public headers"),
    ("host_testing/matchers.hpp", "<host/text.hpp>", "the test kit knows the host kit"),
    ("host_testing/matchers.hpp", "<gmock/gmock.h>", "and the framework"),
    ("host_testing/recording/recorder.hpp", "<lf/util/identifier.hpp>", "the recording platform is the reference's"),
    ("tools/import_explorer/main.cpp", "<host/text.hpp>", "the tool is a host"),
    ("tests/import/entries_test.cpp", "<import/list/lookup.hpp>", "tests include what they like"),
]


class IncludesPointOneWay(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        for path in [*PROJECT_FILES, DOCUMENT]:
            self.write(path, "")
        places = [f"<!-- begin {place} -->\n<!-- end {place} -->\n" for place in ("picture", "layers")]
        self.write(DOCUMENT, "".join(places))
        self.check("--write")

    def write(self, path, text):
        (self.root / path).parent.mkdir(parents=True, exist_ok=True)
        (self.root / path).write_text(text)

    def check(self, *options):
        return subprocess.run([sys.executable, SCRIPT, *options, self.root], text=True, stdout=subprocess.PIPE)

    def assert_right(self):
        self.assertEqual(self.check("--write").stdout, "")
        self.assertEqual(self.check().stdout, "")

    def assert_wrong(self, *texts):
        result = self.check()
        self.assertEqual(result.returncode, 1)
        for text in texts:
            self.assertIn(text, result.stdout)

    def test_wrong_includes(self):
        for path, include, why in WRONG:
            with self.subTest(why):
                self.write(path, f"// A comment.\n#include {include}\n")
                self.assert_wrong(path, f"includes {include}")
                self.write(path, "")

    def test_right_includes(self):
        for path, include, why in RIGHT:
            with self.subTest(why):
                self.write(path, f"#include {include}\n")
                self.assert_right()
                self.write(path, "")

    def test_every_spelling_of_a_directive_counts(self):
        for line in ("#include <import/list/lookup.hpp>", "  #  include <import/list/lookup.hpp>",
                     "/* a */ #include <import/list/lookup.hpp>", "#include<import/list/lookup.hpp>"):
            with self.subTest(line):
                self.write("import/parser/classification.cpp", f"{line}\n")
                self.assert_wrong("import/parser may not include import/list")

    def test_comments_do_not_count(self):
        self.write("import/parser/classification.cpp",
                   "// #include <import/list/lookup.hpp>\n/*\n#include <import/list/lookup.hpp>\n*/\n")
        self.assert_right()

    def test_another_table_in_the_document(self):
        self.write(DOCUMENT, (self.root / DOCUMENT).read_text().replace("ICU", "nothing"))
        self.assert_wrong("picture of the layers is outdated")

    def test_another_picture_in_the_document(self):
        self.write("import/platform.hpp", "#include <lf/util/identifier.hpp>\n")
        self.assert_wrong("picture of the layers is outdated")

    def test_a_document_without_table(self):
        self.write(DOCUMENT, "")
        self.assert_wrong("picture of the layers is outdated")

    def test_a_file_in_no_layer(self):
        self.write("import/new/file.cpp", "")
        self.assert_wrong("import/new/file.cpp: belongs to no layer")


if __name__ == "__main__":
    unittest.main()
