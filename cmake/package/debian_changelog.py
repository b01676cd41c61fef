#!/usr/bin/env python3
# SPDX-License-Identifier: BSL-1.0
"""Writes CHANGELOG.md as Debian's changelog of the packages.

    debian_changelog.py CHANGELOG VERSION MAINTAINER

VERSION is the version of the unreleased changes. Its date is SOURCE_DATE_EPOCH or, if unset, that of the file, so
that packaging is reproducible.
"""

import os
import re
import sys
import textwrap
from datetime import datetime, timezone
from email.utils import format_datetime
from pathlib import Path

LONGEST_LINE = 80
LINK = re.compile(r"\[([^]]*)\](?:\([^)]*\)|\[[^]]*\])")


def items_of(section):
    """The items of a section, each as one line of plain text after the name of its group."""
    for group in re.split(r"(?m)^### ", section)[1:]:
        name, _, text = group.partition("\n")
        for item in re.split(r"(?m)^- ", text)[1:]:
            words = LINK.sub(r"\1", " ".join(item.split()))
            yield f"{name.strip()}: {words}"


def written(item):
    return textwrap.fill(item, LONGEST_LINE, initial_indent="  * ", subsequent_indent="    ",
                         break_long_words=False, break_on_hyphens=False)


def entry(version, distribution, date, maintainer, section):
    items = "\n".join(written(item) for item in items_of(section))
    signature = f" -- {maintainer}  {format_datetime(date)}"
    return f"gleigem ({version}) {distribution}; urgency=medium\n\n{items}\n\n{signature}\n"


def entries(changelog, unreleased_version, unreleased_date, maintainer):
    for release in re.split(r"(?m)^## ", changelog)[1:]:
        title, _, section = release.partition("\n")
        match = re.fullmatch(r"\[([^]]+)\](?: - (\d{4}-\d{2}-\d{2}))?", title.strip())
        if not match:
            raise ValueError(f"not the title of a release: {title}")
        version, day = match.groups()
        if day:
            date = datetime.fromisoformat(day).replace(tzinfo=timezone.utc)
            yield entry(version, "unstable", date, maintainer, section)
        else:
            yield entry(unreleased_version, "UNRELEASED", unreleased_date, maintainer, section)


def main():
    path, version, maintainer = sys.argv[1:]
    seconds = int(os.environ.get("SOURCE_DATE_EPOCH", Path(path).stat().st_mtime))
    date = datetime.fromtimestamp(seconds, timezone.utc)
    print("\n".join(entries(Path(path).read_text(encoding="utf-8"), version, date, maintainer)), end="")


if __name__ == "__main__":
    main()
