#!/usr/bin/env python3
"""tobarine-cli jarl against a small local server that serves good and bad answers.

    jarl_test.py TOBARINE-CLI SOURCE-FOLDER
"""
import http.server
import pathlib
import shutil
import ssl
import subprocess
import sys
import tempfile
import threading
import time

CLI, SOURCE = sys.argv[1], pathlib.Path(sys.argv[2])
LISTS = {
    "jcc-list.txt": "ＪＣＣリスト 2019.5.1現在  現存1市 消滅1市\r\n北海道 01\r\n  0101 Sapporo 札幌\r\n"
                    "* 0132 Kameda 亀田 \"Nov. 30,1973\"\r\n",
    "jcg-list.txt": "ＪＣＧリスト 2018.10.01現在  現存1郡 消滅0郡\r\n北海道 01\r\n  01001 Akan 阿寒\r\n",
    "ku-list.txt": "2024年1月1日に変更\r\n(1政令指定都市1区、消滅0区）\r\n札幌市(0101)\r\n010101 Chuo 中央\r\n",
}


class Handler(http.server.BaseHTTPRequestHandler):
    """The first part of the path says how the second, a list, is answered."""

    def answer(self):
        _, how, name = self.path.split("/")
        body = LISTS[name].encode("cp932")
        if self.command == "HEAD" and how == "nohead":
            self.send_error(405)
            return
        if self.command == "HEAD" and how == "hangup":
            self.close_connection = True
            return
        if how == "circle":
            self.send_response(302)
            self.send_header("Location", self.path)
            self.end_headers()
            return
        if how == "nothing":
            self.send_response(204)
            self.end_headers()
            return
        if how == "drip":
            self.send_response(200)
            self.end_headers()
            for byte in body:
                self.wfile.write(bytes([byte]))
                time.sleep(0.2)
            return
        if how == "undated":
            body = body.replace(b"2019.5.1", b"").replace(b"2018.10.01", b"").replace(b"2024", b"")
        if how in ("moved", "unsafe"):
            self.send_response(302)
            self.send_header("Location", PLAIN + f"/dated/{name}" if how == "unsafe" else f"/dated/{name}")
            self.end_headers()
            return
        if how == "missing":
            self.send_error(404)
            return
        if how == "html":
            body = b"<html><body>Not a list</body></html>"
        if how == "short" and name == "jcc-list.txt":
            body = body[: body.rindex(b"*")]
        if how == "slow" or (how == "late" and name == "ku-list.txt"):
            time.sleep(5)
        self.send_response(200)
        if how == "dated":
            self.send_header("Last-Modified", "Wed, 01 Jan 2025 10:00:00 GMT")
        self.send_header("Content-Length", str(len(body) + (50 if how == "cut" else 0)))
        self.end_headers()
        if self.command == "GET":
            self.wfile.write(body)

    def answer_who_still_listens(self):
        try:
            self.answer()
        except OSError:
            pass  # the client has had enough

    do_GET = do_HEAD = answer_who_still_listens

    def log_message(self, *_):
        pass


failures = 0
PLAIN = ""  # the address without https


def check(what, condition, detail=""):
    global failures
    if not condition:
        failures += 1
        print(f"FAILED: {what} {detail}")


def certificates(home):
    """A server whose certificate nobody vouches for is not asked again without one; one whose certificate
    is good does not lead to an address without."""
    pem = home.parent / "self-signed.pem"
    made = shutil.which("openssl") and subprocess.run(
        ["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "1", "-subj", "/CN=127.0.0.1",
         "-addext", "subjectAltName=IP:127.0.0.1", "-keyout", pem, "-out", pem.with_suffix(".crt")],
        capture_output=True).returncode == 0
    if not made:
        print("jarl: no openssl, the certificate is not tried")
        return
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(pem.with_suffix(".crt"), pem)
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
    server.socket = context.wrap_socket(server.socket, server_side=True)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    def jarl(command, how, trusting=()):
        return subprocess.run([*trusting, CLI, "--home", home, "jarl", command, "--timeout", "5", "--url",
                               f"https://127.0.0.1:{server.server_address[1]}/{how}"],
                              capture_output=True, text=True, timeout=60)

    for command in ["check", "download"]:
        run = jarl(command, "dated")
        check(command + " without a good certificate", run.returncode == 1 and "証明書" in run.stderr, run.stderr)
    # In a name space of its own the system's list of certificates is this one.
    trusting = ["unshare", "-r", "-m", "sh", "-c",
                'mount --bind "$0" /etc/ssl/certs/ca-certificates.crt && exec "$@"', pem.with_suffix(".crt")]
    if not shutil.which("unshare") or subprocess.run([*trusting, "true"], capture_output=True).returncode != 0:
        print("jarl: no name spaces, the way from https to http is not tried")
        return
    run = jarl("check", "moved", trusting)
    check("redirected by https", run.returncode == 0, run.stderr)
    run = jarl("check", "unsafe", trusting)
    check("redirected from https to http", run.returncode == 1 and "移そうと" in run.stderr, run.stdout + run.stderr)


def killed_download(home, url):
    """Lists of one age, wherever a download is cut."""
    new = {name: text.replace("20", "30").encode("cp932") for name, text in LISTS.items()}
    for name, text in LISTS.items():
        (home / name).write_text(text, "cp932", newline="")
    run = subprocess.Popen([CLI, "--home", home, "jarl", "download", "--url", url + "/late"])
    time.sleep(1)
    run.kill()
    run.wait()
    check("killed while waiting", all((home / n).read_bytes() == t.encode("cp932") for n, t in LISTS.items()))
    for name in LISTS:  # as a kill between the first and the second list leaves it
        (home / (name + ".new")).write_bytes(new[name])
    (home / "jarl-lists.ready").touch()
    (home / "jcc-list.txt.new").rename(home / "jcc-list.txt")
    subprocess.run([CLI, "--home", home, "build", "jcc", "--force"], capture_output=True)
    check("killed while renaming", all((home / n).read_bytes() == new[n] for n in LISTS))
    check("nothing waits any more", not [f for f in home.iterdir() if f.suffix in (".new", ".ready")])
    # Lists that were not all there yet are not taken.
    (home / "jcc-list.txt.new").write_bytes(b"half")
    subprocess.run([CLI, "--home", home, "build", "jcc", "--force"], capture_output=True)
    check("killed while fetching", (home / "jcc-list.txt").read_bytes() == new["jcc-list.txt"])


def main():
    global PLAIN
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
    PLAIN = f"http://127.0.0.1:{server.server_address[1]}"
    threading.Thread(target=server.serve_forever, daemon=True).start()
    with tempfile.TemporaryDirectory() as folder:
        home = pathlib.Path(folder) / "home"
        shutil.copytree(SOURCE / "data", home)

        def jarl(command, how):
            return subprocess.run([CLI, "--home", home, "jarl", command, "--url", f"{PLAIN}/{how}", "--timeout", "2"],
                                  capture_output=True, text=True, timeout=60)

        def settings():
            file = home / "Tobarine.ini"
            return file.read_text("cp932") if file.exists() else ""

        run = jarl("check", "dated")
        check("check", run.returncode == 0 and run.stdout.count("新しい") == 3, run.stdout + run.stderr)
        check("check writes nothing", settings() == "")
        for how in ["nohead", "hangup"]:
            run = jarl("check", how)
            check("check: " + how, run.returncode == 0 and run.stdout.count("新しい") == 3, run.stdout + run.stderr)
        run = jarl("check", "undated")
        check("no date", run.returncode == 0 and run.stdout.count("日付不明") == 3 and "新しい" not in run.stdout,
              run.stdout + run.stderr)
        for how, reason in [("html", "リストではない"), ("circle", "移され続け"), ("nothing", "204"),
                            ("drip", "時間切れ"), ("slow", "時間切れ")]:
            run = jarl("check", how)
            check("check: " + how, run.returncode == 1 and reason in run.stderr, run.stderr)
        for seconds in ["0", "-1", "3601", "99999999999999999999", "2x", "1.5"]:
            run = subprocess.run([CLI, "jarl", "check", "--timeout", seconds], capture_output=True, text=True)
            check("timeout " + seconds, run.returncode == 2 and "秒" in run.stderr, run.stderr)

        for how, reason in [("missing", "404"), ("html", "リストではない"), ("cut", "途中で切れ"),
                            ("slow", "時間切れ"), ("short", "揃っていません"), ("short", "--from")]:
            run = jarl("download", how)
            check(how, run.returncode == 1 and reason in run.stderr, run.stderr)
            check(how + ": one line", run.stderr.count("\n") == 1, run.stderr)
            check(how + ": nothing written", not (home / "jcc-list.txt").exists() and settings() == "")

        run = jarl("download", "plain")
        check("download", run.returncode == 0, run.stderr)
        check("date from the first lines",
              "JCC_date=2019/05/01" in settings() and "JCG_date=2018/10/01" in settings())
        run = jarl("download", "moved")
        check("redirected", run.returncode == 0, run.stderr)
        check("date from the server", "JCC_date=2025/01/01" in settings())
        for name, text in LISTS.items():
            check(name, (home / name).read_bytes() == text.encode("cp932"))
        run = jarl("check", "dated")
        check("nothing new", "新しい" not in run.stdout, run.stdout)

        before = (home / "jcc-list.txt").read_bytes()
        check("cut again", jarl("download", "cut").returncode == 1)
        check("the old list stays", (home / "jcc-list.txt").read_bytes() == before)

        build = subprocess.run([CLI, "--home", home, "build", "jcc"], capture_output=True, text=True)
        check("lists of a few places", build.returncode == 1 and "--force" in build.stderr
              and (home / "JCC_JCG.mas").read_bytes() == (SOURCE / "data/JCC_JCG.mas").read_bytes(), build.stderr)
        build = subprocess.run([CLI, "--home", home, "build", "jcc", "--force"], capture_output=True, text=True)
        check("build from the folder", build.returncode == 0 and "現存 1  消滅 1" in build.stdout,
              build.stdout + build.stderr)
        (home / "ku-list.txt").write_text(LISTS["ku-list.txt"].replace("都市1区", "都市2区"), "cp932")
        build = subprocess.run([CLI, "--home", home, "build", "jcc"], capture_output=True, text=True)
        check("a wrong count", build.returncode == 1 and "揃っていません (ku-list.txt" in build.stderr, build.stderr)
        certificates(home)
        killed_download(home, PLAIN)
    print("jarl: all checks passed" if failures == 0 else f"jarl: {failures} checks failed")
    sys.exit(failures)


main()
