# SPDX-License-Identifier: MIT
"""Pages of the documentation whose steps are run as they stand: what they have people type, and what is shown then."""
import re
from pathlib import Path


def blocks(page):
    """(language, text) of each fenced block of a page."""
    return re.findall(r"(?ms)^```(\w*)\n(.*?)^```$", Path(page).read_text(encoding="utf-8"))


def is_shown(output, shown):
    """Whether each line of what is to be shown, … standing for anything, is part of a line of the output."""
    patterns = [".*".join(re.escape(part.strip()) for part in line.split("…")) for line in shown.splitlines()]
    return all(any(re.search(pattern, line) for line in output.splitlines()) for pattern in patterns)


def write_stand_ins(folder, programs):
    """Makes shell scripts, by their names, that stand for programs of the machine."""
    for name, text in programs.items():
        file = Path(folder, name)
        file.write_text("#!/bin/sh\n" + text, encoding="utf-8")
        file.chmod(0o755)
