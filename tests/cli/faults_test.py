"""Real conversions while things go wrong: the input stays as it is, files that are replaced are whole
or old, what was written is right as far as it goes, and the message tells what happened.

Usage: faults_test.py TOBARINE-CLI SOURCE-FOLDER
"""
import os
import pathlib
import resource
import shutil
import subprocess
import sys
import tempfile
import time

CLI, SOURCE = sys.argv[1], pathlib.Path(sys.argv[2])
COPIES = 60  # of the samples in one log: several buffers full
NOBODY = 65534
failures = 0


def check(name, holds):
    global failures
    if not holds:
        failures += 1
        print("FAILED:", name)


def start(words, before=None):
    return subprocess.Popen([CLI, *map(str, words)], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                            stdin=subprocess.DEVNULL, preexec_fn=before)


def run(words, before=None):
    """Exit status and all that was printed."""
    process = start(words, before)
    out, err = process.communicate()
    return process.returncode, (out + err).decode("utf-8", "replace")


def refused(name, words, reason, before=None):
    status, text = run(words, before)
    check(f"{name}: exit status {status}: {text[:200]}", status == 1)
    check(f"{name}: '{reason}' in {text[:200]}", reason in text and text.count("tobarine-cli:") == 1)


def repeated(sample, header_lines=0, record=0):
    """A sample log with its contacts many times over."""
    data = (SOURCE / "samples" / sample).read_bytes()
    size = record or sum(len(line) + 1 for line in data.split(b"\n")[:header_lines])
    return data[:size] + data[size:] * COPIES


class Commands:
    """Every direction, with its input and the outputs it makes in a folder."""

    def __init__(self, folder):
        logs = {"log.csv": repeated("hamlog.csv"), "contest.all": repeated("contest.all", 1),
                "contest.zlo": repeated("contest.zlo", record=256),
                "logger32.adi": repeated("logger32.adi"), "n1mm.adi": repeated("n1mm.adi")}
        for name, data in logs.items():
            (folder / name).write_bytes(data)
        self.logs = {folder / name: data for name, data in logs.items()}
        self.all = [("h2l", folder / "log.csv"), ("eqsl", folder / "log.csv"),
                    ("h2l", folder / "contest.all"), ("eqsl", folder / "contest.zlo"),
                    ("l2h", folder / "logger32.adi"), ("adif2zlog", folder / "n1mm.adi")]

    def inputs_untouched(self, name):
        for path, data in self.logs.items():
            check(f"{name}: {path.name} is as it was", path.read_bytes() == data)


def outputs(folder):
    return {path.name: path.read_bytes() for path in sorted(folder.iterdir())}


def whole_outputs(commands, folder):
    """What each command makes when nothing goes wrong."""
    made = []
    for i, (command, log) in enumerate(commands.all):
        out = folder / f"whole{i}"
        out.mkdir()
        status, text = run([command, log, "-o", out / "out"])
        check(f"{command} {log.name}: {text}", status == 0)
        made.append(outputs(out))
    return made


def disk_full(commands, whole, folder):
    for i, (command, log) in enumerate(commands.all):
        longest = max(map(len, whole[i].values()))
        for limit in (0, 100, longest // 3, longest - 1):
            out = folder / f"full{i}-{limit}"
            out.mkdir()
            full = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))
            refused(f"full disk, {command} {log.name}, {limit} bytes",
                    [command, log, "-o", out / "out"], "書き込めません", full)
            for name, data in outputs(out).items():
                check(f"full disk, {command}: {name} is right as far as it goes",
                      whole[i][name].startswith(data))
            shutil.rmtree(out)
    commands.inputs_untouched("full disk")


def read_only_folder(commands, folder):
    out = folder / "locked"
    out.mkdir()
    out.chmod(0o555)
    as_nobody = (lambda: os.setuid(NOBODY)) if os.getuid() == 0 else None
    for command, log in commands.all:
        refused(f"read-only folder, {command}", [command, log, "-o", out / "out"], "開けません",
                as_nobody)
    check("read-only folder: nothing is in it", not outputs(out))
    commands.inputs_untouched("read-only folder")


def stopped_in_the_middle(folder, log, meanwhile):
    """Runs h2l into a pipe; does something to its files when it has filled the pipe once. What it
    printed, and its exit status."""
    pipe = folder / "pipe"
    os.mkfifo(pipe)
    process = start(["h2l", log, "-o", pipe])
    with open(pipe, "rb") as output:
        output.read(1000)
        meanwhile(pipe)
        while output.read(65536):
            pass
    _, err = process.communicate()
    pipe.unlink(missing_ok=True)
    return process.returncode, err.decode()


def input_changed(folder):
    log, other = folder / "changed.csv", folder / "other.csv"
    data = repeated("hamlog.csv") * 8

    def append(_):
        with open(log, "ab") as file:
            file.write(data[:1000])

    def replace(_):
        other.write_bytes(data)
        other.replace(log)

    for name, change, reason in (("cut", lambda _: os.truncate(log, 10000), "短くなりました"),
                                 ("appended to", append, "書き換えられました"),
                                 ("replaced", replace, "書き換えられました")):
        log.write_bytes(data)
        status, text = stopped_in_the_middle(folder, log, change)
        check(f"input {name} while it is read: {text}", status == 1 and reason in text)


def output_removed(commands, folder):
    log = next(iter(commands.logs))
    status, text = stopped_in_the_middle(folder, log, lambda pipe: pipe.unlink())
    check(f"output removed: {text}", status == 1 and "消されました" in text)
    commands.inputs_untouched("output removed")


def renewals(home, folder):
    """The files of the program folder that commands replace, and how."""
    lists = {"jcc-list.txt": "北海道 01\n 0101 Sapporo 札幌\n", "jcg-list.txt": "北海道 01\n 01001 Akan 阿寒\n",
             "ku-list.txt": "札幌市(0101)\n 010101 Chuo 中央\n"}
    for name, text in lists.items():
        (folder / name).write_bytes(text.encode("cp932"))
    log = folder / "codes.csv"
    log.write_bytes(b"W1AW,24/05/01,12:00U,59,59,14,CW,502A,,,,,,,\r\n" * 3)
    return {"JCC_JCG.mas": ["--home", home, "build", "jcc", "--force", "--from", folder],
            "l2h_cty.mas": ["--home", home, "build", "codes", log]}


def renewal_killed(home, folder):
    """SIGKILL at many points, from the very start to the end of an undisturbed run."""
    for name, words in renewals(home, folder).items():
        old = (home / name).read_bytes()
        begun = time.monotonic()
        check(f"build {name}", run(words)[0] == 0)
        longest = time.monotonic() - begun
        new = (home / name).read_bytes()
        check(f"{name} is another", new != old)
        for point in range(25):
            (home / name).write_bytes(old)
            process = start(words)
            time.sleep(longest * point / 24)
            process.kill()
            process.communicate()
            check(f"{name} killed: whole or old", (home / name).read_bytes() in (old, new))


def first_start_ended(folder):
    """An installed program whose first start is killed, or finds the disk full, works at the next."""
    installed = folder / "installed"
    (installed / "bin").mkdir(parents=True)
    shutil.copytree(SOURCE / "data", installed / "share" / "tobarine")
    program = shutil.copy(CLI, installed / "bin")
    log = folder / "first.csv"
    log.write_bytes(b"W1AW,24/05/01,12:00U,59,59,14,CW,502A,,,,,,,\r\n" * 3)

    def fresh(name):
        data = folder / name
        shutil.rmtree(data, ignore_errors=True)
        return {"PATH": "", "XDG_DATA_HOME": str(data)}

    def build(env, before=None):
        return subprocess.Popen([program, "build", "codes", log], env=env, stdout=subprocess.PIPE,
                                stderr=subprocess.STDOUT, preexec_fn=before, restore_signals=False)

    def works(name, env):
        for words in (["lookup", "calls", "JA1ABC"], ["build", "codes", log]):
            done = subprocess.run([program, *words], env=env, capture_output=True)
            check(f"{name}, then {words[0]}: {done.stderr.decode()}", done.returncode == 0)
            left = list((folder / "user").glob("*.tmp"))
            check(f"{name}, then {words[0]}: {left} are left", not left)

    begun = time.monotonic()
    check("first start", build(fresh("user")).wait() == 0)
    longest = time.monotonic() - begun
    for point in range(40):
        env = fresh("user")
        process = build(env)
        time.sleep(longest * point / 39)
        process.kill()
        process.communicate()
        works(f"first start killed at {point}", env)
    for limit in (0, 1000, 40000, 900000):
        env = fresh("user")
        text = build(env, lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))).communicate()[0]
        check(f"first start, disk full: {text.decode()}", "書き込めません" in text.decode())
        check("first start, disk full: nothing is left", not os.listdir(folder / "user"))
        works("first start, disk full", env)
    for env in ({"PATH": ""}, {"PATH": "", "XDG_DATA_HOME": "data"}):
        done = subprocess.run([program, "build", "codes", log], env=env, cwd=folder, capture_output=True)
        check(f"no home: {done.stderr.decode()}", done.returncode == 1 and "HOME" in done.stderr.decode())
        check("no home: nothing where it was started",
              not (folder / "tobarine").exists() and not (folder / "data").exists())
    # What an older version left when it was ended in the middle.
    env = fresh("user")
    (folder / "user" / "tobarine").mkdir(parents=True)
    shutil.copy(SOURCE / "data" / "dxcc_hl.dat", folder / "user" / "tobarine")
    works("an incomplete folder", env)


def conversion_killed(commands, whole, folder):
    for i, (command, log) in enumerate(commands.all):
        for point in range(6):
            out = folder / f"killed{i}-{point}"
            out.mkdir()
            process = start([command, log, "-o", out / "out"])
            time.sleep(0.02 * (point + 1))
            process.kill()
            process.communicate()
            for name, data in outputs(out).items():
                check(f"{command} killed: {name} is right as far as it goes",
                      whole[i][name].startswith(data))
            shutil.rmtree(out)
    commands.inputs_untouched("killed")


def at_once(commands, whole, home, folder):
    """Many runs in one program folder, some of which renew its files."""
    words = renewals(home, folder)["JCC_JCG.mas"]
    renewing = [start(words) for _ in range(4)]
    runs = []
    for turn in range(2):
        for i, (command, log) in enumerate(commands.all):
            out = folder / f"once{turn}-{i}"
            out.mkdir()
            runs.append((i, out, start(["--home", home, command, log, "-o", out / "out"])))
    for process in renewing:
        check(f"renewed at once: {process.communicate()}", process.returncode == 0)
    for i, out, process in runs:
        check(f"run at once: {process.communicate()}", process.returncode == 0)
        if commands.all[i][0] in ("l2h", "adif2zlog"):
            continue  # their places come from the file that is being renewed
        check(f"run at once: {commands.all[i]}", outputs(out) == whole[i])
    check("the new master is whole",
          "札幌市中央区" in run(["--home", home, "lookup", "jcc", "010101"])[1])
    left = [name for name in os.listdir(home) if name.endswith(".tmp")]
    check(f"nothing is left over: {left}", not left)


def main():
    with tempfile.TemporaryDirectory(prefix="tobarine-") as name:
        folder = pathlib.Path(name)
        folder.chmod(0o755)
        for home in ("home", "killed", "shared"):
            shutil.copytree(SOURCE / "data", folder / home)
        os.environ["TOBARINE_HOME"] = str(folder / "home")
        global CLI
        CLI = shutil.copy(CLI, folder)  # where a run without rights finds it, too
        commands = Commands(folder)
        whole = whole_outputs(commands, folder)
        disk_full(commands, whole, folder)
        read_only_folder(commands, folder)
        input_changed(folder)
        output_removed(commands, folder)
        renewal_killed(folder / "killed", folder)
        first_start_ended(folder)
        conversion_killed(commands, whole, folder)
        at_once(commands, whole, folder / "shared", folder)
    print("faults: all checks passed" if failures == 0 else f"faults: {failures} failed")
    sys.exit(failures != 0)


main()
