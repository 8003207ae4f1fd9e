#!/usr/bin/env python3
"""Writes src/text/cp932_table.inc, the two-byte half of the CP932 codec.

Source: Python's own "cp932" codec. The user-defined area (F0-F9) is regular and is computed by the
codec itself, so it is not in the table.

    tools/make_cp932_table.py            write the table
    tools/make_cp932_table.py --check    exit 1 when the file differs from what would be written
"""
import pathlib
import sys

TARGET = pathlib.Path(__file__).resolve().parent.parent / "src/text/cp932_table.inc"
LEADS = [*range(0x81, 0xA0), *range(0xE0, 0xF0), *range(0xFA, 0xFD)]
TRAILS = [*range(0x40, 0x7F), *range(0x80, 0xFD)]


def code_point(lead, trail):
    try:
        text = bytes([lead, trail]).decode("cp932")
    except UnicodeDecodeError:
        return 0
    return ord(text) if len(text) == 1 else 0


def table():
    lines = ["// Made by tools/make_cp932_table.py from Python's cp932 codec. Do not edit.",
             "// One row a lead byte (81-9F, E0-EF, FA-FC): trail bytes 40-7E, 80-FC."]
    for lead in LEADS:
        lines.append(f"// {lead:02X}")
        cells = [f"0x{code_point(lead, trail):04X}," for trail in TRAILS]
        for start in range(0, len(cells), 47):
            lines.append("".join(cells[start:start + 47]))
    return "\n".join(lines) + "\n"


def main():
    if "--check" in sys.argv[1:]:
        if TARGET.read_text() != table():
            sys.exit(f"{TARGET.name} differs from what its generator writes")
        print(f"{TARGET.name} is what its generator writes")
    else:
        TARGET.write_text(table())


main()
