#!/usr/bin/env python3
"""Makes samples/contest.all and samples/contest.zlo: one made-up contest, as zLog writes it.

    tools/make_zlog_samples.py [FOLDER]      default: samples/

The two files hold the same contacts, so that what is read from either can be compared.
"""
import datetime
import pathlib
import struct
import sys

BANDS = ["1.9", "3.5", "7", "10", "14", "18", "21", "24", "28", "50", "144", "430", "1200", "2400",
         "5600", "10G"]
MODES = ["CW", "SSB", "FM", "AM", "RTY", "Other"]
OUR_CALL = "JA1QAA"
CONTEST = "ALL JA コンテスト"
JST = -540  # the zone in the header, minutes

# date and time (JST), call, sent report and number, received report and number, band, mode, points,
# operator, memo
CONTACTS = [
    ("2024/04/27 21:00", "JA1QBA", 599, "10M", 599, "10H", "7", "CW", 1, "", "(7010)"),
    ("2024/04/27 21:02", "JA7QBB", 599, "10M", 599, "06M", "7", "CW", 1, "", ""),
    ("2024/04/27 21:05", "JH8QBC", 599, "10M", 599, "101P", "3.5", "CW", 1, "", "(3520)"),
    ("2024/04/27 21:09", "JA1QBD/2", 59, "10M", 59, "18M", "7", "SSB", 1, "", "(7080) 移動"),
    ("2024/04/27 21:11", "7L1QBE/P", 59, "10M", 59, "11L", "50", "SSB", 1, "JA1QAB", ""),
    ("2024/04/27 21:15", "JR6QBF", 59, "10M", 59, "47M", "14", "SSB", 1, "JA1QAB", "(14250)"),
    ("2024/04/27 21:20", "KH6/JA1QBG", 599, "10M", 599, "DX", "21", "CW", 1, "", "(21015)"),
    ("2024/04/27 21:24", "JA1QBH/KH0", 599, "10M", 599, "DX", "28", "CW", 1, "", "(28012)"),
    ("2024/04/27 23:59", "JA5QBI", 59, "10M", 59, "36M", "50", "FM", 1, "", "(51000)"),
    ("2024/04/28 00:00", "JA6QBJ", 59, "10M", 59, "40H", "144", "FM", 1, "", "(0)"),
    ("2024/04/28 00:03", "JA9QBK", 59, "10M", 59, "30M", "430", "FM", 1, "", ""),
    ("2024/04/28 00:07", "JA4QBL", 59, "10M", 59, "31L", "1200", "FM", 1, "", ""),
    ("2024/04/28 05:30", "JA2QBM", 599, "10M", 599, "20M", "1.9", "CW", 1, "", "(1909)"),
    ("2024/04/28 08:59", "JA3QBN", 599, "10M", 599, "25H", "14", "RTY", 1, "", "(14085)"),
    ("2024/04/28 09:00", "JA8QBO", 59, "10M", 59, "107M", "3.5", "AM", 1, "", ""),
    ("2024/04/28 20:59", "JA0QBP", 599, "10M", 599, "09M", "7", "CW", 1, "", "(7004) ありがとう"),
]


def text_line(contact):
    when, call, sent, our_nr, received, nr, band, mode, points, operator, memo = contact
    if operator:
        memo = f"%%{operator}%% {memo}".rstrip()
    return (f"{when} {call:<12} {sent:<3} {our_nr:<7} {received:<3} {nr:<7} -     -     "
            f"{band:<5}{mode:<5}{points:<3}{memo}")


def short_string(text, size):
    data = text.encode("cp932")
    return bytes([len(data)]) + data.ljust(size, b"\0")


def record(contact):
    when, call, sent, our_nr, received, nr, band, mode, points, operator, memo = contact
    since = datetime.datetime.strptime(when, "%Y/%m/%d %H:%M") - datetime.datetime(1899, 12, 30)
    data = struct.pack("<d", since / datetime.timedelta(days=1))
    data += short_string(call, 12) + short_string(our_nr, 30) + short_string(nr, 30)
    data += b"\0" + struct.pack("<HHI", sent, received, 0)
    data += bytes([MODES.index(mode), BANDS.index(band), 2])
    data += short_string("", 30) + short_string("", 30) + bytes([0, 0, points])
    data += short_string(operator, 14) + short_string(memo, 67) + bytes(13)
    assert len(data) == 256
    return data


def header():
    data = (bytes(8) + short_string(OUR_CALL, 12)).ljust(84, b"\0")
    data += struct.pack("<h", JST)
    return (data.ljust(175, b"\0") + short_string(CONTEST, 60)).ljust(256, b"\0")


def main():
    folder = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else
                          pathlib.Path(__file__).resolve().parent.parent / "samples")
    lines = ["zLog for Windows "] + [text_line(c) for c in CONTACTS]
    (folder / "contest.all").write_bytes("".join(f"{l}\r\n" for l in lines).encode("cp932"))
    (folder / "contest.zlo").write_bytes(header() + b"".join(record(c) for c in CONTACTS))


main()
