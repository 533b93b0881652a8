#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
# SPDX-License-Identifier: MIT
"""Checks that each case has a short name of words, the same in every build: check_names.py PROGRAM…

GoogleTest numbers the rows of a table that names none.
"""
import re
import subprocess
import sys

NAME = re.compile(r"\w+(/\w+)?\.\w+(/\w*[A-Za-z]\w*)?")
LONGEST = 110


def names(program):
    listed = subprocess.run([program, "--gtest_list_tests"], check=True, stdout=subprocess.PIPE)
    suite = ""
    for line in listed.stdout.decode("utf-8", "backslashreplace").splitlines():
        name = line.split("  # ")[0]
        if name.startswith("  "):
            yield suite + name[2:]
        elif name.endswith("."):
            suite = name


def main():
    known = [name for program in sys.argv[1:] for name in names(program)]
    wrong = [name for name in known if not NAME.fullmatch(name) or len(name) > LONGEST]
    print(f"{len(known)} names")
    for name in wrong:
        print(f"{name}: not a short name of words", file=sys.stderr)
    return 0 if known and not wrong else 1


if __name__ == "__main__":
    sys.exit(main())
