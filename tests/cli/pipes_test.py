"""Inputs that can be read only once, standard output, temporary files, and the memory that odd inputs
take.

Usage: pipes_test.py TOBARINE-CLI SOURCE-FOLDER
"""
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import threading

CLI, SOURCE = sys.argv[1], pathlib.Path(sys.argv[2])
SANITIZED = b"__asan_init" in pathlib.Path(CLI).read_bytes()
MOST_MEMORY = 32 << 20
COMMANDS = (("h2l", "csv", "hamlog.csv"), ("eqsl", "csv", "hamlog.csv"), ("h2l", "z_all", "contest.all"),
            ("eqsl", "z_zlo", "contest.zlo"), ("l2h", "", "logger32.adi"))
failures = 0


def check(name, holds):
    global failures
    if not holds:
        failures += 1
        print("FAILED:", name)


def run(*words, stdin=b""):
    """Exit status, standard output and standard error."""
    done = subprocess.run([CLI, *map(str, words)], input=stdin, capture_output=True)
    return done.returncode, done.stdout, done.stderr.decode("utf-8", "replace")


def fed(pipe, data):
    """Lets a named pipe give these bytes to whoever opens it first."""
    os.mkfifo(pipe)
    threading.Thread(target=pipe.write_bytes, args=(data,), daemon=True).start()
    return pipe


def every_way_in(folder):
    for command, kind, sample in COMMANDS:
        data = (SOURCE / "samples" / sample).read_bytes()
        words = [command, *(["--kind", kind] if kind else [])]
        out = folder / "out"
        run(*words, SOURCE / "samples" / sample, "-o", out)
        whole = out.read_bytes()
        check(f"{command} {sample}: the sample is converted", whole)
        ways = {"-": ("-", data), "/dev/stdin": ("/dev/stdin", data),
                "a named pipe": (fed(folder / f"{command}-{sample}", data), b"")}
        for name, (path, stdin) in ways.items():
            out.unlink(missing_ok=True)
            status, _, told = run(*words, path, "-o", out, stdin=stdin)
            check(f"{command} {sample} from {name}: {status}, {told}",
                  status == 0 and out.exists() and out.read_bytes() == whole)
        status, printed, told = run(*words, "-", "-o", "-", stdin=data)
        check(f"{command} {sample} to standard output: {status}, {told}",
              status == 0 and printed == whole and "変換数" in told)
        status, _, told = run(*words, "-", stdin=data)
        check(f"{command} {sample} without -o: {told}", status == 2 and "-o" in told)
    log = (SOURCE / "samples/n1mm.adi").read_bytes()
    check("adif2zlog reads a pipe", run("adif2zlog", "-", "-o", folder / "z", stdin=log)[0] == 0)
    check("adif2zlog cannot print three files", run("adif2zlog", "-", "-o", "-", stdin=log)[0] == 2)
    check("info reads a pipe", "48".encode() in run("info", "-", stdin=(
        SOURCE / "samples/hamlog.csv").read_bytes())[1])
    status, _, told = run("h2l", "-", "-o", folder / "bad", stdin=b"JA1ABC,24/05/01\r\n")
    check(f"messages name the pipe: {told}", status == 1 and "標準入力" in told and "/proc" not in told)


def nothing_to_be_seen(folder):
    """While l2h waits for its output to be read, its temporary file has no name and is private."""
    shelf = folder / "shelf"
    shelf.mkdir()
    pipe = folder / "slow"
    os.mkfifo(pipe)
    log = folder / "long.adi"  # more than the pipe and the program's buffer take
    log.write_text("<EOH>\n" + "".join(
        f"<CALL:6>W1A{i % 26:03} <QSO_DATE:8>20240501 <TIME_ON:4>{i // 60 % 24:02}{i % 60:02} "
        "<BAND:3>40M <MODE:2>CW <EOR>\n" for i in range(20000)))
    process = subprocess.Popen([CLI, "l2h", log, "-o", pipe], stdout=subprocess.DEVNULL,
                               env=os.environ | {"TMPDIR": str(shelf)})
    reader = os.open(pipe, os.O_RDONLY)
    os.read(reader, 1)  # the program is writing now, and will wait
    private = [fd for fd in pathlib.Path(f"/proc/{process.pid}/fd").iterdir()
               if "(deleted)" in os.readlink(fd) and fd.stat().st_mode & 0o777 == 0o600]
    check("the temporary file is private and has no name", private and not list(shelf.iterdir()))
    os.close(reader)
    process.send_signal(signal.SIGKILL)
    process.wait()


def leftovers(folder):
    home = folder / "home"
    shutil.copytree(SOURCE / "data", home)
    dead = subprocess.Popen(["true"])
    dead.wait()
    gone = home / f"Tobarine.ini.tobarine-{dead.pid}-123.tmp"
    stay = [home / f"Tobarine.ini.tobarine-{os.getpid()}-123.tmp", home / f"a-{dead.pid}-123.tmp",
            home / f"b.tobarine-{dead.pid}-x.tmp", home / f"c.tobarine-{dead.pid}-1.txt"]
    for path in [gone, *stay]:
        path.touch()
    run("--home", home, "lookup", "jcc", "0101")
    check("what a dead run has left is removed", not gone.exists())
    check("what others have is not", all(path.exists() for path in stay))


def memory(folder):
    commas = folder / "commas.csv"
    commas.write_bytes(b"JA1ABC,24/05/01,21:05J" + b"," * ((1 << 20) - 100))
    quoted = folder / "quoted.csv"
    quoted.write_bytes(b"JA1ABC,24/05/01,21:05J,59,59,7,CW,,,,,,\"" + b"x,\r\n" * (1 << 20))
    for command, log in (("h2l", commas), ("eqsl", commas), ("eqsl", quoted)):
        process = subprocess.Popen([CLI, "--quiet", command, log, "-o", folder / "o"],
                                   stderr=subprocess.DEVNULL)
        _, status, usage = os.wait4(process.pid, 0)
        check(f"{command} {log.name}: {usage.ru_maxrss / 1024:.0f} MB",
              SANITIZED or usage.ru_maxrss * 1024 < MOST_MEMORY)
        check(f"{command} {log.name}: ends by itself", os.WIFEXITED(status))


def main():
    with tempfile.TemporaryDirectory(prefix="tobarine-") as name:
        folder = pathlib.Path(name)
        every_way_in(folder)
        nothing_to_be_seen(folder)
        leftovers(folder)
        memory(folder)
    print("pipes: all checks passed" if failures == 0 else f"pipes: {failures} failed")
    sys.exit(failures != 0)


main()
