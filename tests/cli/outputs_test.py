"""What stands where a run writes: a file of the user's own is kept beside it, an input is never an
output, and no two runs write into one file. With LENGTH the sequences of commands are that long (2).

Usage: outputs_test.py TOBARINE-CLI SOURCE-FOLDER [LENGTH]
"""
import fcntl
import os
import pathlib
import re
import resource
import shutil
import subprocess
import sys
import tempfile

CLI, SOURCE = sys.argv[1], pathlib.Path(sys.argv[2])
LENGTH = int(sys.argv[3]) if len(sys.argv) > 3 else 2
SAMPLES = {"my.csv": "hamlog.csv", "my.adi": "n1mm.adi", "my.all": "contest.all", "my.zlo": "contest.zlo"}
failures = 0


def check(name, holds):
    global failures
    if not holds:
        failures += 1
        print("FAILED:", name)


def run(*words, before=None):
    """Exit status and all that was printed."""
    done = subprocess.run([CLI, *map(str, words)], capture_output=True, stdin=subprocess.DEVNULL,
                          preexec_fn=before)
    return done.returncode, (done.stdout + done.stderr).decode("utf-8", "replace")


def expect(name, status, pattern, *words, before=None):
    got, text = run(*words, before=before)
    check(f"{name}: {got}, {text[:300]}", got == status and re.search(pattern, text))


def users_logs(folder):
    """A folder with a log of each kind, all of one stem; their bytes by their names."""
    folder.mkdir()
    for name, sample in SAMPLES.items():
        shutil.copy(SOURCE / "samples" / sample, folder / name)
    return {name: (folder / name).read_bytes() for name in SAMPLES}


def lost(folder, originals):
    """The originals that stand neither under their names nor as a .bak of that name."""
    return [name for name, data in originals.items()
            if not any(path.read_bytes() == data for path in folder.glob(name + "*")
                       if path.name == name or path.name.endswith(".bak"))]


def sequences(folder):
    """All sequences of commands with their default names. Returns how many there are."""
    steps = [(command, name) for command in ("h2l", "eqsl", "l2h", "adif2zlog") for name in SAMPLES]
    originals = users_logs(folder / "start")
    count = 0

    def go_on(at, done):
        nonlocal count
        for step in steps:
            there = folder / f"after{len(done)}"
            shutil.copytree(at, there)
            before = {path.name for path in there.iterdir()}
            status, text = run(step[0], there / step[1])
            check(f"{done} {step}: {lost(there, originals)} is gone", not lost(there, originals))
            kept = {path.name for path in there.iterdir()} - before
            told = all(name in text for name in kept if name.endswith(".bak"))
            check(f"{done} {step}: renamed in silence: {text}", status != 0 or told)
            count += 1
            if len(done) + 1 < LENGTH:
                go_on(there, done + [step])
            shutil.rmtree(there)

    go_on(folder / "start", [])
    return count


def inputs_stay(folder):
    """No output of any command is an input, by whatever name."""
    originals = users_logs(folder)
    log = folder / "my.csv"
    os.link(log, folder / "hard.adi")
    (folder / "soft.adi").symlink_to("my.csv")
    for name in ("my.csv", "hard.adi", "soft.adi"):
        output = folder / name
        expect(f"h2l -o {name}", 2, "同じファイル", "h2l", log, "-o", output)
        expect(f"--trace {name}", 2, "同じファイル", "--trace", output, "h2l", log)
        expect(f"info --trace {name}", 2, "同じファイル", "--trace", output, "info", log)
    expect("intermediate file", 2, "同じファイル", "h2l", folder / "my.all", "--keep-intermediate",
           folder / "my.all")
    os.link(folder / "my.adi", folder / "x.zlo")
    expect("adif2zlog", 2, "同じファイル", "adif2zlog", folder / "my.adi", "-o", folder / "x")
    expect("trace and output", 2, "二つの出力", "--trace", folder / "out", "h2l", log, "-o",
           folder / "out")
    home = pathlib.Path(os.environ["TOBARINE_HOME"])
    expect("trace over a table", 2, "同じファイル", "--trace", home / "JCC_JCG.mas", "lookup", "jcc", "1")
    expect("build dxcc over its entities", 2, "同じファイル", "build", "dxcc", log, "-o",
           home / "dxcc_mas.txt")
    cty = folder / "cty.dat"
    cty.write_text("Japan: 25: 45: AS: 36.40: -138.38: -9.0: JA:\n    JA;\n")
    expect("build dxcc over its input", 2, "同じファイル", "build", "dxcc", cty, "-o", cty)
    check(f"gone: {lost(folder, originals)}", not lost(folder, originals))
    check("nothing was renamed", not list(folder.glob("*.bak")))
    note = folder / "note.txt"
    note.write_text("mine")
    expect("table over a note", 0, r"note.txt -> note.txt.*\.bak", "build", "dxcc", cty, "-o", note)
    expect("table over a table", 0, "(?s)^(?!.*bak)", "build", "dxcc", cty, "-o", note)
    note.write_text("mine")
    expect("trace over a note", 0, r"note.txt -> note.txt.*\.bak", "--trace", note, "info", log)
    expect("trace over a trace", 0, "(?s)^(?!.*bak)", "--trace", note, "info", log)
    check("both notes are there", [p.read_text() for p in folder.glob("note*.bak")] == ["mine"] * 2)


def names_that_surprise(folder):
    """The part of a name behind its first "." is no part of the output's."""
    users_logs(folder)
    deep = folder / "2026.11.logs"
    shutil.copytree(folder, deep)
    expect("another folder", 0, r"別のフォルダー.*2026\.adi", "h2l", deep / "my.csv")
    shutil.copy(folder / "my.csv", folder / "2024.05.csv")
    expect("a shorter name", 0, r"途中まで.*2024\.adi.*-o", "h2l", folder / "2024.05.csv")
    expect("as anyone expects", 0, "(?s)^(?!.*出力の名前)", "h2l", folder / "my.csv")
    expect("as told", 0, "(?s)^(?!.*出力の名前)", "h2l", folder / "2024.05.csv", "-o", folder / "o.adi")


def full_disk(folder):
    """A file that cannot grow ends with a whole contact, and the count is that of the file."""
    folder.mkdir()
    log = folder / "long.csv"
    log.write_bytes((SOURCE / "samples/hamlog.csv").read_bytes() * 60)
    sample = (SOURCE / "samples/n1mm.adi").read_bytes()
    adif = folder / "long.adi"
    header = sample.index(b"<eoh>" if b"<eoh>" in sample else b"<EOH>") + 7
    adif.write_bytes(sample[:header] + sample[header:] * 60)
    for limit in (0, 100, 5000, 70000):
        small = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))
        for command, source, ending, end, header_end in (
                ("h2l", log, ".adi", b"<EOR>\r\n\r\n", b"<EOH>\r\n\r\n"),
                ("eqsl", log, ".adi", b"<EOR>\r\n", b"<EOH>\r\n\r\n"),
                ("adif2zlog", adif, ".all", b"\r\n", b"zLog for Windows \r\n")):
            out = folder / "out"
            to = out if command == "adif2zlog" else folder / "out.adi"
            status, text = run(command, source, "-o", to, before=small)
            name = f"full disk, {command}, {limit} bytes: {text[:300]}"
            check(name, status == 1 and "書き込めません" in text and "途中で止まりました" in text)
            data = (folder / f"out{ending}").read_bytes()
            contacts = data[len(header_end):] if ending == ".all" else data.partition(header_end)[2]
            check(name, data in (b"", header_end) or data.endswith(end) or data.endswith(header_end))
            if command != "adif2zlog":
                check(name, f"変換数: {contacts.count(end)} 件" in text)
            else:
                zlo = (folder / "out.zlo").stat().st_size
                lines = max(contacts.count(end), 0)
                check(name, f"変換数: {min(lines, max(zlo // 256 - 1, 0))} 件" in text and zlo % 256 == 0)
            for path in folder.glob("out*"):
                path.unlink()


def one_at_a_time(folder):
    """While one run writes a file, no other can."""
    originals = users_logs(folder)
    with open(folder / "my.adi", "rb") as held:
        fcntl.flock(held, fcntl.LOCK_EX)
        for words in (["h2l", "my.csv"], ["eqsl", "my.all"], ["l2h", "x.adi", "-o", "my.adi"]):
            shutil.copy(folder / "my.adi", folder / "x.adi")
            command, log, *rest = words
            expect(f"held: {words}", 1, "ほかのプログラムが使っています", command, folder / log,
                   *([rest[0], folder / rest[1]] if rest else []))
    check("held: all as it was", all((folder / n).read_bytes() == d for n, d in originals.items()))
    expect("given back", 0, "変換数", "h2l", folder / "my.csv")
    whole = {}
    for log in ("my.csv", "my.all"):
        run("h2l", folder / log, "-o", folder / "whole.adi")
        whole[log] = (folder / "whole.adi").read_bytes()
    for turn in range(10):
        both = [subprocess.Popen([CLI, "h2l", folder / log, "-o", folder / "both.adi"],
                                 stdout=subprocess.DEVNULL, stderr=subprocess.PIPE) for log in whole]
        for process in both:
            text = process.communicate()[1].decode()
            check(f"both at once: {text}", process.returncode == 0 or "ほかのプログラム" in text)
        check("both at once: one of them is there",
              (folder / "both.adi").read_bytes() in whole.values())


def killed(folder):
    """Whenever a run is killed, the user's files are there, under their names or kept."""
    originals = users_logs(folder)
    for command, log in (("l2h", "my.adi"), ("h2l", "my.csv"), ("adif2zlog", "my.adi")) * 5:
        there = folder / "there"
        shutil.copytree(folder, there)
        process = subprocess.Popen([CLI, "--quiet", command, there / log])
        while process.poll() is None and len(list(there.iterdir())) == len(originals):
            pass  # until the first file is renamed or made
        process.kill()
        process.wait()
        check(f"{command} killed: {lost(there, originals)}", not lost(there, originals))
        shutil.rmtree(there)


def main():
    with tempfile.TemporaryDirectory(prefix="tobarine-") as name:
        folder = pathlib.Path(name)
        shutil.copytree(SOURCE / "data", folder / "home")
        os.environ["TOBARINE_HOME"] = str(folder / "home")
        inputs_stay(folder / "inputs")
        names_that_surprise(folder / "names")
        full_disk(folder / "full")
        one_at_a_time(folder / "one")
        killed(folder / "killed")
        count = sequences(folder)
    print(f"outputs: {count} sequences of up to {LENGTH} commands,",
          "all checks passed" if failures == 0 else f"{failures} failed")
    sys.exit(failures != 0)


main()
