#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
# SPDX-License-Identifier: MIT
"""Checks that the translation has every text of the program, and that none is unfinished.

check_translation.py LUPDATE BROWSER_FOLDER
"""
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree
from pathlib import Path


def texts(path):
    for context in ElementTree.parse(path).getroot().iter("context"):
        for message in context.iter("message"):
            translation = message.find("translation")
            yield (context.findtext("name"), message.findtext("source"), translation.text,
                   translation.get("type"))


def main(lupdate, folder):
    path = folder / "translations" / "vantero-config-browser_de.ts"
    errors = [f"{context}: {source!r} is {kind or 'empty'}"
              for context, source, text, kind in texts(path) if kind or not text]
    with tempfile.TemporaryDirectory() as work:
        fresh = Path(work) / "fresh.ts"
        sources = sorted(str(each) for kind in ("*.cpp", "*.h") for each in folder.glob(kind))
        subprocess.run([lupdate, "-silent", "-locations", "none", *sources, "-ts", str(fresh)],
                       check=True, stderr=subprocess.DEVNULL)
        known = {(context, source) for context, source, _, _ in texts(path)}
        wanted = {(context, source) for context, source, _, _ in texts(fresh)}
    errors += [f"{context}: {source!r} is not in the translation"
               for context, source in sorted(wanted - known)]
    errors += [f"{context}: {source!r} is in no source"
               for context, source in sorted(known - wanted)]
    print(f"{len(wanted)} texts checked")
    for error in errors:
        print(error, file=sys.stderr)
    return 1 if errors or not wanted else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], Path(sys.argv[2])))
