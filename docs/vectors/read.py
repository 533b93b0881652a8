#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
# SPDX-License-Identifier: MIT
"""Reads the formats as formats.md tells, without the library, and says where a vector beside this
file disagrees. It is made to be read: short, and slow. Archives are left to any zip reader.
"""
import json
import re
import struct
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent


class FormatError(Exception):
    """A text that breaks its format: message, and the place where there is one."""


def lines_of(text):
    """The lines of a text; a line end behind the last one begins no other."""
    lines = text.split("\n")
    if lines[-1] == "":
        lines.pop()
    return [line[:-1] if line.endswith("\r") else line for line in lines]


# ---- Configurations ------------------------------------------------------------------------------

class Section:
    """Entries with ascending keys, of each key the newest value first."""

    def __init__(self):
        self.entries = []

    def add(self, line):
        key, equals, value = line.partition("=")
        self.entries.insert(0, [key, value if equals else None])

    def set(self, key, value):
        for entry in self.entries:
            if entry[0] == key:
                entry[1] = value
                return
        self.entries.insert(0, [key, value])

    def sorted(self):
        return sorted(self.entries, key=lambda entry: entry[0].encode("utf-16-be"))


def read_properties(text):
    section = Section()
    for line in lines_of(text):
        for at in range(0, len(line), 1024):
            piece = line[at:at + 1024]
            if not piece.startswith("#"):
                section.add(piece)
    return section.sorted()


def read_header(lines, sections):
    """Takes the header off the lines; returns whether it is complete."""
    head = Section()
    complete = True
    for name in ("File Version", "Software Version"):
        if not lines:
            continue
        line = lines.pop(0)
        if not line.startswith("#:"):
            complete = False
        elif name == "File Version":
            head.set(name, line[2:].partition("=")[0])
        else:
            head.set(name, line[2:])
    while lines:
        line = lines.pop(0)
        if line == "":
            break
        title = line.find("Configuration of")
        if line.startswith("# Camera IP: "):
            head.set("Factory IP", line[13:])
        elif title > 0:
            head.set("Factory IP", line[title + 17:].strip())
    if head.entries:
        sections["head"] = head
    return complete


def read_sections(lines, sections):
    name = ""
    for line in lines:
        if line == "" or line.startswith("#"):
            continue
        if line.startswith("SECTION"):
            if name:
                raise FormatError(f"Unexpected {line}")
            name = line[8:]
        elif line.startswith("ENDSECTION"):
            if not name:
                raise FormatError(f"SECTION expected before {line}")
            if line[11:] != name:
                raise FormatError(f"{line} does not match SECTION")
            name = ""
        elif name:
            sections.setdefault(name, Section()).add(line)
    if name:
        raise FormatError(f"ENDSECTION {name} expected")


def printed(sections):
    text = ""
    for name in sorted(sections):
        text += f"\nSECTION {name}\n"
        text += "".join(f"{key}={value or ''}\n" for key, value in sections[name].sorted())
        text += f"ENDSECTION {name}\n\n"
    return text


def decoded(data):
    try:
        return data.decode("utf-8-sig")
    except UnicodeDecodeError:
        return data.decode("latin-1")


def read_configuration(data, with_header=True):
    lines, sections, result = lines_of(decoded(data)), {}, {"error": None}
    if with_header:
        result["header"] = read_header(lines, sections)
    try:
        read_sections(lines, sections)
    except FormatError as error:
        result["error"] = str(error)
        if with_header:
            result["header"] = None
    result["sections"] = {name: section.sorted() for name, section in sections.items()}
    result["printed"] = printed(sections)
    return result


def read_jpeg_comment(data):
    comment, at = b"", 2
    while data[at + 1] != 0xDA:
        size, = struct.unpack_from(">H", data, at + 2)
        if data[at + 1] == 0xFE:
            comment += data[at + 4:at + 2 + size]
        at += 2 + size
    return read_configuration(comment, with_header=False)


def replace_section(target, source, section):
    def found(text):
        start = text.find(f"SECTION {section}")
        end = text.find(f"ENDSECTION {section}")
        return start, len(text) if end < 0 else end + len(f"ENDSECTION {section}")

    (start, end), (source_start, source_end) = found(target), found(source)
    content = source[source_start:source_end]
    if source_start < 0:
        return target if start < 0 else target[:start] + target[end:]
    if start < 0:
        return f"{target}\n\n{content}\n"
    return f"{target[:start]}\n\n{content}\n\n{target[end:]}"


def remove_sections(text, sections, outer_comments, section_comments, empty_lines):
    result, is_open, removed = "", False, False
    for line in lines_of(text):
        if line.startswith("SECTION"):
            is_open, removed = True, line[8:] in sections
            keep = not removed
        elif line.startswith("ENDSECTION"):
            keep = not removed
            is_open = removed = False
        elif line.startswith("#"):
            keep = not (removed or section_comments) if is_open else not outer_comments
        elif line == "":
            keep = not (removed or empty_lines)
        else:
            keep = is_open and not removed
        result += line + "\n" if keep else ""
    return result


# ---- Versions ------------------------------------------------------------------------------------

PLATFORMS = {"R4": 1, "R8": 2, "R16": 10, "VN": 20}


class Version:
    def __init__(self, text):
        parts = re.split(r"(?:[^\w*]|_)+", text)
        self.low, self.high = [0] * 6, [0] * 6
        for i, part in enumerate(parts[:6]):
            if i == 1 and part.startswith("V"):
                part = part[1:]
            if part == "*" or (i == 5 and part != "pre"):
                self.low[i], self.high[i] = 0, 99
            elif i == 0:
                self.low[i] = self.high[i] = PLATFORMS.get(part, 0)
            elif i == 5:
                self.low[i] = self.high[i] = 1
            else:
                number = int(part) if re.fullmatch("[0-9]+", part) else 0
                number = number if number < 1 << 31 else 0
                self.low[i] = self.high[i] = (number + 0x8000) % 0x10000 - 0x8000

    def order(self, other):
        for i in range(6):
            if self.high[i] < other.low[i]:
                return "<"
            if self.low[i] > other.high[i]:
                return ">"
        return "="


def is_safe(current, model, target):
    current, target = Version(current), Version(target)

    def is_(version, sign, text):
        return version.order(Version(text)) in sign

    if target.low[0] not in (0, current.low[0]):
        return False
    if current.low[1] > 3 and target.low[1] < 4:
        return False
    if current.low[0] == PLATFORMS["R16"]:
        if is_(current, "<=", "R16-2.1.*"):
            return is_(target, "=", "R16-2.2.1.10")
        return not is_(current, ">=", "R16-2.2.1.*") or is_(target, ">=", "R16-2.2.1.*")
    if current.low[0] != PLATFORMS["VN"]:
        return True
    if model.startswith("K40") and is_(current, "=", "VN-3.0.3.*"):
        return is_(target, ">=", "VN-3.0.6.29")
    if model.startswith("H40") and is_(current, ">=", "VN-3.0.8.*"):
        return is_(target, ">=", "VN-3.0.8.*")
    if model.startswith(("K30", "H30", "K40")) and (
            is_(current, ">=", "VN-3.0.6.24") or is_(current, ">=", "VN-3.0.8.*")):
        return is_(target, ">=", "VN-3.0.6.*")
    if model.startswith("W40"):
        return is_(target, ">=", "VN-3.4.5.4")
    if model[1:3] == "50":
        return target.low[1] > 3
    return True


def read_package(data):
    version = ""
    for line in lines_of(data.decode("utf-8"))[:30]:
        if line.startswith("## Version:"):
            version = line[12:]
        if line.startswith("# Version:"):
            version = line[11:]
        if line.endswith("UPLD"):
            version = line[2:-5] if len(line) >= 7 else line[2:]
    return {"version": version or None}


def application_version(version, revision, debug):
    parts = version.split(".")
    if len(parts) == 3:
        parts.insert(2, "3")
    text = version
    if len(parts) >= 4:
        major, minor, stage, build = parts[:4]
        forms = {"0": "{} alpha {}", "1": "{} beta {}", "2": "{} rc {}",
                 "3": "{}" if build == "0" else "{}.0.{}"}
        if stage in forms:
            text = forms[stage].format(f"{major}.{minor}", build)
    if revision not in ("", "?"):
        colon = revision.find(":")
        text += ", revision " + (revision[colon + 1:] if colon > 0 else revision)
    return text + (", debug" if debug > 0 else "")


# ---- Records -------------------------------------------------------------------------------------

def record(values):
    def text(name, width):
        content = values[name].encode("utf-32-le")
        count = min(len(content) // 4, width)
        return content[:count].ljust(width, b"\0")

    def block(number, time, identifier):
        time = int(time)
        return struct.pack("<IIIIIiHH36x", 1, 2, number, time // 1000000 % (1 << 32),
                           time // 1000 % 1000, identifier, 1, 0)

    written = b"EvtD" + struct.pack("<IIII", 0x01080002, 332, 156, 0)
    written += text("text1", 128) + bytes(128) + text("text2", 16) + text("text3", 32) + bytes(8)
    written += struct.pack("<iiI", values["id1"], values["id2"], 0)
    written += block(values["number1"], values["time1"], values["id1"])
    written += block(values["number2"], values["time2"], values["id2"]) + bytes(16)
    return written + bytes.fromhex(values.get("existing", ""))[len(written):]


# ---- Alarm lists and updates ---------------------------------------------------------------------

class Scanner:
    """Tokens by the longest match. A rule is a name, a pattern and what makes the value; without a
    name it is skipped."""

    def __init__(self, text, rules):
        self.text, self.rules = text, rules
        self.start = self.end = 0
        self.token = self.value = None
        self.next()

    def next(self):
        while True:
            matches = [(rule[1].match(self.text, self.end), rule) for rule in self.rules]
            matches = [(match, rule) for match, rule in matches if match]
            if not matches:
                if self.end < len(self.text):
                    self.stop()
                self.token = "$end"
                return
            match, rule = max(matches, key=lambda found: found[0].end())
            self.start, self.end = self.end, match.end()
            if rule[0]:
                self.token = rule[0] if rule[0] != "mark" else f"'{match[0]}'"
                self.value = rule[2](match[0]) if rule[2] else None
                return

    def stop(self):
        """The text ends here: in a string that was begun, or at a byte that begins no token."""
        begun = BEGUN_STRING.match(self.text, self.end) if self.rules is LIST_RULES else None
        length = len(begun[0]) + (begun.end() < len(self.text)) if begun else 1
        self.start, self.end = self.end, self.end + length

    def take(self, token, *expected):
        if self.token != token:
            self.fail(*(expected or (token,)))
        value = self.value
        self.next()
        return value

    def fail(self, *expected):
        message = f"syntax error, unexpected {self.token}"
        if 0 < len(expected) <= 4:
            message += ", expecting " + " or ".join(expected)
        raise FormatError(message, self.start, self.end)


def rule(name, pattern, value=None):
    return name, re.compile(pattern, re.DOTALL | re.ASCII), value


EXPONENT = r"(?:[eE][+-]?[0-9]+)?"
DOUBLE = r'"(?:[^"\\\x01-\x1f\x7f]|\\u[0-9A-Fa-f]{4}|\\["/\\bfnrt])*'
SINGLE = r"'(?:[^'\\\x01-\x1f\x7f]|\\u[0-9A-Fa-f]{4}|\\['/\\bfnrt])*"
BEGUN_STRING = re.compile(f"{DOUBLE}|{SINGLE}", re.DOTALL)
LIST_RULES = [
    rule(None, r"[ \t\r\n]+"),
    rule("mark", r"[{}\[\],:]"),
    rule("TNUMBER", rf"-?0\.[0-9]+{EXPONENT}|-?[1-9][0-9]*(?:\.[0-9]+)?{EXPONENT}|0", float),
    rule("TSTRING", f"{DOUBLE}\"|{SINGLE}'", lambda text: text[1:-1]),
    rule("TBOOL", "true|false", lambda text: text == "true"),
    rule("TNULL", "null"),
    rule("TSTRING", r"[A-Za-z_][-./0-9A-Za-z_]*", str),
    rule(None, r"/\*(?:[^*]|\*[^/])*\*/"),
]


def read_alarm_list(data):
    scanner = Scanner(data.decode("latin-1"), LIST_RULES)

    def value(*expected):
        if scanner.token == "'{'":
            return mapping()
        if scanner.token == "'['":
            return array()
        if scanner.token in ("TSTRING", "TNUMBER", "TBOOL", "TNULL"):
            return scanner.take(scanner.token)
        return scanner.fail(*expected)

    def mapping():
        scanner.take("'{'")
        members = []
        while scanner.token != "'}'" or members:
            key = scanner.take("TSTRING", *(["TSTRING"] if members else ["TSTRING", "'}'"]))
            scanner.take("':'")
            members.append([key, value()])
            if scanner.token != "','":
                break
            scanner.next()
        scanner.take("'}'")
        return {"object": sorted(members, key=lambda member: member[0])}

    def array():
        scanner.take("'['")
        elements = []
        while scanner.token != "']'" or elements:
            elements.append(value())
            if scanner.token != "','":
                break
            scanner.next()
        scanner.take("']'")
        return {"array": elements[::-1]}

    if scanner.token not in ("'{'", "'['"):
        scanner.fail("'{'", "'['")
    result = value()
    scanner.take("$end")
    return {"value": result}


def integer(text):
    number = max(-(1 << 63), min((1 << 63) - 1, int(text)))
    return (number + (1 << 31)) % (1 << 32) - (1 << 31)


def date(text):
    year, month, day = map(int, text.split("-"))
    leap = year % 4 == 0 and (year % 100 != 0 or year % 400 == 0)
    days = [31, 29 if leap else 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31]
    exists = year > 0 and 1 <= month <= 12 and 1 <= day <= days[month - 1]
    return {"date": text + "T00:00:00" if exists else None}


UPDATE_RULES = [
    rule(None, r"[ \t\r\n]+"),
    rule("mark", "[#,;=:]"),
    rule("$undefined", "-"),
    rule("TBOOL", "true|false", lambda text: text == "true"),
    rule("TINTEGER", "-?[0-9]+", integer),
    rule("TFLOAT", r"-?[0-9]*\.[0-9]+", float),
    rule("TSTRING", '"[^"]*"', str),
    rule("TSTRING", r"[\t ./0-9A-Za-z\[\]^_\\]+", str),
    rule("TDATE", "[0-9]{4}-[0-9]{2}-[0-9]{2}", date),
    rule("TTIME", "[0-9]{2}:[0-9]{2}:[0-9]{2}", lambda text: {"date": None}),
]


def read_alarm_update(data):
    scanner = Scanner(data.decode("latin-1"), UPDATE_RULES)
    if scanner.token == "'#'":
        scanner.next()
        message = scanner.take("TSTRING")
        scanner.take("':'")
        if scanner.token != "TFLOAT":
            scanner.fail("TFLOAT")
        return {"properties": {message: scanner.value}}

    properties = {}
    expected = ["TSTRING", "'#'", "'a'"]
    while True:
        key = scanner.take("TSTRING", *expected)
        expected = ["TSTRING"]
        scanner.take("'='")
        if scanner.token == "TSTRING":
            strings = [scanner.take("TSTRING")]
            while scanner.token == "','":
                scanner.next()
                strings.insert(0, scanner.take("TSTRING"))
            value = strings[0] if len(strings) == 1 else strings
        elif scanner.token in ("TINTEGER", "TFLOAT", "TDATE", "TTIME", "TBOOL"):
            value = scanner.take(scanner.token)
        else:
            scanner.fail()
        properties.setdefault(key, value)
        if scanner.token != "';'":
            break
        scanner.next()
    scanner.take("$end")
    return {"properties": properties}


# ---- Vectors -------------------------------------------------------------------------------------

def outcome(read, data):
    try:
        return read(data)
    except FormatError as error:
        message, start, end = error.args
        return {"error": message, "start": start, "end": end}


def pairs():
    """Name, what was read, what is expected, of each vector."""
    readers = {
        "properties/*.txt": lambda data: {"entries": read_properties(data.decode("ascii"))},
        "configuration/*.cfg": read_configuration,
        "jpeg-comment/*.jpg": read_jpeg_comment,
        "firmware-package/*.fwp": read_package,
        "alarm-list/*.alarms": read_alarm_list,
        "alarm-update/*.update": read_alarm_update,
    }
    for pattern, read in readers.items():
        for path in sorted(HERE.glob(pattern)):
            expected = json.loads(path.with_suffix(".expected.json").read_text("utf-8"))
            got = outcome(read, path.read_bytes())
            if "printed" not in expected:
                got.pop("printed", None)
            yield path.name, got, expected

    for path in sorted(HERE.glob("erdinfo/*.json")):
        expected = bytes.fromhex(path.with_suffix(".expected.hex").read_text("ascii"))
        yield path.name, record(json.loads(path.read_text("utf-8"))), expected

    tables = {
        "section-editing/replace": (lambda row: replace_section(
            row["target"], row["source"], row["section"]), "result"),
        "section-editing/remove": (lambda row: remove_sections(
            row["text"], row["sections"], row["dropOuterComments"], row["dropSectionComments"],
            row["dropEmptyLines"]), "result"),
        "software-version/components": (lambda row: Version(row["text"]).low, "low"),
        "software-version/comparison": (lambda row: Version(row["a"]).order(Version(row["b"])),
                                        "order"),
        "software-version/safe-updates": (lambda row: is_safe(
            row["current"], row["model"], row["target"]), "safe"),
        "application-version/cases": (lambda row: application_version(
            row["version"], row["revision"], row["debug"]), "result"),
    }
    for name, (read, member) in tables.items():
        for row in json.loads((HERE / f"{name}.json").read_text("utf-8")):
            yield f"{name}: {row}", read(row), row[member]
            if member == "low":
                yield f"{name}: {row}", Version(row["text"]).high, row["high"]


def main():
    count = failures = 0
    for name, got, expected in pairs():
        count += 1
        if got != expected:
            failures += 1
            print(f"{name}: {got!r} instead of {expected!r}", file=sys.stderr)
    print(f"{count} vectors, {failures} read otherwise")
    return 1 if failures or count < 250 else 0


if __name__ == "__main__":
    sys.exit(main())
