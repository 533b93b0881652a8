#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
# SPDX-License-Identifier: MIT
"""Reads records that the tool writes by docs/erdinfo.ksy and by docs/erdinfo.hexpat.

  read_layouts.py TOOL

The compilers of the two languages are programs of their own, which a build cannot ask for; here are two
small readers of as much of the languages as the files use. A record must give the values of its vector,
and a record with a wrong byte in a checked field must be refused.
"""
import json
import re
import struct
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
LARGEST_TIME = 2**63 - 1  # of the tool's options
NUMBERS = {"u2": "<H", "u4": "<I", "s4": "<i", "u16": "<H", "u32": "<I", "s32": "<i", "char": "<c"}


class Refused(Exception):
    pass


# ---- Kaitai Struct -------------------------------------------------------------------------------

def yaml(lines, indent=0):
    """Maps, lists of maps, and plain or quoted scalars; takes the lines that it reads off the list."""
    result = None
    while lines and len(lines[0]) - len(lines[0].lstrip()) >= indent:
        line = lines[0]
        assert len(line) - len(line.lstrip()) == indent, line
        if line.lstrip().startswith("- "):
            lines[0] = line.replace("- ", "  ", 1)
            result = result if result is not None else []
            result.append(yaml(lines, indent + 2))
            continue
        key, value = re.fullmatch(r"([\w-]+):(?: (.+))?", line.strip()).groups()
        lines.pop(0)
        result = result if result is not None else {}
        if value is None:
            value = yaml(lines, len(lines[0]) - len(lines[0].lstrip()))
        elif value.startswith('"'):
            value = value[1:-1]
        elif re.fullmatch(r"\d+|0x[0-9a-f]+", value):
            value = int(value, 0)
        result[key] = value
    return result


def read_kaitai(layout, data, items=None, pos=0):
    """The values of a sequence by name, and where it ends."""
    values = {}
    for item in items or layout["seq"]:
        kind, count = item.get("type"), item.get("repeat-expr", 1)
        if "contents" in item:
            end = pos + len(item["contents"])
            value = data[pos:end].decode("latin-1")
            valid = item["contents"]
        elif "size" in item:
            end = pos + item["size"]
            value = valid = data[pos:end]
        elif kind in layout["types"]:
            value, end = read_kaitai(layout, data, layout["types"][kind]["seq"], pos)
            valid = value
        else:
            end = pos + count * int(kind[1])
            numbers = [number for number, in struct.iter_unpack(NUMBERS[kind], data[pos:end])]
            value = numbers if "repeat" in item else numbers[0]
            valid = item.get("valid", value)
            if isinstance(valid, str):
                valid = values[valid]
            elif isinstance(valid, dict):
                valid = min(value, valid["max"])
        if value != valid:
            raise Refused(item["id"])
        values[item["id"]] = value
        pos = end
    return values, pos


# ---- Pattern language ----------------------------------------------------------------------------

def structs(text):
    text = re.sub(r"//.*|#.*", "", text)
    return {name: re.findall(r"(\w+)(?: (\w+))?(?:\[(\d+)\])?;", body)
            for name, body in re.findall(r"struct (\w+) \{(.*?)\};", text, re.DOTALL)}


def read_pattern(layout, data, name="Erdinfo", pos=0):
    values = {}
    for kind, member, count in layout[name]:
        if kind == "padding":
            pos += int(count)
            continue
        if kind in layout:
            values[member], pos = read_pattern(layout, data, kind, pos)
            continue
        size = struct.calcsize(NUMBERS[kind])
        value = [number for number, in struct.iter_unpack(
            NUMBERS[kind], data[pos:pos + int(count or 1) * size])]
        assert len(value) == int(count or 1)
        pos += len(value) * size
        values[member] = value if count else value[0]
    return values, pos


# ---- Records -------------------------------------------------------------------------------------

def kept(text, width):
    """What a field of that many bytes keeps of a text, as code units."""
    count = min(len(text), width)
    return list(struct.unpack(f"<{width // 4}I", text.encode("utf-32-le")[:count].ljust(width, b"\0")))


def expected(values):
    result = {name: values[name] for name in ("id1", "id2", "number1", "number2")}
    for name in ("time1", "time2"):
        time = int(values[name])
        result[name] = {"seconds": time // 1000000 % 2**32, "milliseconds": time // 1000 % 1000}
    for name, width in (("text1", 128), ("text2", 16), ("text3", 32)):
        result[name] = kept(values[name], width)
    return result


def written(tool, folder, values):
    path = Path(folder) / "record"
    if path.exists():
        path.unlink()
    options = [word for name, value in values.items() for word in (f"--{name}", str(value))]
    subprocess.run([tool, "erdinfo", "write", path, *options], check=True, stderr=subprocess.DEVNULL)
    return path.read_bytes()


def main():
    kaitai = yaml([line for line in (ROOT / "docs/erdinfo.ksy").read_text("utf-8").splitlines()
                   if line and not line.startswith("#")])
    pattern = structs((ROOT / "docs/erdinfo.hexpat").read_text("utf-8"))
    records = 0
    with tempfile.TemporaryDirectory() as folder:
        for vector in sorted((ROOT / "docs/vectors/erdinfo").glob("*.json")):
            values = json.loads(vector.read_text("utf-8"))
            values.pop("existing", None)
            if max(int(values["time1"]), int(values["time2"])) > LARGEST_TIME:
                continue
            data = written(sys.argv[1], folder, values)
            for name, (got, end) in (("ksy", read_kaitai(kaitai, data)),
                                     ("hexpat", read_pattern(pattern, data))):
                assert end == 488, (name, end)
                for field, value in expected(values).items():
                    assert got[field] == value, (vector.name, name, field, got[field], value)
                assert (got["block1_id"], got["block2_id"]) == (values["id1"], values["id2"])
            records += 1
        data = written(sys.argv[1], folder, {"id1": 7, "id2": -1})
    assert b"".join(read_pattern(pattern, data)[0]["magic"]) == b"EvtD"
    for offset, field in ((0, "magic"), (4, "format"), (8, "header_size"), (12, "data_size"),
                          (344, "block1_code1"), (348, "block1_code2"), (361, "milliseconds"),
                          (364, "block1_id"), (368, "block1_code3"), (408, "block2_code1"),
                          (412, "block2_code2"), (425, "milliseconds"), (428, "block2_id"),
                          (432, "block2_code3")):
        wrong = bytearray(data)
        wrong[offset] ^= 0x55
        try:
            read_kaitai(kaitai, bytes(wrong))
        except Refused as refused:
            assert str(refused) == field, (offset, str(refused))
        else:
            raise AssertionError(f"a wrong byte at {offset} is read")
    assert records >= 9, records
    print(f"{records} records read alike by both layouts")


if __name__ == "__main__":
    main()
