#!/usr/bin/env python3
"""Tests of run.sh with the real private daemon and a stand-in for the program: what is stored and passed on,
and that nothing is left behind, however a run ends."""
import json
import os
import pathlib
import shutil
import signal
import socket
import stat
import subprocess
import sys
import tempfile
import time
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]

# Notes every call with its environment and input, then does what ACT says.
PROGRAM = """#!/usr/bin/env python3
import json, os, pathlib, signal, sys, time
folder, words = os.environ.get("XDG_CONFIG_HOME", ""), sys.argv[1:]
note = {"words": words, "folder": folder, "pid": os.getpid(), "in": os.getcwd()}
if words == ["--version"]:
    print("Seedmote 7.8.9")
elif "--set" in words:
    note |= {"input": sys.stdin.read(), "mode": os.stat(folder).st_mode & 0o777}
with open(os.environ["NOTES"], "a") as notes:
    notes.write(json.dumps(note) + "\\n")
if words != ["--version"] and "--set" not in words:
    act = os.environ["ACT"]
    if "picture" in act:
        pathlib.Path(words[1]).write_text("a picture")
        print("a row")
    if "stay" in act:
        time.sleep(60)
    if "crash" in act:
        os.kill(os.getpid(), signal.SIGSEGV)
    print("2026-11-21 a line of the log", file=sys.stderr)
    if "STATUS" in os.environ:
        print("seedmote: the cause", file=sys.stderr)
    sys.exit(int(os.environ.get("STATUS", 0)))
"""


def until(what, holds, seconds=20):
    end = time.monotonic() + seconds
    while not holds():
        if time.monotonic() > end:
            raise AssertionError(f"waited {seconds} s until {what}")
        time.sleep(0.02)


def answers(port):
    with socket.socket() as probe:
        return probe.connect_ex(("127.0.0.1", port)) == 0


class RunTest(unittest.TestCase):
    def setUp(self):
        self.top = pathlib.Path(tempfile.mkdtemp(prefix="seedmote-run-test-"))
        self.addCleanup(shutil.rmtree, self.top)
        self.house, self.temporary, self.elsewhere = (self.top / name for name in ("house", "tmp", "elsewhere"))
        tools = self.top / "tools-on-path"
        for folder in (self.temporary, self.elsewhere, tools, self.house / "build/release/app"):
            folder.mkdir(parents=True)
        shutil.copy(ROOT / "run.sh", self.house)
        shutil.copytree(ROOT / "tools", self.house / "tools")
        (self.house / "build/release/build.ninja").touch()
        (self.house / "build/release/CMakeCache.txt").write_text(f"CMAKE_HOME_DIRECTORY:INTERNAL={self.house}\n")
        self.program = self.house / "build/release/app/seedmote"
        for path, text in ((self.program, PROGRAM), (tools / "cmake", "#!/bin/sh\n"),
                           (tools / "dpkg-query", '#!/bin/sh\nshift 3\nprintf "%s installed\\n" "$@"\n')):
            path.write_text(text)
            path.chmod(0o755)
        self.notes_file = self.top / "notes"
        self.environment = {"PATH": f"{tools}:{os.environ['PATH']}", "TMPDIR": str(self.temporary), "DISPLAY": ":99",
                            "NOTES": str(self.notes_file), "ACT": "leave", "HOME": str(self.top)}

    def start(self, *words, **environment):
        # Signals that the surrounding program ignores would be ignored by the shell for good.
        def plain_signals():
            for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
                signal.signal(number, signal.SIG_DFL)
        return subprocess.Popen([self.house / "run.sh", *words], env=self.environment | environment,
                                cwd=self.elsewhere, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE, text=True, preexec_fn=plain_signals)

    def run_it(self, *words, given="", **environment):
        process = self.start(*words, **environment)
        self.output, self.errors = process.communicate(given, timeout=60)
        return process.returncode

    def notes(self):
        if not self.notes_file.exists():
            return []
        return [json.loads(line) for line in self.notes_file.read_text().splitlines()]

    def settings(self):
        stored = next(note for note in self.notes() if "--set" in note["words"])
        words = stored["words"]
        self.assertEqual(words[::2], ["--set"] * (len(words) // 2))
        return dict(word.split("=", 1) for word in words[1::2]), stored

    def assert_nothing_left(self):
        self.assertEqual(list(self.temporary.iterdir()), [])

    def test_wrong_options_are_refused_before_anything_is_done(self):
        for words, part in ((["--hots", "nas"], "--hots"), (["nas"], "nas"), (["--user", "me"], "--host"),
                            (["--host"], "value"), (["--host", ""], "value"), (["--host", "::1"], "[IPv6]"),
                            (["--host", "http://nas"], "http://nas"), (["--host", "nas:0"], "65535"),
                            (["--host", "nas:65536"], "65535"), (["--host=nas:x"], "65535"),
                            (["--host", "[::1"], "[IPv6]"), (["--host", "nas:"], "65535")):
            with self.subTest(words):
                self.assertEqual(self.run_it(*words), 2)
                self.assertIn(part, self.errors)
                self.assertEqual(self.notes(), [])
        self.assertEqual(self.run_it("--help"), 0)
        self.assertIn("--host HOST[:PORT]", self.output)

    def test_own_daemon(self):
        status = self.run_it("--host=[fe80::1]:09092", "--ssl", "--user", "me", "--", "--idiom", "a b", given="p w=-\n", STATUS="7")
        self.assertEqual(status, 7)
        settings, stored = self.settings()
        self.assertEqual(settings, {"IP Address": "[fe80::1]", "Port": "9092", "UseSSL": "True", "Username": "me",
                                    "Password": "-", "FirstRun": "3", "SavedVersion": "7.8.9"})
        self.assertEqual(stored["input"], "p w=-\n")
        self.assertEqual(stored["mode"], stat.S_IRWXU)
        last = self.notes()[-1]
        self.assertEqual(last["words"], ["--idiom", "a b"])
        self.assertEqual(last["in"], str(self.elsewhere))
        self.assertTrue(last["folder"].startswith(str(self.temporary)))
        self.assertNotIn("p w", self.output + self.errors)
        self.assert_nothing_left()

    def test_own_daemon_without_user_and_without_password(self):
        self.assertEqual(self.run_it("--host", "nas"), 0)
        settings, stored = self.settings()
        self.assertEqual((settings["IP Address"], settings["Port"], settings["Username"], stored["input"]),
                         ("nas", "9091", "", "\n"))
        self.notes_file.unlink()
        self.assertEqual(self.run_it("--host", "nas", "--user", "me"), 1)
        self.assertIn("password", self.errors)
        self.assertEqual(self.notes(), [])

    def test_private_daemon_ends_with_the_run(self):
        endings = (("it leaves", "leave", None, 0), ("it crashes", "crash", None, 139),
                   ("TERM", "stay", signal.SIGTERM, 143), ("INT", "stay", signal.SIGINT, 130),
                   ("HUP", "stay", signal.SIGHUP, 129), ("KILL", "stay", signal.SIGKILL, -9))
        for name, act, number, status in endings:
            with self.subTest(name):
                self.notes_file.unlink(missing_ok=True)
                process = self.start(ACT=act)
                until("the program has started", lambda: len(self.notes()) == 3)
                settings, _ = self.settings()
                port, program = int(settings["Port"]), self.notes()[-1]["pid"]
                self.assertEqual(settings["IP Address"], "127.0.0.1")
                if number:
                    self.assertTrue(answers(port))
                    process.send_signal(number)
                self.assertEqual(process.wait(20), status)
                until("the daemon has ended", lambda: not answers(port))
                until("its folder has gone", lambda: not list(self.temporary.iterdir()))
                if number == signal.SIGKILL:  # nobody is left who could end the program
                    os.kill(program, signal.SIGKILL)
                else:
                    self.assertFalse(os.path.exists(f"/proc/{program}"))
                for stream in (process.stdin, process.stdout, process.stderr):
                    stream.close()

    def test_without_a_display(self):
        picture = self.elsewhere / "seedmote.png"
        no_display = {"DISPLAY": ""}
        self.assertEqual(self.run_it("--host", "nas", "--", "--idiom", "phone", ACT="picture", **no_display), 0)
        words = self.notes()[-1]["words"]
        self.assertEqual((words[0], words[2:]), ("--snapshot", ["--idiom", "phone"]))
        self.assertEqual((self.output, picture.read_text()), ("a row\n", "a picture"))
        self.assertEqual(self.run_it("--host", "nas", ACT="leave", **no_display), 1)
        self.assertEqual(self.run_it("--host", "nas", ACT="leave", STATUS="3", **no_display), 3)
        self.assertIn("seedmote: the cause\n", self.errors)
        self.assertNotIn("the log", self.errors)
        self.assertEqual(picture.read_text(), "a picture")  # of the run that had one
        self.assert_nothing_left()


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], "-v", *sys.argv[1:]])
