#!/usr/bin/env python3
"""Holds real reports of import_explorer --format sarif to what SARIF 2.1.0 demands of the objects in them.

The program is named by the environment variable IMPORT_EXPLORER. Exit status 77 without Python's module jsonschema.
"""

import copy
import unittest

from report_schema_test import Draft202012Validator, VARIED, real_inputs, read_report


def an_object(required, **properties):
    """A schema for an object with exactly the properties that the explorer writes."""
    return {"type": "object", "properties": properties, "required": required, "additionalProperties": False}


def a_list(items, least=0):
    return {"type": "array", "items": items, "minItems": least}


def a_set(items):
    return {**a_list(items), "uniqueItems": True}


def a_number(least):
    return {"type": "integer", "minimum": least}


def one_of(*values):
    return {"enum": [*values]}


TEXT = {"type": "string"}
URI = {"type": "string", "pattern": r"^(?:[\w.~!$&'()*+,;=@/-]|%[0-9A-F]{2}|^file:)*$"}
# Braces are doubled unless they enclose a placeholder.
MESSAGE = an_object(["text"], text={"type": "string", "pattern": r"^(?:[^{}]|\{\{|\}\})+$"})
FILE = an_object(["uri"], uri=URI)
REGION = {**an_object([], startLine=a_number(1), startColumn=a_number(1), endLine=a_number(1), endColumn=a_number(1),
                      byteOffset=a_number(0), byteLength=a_number(0)),
          "anyOf": [{"required": ["startLine"]}, {"required": ["byteOffset"]}]}
LOCATION = an_object([], message=MESSAGE,
                     physicalLocation=an_object(["artifactLocation"], artifactLocation=FILE, region=REGION))
LEVEL = one_of("none", "note", "warning", "error")
REPLACEMENT = an_object(["deletedRegion"], deletedRegion=REGION, insertedContent=an_object([], text=TEXT))
CHANGE = an_object(["artifactLocation", "replacements"], artifactLocation=FILE, replacements=a_list(REPLACEMENT, 1))
FIX = an_object(["artifactChanges"], description=MESSAGE, artifactChanges=a_list(CHANGE, 1))
RESULT = an_object(["message"], ruleId=TEXT, level=LEVEL, message=MESSAGE, locations=a_list(LOCATION),
                   relatedLocations=a_set(LOCATION), fixes=a_set(FIX))
NOTIFICATION = an_object(["message"], level=LEVEL, message=MESSAGE, locations=a_list(LOCATION))
INVOCATION = an_object(["executionSuccessful"], executionSuccessful={"type": "boolean"},
                       toolExecutionNotifications=a_list(NOTIFICATION))
DRIVER = an_object(["name"], name=TEXT, version=TEXT, rules=a_set(an_object(["id"], id=TEXT)))
RUN = an_object(["tool"], tool=an_object(["driver"], driver=DRIVER), invocations=a_list(INVOCATION),
                columnKind=one_of("utf16CodeUnits", "unicodeCodePoints"), newlineSequences=a_set(TEXT),
                results=a_list(RESULT))
LOG = an_object(["version", "runs"], **{"$schema": TEXT}, version=one_of("2.1.0"), runs=a_list(RUN))
VALIDATOR = Draft202012Validator(LOG)


def read_log(arguments, text=b""):
    return read_report(arguments, text, "sarif")


def results_of(log):
    return log["runs"][0]["results"]


def regions_of(value):
    if isinstance(value, dict):
        yield from (value[name] for name in ("region", "deletedRegion") if name in value)
        for element in value.values():
            yield from regions_of(element)
    elif isinstance(value, list):
        for element in value:
            yield from regions_of(element)


class Sarif(unittest.TestCase):
    inputs = [*real_inputs()]
    logs = {name: read_log(arguments, text) for name, arguments, text in inputs}

    def test_is_what_the_format_demands(self):
        for name, log in self.logs.items():
            with self.subTest(name):
                self.assertEqual([error.message for error in VALIDATOR.iter_errors(log)], [])

    def test_ends_no_region_before_it_begins(self):
        for name, log in self.logs.items():
            for region in regions_of(log):
                with self.subTest(name, region=region):
                    line, column = region.get("startLine", 0), region.get("startColumn", 0)
                    end = region.get("endLine", line), region.get("endColumn", 0)
                    self.assertLessEqual((line, column), end)

    def test_refers_to_rules_that_it_lists(self):
        for name, log in self.logs.items():
            rules = {rule["id"] for rule in log["runs"][0]["tool"]["driver"]["rules"]}
            with self.subTest(name):
                self.assertEqual({result["ruleId"] for result in results_of(log)} - rules, set())

    def test_has_a_result_for_each_diagnostic_of_the_other_report(self):
        for name, arguments, text in self.inputs:
            report = read_report(arguments, text)
            diagnostics = [(each["severity"], each["line"], each["column"]) for file in report["files"]
                           for each in file["diagnostics"]]
            results = [(result["level"], region["startLine"], region["startColumn"])
                       for result in results_of(self.logs[name])
                       for region in [result["locations"][0]["physicalLocation"]["region"]]]
            with self.subTest(name):
                self.assertEqual(results, diagnostics)

    def test_fails_where_something_could_not_be_read(self):
        failed = {name for name, log in self.logs.items()
                  if not log["runs"][0]["invocations"][0]["executionSuccessful"]}
        self.assertEqual(failed, {"no UTF-8", "a NUL", "no such file"})

    def test_would_notice_what_the_format_forbids(self):
        log = read_log(["--unused", "-", "no/such/file"], VARIED.encode())
        self.assertTrue(VALIDATOR.is_valid(log))
        fixes = next(result["fixes"] for result in results_of(log) if "fixes" in result)
        self.assertEqual(len(fixes), 1)
        changes = {"another version": lambda log: log.update(version="2.0.0"),
                   "no tool": lambda log: log["runs"][0].pop("tool"),
                   "no name": lambda log: log["runs"][0]["tool"]["driver"].pop("name"),
                   "a rule twice": lambda log: log["runs"][0]["tool"]["driver"]["rules"].append(
                       log["runs"][0]["tool"]["driver"]["rules"][0]),
                   "no message": lambda log: results_of(log)[0].pop("message"),
                   "a single brace": lambda log: results_of(log)[0]["message"].update(text="{x"),
                   "a line 0": lambda log: next(regions_of(log)).update(startLine=0),
                   "a URI with a blank": lambda log: results_of(log)[0]["locations"][0]["physicalLocation"][
                       "artifactLocation"].update(uri="a b"),
                   "an unknown property": lambda log: results_of(log)[0].update(severity="error"),
                   "no replacement": lambda log: next(result for result in results_of(log) if "fixes" in result)[
                       "fixes"][0]["artifactChanges"][0].update(replacements=[]),
                   "an unknown level": lambda log: results_of(log)[0].update(level="fatal")}
        for name, change in changes.items():
            changed = copy.deepcopy(log)
            change(changed)
            with self.subTest(name):
                self.assertFalse(VALIDATOR.is_valid(changed))


if __name__ == "__main__":
    unittest.main()
