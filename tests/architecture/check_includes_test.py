# SPDX-License-Identifier: BSL-1.0
"""scripts/check_includes.py finds each kind of violation, tested on small generated projects."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SCRIPT = Path(__file__).resolve().parents[2] / "scripts/check_includes.py"
DOCUMENT = "docs/architecture.md"

# An empty file of each kind.
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
    ("platform/lf/util/identifier.cpp", "<import/entries.hpp>", "the platform does not use the library"),
    ("platform/lf/util/identifier.hpp", "<import/entries.hpp>", "neither do its headers"),
    ("platform/lf/util/identifier.hpp", "<unicode/uchar.h>", "ICU stays in the platform's sources"),
    ("import/entries.cpp", "<unicode/uchar.h>", "and out of the library"),
    ("import/list/lookup.cpp", "<unicode/uchar.h>", "all of it"),
    ("import/entries.hpp", "<lf/util/identifier.hpp>", "only one header includes the host's headers"),
    ("import/parser/classification.cpp", "<lf/util/identifier.hpp>", "private files use that header, too"),
    ("import/entries.hpp", "<import/diagnostics/make_msg_id.hpp>", "public headers do not include private ones"),
    ("import/entries.hpp", "<import/list/lookup.hpp>", "of either kind"),
    ("import/entries.cpp", "<import/list/lookup.hpp>", "the value model does not use lists"),
    ("import/parser/classification.cpp", "<import/list/lookup.hpp>", "the parser does not use lists"),
    ("import/list/lookup.cpp", "<import/parser/classification.hpp>", "the list does not use the parser"),
    ("import/list/lookup.cpp", '"../parser/classification.hpp"', "with a relative path, too"),
    ("import/entries.cpp", "<support/rows.hpp>", "the library does not use tests"),
    ("import/list/lookup.cpp", "<range/v3/all.hpp>", "no file includes all of range-v3"),
    ("tests/import/entries_test.cpp", "<bits/stdc++.h>", "nor internal headers of the standard library"),
    ("host/text.hpp", "<import/list/lookup.hpp>", "the host kit uses only public headers"),
    ("host/text.hpp", "<unicode/uchar.h>", "and no other library"),
    ("host/text.hpp", "<host_testing/matchers.hpp>", "nor the test kit"),
    ("host/text.hpp", "<gtest/gtest.h>", "nor a framework for them"),
    ("host_testing/matchers.hpp", "<host_testing/recording/recorder.hpp>", "the test kit works on any platform"),
    ("import/entries.hpp", "<host/text.hpp>", "the library does not use the host kit"),
    ("tools/import_explorer/main.cpp", "<import/list/lookup.hpp>", "the tool is a host"),
    ("tools/import_explorer/main.cpp", "<import/diagnostics/make_msg_id.hpp>", "and does not create its messages"),
    ("examples/own_platform/main.cpp", "<lf/util/identifier.hpp>", "another platform does not use the reference"),
    ("examples/own_platform/platform/lfu/words.hpp", "<import/entries.hpp>", "nor the library"),
]

RIGHT = [
    ("platform/lf/util/identifier.cpp", "<unicode/uchar.h>", "the platform's sources may use ICU"),
    ("import/platform.hpp", "<lf/util/identifier.hpp>", "it includes the host's headers"),
    ("import/entries.hpp", "<import/platform.hpp>", "public headers go through it"),
    ("import/parser/classification.cpp", "<import/diagnostics/make_msg_id.hpp>", "the parser makes messages"),
    ("import/list/lookup.cpp", "<import/list/lookup.hpp>", "a layer may include itself"),
    ("import/entries.cpp", "<vector>", "every file may use the standard library"),
    ("examples/own_platform/main.cpp", "<lfu/words.hpp>", "a host includes its own platform"),
    ("host/text.hpp", "<import/entries.hpp>", "the host kit uses the public headers"),
    ("host_testing/matchers.hpp", "<host/text.hpp>", "the test kit uses the host kit"),
    ("host_testing/matchers.hpp", "<gmock/gmock.h>", "and the test framework"),
    ("host_testing/recording/recorder.hpp", "<lf/util/identifier.hpp>", "the recorder uses the reference platform"),
    ("tools/import_explorer/main.cpp", "<host/text.hpp>", "the tool is a host"),
    ("tests/import/entries_test.cpp", "<import/list/lookup.hpp>", "tests may include private headers"),
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
