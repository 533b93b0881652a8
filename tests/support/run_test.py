#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
# SPDX-License-Identifier: MIT
"""Tests run.py on tests that pass, fail, are skipped, end early and leave something behind."""
import json
import os
import subprocess
import sys
import tempfile
from pathlib import Path

PASSING = """\
[ RUN      ] Suite.passes
[       OK ] Suite.passes (0 ms)
[ RUN      ] Suite.waits
a_test.cpp:7: Skipped
no zip
is here
[  SKIPPED ] Suite.waits (0 ms)
[==========] 2 tests from 1 test suite ran. (0 ms total)
"""
SKIPPING = """\
[ RUN      ] Suite.waits
a_test.cpp:7: Skipped
no zip
[  SKIPPED ] Suite.waits (0 ms)
[ RUN      ] Suite.passes
[       OK ] Suite.passes (0 ms)
[ RUN      ] Suite.rests
a_test.cpp:9: Skipped
no root
[  SKIPPED ] Suite.rests (0 ms)
[==========] 3 tests from 1 test suite ran. (0 ms total)
[  SKIPPED ] 2 tests, listed below:
[  SKIPPED ] Suite.waits
[  SKIPPED ] Suite.rests
"""
FAILING = """\
[ RUN      ] Rows/Suite.passes/aRow
[       OK ] Rows/Suite.passes/aRow (0 ms)
[ RUN      ] Rows/Suite.fails/aRow
a_test.cpp:8: Failure
[  FAILED  ] Rows/Suite.fails/aRow, where GetParam() = 8-byte object <00> (0 ms)
[==========] 2 tests from 1 test suite ran. (0 ms total)
[  FAILED  ] 1 test, listed below:
[  FAILED  ] Rows/Suite.fails/aRow, where GetParam() = 8-byte object <00>
"""
CRASHING = "[ RUN      ] Suite.crashes\n"

# What a test runs, and what is shown of a run of it alone; DONE is how CTest tells its end.
ROWS = [
    ("passes", "true", "1 cases: 1 passed, 0 skipped, 0 failed\n", 0),
    ("skips", "echo skipped: no fish",
     "skipped: skips: no fish\n1 cases: 0 passed, 1 skipped, 0 failed\n", 0),
    ("suite", f"printf %s '{PASSING}'",
     "skipped: Suite.waits: no zip is here\n2 cases: 1 passed, 1 skipped, 0 failed\n", 0),
    ("skippingSuite", f"printf %s '{SKIPPING}'",
     "skipped: Suite.waits: no zip\nskipped: Suite.rests: no root\n"
     "3 cases: 1 passed, 2 skipped, 0 failed\n", 0),
    ("failingSuite", f"printf %s '{FAILING}'; exit 1",
     "failed: Rows/Suite.fails/aRow\n2 cases: 1 passed, 0 skipped, 1 failed\n", 1),
    ("crash", f"printf %s '{CRASHING}'; kill -9 $$",
     "failed: crash, in Suite.crashes\n1 cases: 0 passed, 0 skipped, 1 failed\n", 1),
    ("litters", "touch \"$TMPDIR/outside.cfg\" \"$HOME/.settings\"",
     "left behind: home/.settings\nleft behind: temporary/outside.cfg\n"
     "1 cases: 1 passed, 0 skipped, 0 failed\n", 1),
]


def run(folder, name):
    result = subprocess.run([Path(__file__).with_name("run.py"), "default", "-R", f"^{name}$"],
                            cwd=folder, stdout=subprocess.PIPE, check=False, encoding="utf-8",
                            env=dict(os.environ, TMPDIR=str(folder / "temporary")))
    return result.stdout, result.returncode


def main():
    wrong = 0
    with tempfile.TemporaryDirectory() as path:
        folder = Path(path)
        (folder / "temporary").mkdir()
        (folder / "build").mkdir()
        (folder / "CMakePresets.json").write_text(json.dumps({
            "version": 4,
            "configurePresets": [{"name": "default", "generator": "Ninja",
                                  "binaryDir": "${sourceDir}/build"}],
            "testPresets": [{"name": "default", "configurePreset": "default",
                             "output": {"outputOnFailure": True}}]}), encoding="utf-8")
        (folder / "build/CTestTestfile.cmake").write_text("".join(
            f"add_test({name} [==[sh]==] [==[-c]==] [==[{command}]==])\n"
            for name, command, _, _ in ROWS) +
            "add_test(needsAnother true)\nadd_test(another false)\n"
            "set_tests_properties(skips PROPERTIES SKIP_REGULAR_EXPRESSION \"^skipped: \")\n"
            "set_tests_properties(another PROPERTIES FIXTURES_SETUP other)\n"
            "set_tests_properties(needsAnother PROPERTIES FIXTURES_REQUIRED other)\n",
            encoding="utf-8")
        for name, _, expected, status in ROWS:
            out, returned = run(folder, name)
            if not out.endswith(expected) or returned != status or (status == 0) > (out == expected):
                print(f"{name}: returned {returned} and printed\n{out}", file=sys.stderr)
                wrong += 1
        out, _ = run(folder, "failingSuite")
        if "a_test.cpp:8: Failure" not in out or "passes" in out:
            print(f"what is shown of a failure:\n{out}", file=sys.stderr)
            wrong += 1
        out, _ = run(folder, "needsAnother")
        if "skipped: needsAnother: a test that it needs has failed\n" not in out:
            print(f"what is shown of a test that needs one that fails:\n{out}", file=sys.stderr)
            wrong += 1
        if list((folder / "temporary").iterdir()):
            print("run.py leaves its own folder behind", file=sys.stderr)
            wrong += 1
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
