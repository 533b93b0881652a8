#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
# SPDX-License-Identifier: MIT
"""Runs the commands of README.md as they are printed.

  readme_steps.py installed PREFIX   those of a program of one's own, with PREFIX as ~/vantero
  readme_steps.py all                all of them, in this home folder: for a bare system

The first blocks of C++ and of CMake are the program's files. A block of commands follows a line that
says where they run, "<!-- runs in the sources -->" or "<!-- runs beside the program -->".
"""
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
BLOCK = re.compile(r"(?:<!-- (?P<mark>[^\n]*) -->\n)?```(?P<kind>\w+)\n(?P<text>.*?)^```$", re.M | re.S)
WHERE = re.compile(r"runs (in the sources|beside the program)|excerpt of \S+")


def run(commands, folder, environment):
    print(f"in {folder}:\n{commands}", flush=True)
    done = subprocess.run(["sh", "-e"], input=commands, cwd=folder, env=environment, check=False,
                          encoding="utf-8")
    if done.returncode != 0:
        sys.exit(f"README.md: these commands fail ({done.returncode})")


def main():
    if sys.argv[1:] != ["all"] and (len(sys.argv) != 3 or sys.argv[1] != "installed"):
        sys.exit(__doc__)
    blocks = [match.groupdict()
              for match in BLOCK.finditer((ROOT / "README.md").read_text(encoding="utf-8"))]
    commands = [block for block in blocks if block["kind"] == "console"]
    for block in commands:
        if not WHERE.fullmatch(block["mark"] or ""):
            sys.exit(f"README.md does not say where these commands run:\n{block['text']}")

    environment = dict(os.environ)
    with tempfile.TemporaryDirectory() as folder:
        program = Path(folder) / "program"
        program.mkdir()
        for kind, name in (("cpp", "main.cpp"), ("cmake", "CMakeLists.txt")):
            text = next(block["text"] for block in blocks if block["kind"] == kind)
            (program / name).write_text(text, encoding="utf-8")
        if sys.argv[1] == "installed":
            environment["HOME"] = folder
            (Path(folder) / "vantero").symlink_to(sys.argv[2])
        ran = 0
        for block in commands:
            beside = block["mark"] == "runs beside the program"
            if not beside and sys.argv[1] == "installed":
                continue
            lines = "".join(line[2:] + "\n" for line in block["text"].splitlines()
                            if line.startswith("$ ") and not line.startswith("$ vantero-formats"))
            run(lines, program if beside else ROOT, environment)
            ran += 1
        # What was built works, each with nothing but its own file name.
        for edit in (program / "build/edit", program / "edit"):
            run(f"'{ROOT}/tests/examples/edit_configuration.sh' '{edit}' '{ROOT}/examples/data'\n",
                program, environment)
    print(f"README.md: {ran} blocks of commands run as they are printed")


if __name__ == "__main__":
    main()
