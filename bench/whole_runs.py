#!/usr/bin/env python3
"""Times whole processes beside one pass of iconv over the same file, and takes their peak memory.

    bench/whole_runs.py [CONTACTS]      default 200000

Makes a log of made-up contacts, then runs each command several times in turn and prints the best
wall time, its ratio to iconv's and the largest resident size. Needs ./run --build first.
"""
import os
import pathlib
import random
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
CLI = ROOT / "build/release/bin/tobarine-cli"
ROUNDS = 9


def make_hamlog(path, contacts):
    pick = random.Random(1)
    names = ["山田太郎", "佐藤", "Bob", "", "ｽｽﾞｷ"]
    places = ["神奈川県横浜市", "東京都千代田区", "Newington CT", "北海道札幌市中央区", ""]
    remarks = ["", "QSL via @W3HNK", "IOTA AS-007", "移動運用 富士山", "%hQSL TNX", "WAS=CA",
               "コンテスト参加 ありがとうございました"]
    with open(path, "wb") as file:
        for _ in range(contacts):
            call = pick.choice(["JA", "JH", "JR", "7K", "W", "K", "DL", "UA", "HL", "BY"])
            call += str(pick.randrange(10)) + "".join(pick.choices("ABCDEFGHIJKLMNOPQRSTUVWXYZ", k=3))
            if pick.random() < 0.05:
                call += f"/{pick.randrange(10)}"
            fields = [
                call,
                f"{pick.choice([75, 85, 99, 5, 15, 25]):02}/{pick.randint(1, 12):02}/{pick.randint(1, 28):02}",
                f"{pick.randrange(24):02}:{pick.randrange(60):02}{pick.choice('JJJU')}",
                "59", "59", pick.choice(["7.025", "14", "430.", "21.010", "1200", "50.1"]),
                pick.choice(["SSB", "CW", "FM", "RTY"]),
                pick.choice(["1001", "01001", "110101", "500A", "501A"]), pick.choice(["", "PM95"]),
                pick.choice(["J* ", "J**", "M* ", "   "]), pick.choice(names), pick.choice(places),
                pick.choice(remarks), pick.choice(remarks), "0"]
            file.write((",".join(f'"{f}"' for f in fields) + "\r\n").encode("cp932"))


def make_n1mm(path, contacts):
    """A contest log in ADIF, from which the zLog logs are made."""
    pick = random.Random(2)
    bands = [("160M", "1.908"), ("80M", "3.52"), ("40M", "7.0255"), ("20M", "14.15"),
             ("15M", "21.01"), ("10M", "28.08"), ("6M", "50.3"), ("2M", "144.2"), ("70CM", "433.02")]
    with open(path, "w", encoding="ascii", newline="") as file:
        file.write("made up\r\n<EOH>\r\n")
        for i in range(contacts):
            call = pick.choice(["JA", "JH", "JR", "7K", "W", "DL"]) + str(pick.randrange(10))
            call += "".join(pick.choices("ABCDEFGHIJKLMNOPQRSTUVWXYZ", k=3))
            if pick.random() < 0.05:
                call += f"/{pick.randrange(10)}"
            band, freq = pick.choice(bands)
            tags = {"CALL": call, "QSO_DATE": f"202407{pick.randint(1, 28):02}",
                    "TIME_ON": f"{pick.randrange(24):02}{pick.randrange(60):02}00", "BAND": band,
                    "STATION_CALLSIGN": "JA1QAA", "FREQ": freq, "CONTEST_ID": "MADE-UP",
                    "MODE": pick.choice(["CW", "SSB", "FM", "RTTY"]), "RST_RCVD": "599",
                    "RST_SENT": "599", "STX": str(i + 1), "OPERATOR": "JA1QAA",
                    "APP_N1MM_POINTS": "1", "APP_N1MM_RADIO_NR": "1",
                    "APP_N1MM_EXCHANGE1": f"{pick.randint(1, 48):02}{pick.choice('HMLP')}"}
            file.write(" ".join(f"<{k}:{len(v)}>{v}" for k, v in tags.items()) + " <EOR>\r\n")


def run(command):
    """Wall seconds and peak resident KiB of one process."""
    start = time.perf_counter()
    process = subprocess.Popen(command, stdout=open(os.devnull, "wb"))
    _, status, usage = os.wait4(process.pid, 0)
    assert status == 0, command
    return time.perf_counter() - start, usage.ru_maxrss


def main():
    contacts = int(sys.argv[1]) if len(sys.argv) > 1 else 200000
    with tempfile.TemporaryDirectory(prefix="tobarine-bench-") as folder:
        log, out = f"{folder}/log.csv", f"{folder}/out.adi"
        make_hamlog(log, contacts)
        full = ["--set", "Chk_5=1", "--set", "Chk_6=1", "--set", "Chk_8=1", "--set", "Chk_9=1",
                "--set", "Chk_11=1", "--set", "Chk_16=1"]
        adif = f"{folder}/log.adi"
        subprocess.run([CLI, "--quiet", *full, "h2l", log, "-o", adif], check=True)
        n1mm, contest = f"{folder}/n1mm.adi", f"{folder}/contest"
        make_n1mm(n1mm, contacts)
        subprocess.run([CLI, "--quiet", "adif2zlog", n1mm, "-o", contest], check=True)
        commands = {
            "iconv": ["iconv", "-f", "cp932", "-t", "utf-8", "-o", f"{folder}/out.txt", log],
            "h2l": [CLI, "--quiet", "h2l", log, "-o", out],
            "h2l, all options": [CLI, "--quiet", *full, "h2l", log, "-o", out],
            "eqsl": [CLI, "--quiet", "eqsl", log, "-o", out],
            "iconv of the ADIF": ["iconv", "-f", "cp932", "-t", "utf-8", "-o", f"{folder}/out.txt", adif],
            "l2h": [CLI, "--quiet", "l2h", adif, "-o", f"{folder}/out.csv"],
            "l2h, to JST": [CLI, "--quiet", "l2h", "--time", "jst", adif, "-o", f"{folder}/out.csv"],
            "iconv of the .all": ["iconv", "-f", "cp932", "-t", "utf-8", "-o", f"{folder}/out.txt",
                                  f"{contest}.all"],
            "h2l of the .all": [CLI, "--quiet", "h2l", f"{contest}.all", "-o", out],
            "h2l of the .zlo": [CLI, "--quiet", "h2l", f"{contest}.zlo", "-o", out],
            "iconv of its ADIF": ["iconv", "-f", "cp932", "-t", "utf-8", "-o", f"{folder}/out.txt",
                                  n1mm],
            "adif2zlog": [CLI, "--quiet", "adif2zlog", n1mm, "-o", f"{folder}/out"],
        }
        best = {name: (float("inf"), 0) for name in commands}
        for _ in range(ROUNDS):
            for name, command in commands.items():
                seconds, memory = run(command)
                best[name] = (min(best[name][0], seconds), max(best[name][1], memory))
        size = os.path.getsize(log)
    print(f"{contacts} contacts, {size / 1e6:.1f} MB, best of {ROUNDS}")
    for name, (seconds, memory) in best.items():
        if name.startswith("iconv"):
            stick = seconds
        print(f"{name:18} {seconds * 1000:7.1f} ms  {seconds / stick:5.2f} x iconv  "
              f"{contacts / seconds / 1e6:5.2f} M contacts/s  {memory / 1024:5.1f} MB")


main()
