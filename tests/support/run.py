#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
# SPDX-License-Identifier: MIT
"""Runs the tests of a preset by CTest and says what came of them.

  run.py PRESET [OPTION of ctest…]

Shown are the tests that fail, with what they printed; then the names of the cases that failed, those
that were skipped with their reasons, and the sum. What else was printed stands in
build/PRESET/Testing/Temporary/LastTest.log. The tests have an empty home folder and an empty folder
for temporary files, which go afterwards; a test that leaves something in them fails the run.
"""
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path
from xml.etree import ElementTree

DONE = re.compile(r" *(\d+/\d+) Test +#\d+: (\S+) [. ]*(\*\*\*Skipped|Passed) ")
UNTOLD = re.compile(r"Test project | +Start +\d+: |\[       OK \]|\[  SKIPPED \]|\[-+\]")
RUN = re.compile(r"\[ RUN      \] (\S+)")
SKIPPED = re.compile(r"^\[ RUN      \] (\S+)\n(?:[^\n]*: Skipped\n)?(.*?)\n+\[  SKIPPED \] \1", re.M | re.S)
FAILED = re.compile(r"^\[  FAILED  \] ([\w./]+)(?:, where .*)? \(\d+ ms\)$", re.M)


def show(stream):
    """Hands on what is printed of failures; in a terminal, tells how far it is."""
    progress = sys.stdout.isatty()
    held = None  # shown before what follows it: an empty line, a case that starts
    for line in stream:
        done = DONE.match(line)
        if progress and done:
            print(f"\r\x1b[K{done[1]} {done[2]}", end="", flush=True)
        if "% tests passed" in line:
            break
        if done or UNTOLD.match(line):
            held = None
        elif RUN.match(line) or line == "\n":
            held = line
        else:
            print(("\r\x1b[K" if progress else "") + (held or "") + line, end="", flush=True)
            held = None
    for _ in stream:
        pass
    if progress:
        print("\r\x1b[K", end="")


def outcome(report):
    """The count of all cases, the names of the failed ones, and of skipped ones with the reason."""
    count, failed, skipped = 0, [], []
    for test in ElementTree.parse(report).iter("testcase"):
        name, output = test.get("name"), test.findtext("system-out") or ""
        cases = re.search(r"^\[=+\] (\d+) tests? from .* ran\.", output, re.M)
        count += int(cases[1]) if cases else 1
        if cases:
            failed += dict.fromkeys(FAILED.findall(output))
            skipped += [(case, " ".join(reason.split())) for case, reason in SKIPPED.findall(output)]
            if test.get("status") == "fail" and not FAILED.search(output):
                failed.append(name)
        elif test.find("skipped") is not None or test.get("status") in ("notrun", "disabled"):
            reason = re.search(r"^skipped: (.*)", output, re.M)
            skipped.append((name, reason[1] if reason else "a test that it needs has failed"))
        elif test.get("status") != "run":
            started = RUN.findall(output)
            failed.append(f"{name}, in {started[-1]}" if started else name)
    return count, failed, skipped


def run(preset, options, folder):
    environment = dict(os.environ)
    # The home folder is where a cache of compiled files is, unless it is named.
    environment.setdefault("CCACHE_DIR", str(Path.home() / ".cache/ccache"))
    for variable, name in (("TMPDIR", "temporary"), ("HOME", "home")):
        (folder / name).mkdir()
        (folder / name).chmod(0o711)  # some tests look at files as another user
        environment[variable] = str(folder / name)
    folder.chmod(0o711)
    report = folder / "report.xml"
    with subprocess.Popen(
            ["ctest", "--preset", preset, "--output-junit", report,
             "--test-output-size-passed", "10000000", "--test-output-size-failed", "10000000",
             *options],
            env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT, encoding="utf-8", errors="backslashreplace") as ctest:
        show(ctest.stdout)
    if not report.exists():
        print("no test was run", file=sys.stderr)
        return False

    count, failed, skipped = outcome(report)
    for name, reason in skipped:
        print(f"skipped: {name}: {reason}")
    for name in failed:
        print(f"failed: {name}")
    left = sorted(str(path.relative_to(folder)) for name in ("temporary", "home")
                  for path in (folder / name).iterdir())
    for path in left:
        print(f"left behind: {path}")
    print(f"{count} cases: {count - len(failed) - len(skipped)} passed, {len(skipped)} skipped, "
          f"{len(failed)} failed")
    return ctest.returncode == 0 and not failed and not left


def main():
    if len(sys.argv) < 2 or sys.argv[1].startswith("-"):
        print(__doc__, end="")
        return 0 if sys.argv[1:] in (["-h"], ["--help"]) else 2
    with tempfile.TemporaryDirectory(prefix="vantero-tests-") as folder:
        return 0 if run(sys.argv[1], sys.argv[2:], Path(folder)) else 1


if __name__ == "__main__":
    sys.exit(main())
