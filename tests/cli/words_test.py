#!/usr/bin/env python3
"""What a person reads on the command line: help, usage errors, the list of settings, completion, and
what becomes of control characters and of a full disk.
Usage: words_test.py TOBARINE-CLI SOURCE-FOLDER [TOBARINE]"""
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

CLI, SOURCE, *WINDOW = (pathlib.Path(word).resolve() for word in sys.argv[1:])
COMMANDS = ["", "h2l", "eqsl", "l2h", "adif2zlog", "info", "settings", "lookup", "lookup calls",
            "lookup codes", "lookup jcc", "build", "build dxcc", "build jcc", "build codes", "jarl",
            "jarl check", "jarl download"]
ENGLISH = re.compile(r"\b(TEXT|INT|UINT|FLOAT|OPTIONS|REQUIRED|SUBCOMMANDS?|Options|Usage|Positionals|"
                     r"Subcommands|is required|not expected|Could not|Print this)\b")
ODD = "JA1\x1b[2J\x07\u009b31m\u202eABC"  # what a terminal would obey
OBEYED = re.compile("[\x00-\x09\x0b-\x1f\x7f\x80-\x9f\u202a-\u202e\u2066-\u2069]")


class Words(unittest.TestCase):
    def setUp(self):
        self.dir = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.dir)
        shutil.copytree(SOURCE / "data", self.dir / "home")
        shutil.copy(SOURCE / "samples" / "hamlog.csv", self.dir / "log.csv")
        self.env = {**os.environ, "TOBARINE_HOME": str(self.dir / "home")}

    def run_cli(self, *words, program=CLI, status=0, **more):
        done = subprocess.run([program, *words], cwd=self.dir, env=self.env, capture_output=True,
                              stdin=subprocess.DEVNULL, check=False, **more)
        out, err = done.stdout.decode(), done.stderr.decode()
        self.assertEqual(done.returncode, status, f"{words}: {out} {err}")
        return out, err

    def test_help_is_japanese(self):
        for command in COMMANDS:
            out, _ = self.run_cli(*command.split(), "--help")
            self.assertRegex(out, f"使い方: tobarine-cli {command}".strip())
            self.assertIsNone(ENGLISH.search(out), out)
            self.assertIn("例:", out)

    def test_usage_errors_say_what_to_do(self):
        for words, reason in {
            "": "コマンドがありません (使えるもの: h2l、eqsl",
            "h2ll log.csv": "コマンド h2ll はありません",
            "lookup": "コマンドがありません (使えるもの: calls、codes、jcc)",
            "lookup foo": "コマンド foo はありません",
            "h2l": "INPUT がありません (入力ファイル",
            "h2l log.csv more.csv": "余分な語があります: more.csv",
            "h2l log.csv --nix": "オプション --nix はありません",
            "h2l log.csv -o": "--output の後に値を書いて下さい",
            "h2l log.csv -o a -o b": "--output は一度しか書けません",
            "l2h log.csv --time gmt": "--time の値が使えません: gmt (使える値: none、jst、utc、ja)",
            "lookup calls JA1ABC --date 20241331": "20241331 は日付として使えません",
            "jarl check --timeout soon": "秒数を書いて下さい: soon",
            "jarl check --timeout 99999999999999999999": "秒数を書いて下さい: 9999",
            "h2l log.csv --kind xyz": "--kind の値が使えません: xyz (使える値: csv、hdb",
            "--set Op_3=JST info log.csv": "Op_3 の値が使えません: JST (使える値: 0 (UTC)、1 (JST))",
            "--set Chk_1=5 info log.csv": "0 (しない)、1 (する)",
            "--set nothing=1 info log.csv": "設定の名前が違います: nothing",
            "--set Chk_1 info log.csv": "名前=値",
        }.items():
            out, err = self.run_cli(*words.split(), status=2)
            self.assertEqual(out, "")
            self.assertTrue(err.startswith("tobarine-cli: "), err)
            self.assertIn(reason, err)
            self.assertEqual(err.count("\n"), 1)
            self.assertIsNone(ENGLISH.search(err), err)

    def test_a_missing_folder_is_named(self):
        _, err = self.run_cli("h2l", "log.csv", "-o", "none/out.adi", status=1)
        self.assertIn("フォルダー none がありません", err)
        _, err = self.run_cli("h2l", "none/log.csv", status=1)
        self.assertIn("フォルダー none がありません", err)
        _, err = self.run_cli("h2l", "other.csv", status=1)
        self.assertIn("ファイルがありません", err)

    def test_settings_tell_what_set_takes(self):
        listed = json.loads(self.run_cli("--json", "settings", "--set", "Chk_9=1")[0])
        text, _ = self.run_cli("settings", "--set", "write_state=1")
        man, _ = self.run_cli("--man")
        by_name = {option["name"]: option for option in listed}
        self.assertEqual(by_name["write_state"]["value"], "1")
        self.assertEqual(by_name["use_rmks1"]["key"], "Chk_1")
        self.assertGreaterEqual(len(listed), 40)
        for option in listed:
            self.assertIn(f"{option['name']}={option['value']}  ({option['key']}): ", text)
            self.assertIn(f"{option['name']} ({option['key']})\n{option['meaning']}".replace("-", "\\-"),
                          man)
            for value in option["values"]:
                self.run_cli("--set", f"{option['name']}={value['value']}", "info", "log.csv")

    def test_set_takes_one_word(self):
        for words in ("h2l --set Chk_9=1 log.csv", "h2l log.csv --set Chk_9=1 --set Op_2=1",
                      "--set Chk_9=1 h2l log.csv"):
            self.run_cli(*words.split())

    def test_control_characters_are_shown(self):
        row = f"{ODD},24/05/01,12:00U,59,59,14,{ODD},,,,{ODD},,,,\r\n"
        (self.dir / "odd.csv").write_bytes(row.encode("utf-8"))
        for words in (["lookup", "calls", ODD], ["lookup", "codes", ODD], ["lookup", "jcc", ODD],
                      ["--json", "lookup", "calls", ODD], ["--report", "h2l", "odd.csv"],
                      ["--json", "h2l", "odd.csv"]):
            out, err = self.run_cli(*words)
            shown = out.replace("\t", " ") + err
            self.assertIsNone(OBEYED.search(shown), repr(shown))
            if "--json" in words:
                json.loads(out)
        self.assertEqual(json.loads(self.run_cli("--json", "lookup", "calls", ODD)[0])["call"], ODD)
        for words, status in ((["--set", ODD + "=1", "settings"], 2), (["--set", "Op_3=" + ODD, "settings"], 2),
                              (["h2l", ODD + "\n.csv"], 1), (["h2l", "log.csv", ODD], 2)):
            _, err = self.run_cli(*words, status=status)
            self.assertIsNone(OBEYED.search(err), repr(err))
            self.assertIn("␛", err)
            self.assertEqual(err.count("\n"), 1)

    def test_a_full_disk_is_told(self):
        if not os.path.exists("/dev/full"):
            self.skipTest("no /dev/full")
        words = [[*command.split(), "--help"] for command in COMMANDS]
        words += [["--version"], ["--man"], ["--completion"], ["settings"], ["info", "log.csv"],
                  ["lookup", "calls", "JA1ABC"], ["h2l", "log.csv", "-o", "out.adi"]]
        for call in words:
            with open("/dev/full", "wb") as full:
                done = subprocess.run([CLI, *call], cwd=self.dir, env=self.env, stdout=full,
                                      stderr=subprocess.PIPE, check=False)
            self.assertEqual(done.returncode, 1, call)
            self.assertIn("標準出力に書けません", done.stderr.decode(), call)

    def test_completion_knows_commands_and_settings(self):
        script, _ = self.run_cli("--completion")
        (self.dir / "completion.bash").write_text(script, encoding="utf-8")
        ask = """. ./completion.bash; compopt() { :; }; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1))
                 _tobarine_cli; echo "${COMPREPLY[*]}" """
        for words, reply in {
            ("l2",): "l2h",
            ("lookup", "c"): "calls codes",
            ("lookup", "calls", "--da"): "--date",
            ("h2l", "lo"): "log.csv",
            ("--set", "write_st"): "write_state=",
            ("--set", "Op_3", "="): "0 1",
            ("--set", "zlog_time", "=", "ALL_U"): "ALL_U",
            ("h2l", "log.csv", "--rep"): "--report",
        }.items():
            out, _ = self.run_cli("-c", ask, "bash", "tobarine-cli", *words, program="bash")
            self.assertEqual(out.strip(), reply, words)

    def test_the_window_program_answers(self):
        if not WINDOW:
            self.skipTest("built without the window")
        self.env.pop("DISPLAY", None)
        out, _ = self.run_cli("--help", program=WINDOW[0])
        self.assertIn("--home", out)
        self.assertEqual(self.run_cli("--version", program=WINDOW[0])[0],
                         self.run_cli("--version")[0])
        self.env["QT_QPA_PLATFORM"] = "offscreen"
        _, err = self.run_cli("--nix", program=WINDOW[0], status=2)
        self.assertIn("tobarine: オプション --nix はありません", err)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
