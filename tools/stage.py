"""An X server of its own, the program in it, and whoever sits in front of it."""
import os
import pathlib
import shutil
import subprocess
import tempfile
import time

from gobetween import LOOPBACK

SIZES = {"tablet": (1024, 768), "phone": (667, 375)}


class Problem(Exception):
    """Said in one sentence."""


class Stage:
    """One X server, one idiom, one size."""

    def __init__(self, options, idiom, between):
        self.options, self.idiom, self.between = options, idiom, between
        self.points = options.size or SIZES[idiom]
        self.pixels = tuple(round(side * options.scale) for side in self.points)
        numbers, ours = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(ours), "-screen", "0", "{}x{}x24".format(*self.pixels), "-nolisten", "tcp"],
            pass_fds=[ours], stderr=subprocess.DEVNULL)
        os.close(ours)
        with os.fdopen(numbers) as answer:
            number = answer.readline().strip()
        if not number:
            raise Problem("Xvfb does not start")
        self.display = {**os.environ, "DISPLAY": ":" + number}

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.server.terminate()
        self.server.wait()

    def x(self, *words, text=None):
        done = subprocess.run([str(word) for word in words], env=self.display, input=text,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, timeout=30)
        return done.stdout.split()

    def copy(self, text):
        subprocess.run(["xclip", "-selection", "clipboard"], env=self.display, input=text, text=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)


class Session:
    """The program while it runs, and whoever sits in front of it. Places are points of the root view."""

    def __init__(self, stage, settings=None, arguments=(), setup=True):
        self.stage = stage
        self.tablet = stage.idiom == "tablet"
        width, height = stage.points
        self.point = stage.pixels[0] / 1024 if self.tablet else stage.pixels[1] / 375
        self.width, self.height = (1024, height * 1024 / width) if self.tablet else (width * 375 / height, 375)
        self.program = None
        self.folder = tempfile.mkdtemp(prefix="seedmote-screens-")
        try:
            self.start(stage, settings or {}, arguments, setup)
        except BaseException:
            self.__exit__()
            raise

    def start(self, stage, settings, arguments, setup):
        self.environment = {
            **stage.display, "QT_QPA_PLATFORM": "xcb", "QT_QUICK_BACKEND": "software", "SEEDMOTE_LOG": "full",
            "QT_SCALE_FACTOR": str(stage.options.scale), "DBUS_SESSION_BUS_ADDRESS": "disabled:",
            **{"XDG_%s" % name: os.path.join(self.folder, name)
               for name in ("CONFIG_HOME", "STATE_HOME", "DATA_HOME", "CACHE_HOME", "RUNTIME_DIR")}}
        self.environment.pop("WAYLAND_DISPLAY", None)
        os.mkdir(self.environment["XDG_RUNTIME_DIR"], 0o700)
        self.store({"IP Address": LOOPBACK, "Port": stage.between.server_port, **settings}, setup)
        self.log = os.path.join(self.folder, "log")
        self.read = 0
        with open(self.log, "wb") as log:
            self.program = subprocess.Popen([stage.options.program, "--idiom", stage.idiom, *arguments],
                                            env=self.environment, stderr=log, start_new_session=True)
        self.window = self.find_window()

    def store(self, settings, setup):
        program = self.stage.options.program
        if setup:
            said = subprocess.run([program, "--version"], stdout=subprocess.PIPE, text=True, check=True).stdout
            settings = {**settings, "FirstRun": 3, "SavedVersion": said.split()[-1]}
        words = [word for key, value in settings.items() for word in ("--set", f"{key}={value}")]
        subprocess.run([program, *words], env=self.environment, check=True)

    def find_window(self):
        for _ in range(100):
            found = self.stage.x("xdotool", "search", "--onlyvisible", "--name", "^Seedmote$")
            if found:
                self.stage.x("xdotool", "windowmove", found[0], 0, 0, "windowsize", found[0], *self.stage.pixels,
                             "windowfocus", found[0])
                return found[0]
            if self.program.poll() is not None:
                raise Problem("the program ended at once:\n" + pathlib.Path(self.log).read_text())
            time.sleep(0.1)
        raise Problem("the program showed no window")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.program:
            self.program.terminate()
            try:
                self.program.wait(5)
            except subprocess.TimeoutExpired:
                self.program.kill()
                self.program.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    # What the program says.

    def until(self, record, seconds=20):
        """Waits for the next record of the log that holds this."""
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            with open(self.log, errors="replace") as log:
                text = log.read()
            found = text.find(record, self.read)
            if found >= 0:
                self.read = found + len(record)
                return
            time.sleep(0.02)
        raise Problem(f"the program did not log \"{record}\" in {seconds} s")

    def until_listed(self):
        self.until("refreshAll finished")
        self.until("updateSessionStauts")
        time.sleep(1.2)  # the messages have gone

    # What the person does.

    def move(self, x, y):
        self.stage.x("xdotool", "mousemove", round(x * self.point), round(y * self.point))

    def press(self, x, y):
        self.move(x, y)
        self.stage.x("xdotool", "click", 1)

    def drag(self, path, seconds=0.3):
        """Leaves the button down."""
        self.move(*path[0])
        self.stage.x("xdotool", "mousedown", 1)
        for (x, y), (to_x, to_y) in zip(path, path[1:]):
            for step in range(1, 13):
                self.move(x + (to_x - x) * step / 12, y + (to_y - y) * step / 12)
                time.sleep(seconds / 12)

    def release(self):
        self.stage.x("xdotool", "mouseup", 1)

    def wheel(self, x, y, notches):
        """Down the content, or up by a negative number."""
        self.move(x, y)
        self.stage.x("xdotool", "click", "--repeat", abs(notches), "--delay", 20, 5 if notches > 0 else 4)
        time.sleep(0.5)

    def swipe(self, x, by, y=None):
        y = y or self.height * 0.55
        self.drag([(x, y), (x + by, y)], 0.15)
        self.release()
        time.sleep(1.3)

    def press_row(self, row):
        self.press(300 if self.tablet else 150, 20 + (78 * (row + 0.5) if self.tablet else 54 * (row + 0.5)))

    def press_filter(self, row):
        self.press(24, 20 + 50 * (row + 0.5))

    def press_action(self, name):
        row = ("Refresh", "Start", "Stop", "Delete", "Settings").index(name) - 2  # "Stop" is in the middle
        self.press(self.width - (30 if self.tablet else 22), self.height / 2 + row * (64 if self.tablet else 52))

    def accept(self):
        """Presses the right button of an alert, at the foot of the white card in the middle."""
        self.press(self.width / 2 + 75, self.height / 2 + self.half_card() - 24)

    def half_card(self):
        """How far the card reaches below the middle, by the window's own pixels there."""
        image = subprocess.run(
            ["import", "-window", self.window, "-crop", "1x{}+{}+{}".format(
                self.stage.pixels[1] // 2, round((self.width / 2 + 75) * self.point), self.stage.pixels[1] // 2),
             "-depth", "8", "gray:-"], env=self.stage.display, stdout=subprocess.PIPE, check=True).stdout
        return len(image.rstrip(bytes(range(200)))) / self.point

    def key(self, *names):
        self.stage.x("xdotool", "key", *names)

    def type(self, text):
        self.stage.x("xdotool", "type", text)

    def picture(self, name, after=0.0):
        time.sleep(after)
        file = pathlib.Path(self.stage.options.out) / f"{self.stage.idiom}-{name}.png"
        subprocess.run(["import", "-window", self.window, "png24:" + str(file)], env=self.stage.display, check=True)
        print(file, flush=True)
