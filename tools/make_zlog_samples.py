#!/usr/bin/env python3
"""Makes samples/contest.all, .zlo, .zlox and contest_zlog.csv: a made-up contest, as zLog writes it.

    tools/make_zlog_samples.py [FOLDER]      default: samples/

The first two hold the same contacts, so that what is read from either can be compared; so do the
other two, which are of the newer forms.
"""
import csv
import datetime
import io
import pathlib
import re
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

# What the newer forms have beside: the modes' codes, frequency (kHz), PC, and whether the band was
# left too soon, forced, QSL wish, struck out, verified. Contacts: those above and some more.
NEWER_MODES = ["CW", "SSB", "FM", "AM", "RTTY", "FT4", "FT8", "Other"]
POWERS = "PLMH"
NEWER_CONTACTS = [
    ("2024/04/28 20:59:31", "JA7QBQ", 599, "10M", 599, "07M", "7", "FT8", 1, "JA1QAB",
     "(7041.3)", "7041.3", "PC2", "QSL"),
    ("2024/04/28 20:59:58", "JA8QBR", 599, "10M", 599, "101M", "14", "FT4", 3, "", "",
     "14080.0", "PC1", "forced"),
    ("2024/04/29 08:59:59", "JA1QBS", 59, "10M", 59, "18L", "1.9", "Other", 0, "", "-DUPE-",
     "1845.0", "", "invalid"),
    ("2024/04/29 09:00:00", "W1QBT", 599, "10M", 579, "CT", "10G", "RTTY", 12, "", "\"TNX\", 73",
     "10368100.5", "PC-3", "QSY verified"),
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


def newer_contacts():
    for when, call, sent, our_nr, received, nr, band, mode, points, operator, memo in CONTACTS:
        freq = "".join(re.findall(r"\((\d{4,5})\)", memo))
        yield (when + ":00", call, sent, our_nr, received, nr, band,
               "RTTY" if mode == "RTY" else mode, points, operator, memo, freq, "", "")
    yield from NEWER_CONTACTS


def newer_record(serial, contact):
    (when, call, sent, our_nr, received, nr, band, mode, points, operator, memo, freq, pc,
     marks) = contact
    since = datetime.datetime.strptime(when, "%Y/%m/%d %H:%M:%S") - datetime.datetime(1899, 12, 30)
    data = struct.pack("<d", since.total_seconds() / 86400)
    data += short_string(call, 12) + short_string(our_nr, 30) + short_string(nr, 30)
    data += b"\0" + struct.pack("<HHi", sent, received, serial)
    data += bytes([NEWER_MODES.index(mode), BANDS.index(band), POWERS.index("M")])
    data += short_string(nr, 30) + short_string("", 30) + bytes([serial % 2, 0, points])
    data += short_string(operator, 14) + short_string(memo, 64)
    data += bytes([serial % 2, "-DUPE-" in memo, 0, 2]) + struct.pack("<iii", 50, 0, -1)
    data += short_string(freq, 10) + bytes(["QSY" in marks]) + short_string(pc, 10)
    data += bytes(["forced" in marks, "QSL" in marks, "invalid" in marks, "verified" in marks])
    data += short_string("", 100)
    assert len(data) == 384
    return data


def newer_header(contacts):
    return b"ZLOX" + struct.pack("<i", contacts) + header()[8:] + bytes(128)


CSV_COLUMNS = ["Date", "Time", "TimeZone", "CallSign", "RSTSent", "NrSent", "RSTRcvd", "NrRcvd",
               "Serial", "Mode", "Band", "Power", "Multi1", "Multi2", "NewMulti1", "NewMulti2",
               "Points", "Operator", "Memo", "CQ", "Dupe", "Reserve", "TX", "Power2", "Reserve2",
               "Reserve3", "Freq", "QsyViolation", "PCName", "Forced", "QslState", "Invalid",
               "Area", "RBN Verified"]


def newer_row(serial, contact):
    (when, call, sent, our_nr, received, nr, band, mode, points, operator, memo, freq, pc,
     marks) = contact
    date, time = when.split()
    band = "10 GHz & up" if band == "10G" else band + " MHz"
    return [date, time, "JST", call, sent, our_nr, received, nr, serial, mode, band, "M", nr, "",
            serial % 2 == 1, False, points, operator, memo, serial % 2 == 1, "-DUPE-" in memo, 0, 2,
            50, 0, -1, freq, "QSY" in marks, pc, "forced" in marks, int("QSL" in marks),
            "invalid" in marks, "", "verified" in marks]


def main():
    folder = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else
                          pathlib.Path(__file__).resolve().parent.parent / "samples")
    lines = ["zLog for Windows "] + [text_line(c) for c in CONTACTS]
    (folder / "contest.all").write_bytes("".join(f"{l}\r\n" for l in lines).encode("cp932"))
    (folder / "contest.zlo").write_bytes(header() + b"".join(record(c) for c in CONTACTS))
    newer = list(enumerate(newer_contacts(), 1))
    (folder / "contest.zlox").write_bytes(
        newer_header(len(newer)) + b"".join(newer_record(n, c) for n, c in newer))
    text = io.StringIO(newline="")
    rows = csv.writer(text, quoting=csv.QUOTE_ALL, lineterminator="\r\n")
    rows.writerow(CSV_COLUMNS)
    rows.writerows(newer_row(n, c) for n, c in newer)
    (folder / "contest_zlog.csv").write_bytes(text.getvalue().encode("utf-8-sig"))


main()
