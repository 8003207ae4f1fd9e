#!/usr/bin/env python3
"""Measures the release build and puts the figures into docs/performance.md. See run.sh.

    bench/measure.py BUILD-FOLDER [CONTACTS...]      default 1000 200000 2000000

Whole processes are timed beside one pass of iconv over the same file, in turn, and the best time of
each counts. Logs are made up.
"""
import datetime
import json
import os
import pathlib
import platform
import random
import shutil
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
REPORT = ROOT / "docs/performance.md"
BEGIN, END = "<!-- figures: written by bench/run.sh -->", "<!-- end of figures -->"
MADE_UP = 200000  # contacts that differ; a longer log holds them several times
VIEWED_MB = 100
EVERY_OPTION = [word for number in (5, 6, 8, 9, 11, 16) for word in ("--set", f"Chk_{number}=1")]


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


def repeated(path, source, contacts):
    """The source's contacts so many times that there are `contacts` of them."""
    data = source.read_bytes()
    header = data.find(b"<EOH>\r\n") + 7 if path.suffix == ".adi" else 0
    with open(path, "wb") as file:
        file.write(data[:header])
        for _ in range(contacts // MADE_UP):
            file.write(data[header:])


def seconds_of(command):
    start = time.perf_counter()
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
    return time.perf_counter() - start


def peak_of(command):
    """The largest resident size in MB, as /proc tells while the process runs."""
    peak = 0
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL)
    status = pathlib.Path(f"/proc/{process.pid}/status")
    while process.poll() is None:
        for line in status.read_text().splitlines():
            if line.startswith("VmHWM"):
                peak = max(peak, int(line.split()[1]))
        time.sleep(0.001)
    return peak / 1024


class Directions:
    """Every conversion of logs with that many contacts, and the iconv it is held against."""

    def __init__(self, cli, folder, contacts):
        self.contacts = contacts
        self.folder = folder
        log, n1mm = folder / "log.csv", folder / "n1mm.adi"
        made = min(contacts, MADE_UP)
        for path, make in ((log, make_hamlog), (n1mm, make_n1mm)):
            make(path, made)
            if contacts > made:
                path.rename(folder / "made")
                repeated(path, folder / "made", contacts)
        adif, contest, out = folder / "log.adi", folder / "contest", folder / "out"
        subprocess.run([cli, "--quiet", *EVERY_OPTION, "h2l", log, "-o", adif], check=True)
        subprocess.run([cli, "--quiet", "adif2zlog", n1mm, "-o", contest], check=True)
        text = folder / "contest.all"

        def command(stick, source, *words):
            return stick, source, [cli, "--quiet", *words, source, "-o", out]

        self.commands = {
            "h2l": command(log, log, "h2l"),
            "h2l, every option": command(log, log, *EVERY_OPTION, "h2l"),
            "eqsl": command(log, log, "eqsl"),
            "l2h": command(adif, adif, "l2h"),
            "l2h to JST": command(adif, adif, "l2h", "--time", "jst"),
            ".all to ADIF": command(text, text, "h2l"),
            ".zlo to ADIF": command(text, folder / "contest.zlo", "h2l"),
            "adif2zlog": command(n1mm, n1mm, "adif2zlog"),
        }
        for stick in (log, adif, text, n1mm):
            self.commands[f"iconv {stick.name}"] = (
                stick, stick, ["iconv", "-f", "cp932", "-t", "utf-8", "-o", out, stick])

    def measure(self, rounds):
        """Lines of a table."""
        best = {name: float("inf") for name in self.commands}
        outputs = [self.folder / f"out{ending}" for ending in ("", ".all", ".zlo", ".csv")]
        for _ in range(rounds):
            for name, (_, _, command) in self.commands.items():
                for path in outputs:  # or the next command pays for their removal
                    path.unlink(missing_ok=True)
                best[name] = min(best[name], seconds_of(command))
        for name, (stick, source, command) in self.commands.items():
            seconds = best[name]
            ratio = seconds / best[f"iconv {stick.name}"]
            rate = self.contacts / seconds
            yield (f"| {name} | {seconds * 1000:.0f} | {rate / 1e6:.2f} | "
                   f"{os.path.getsize(source) / seconds / 1e6:.0f} | {ratio:.2f} | "
                   f"{peak_of(command):.1f} |")


def processor():
    for line in pathlib.Path("/proc/cpuinfo").read_text().splitlines():
        if line.startswith("model name"):
            return line.split(": ")[1]
    return platform.machine()


def parts(build):
    """Lookups, tables and the codec, by Google Benchmark."""
    result = json.loads(subprocess.run(
        [build / "bench/tobarine_bench", "--benchmark_format=json",
         "--benchmark_repetitions=5", "--benchmark_report_aggregates_only=true"],
        check=True, capture_output=True).stdout)
    for one in result["benchmarks"]:
        if one["aggregate_name"] != "median":
            continue
        rate = ""
        if "items_per_second" in one:
            rate = f"{one['items_per_second'] / 1e6:.1f} M/s"
        if "bytes_per_second" in one:
            rate = f"{one['bytes_per_second'] / 1e6:.0f} MB/s"
        yield f"| {one['run_name']} | {one['real_time']:.1f} {one['time_unit']} | {rate} |"


def window(build, folder):
    """What window_runs tells, for a long log."""
    log = folder / "viewed.csv"
    make_hamlog(folder / "made.csv", MADE_UP)
    times = VIEWED_MB * 1_000_000 // os.path.getsize(folder / "made.csv") + 1
    repeated(log, folder / "made.csv", MADE_UP * times)
    home = shutil.copytree(build / "bin", folder / "home")
    told = subprocess.run([build / "bench/window_runs", home, log], check=True, capture_output=True,
                          text=True, env=os.environ | {"QT_QPA_PLATFORM": "offscreen"})
    return told.stdout.splitlines()


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    sizes = [int(size) for size in sys.argv[2:]] or [1000, 200000, 2000000]
    lines = [BEGIN, f"{datetime.date.today()}, {processor()}, {os.cpu_count()} cores, "
             f"{platform.system()} {platform.release().split('-')[0]}."]
    with tempfile.TemporaryDirectory(prefix="tobarine-bench-") as name:
        for contacts in sizes:
            folder = pathlib.Path(name) / str(contacts)
            folder.mkdir()
            directions = Directions(build / "bin/tobarine-cli", folder, contacts)
            lines += ["", f"### {contacts:,} contacts", "",
                      "| | ms | M contacts/s | MB/s in | times iconv | peak MB |",
                      "|---|---:|---:|---:|---:|---:|"]
            lines += directions.measure(max(3, min(25, 2_000_000 // contacts)))
            shutil.rmtree(folder)
        lines += ["", "### Parts", "", "| | time | rate |", "|---|---:|---:|", *parts(build)]
        lines += ["", "### The window", "", "```", *window(build, pathlib.Path(name)), "```", END]
    print("\n".join(lines))
    text = REPORT.read_text(encoding="utf-8")
    before, rest = text.split(BEGIN)
    REPORT.write_text(before + "\n".join(lines) + rest.split(END)[1], encoding="utf-8")


if __name__ == "__main__":
    main()
