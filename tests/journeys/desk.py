"""A display of its own, the program on it, and the keys: what the journeys through the real window stand on.

With JXC_DISPLAY=1024x768 the display has that size, with JXC_PICTURES=DIR pictures of it are kept there.

Needs xvfb, openbox, xdotool.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

TOP = pathlib.Path(__file__).resolve().parents[2]


def missing_tools():
    """The names of the tools that are not there."""
    return ", ".join(tool for tool in ("Xvfb", "openbox", "xdotool") if not shutil.which(tool))


class Failure(Exception):
    pass


class Display:
    """A display in memory with a window manager."""

    def __init__(self, size="1366x900"):
        size = os.environ.get("JXC_DISPLAY", size)
        self.children = []
        reading, writing = os.pipe()
        # Without key repeat: on a machine at work a key is up so late that the display would type it again.
        self.spawn(["Xvfb", "-displayfd", str(writing), "-screen", "0", size + "x24", "-nolisten", "tcp", "-noreset", "-r"],
                   pass_fds=(writing,))
        os.close(writing)
        number = os.fdopen(reading).readline().strip()
        self.env = dict(os.environ, DISPLAY=":" + number, QT_IM_MODULE="none", LANG="zh_CN.UTF-8")
        self.env.pop("QT_QPA_PLATFORM", None)
        self.env.pop("WAYLAND_DISPLAY", None)
        self.spawn(["openbox", "--sm-disable"], env=self.env)

    def spawn(self, words, **how):
        child = subprocess.Popen(words, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                 stderr=subprocess.DEVNULL, **how)
        self.children.append(child)
        return child

    def close(self):
        for child in reversed(self.children):
            if child.poll() is None:
                child.terminate()
            child.wait()


class Desk(Display):
    """The program on a display of its own, in a fresh program directory."""

    def __init__(self, program, prepare=None, folder=None, **how):
        """`prepare` gets the program directory, made in `folder`, before the program starts on it as `how` tells
        (user, group)."""
        self.home = tempfile.mkdtemp(prefix="jxc-tour.", dir=folder)
        if prepare:
            prepare(self.home)
        super().__init__()
        self.program = self.spawn([program, "--home", self.home], env=self.env, **how)

    def close(self):
        super().close()
        shutil.rmtree(self.home, ignore_errors=True)

    def xdo(self, *words):
        done = subprocess.run(["xdotool", *words], env=self.env, capture_output=True, text=True)
        return done.stdout.strip()

    def title(self):
        """Of the window that has the keys; empty while none has."""
        return self.xdo("getactivewindow", "getwindowname")

    def windows(self):
        """Numbers of the program's windows in sight, of those too that leave the keys to another one."""
        return set(self.xdo("search", "--onlyvisible", "--pid", str(self.program.pid)).split())

    def keys(self, *keys):
        self.xdo("key", "--delay", "20", *keys)

    def picture(self, name):
        """Of what stands on the display, where pictures are wanted."""
        if folder := os.environ.get("JXC_PICTURES"):
            time.sleep(0.4)
            subprocess.run(["import", "-window", "root", f"{folder}/{name}.png"], env=self.env, check=True)

    def until(self, what, wanted, seconds=20):
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            title = self.title()
            if title and wanted(title):
                return title
            if self.program.poll() is not None:
                raise Failure(f"{what}: the program has ended")
            time.sleep(0.05)
        raise Failure(f"{what}: the window is “{self.title()}”")


def is_main(title):
    return "[" in title and "操作员登录" not in title


def is_called(name):
    return lambda title: title == name


def open_by_initials(desk, initials, title):
    desk.until("main window", is_main)
    desk.keys("ctrl+k", *initials, "Return")
    desk.until(initials, is_called(title))


def begin(desk):
    """Logs the administrator of a new shop in and puts the daily tip away. The title of the main window."""
    desk.until("login", lambda title: "操作员登录" in title, 60)
    desk.keys("F5")
    desk.until("daily tip", lambda title: title == "每日一帖")
    desk.keys("Next", "Escape")
    return desk.until("main window", is_main)


def demo_shop(home, months=1):
    """Months of a small demonstration shop, by the console that the command line names behind the program."""
    subprocess.run([sys.argv[2], "--home", home, "demo", "--months", str(months), "--goods", "60", "--documents", "3"],
                   check=True, stdout=subprocess.DEVNULL)


def run(journey, prepare=None):
    """The journey over the program that the command line names; the exit status, 77 where a tool is missing."""
    if missing := missing_tools():
        print("skipped: not installed: " + missing)
        return 77
    program = sys.argv[1] if len(sys.argv) > 1 else str(TOP / "build/shared/src/app/jxc")
    desk = Desk(program, prepare)
    try:
        return journey(desk) or 0
    except (Failure, subprocess.TimeoutExpired) as failure:
        print(f"FAILED: {failure}", file=sys.stderr)
        subprocess.run(["import", "-window", "root", "/tmp/journey_fail.png"], env=desk.env, check=False)
        return 1
    finally:
        desk.close()
