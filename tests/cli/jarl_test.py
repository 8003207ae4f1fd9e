#!/usr/bin/env python3
"""tobarine-cli jarl against a small local server that serves good and bad answers.

    jarl_test.py TOBARINE-CLI SOURCE-FOLDER
"""
import http.server
import pathlib
import shutil
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
        if how == "moved":
            self.send_response(302)
            self.send_header("Location", f"/dated/{name}")
            self.end_headers()
            return
        if how == "missing":
            self.send_error(404)
            return
        if how == "html":
            body = b"<html><body>Not a list</body></html>"
        if how == "short" and name == "jcc-list.txt":
            body = body[: body.rindex(b"*")]
        if how == "slow":
            time.sleep(5)
        self.send_response(200)
        if how == "dated":
            self.send_header("Last-Modified", "Wed, 01 Jan 2025 10:00:00 GMT")
        self.send_header("Content-Length", str(len(body) + (50 if how == "cut" else 0)))
        self.end_headers()
        if self.command == "GET":
            try:
                self.wfile.write(body)
            except OSError:
                pass  # the slow answer comes after the client has gone

    do_GET = do_HEAD = answer

    def log_message(self, *_):
        pass


failures = 0


def check(what, condition, detail=""):
    global failures
    if not condition:
        failures += 1
        print(f"FAILED: {what} {detail}")


def main():
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    with tempfile.TemporaryDirectory() as folder:
        home = pathlib.Path(folder) / "home"
        shutil.copytree(SOURCE / "data", home)

        def jarl(command, how):
            url = f"http://127.0.0.1:{server.server_address[1]}/{how}"
            return subprocess.run([CLI, "--home", home, "jarl", command, "--url", url, "--timeout", "2"],
                                  capture_output=True, text=True, timeout=60)

        def settings():
            file = home / "Tobarine.ini"
            return file.read_text("cp932") if file.exists() else ""

        run = jarl("check", "dated")
        check("check", run.returncode == 0 and run.stdout.count("新しい") == 3, run.stdout + run.stderr)
        check("check writes nothing", settings() == "")

        for how, reason in [("missing", "404"), ("html", "リストではない"), ("cut", "途中で切れ"),
                            ("slow", "時間切れ"), ("short", "揃っていません")]:
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
        check("build from the folder", build.returncode == 0 and "現存 1  消滅 1" in build.stdout,
              build.stdout + build.stderr)
    print("jarl: all checks passed" if failures == 0 else f"jarl: {failures} checks failed")
    sys.exit(failures)


main()
