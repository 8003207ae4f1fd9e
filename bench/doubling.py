#!/usr/bin/env python3
"""Prints for every reader what twice the input costs: the ratio of processor times (user and system,
the best of three runs each). About 2 is linear; what is over 2.3 is marked. Inputs are made up.

    bench/doubling.py BUILD-FOLDER [READER...]      default all
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

from measure import ROOT, make_hamlog, make_n1mm

ROUNDS = 3
MOST = 2.3
LISTS = {"jcc-list.txt": "北海道 01\n 0101 Sapporo 札幌\n", "jcg-list.txt": "北海道 01\n 01001 Akan 阿寒\n",
         "ku-list.txt": "札幌市(0101)\n 010101 Chuo 中央\n"}


def write(path, text):
    path.write_bytes(text.encode("cp932"))
    return path


class Readers:
    """Inputs of any size for every reader, and the commands that read them."""

    def __init__(self, cli, folder):
        self.folder = folder
        self.home = pathlib.Path(shutil.copytree(ROOT / "data", folder / "home"))
        self.words = [cli, "--home", self.home, "--quiet"]

    def made(self, name, make, contacts):
        path = self.folder / f"{contacts}-{name}"
        if not path.exists():
            make(path, contacts)
        return path

    def log(self, contacts):
        return self.made("log.csv", make_hamlog, contacts)

    def adif(self, contacts):
        return self.made("n1mm.adi", make_n1mm, contacts)

    def contest(self, contacts, ending):
        words = [*self.words, "adif2zlog", self.adif(contacts), "-o", self.folder / "contest"]
        subprocess.run(words, check=True)
        return self.folder / f"contest{ending}"

    def tags(self, count):
        return write(self.folder / "tags.adi", "<EOH>\r\n<" + "CALL:1>" * count + "<EOR>\r\n")

    def spread(self, contacts):
        tags = "<CALL:6>JA1QAA\r\n<QSO_DATE:8>20240701\r\n<TIME_ON:4>1200\r\n<BAND:3>40M\r\n<MODE:2>CW\r\n"
        return write(self.folder / "spread.adi", "<EOH>\r\n" + (tags + "<EOR>\r\n") * contacts)

    def calls(self, count):
        return (f"JA{i % 10}Q{chr(65 + i // 10 % 26)}{chr(65 + i // 260 % 26)}{i // 6760}" for i in range(count))

    def country_file(self, count):
        calls = ",\n    ".join(f"={call}" for call in self.calls(count))
        return write(self.folder / "cty.dat", "Japan:                    25:  45:  AS:   36.40:  -138.38:"
                     f"    -9.0:  JA:\n    JA,\n    {calls};\n")

    def build_jcc(self, lines):
        """The lines stand behind the gun list's own."""
        for name, text in LISTS.items():
            write(self.folder / name, text + (lines if name == "jcg-list.txt" else ""))
        return ["build", "jcc", "--force", "--from", self.folder, "-o", self.folder / "out"]

    def guns(self, count):
        return "".join((f"県 {i // 1000 + 10}\n" if i % 1000 == 0 else "") + f" {i + 10000} Machi 町{i}\n"
                       for i in range(count))

    def settings(self, lines):
        write(self.home / "Tobarine.ini", "; a comment\r\n" * lines)
        return ["lookup", "calls", "JA1QAA"]

    def all(self):
        """Name, first size, size in what, and how the words are made for a size."""
        out = ["-o", self.folder / "out"]
        return [
            ("h2l, CSV", 50_000, "contacts", lambda n: ["h2l", self.log(n), *out]),
            ("eqsl, CSV", 50_000, "contacts", lambda n: ["eqsl", self.log(n), *out]),
            ("h2l, .all", 25_000, "contacts", lambda n: ["h2l", self.contest(n, ".all"), *out]),
            ("h2l, .zlo", 25_000, "contacts", lambda n: ["h2l", self.contest(n, ".zlo"), *out]),
            ("l2h", 25_000, "contacts", lambda n: ["l2h", self.adif(n), *out]),
            ("adif2zlog", 25_000, "contacts", lambda n: ["adif2zlog", self.adif(n), *out]),
            ("l2h, one record of tags", 70_000, "tags",
             lambda n: ["l2h", "--reading", "classic", self.tags(n), *out]),
            ("l2h, a tag a line", 50_000, "contacts",
             lambda n: ["l2h", "--reading", "classic", self.spread(n), *out]),
            ("info, CSV", 50_000, "contacts", lambda n: ["info", self.log(n)]),
            ("info, ADIF", 25_000, "contacts", lambda n: ["info", self.adif(n)]),
            ("build codes", 50_000, "contacts", lambda n: ["build", "codes", self.log(n)]),
            ("build dxcc", 40_000, "calls",
             lambda n: ["build", "dxcc", "--force", self.country_file(n), *out]),
            ("build jcc", 9_000, "places", lambda n: self.build_jcc(self.guns(n))),
            ("build jcc, blank lines", 700, "lines",
             lambda n: self.build_jcc(("\u3000" * 330 + "\n") * n)),
            ("lookup calls", 200_000, "calls", lambda n: ["lookup", "calls"]),
            ("settings of comments", 100_000, "lines", self.settings),
        ]

    def seconds(self, make, size):
        words = list(map(str, make(size)))
        given = write(self.folder / "given", "\n".join(self.calls(size)) if words[-1] == "calls" else "")
        best = float("inf")
        for _ in range(ROUNDS):
            for path in self.folder.glob("out*"):
                path.unlink()
            with open(given, "rb") as stdin:
                process = subprocess.Popen([*self.words, *words], stdin=stdin,
                                           stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
            told = process.stderr.read()
            _, status, used = os.wait4(process.pid, 0)
            process.returncode = os.waitstatus_to_exitcode(status)
            if process.returncode != 0:
                sys.exit(f"{' '.join(words)}: {told.decode()}")
            best = min(best, used.ru_utime + used.ru_stime)
        return best


def main():
    cli = pathlib.Path(sys.argv[1]).resolve() / "bin/tobarine-cli"
    wanted = sys.argv[2:]
    print("| | input | CPU ms | twice the input | ratio |", "|---|---:|---:|---:|---:|", sep="\n")
    with tempfile.TemporaryDirectory(prefix="tobarine-doubling-") as name:
        readers = Readers(cli, pathlib.Path(name))
        for title, size, unit, make in readers.all():
            if wanted and title not in wanted:
                continue
            once, twice = readers.seconds(make, size), readers.seconds(make, 2 * size)
            mark = " !" if twice / once > MOST else ""
            print(f"| {title} | {size:,} {unit} | {once * 1000:.0f} | {twice * 1000:.0f} | "
                  f"{twice / once:.2f}{mark} |", flush=True)


main()
