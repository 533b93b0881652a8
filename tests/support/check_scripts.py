#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
# SPDX-License-Identifier: MIT
"""Checks that each script prints all that stands at its head where it is asked for help, with nothing
installed and from any folder, that one in shell does so for an option that it does not know, and that
CONTRIBUTING.md has a line for it."""
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent


def head(text):
    """What stands at the head of a script."""
    if docstring := re.search(r'^__doc__ = """(.*?)"""$', text, re.M | re.S):
        return docstring[1].replace("\\\\", "\\")
    comment = re.match(r"#!.*\n((?:#.*\n|\n)*)", text)[1]
    return "".join(line[2:] if line.startswith("# ") else line[1:]
                   for line in comment.splitlines(True)
                   if line.startswith("#") and "SPDX-" not in line)


def main():
    contributing = (ROOT / "CONTRIBUTING.md").read_text(encoding="utf-8")
    scripts = [path for path in sorted((ROOT / "scripts").iterdir())
               if os.access(path, os.X_OK) and path.is_file()]
    wrong = []
    with tempfile.TemporaryDirectory() as path:
        tools = Path(path) / "tools"
        work = Path(path) / "work"
        tools.mkdir()
        work.mkdir()
        for tool in ("sh", "dirname", "sed"):
            (tools / tool).symlink_to(shutil.which(tool))

        def run(*command):
            return subprocess.run(command, cwd=work, env={"PATH": str(tools)},
                                  stdin=subprocess.DEVNULL, capture_output=True, check=False,
                                  encoding="utf-8", timeout=20)

        for script in scripts:
            text = script.read_text(encoding="utf-8")
            expected = head(text)
            if len(expected) < 40:
                wrong.append(f"{script.name}: says nothing at its head")
            for option in ("--help", "-h"):
                done = run(script, option)
                if (done.returncode, done.stdout, done.stderr) != (0, expected, ""):
                    wrong.append(f"{script.name} {option}: returned {done.returncode} and printed\n"
                                 f"{done.stdout}{done.stderr}instead of\n{expected}")
            if script.suffix != ".sh" and "__doc__ = " not in text:
                done = run(script, "--no-such-option")
                if (done.returncode, done.stdout, done.stderr) != (2, "", expected):
                    wrong.append(f"{script.name} --no-such-option: returned {done.returncode} and printed\n"
                                 f"{done.stdout}{done.stderr}instead of\n{expected}")
            if script.suffix != ".sh" and f"`scripts/{script.name}" not in contributing:
                wrong.append(f"CONTRIBUTING.md has no line for scripts/{script.name}")
        if list(work.iterdir()):
            wrong.append("a request for help left files behind")
    print(f"{len(scripts)} scripts")
    for line in wrong:
        print(line, file=sys.stderr)
    return 1 if wrong or not scripts else 0


if __name__ == "__main__":
    sys.exit(main())
