#!/usr/bin/env python3
"""Checks that the installed headers are enough.

They include only each other, Qt and the standard library; they declare every class, function and
constant that the libraries export; the tool, the browser and the examples use the library as others do, through
installed headers alone.

check_headers.py INSTALLED_INCLUDE_FOLDER SOURCE_FOLDER
"""
import re
import sys
from pathlib import Path

OURS = ("base", "config", "version", "erdinfo", "alarm")
INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*([<"])([^>"]+)[>"]', re.MULTILINE)
STANDARD = re.compile(r"[a-z_]+")
EXPORTED = re.compile(r'^ \(c\+\+\)"(?:[a-z -]+ for )?vn::(\w+)', re.MULTILINE)
DECLARED = re.compile(r"^(?!#).*\b(?:class|struct)\s+VN_(?:BASE_)?EXPORT\s+(\w+)\s*[:{;\n]",
                      re.MULTILINE)
CONSTANT = re.compile(r"\bVN_(?:BASE_)?EXPORT\s+extern\s+const\s+[^;()]*?(\w+)\s*;")
FUNCTION = re.compile(r"\bVN_(?:BASE_)?EXPORT\s[^;{}()]*?(operator|\w+)[=!<>]*\s*\(")
QT = re.compile(r"Qt(Core|Script)/\w+(\.h)?")


def includes(path):
    for quote, name in INCLUDE.findall(path.read_text(encoding="utf-8")):
        yield quote, name


def main(installed, source):
    errors = []
    headers = {str(path.relative_to(installed)) for path in installed.rglob("*.h")}
    if not headers:
        errors.append(f"no headers in {installed}")
    for header in sorted(headers):
        for quote, name in includes(installed / header):
            allowed = (name in headers if quote == '"'
                       else STANDARD.fullmatch(name) or QT.fullmatch(name))
            if not allowed:
                errors.append(f"{header} includes {quote}{name}, which is not installed, "
                              "of Qt Core or Script, or standard")
    checked = 0
    for folder in ("tool", "browser", "examples"):
        for path in sorted((source / folder).rglob("*")):
            if path.suffix not in (".h", ".cpp"):
                continue
            checked += 1
            for _, name in includes(path):
                if name.split("/")[0] in OURS and name not in headers:
                    errors.append(f"{path.relative_to(source)} includes {name}, "
                                  "which is not installed")
    exported = {name for path in (source / "debian").glob("*.symbols")
                for name in EXPORTED.findall(path.read_text(encoding="utf-8"))}
    declared = {name for header in headers for pattern in (DECLARED, CONSTANT, FUNCTION)
                for name in pattern.findall((installed / header).read_text(encoding="utf-8"))}
    for name in sorted(exported - declared):
        errors.append(f"{name} is exported and in no installed header")
    for name in sorted(declared - exported):
        errors.append(f"{name} is declared in an installed header and not exported")
    print(f"{len(exported)} exported names, {len(headers)} headers and {checked} files of tool, browser and examples checked")
    for error in errors:
        print(error, file=sys.stderr)
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main(Path(sys.argv[1]), Path(sys.argv[2])))
