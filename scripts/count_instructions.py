#!/usr/bin/env python3
"""Counts under callgrind the instructions of what gleigem_instruction_count does; prints JSON.

    count_instructions.py BUILD_FOLDER [growth]
"""

import json
import re
import subprocess
import sys
import tempfile
from pathlib import Path


def main():
    build, *arguments = sys.argv[1:]
    counts = {}
    with tempfile.TemporaryDirectory() as folder:
        dump = Path(folder, "callgrind.out")
        subprocess.run(["valgrind", "--quiet", "--tool=callgrind", "--collect-atstart=no",
                        f"--callgrind-out-file={dump}", f"{build}/benchmarks/gleigem_instruction_count",
                        *arguments], check=True)
        for part in sorted(Path(folder).glob("callgrind.out.*"), key=lambda path: int(path.suffix[1:])):
            text = part.read_text()
            name = re.search(r"^desc: Trigger: Client Request: (.*)$", text, re.MULTILINE)[1]
            counts[name] = int(re.search(r"^totals: (\d+)$", text, re.MULTILINE)[1])
    print(json.dumps(counts, indent=2))


if __name__ == "__main__":
    main()
