#!/usr/bin/python3 -B
# SPDX-License-Identifier: MIT
"""The manual's pages: man(1) formats each without a warning, whatis(1) finds its name and what it is, its references lead to
pages that are there, and a program's page names every option that the program's own help does.

Usage: manual_test.py FOLDER PAGE=PROGRAM...
"""

import os
import pathlib
import re
import subprocess
import sys


def output_of(*command, **environment):
    """What a program writes to both streams; it must succeed."""
    result = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False,
                            env={"PATH": os.environ["PATH"], "LC_ALL": "C.UTF-8", **environment})
    if result.returncode != 0:
        raise SystemExit(f"{' '.join(map(str, command))} ends with {result.returncode}: {result.stdout}")
    return result.stdout


def faults_of(page, names):
    """What is wrong with one page."""
    warnings = subprocess.run(["man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", page], stdout=subprocess.DEVNULL,
                              stderr=subprocess.PIPE, text=True, check=False,
                              env={"PATH": os.environ["PATH"], "LC_ALL": "C.UTF-8", "MANWIDTH": "80", "MANROFFSEQ": ""}).stderr
    if warnings:
        yield f"man says: {warnings.strip()}"
    if not re.search(rf'"{page.stem} - .+"', output_of("lexgrog", page)):
        yield "whatis finds no name"
    for name, section in re.findall(r"\\f\[B\]([\w-]+)\\f\[R\]\((\d)\)", page.read_text()):
        if f"{name}.{section}" not in names:
            yield f"it refers to {name}({section}), which is not there"


def options_of(program):
    """The options that a program's help has."""
    return set(re.findall(r"(?<![\w-])--?[a-zA-Z][\w-]*", output_of(program, "--help"))) - {"-h"}


def main():
    folder = pathlib.Path(sys.argv[1])
    pages = sorted(page for page in folder.iterdir() if re.fullmatch(r".+\.[1-8]", page.name))
    names = {page.name for page in pages}
    faults = [f"{page.name}: {fault}" for page in pages if not page.read_text().startswith(".so ")
              for fault in faults_of(page, names)]
    for argument in sys.argv[2:]:
        page, program = argument.split("=", 1)
        # As a person reads it, whatever fonts and hyphens it has.
        text = output_of("man", "-E", "UTF-8", "--no-hyphenation", "--no-justification", "-l", folder / page, MANWIDTH="1000",
                         MANROFFSEQ="")
        text = re.sub(".\b", "", text).replace("‐", "-").replace("−", "-")
        faults += [f"{page}: {option} is not told" for option in sorted(options_of(program))
                   if not re.search(rf"(?<![\w-]){option}(?![\w-])", text)]
    for fault in faults:
        print(fault)
    print(f"{len(pages)} pages, {len(sys.argv) - 2} programs, {len(faults)} faults")
    return 1 if faults or len(pages) < 13 else 0


if __name__ == "__main__":
    sys.exit(main())
