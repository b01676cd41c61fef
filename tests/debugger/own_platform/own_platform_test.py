#!/usr/bin/env python3
# SPDX-License-Identifier: BSL-1.0
"""On a platform whose types the printers do not know, gdb shows what they know and its own form of the rest.

    own_platform_test.py PRINTERS PROGRAM

PROGRAM is main.cpp. Exit status 77 where gdb is missing or may not trace programs.
"""

import re
import shutil
import subprocess
import sys

SKIPPED = 77

# An expression, and a pattern for its output.
CASES = [
    ("name", r"a\.b\.c"),
    ("wildcard", r"a\.b\.\*"),
    ("package", r"\{packageSpecifier = .*asWritten = .*matrix@2.*introducedName = .*m.*\}"),
    ("package.packageSpecifier", r"\{asWritten = .*matrix@2.*\}"),
    ("invalid", r"\{msgHolder = .*held = .*\}"),
    ("invalid.msgHolder", r"\{held = .*\}"),
    ("*list._M_ptr",
     r"import list of 1 name, 0 wildcards, 1 package = \{.*name 0 = .*a\.b\.c.*package 0 = .*matrix@2.*\}"),
]


def main():
    printers, program = sys.argv[1:]
    if not shutil.which("gdb"):
        print("Skipped: gdb is not installed.")
        sys.exit(SKIPPED)
    commands = [f"source {printers}", "set host-charset UTF-8", "break stopHere", "run", "finish"]
    for expression, _ in CASES:
        commands += ["echo @@@@", f"print {expression}"]
    command = ["gdb", "-nx", "-batch", *(word for line in commands for word in ("-ex", line)), program]
    output = subprocess.run(command, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT).stdout
    answers = output.split("@@@@")[1:]
    if len(answers) != len(CASES):
        print(output)
        sys.exit(SKIPPED if "ptrace" in output else 1)
    wrong = [f"{expression}: {answer.strip()}" for (expression, pattern), answer in zip(CASES, answers)
             if not re.fullmatch(rf"(?s)\$\d+ = {pattern}", answer.strip())]
    print("\n".join(wrong))
    sys.exit(1 if wrong else 0)


if __name__ == "__main__":
    main()
