#!/usr/bin/env python3
"""Holds real reports of import_explorer --json to their schema, and the schema to what it promises.

The program is named by the environment variable IMPORT_EXPLORER. Exit status 77 without Python's module jsonschema.
"""

import copy
import json
import os
import re
import subprocess
import sys
import unittest
from pathlib import Path

try:
    from jsonschema import Draft202012Validator
except ImportError:
    print("Skipped: Python's module jsonschema is not installed.")
    sys.exit(77)

ROOT = Path(__file__).resolve().parent.parent.parent
SCHEMA = json.loads((ROOT / "tools/import_explorer/report.schema.json").read_text())
VALIDATOR = Draft202012Validator(SCHEMA)
OBJECTS = {"Report": SCHEMA, **{name: definition for name, definition in SCHEMA["$defs"].items()
                                if "properties" in definition}}
OPTIONAL = {"Scope": {"inherited", "hidden"}}

DEEP = "\n".join(f"scope s{level} {{ import p{level}" for level in range(70)) + "\n}" * 70
MANY = "import " + " ".join(f"p{number}" for number in range(150)) + \
       "\nimport " + " ".join(f"a{number}.*" for number in range(150)) + \
       "\nscope s {\nimport " + " ".join(f"p{number}" for number in range(120)) + "\nuse x\n}"
FAULTY = 'scope a {\n}}\nscope\nuse\nuse b c\nimport "a\nimport "a"b\ndynamic use x\n{\n'
# Every kind of object is in the report of this and of a file that does not exist.
VARIED = "scope s {\nimport p q.r\nimport p q.r p\nimport q.r w.*\nuse r\n" \
         "scope t {\nimport p\nimport w.*\nuse x\n}\n}\n" \
         "import p\nuse q\nuse zp\n"


def read_report(arguments, text=b"", report_format="json"):
    finished = subprocess.run([os.environ["IMPORT_EXPLORER"], "--format", report_format, *arguments], cwd=ROOT,
                              input=text, stdout=subprocess.PIPE, check=False)
    return json.loads(finished.stdout)


def commands_of_diagnostics():
    """The commands of the page of diagnostics, as arguments and input."""
    text = (ROOT / "docs/diagnostics.md").read_text()
    for options, script in re.findall(r"(?m)^\$ import_explorer (.*)- <<< '(.*)'$", text):
        yield [*options.split(), "-"], script.encode()


def message_keys():
    """The keys of the library, taken from the sections of the page of diagnostics."""
    return re.findall(r"(?m)^## (\w+)$", (ROOT / "docs/diagnostics.md").read_text())


def real_inputs():
    """The reports to check: description, arguments and standard input."""
    scripts = [*(ROOT / "examples").glob("*.import"), *(ROOT / "examples/rules").glob("*.import")]
    for path in scripts:
        name = str(path.relative_to(ROOT))
        for options in ([], ["--scopes"], ["--unused"], ["--scopes", "--unused"], ["--packages", "off"], ["--lines"]):
            yield f"{name} {options}", [*options, name], b""
    for arguments, script in commands_of_diagnostics():
        yield f"{script} {arguments}", arguments, script
    texts = {"nothing": b"", "blank lines": b"\n\n", "a byte order mark": b"\xef\xbb\xbfimport a.b\n",
             "faults": FAULTY.encode(), "no UTF-8": b"import a.\xff", "a NUL": b"import a.b\0",
             "deep scopes": DEEP.encode(), "many imports": MANY.encode(), "everything": VARIED.encode()}
    for name, text in texts.items():
        yield name, ["--scopes", "--unused", "-"], text
    yield "no such file", ["no/such/file"], b""
    yield "a folder", ["examples"], b""


def objects_with_schema(value, schema, name="Report"):
    """Each object in a report, with its definition in the schema."""
    if "anyOf" in schema:
        schema = schema["anyOf"][0]
    if "$ref" in schema:
        name = schema["$ref"].rpartition("/")[2]
        schema = SCHEMA["$defs"][name]
    if isinstance(value, dict):
        yield value, name
        for field, element in value.items():
            yield from objects_with_schema(element, schema["properties"][field], name)
    elif isinstance(value, list):
        for element in value:
            yield from objects_with_schema(element, schema["items"], name)


def varied_report():
    return read_report(["--scopes", "-", "no/such/file"], VARIED.encode())


class ReportSchema(unittest.TestCase):
    reports = {name: read_report(arguments, text) for name, arguments, text in real_inputs()}

    def test_is_a_schema(self):
        Draft202012Validator.check_schema(SCHEMA)

    def test_leaves_no_object_open(self):
        for name, definition in OBJECTS.items():
            with self.subTest(name):
                self.assertIs(definition["additionalProperties"], False)
                self.assertEqual(set(definition["properties"]) - set(definition["required"]),
                                 OPTIONAL.get(name, set()))

    def test_accepts_real_reports(self):
        for name, report in self.reports.items():
            with self.subTest(name):
                self.assertEqual([error.message for error in VALIDATOR.iter_errors(report)], [])

    def test_allows_only_what_happens(self):
        """Some report contains each definition, each of its fixed values, and null where it is allowed."""
        met = {}
        for report in self.reports.values():
            for element, name in objects_with_schema(report, SCHEMA):
                for field, value in element.items():
                    met.setdefault((name, field), set()).add(
                        value if isinstance(value, (str, bool, type(None))) else type(value).__name__)
        for name, definition in OBJECTS.items():
            for field, schema in definition["properties"].items():
                with self.subTest(f"{name}.{field}"):
                    self.assertIn((name, field), met)
                    if schema.get("$ref") == "#/$defs/MessageKey":
                        self.assertEqual(met[name, field], {*message_keys(), None})
                    if "enum" in schema:
                        self.assertEqual(met[name, field], set(schema["enum"]))
                    if "anyOf" in schema or "null" in schema.get("type", ()):
                        self.assertIn(None, met[name, field])

    def changed_reports(self):
        """For each kind of object, a report, an object of that kind in it that may be modified, and the kind."""
        for wanted in OBJECTS:
            report = varied_report()
            element = next((element for element, name in objects_with_schema(report, SCHEMA) if name == wanted), None)
            self.assertIsNotNone(element, wanted)
            yield report, element, wanted

    def assert_rejected(self, report, what):
        with self.subTest(what):
            self.assertFalse(VALIDATOR.is_valid(report))

    def test_rejects_an_unknown_field(self):
        for report, element, name in self.changed_reports():
            self.assertTrue(VALIDATOR.is_valid(report))
            element["surplus"] = 0
            self.assert_rejected(report, name)

    def test_rejects_a_missing_field(self):
        for report, element, name in self.changed_reports():
            complete = copy.copy(element)
            for field in complete:
                del element[field]
                self.assert_rejected(report, f"{name}.{field}")
                element.update(complete)

    def test_rejects_another_type(self):
        for report, element, name in self.changed_reports():
            complete = copy.copy(element)
            for field in complete:
                element[field] = 0.5
                self.assert_rejected(report, f"{name}.{field}")
                element.update(complete)

    def test_rejects_another_version(self):
        report = varied_report()
        report["schemaVersion"] += 1
        self.assert_rejected(report, "version")

    def test_is_documented_whole(self):
        """Each object has its table on the page, which check_documents.py compares with the schema."""
        text = (ROOT / "docs/explorer_json.md").read_text()
        schema = "tools/import_explorer/report.schema.json"
        tables = re.findall(rf"(?m)^## (\w+)\n(?:.*\n)*?<!-- fields: {schema}#(\w+) -->$", text)
        self.assertEqual(tables, [(name, name) for name in OBJECTS])


if __name__ == "__main__":
    unittest.main()
