"""Drives the real program as a screen reader would, against a real daemon: what it finds, what it can press,
and what it must not get to know. On a display of its own; ctest gives it a bus of its own."""
import contextlib
import os
import pathlib
import plistlib
import runpy
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

import gi
gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib

DEMO_DAEMON = str(pathlib.Path(__file__).resolve().parents[2] / "tools/demo-daemon")
DEMO = runpy.run_path(DEMO_DAEMON)

PASSWORD, TYPED = "open5esame", "w7q"  # of which no part stands elsewhere
FETCHED = "Field recordings, spring.flac"
DELETED = "Ærøskøbing – Ελλάδα – 日本語の名前.epub"
OTHER = "debian-12-amd64-netinst.iso"


class Moved(Exception):
    """Something came or went while one thing after the other was looked at, and others were passed over."""


def until(what, holds, seconds=30):
    end = time.monotonic() + seconds
    while True:
        while GLib.MainContext.default().iteration(False):
            pass
        with contextlib.suppress(GLib.Error, Moved):  # what was there a moment ago is gone
            found = holds()
            if found:
                return found
        if time.monotonic() > end:
            raise AssertionError(f"waited {seconds} s until {what}")
        time.sleep(0.03)


# Ends with this program, however that ends.
def start(*command, **more):
    more |= {"preexec_fn": DEMO["end_with_parent"], "stdout": subprocess.PIPE, "text": True}
    return subprocess.Popen(command, **more)


def has(thing, state):
    return thing.get_state_set().contains(getattr(Atspi.StateType, state))


def text_of(thing):
    text = thing.get_text_iface()
    return Atspi.Text.get_text(text, 0, -1) if text else ""


def showing(around):
    count = around.get_child_count()
    for child in filter(None, map(around.get_child_at_index, range(count))):
        if has(child, "SHOWING"):
            yield child
            yield from showing(child)
    if around.get_child_count() != count:
        raise Moved


def press(thing):
    actions = range(Atspi.Action.get_n_actions(thing))
    names = [Atspi.Action.get_action_name(thing, action) for action in actions]
    Atspi.Action.do_action(thing, names.index("Press"))


class AccessibilityTest(unittest.TestCase):
    def launch(self, idiom):
        home = self.home = pathlib.Path(tempfile.mkdtemp(prefix="seedmote-accessibility-"))
        self.addCleanup(shutil.rmtree, home, True)
        keeper = start(DEMO_DAEMON, stdin=subprocess.PIPE)
        self.addCleanup(keeper.communicate)  # its input ends, and so does it
        port, data = keeper.stdout.readline().split()
        self.daemon = DEMO["Daemon"](data)
        self.daemon.port = port
        of_keeper = pathlib.Path(f"/proc/{keeper.pid}/task/{keeper.pid}/children")
        self.daemon_id = int(of_keeper.read_text().split()[0])
        own = os.environ | dict.fromkeys(("XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"), str(home))
        version = subprocess.check_output([PROGRAM, "--version"], text=True).split()[-1]
        subprocess.run([PROGRAM, f"--set=Port={port}", f"--set=Password={PASSWORD}", "--set=FirstRun=3",
                        f"--set=SavedVersion={version}"], env=own, check=True)
        self.heard, self.messages = set(), set()
        self.listeners = []
        for hear, events in ((self.hear, ("text-changed", "state-changed:focused")),
                             (self.hear_message, ("state-changed:showing", "property-change:accessible-name"))):
            self.listeners.append(Atspi.EventListener.new(hear))
            for event in events:
                self.listeners[-1].register("object:" + event)
        self.program = start(PROGRAM, "--idiom", idiom, env=own, stderr=subprocess.DEVNULL)
        self.addCleanup(self.program.communicate)
        self.addCleanup(self.program.kill)
        self.window = until("the window is there", lambda: next(
            (thing for thing in showing(Atspi.get_desktop(0))
             if thing.get_process_id() == self.program.pid and thing.get_role_name() == "frame"), None))
        self.window.get_application().set_cache_mask(Atspi.Cache.NONE)

    # Who sends an event can be read, also where it can't be found.
    def hear(self, event):
        with contextlib.suppress(GLib.Error):
            self.heard |= {str(event.any_data), text_of(event.source)}

    # Messages go by themselves, on a busy machine sooner than all that is shown can be asked for its name.
    def hear_message(self, event):
        with contextlib.suppress(GLib.Error):
            if event.source.get_role_name() == "alert" and has(event.source, "SHOWING"):
                self.messages.add(event.source.get_name())

    def find(self, role, name):
        return next((thing for thing in showing(self.window)
                     if thing.get_role_name() == role and thing.get_name() == name), None)

    def wait_for(self, role, name):
        return until(f"there is a {role} {name}", lambda: self.find(role, name))

    def wait_for_end_of(self, role, name):
        until(f"there is no {role} {name}", lambda: not self.find(role, name))

    def press(self, role, name):
        thing = self.wait_for(role, name)
        press(thing)
        return thing

    def select(self, name):
        row = self.press("list item", name)
        until(f"{name} is selected", lambda: has(row, "SELECTED"))
        return row

    # What is shown in front of everything, and takes all presses.
    def in_front(self):
        return next((thing for thing in showing(self.window)
                     if thing.get_role_name() in ("alert", "dialog")), None)

    def wait_for_message(self, text):
        until(f"{text} was said", lambda: text in self.messages)
        until("nothing is in front", lambda: not self.in_front())

    # Until it answers again, what waits for its answer stays in front.
    @contextlib.contextmanager
    def mute_daemon(self):
        os.kill(self.daemon_id, signal.SIGSTOP)
        try:
            yield
        finally:
            os.kill(self.daemon_id, signal.SIGCONT)

    @contextlib.contextmanager
    def presses_in_vain(self, role, name):
        row, button = self.wait_for("list item", OTHER), self.wait_for("push button", "Settings")
        with self.mute_daemon():
            self.press(role, name)
            front = until("something is in front", self.in_front)
            press(row)
            press(button)
        yield front
        until("nothing is in front", lambda: not self.in_front())
        self.assertFalse(has(row, "SELECTED"))
        self.wait_for_end_of("panel", "Settings")

    def torrents(self):
        listed = self.daemon("torrent-get", fields=["name", "status"])["torrents"]
        return {torrent["name"]: torrent["status"] for torrent in listed}

    def start_and_stop(self, idiom):
        self.assertRegex(self.select(FETCHED).get_description(), r"^\(2\d%\) +Downloaded:.*\npeers:0 .*Up")
        if idiom == "tablet":
            self.wait_for("push button", "Show more details")
        with self.presses_in_vain("push button", "Stop"):
            self.wait_for_message("Stopped!")
        self.assertEqual(self.torrents()[FETCHED], 0)
        self.select(FETCHED)
        self.press("push button", "Start")
        self.wait_for_message("Started!")
        self.assertNotEqual(self.torrents()[FETCHED], 0)

    def filter_and_delete(self):
        self.select("Paused")
        self.wait_for_end_of("list item", OTHER)
        self.select("All")
        before = self.torrents().keys()
        self.select(DELETED)
        self.press("push button", "Delete")
        self.press("push button", "Confirm delete")
        self.wait_for_end_of("list item", DELETED)
        self.assertEqual(before - self.torrents().keys(), {DELETED})
        until("nothing is in front", lambda: not self.in_front())
        for name in ("Torrents", "Statistics"):
            rows = until(f"{name} has rows", lambda: list(showing(self.find("list", name))))
            tops = [row.get_extents(Atspi.CoordType.WINDOW).y for row in rows]
            self.assertEqual(tops, sorted(tops), "what comes next is the next row")
            self.assertNotIn("", [row.get_name() for row in rows])

    def change_settings(self):
        self.press("push button", "Settings")
        focus = ("search", "--onlyvisible", "--name", "^Seedmote$", "windowfocus", "--sync")
        for role, name, keys in (("password text", "Password", (*focus, "type", TYPED)),
                                 ("text", "Host", ("key", "ctrl+a", "ctrl+c", "type", "localhost"))):
            field = self.press(role, name)
            until(f"{name} has the keys", lambda: has(field, "FOCUSED"))
            subprocess.run(["xdotool", *keys], check=True)
        until("the host is written", lambda: text_of(field) == "localhost")
        for thing in until("all is looked at", lambda: list(showing(self.window))):
            self.heard |= {thing.get_name(), thing.get_description(), text_of(thing)}
        self.assertIn("localhost", self.heard)
        self.assertEqual([text for text in self.heard if PASSWORD in text or TYPED in text], [])
        self.press("push button", "Close")
        self.wait_for_end_of("panel", "Settings")
        self.wait_for("dialog", "Server changed")
        self.press("push button", "Go on")
        until("nothing is in front", lambda: not self.in_front())
        stored = plistlib.loads((self.home / "seedmote/defaults.plist").read_bytes())
        self.assertEqual(stored["IP Address"]["Value"], "localhost")
        self.assertEqual(stored["Password"]["Value"], PASSWORD + TYPED)

    def answer_alert(self):
        with self.presses_in_vain("push button", "Pull to add a new torrent from a copied url.") as alert:
            self.assertEqual((alert.get_role_name(), alert.get_name()), ("dialog", "Add torrent"))
            self.assertIn("127.0.0.1", alert.get_description())
            self.press("push button", "Cancel")
        self.select(FETCHED)

    def test_all(self):
        for idiom in ("tablet", "phone"):
            with self.subTest(idiom):
                self.launch(idiom)
                self.wait_for_message("Daemon is connected!")
                self.start_and_stop(idiom)
                self.filter_and_delete()
                self.change_settings()
                self.answer_alert()
                self.program.terminate()
                self.assertEqual(self.program.wait(10), 0)
            self.doCleanups()


if __name__ == "__main__":
    PROGRAM = sys.argv.pop(1)
    DISPLAY = start("Xvfb", "-displayfd", "1", stderr=subprocess.DEVNULL)
    os.environ["DISPLAY"] = ":" + DISPLAY.stdout.readline().strip()
    Atspi.init()
    Atspi.set_timeout(10_000, 10_000)
    unittest.main(argv=[sys.argv[0], "-v", *sys.argv[1:]], warnings="ignore")
