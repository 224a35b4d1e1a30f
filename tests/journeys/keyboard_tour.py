#!/usr/bin/env python3
"""A tour of the main window by the keyboard alone, in a real window on a display of its own.

Logs in, opens every command of every page by its digit and leaves it by Esc, finds a command by its initials, tries
to get past the screen lock by every key and by the close box, and leaves the program.

Usage: tests/journeys/keyboard_tour.py [PROGRAM]      (default: build/shared/src/app/jxc)
Needs xvfb, openbox, xdotool. Prints what opened; the exit status is 1 when something did not go as it should.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time

TOP = pathlib.Path(__file__).resolve().parents[2]
TILES = [5, 5, 6, 6, 13, 8, 9]  # commands of each page with the parameters of a new shop


class Failure(Exception):
    pass


class Desk:
    """A display with a window manager, and the program on it in a fresh program directory."""

    def __init__(self, program):
        self.home = tempfile.mkdtemp(prefix="jxc-tour.")
        self.children = []
        reading, writing = os.pipe()
        self.spawn(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1366x900x24", "-nolisten", "tcp", "-noreset"],
                   pass_fds=(writing,))
        os.close(writing)
        number = os.fdopen(reading).readline().strip()
        self.env = dict(os.environ, DISPLAY=":" + number, QT_IM_MODULE="none", LANG="zh_CN.UTF-8")
        self.env.pop("QT_QPA_PLATFORM", None)
        self.env.pop("WAYLAND_DISPLAY", None)
        self.spawn(["openbox", "--sm-disable"], env=self.env)
        self.program = self.spawn([program, "--home", self.home], env=self.env)

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
        shutil.rmtree(self.home, ignore_errors=True)

    def xdo(self, *words):
        done = subprocess.run(["xdotool", *words], env=self.env, capture_output=True, text=True)
        return done.stdout.strip()

    def title(self):
        """Of the window that has the keys; empty while none has."""
        return self.xdo("getactivewindow", "getwindowname")

    def keys(self, *keys):
        self.xdo("key", "--delay", "20", *keys)

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

    def stays(self, what, wanted, seconds=0.8):
        """The window with the keys is this one, now and for a while."""
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            title = self.title()
            if title and not wanted(title):
                raise Failure(f"{what}: the window is “{title}”")
            time.sleep(0.1)


def is_main(title):
    return "[" in title and "操作员登录" not in title


def is_lock(title):
    return title == "系统锁定"


def tour(desk):
    desk.until("login", lambda title: "操作员登录" in title, 60)
    desk.keys("F5")
    desk.until("daily tip", lambda title: title == "每日一帖")
    desk.keys("Next", "Escape")
    main = desk.until("main window", is_main)

    opened = []
    for page, count in enumerate(TILES, 1):
        for digit in range(1, min(count, 9) + 1):
            desk.until("main window", is_main)
            desk.keys(f"ctrl+{page}", str(digit))
            title = desk.until(f"page {page}, command {digit}", lambda t: t != main and not is_main(t))
            opened.append(title)
            for _ in range(5):  # a screen with something on top needs more than one
                desk.keys("Escape")
                time.sleep(0.25)
                if is_main(desk.title()):
                    break
        print(f"page {page}: " + "、".join(opened[-min(count, 9):]))

    # The arrows reach what has no digit: four rows down from the first of thirteen.
    desk.until("main window", is_main)
    desk.keys("ctrl+5", "Down", "Down", "Right", "Return")
    print("by arrows: " + desk.until("arrows", lambda t: not is_main(t)))
    desk.keys("Escape")

    desk.until("main window", is_main)
    desk.keys("ctrl+k", "c", "z", "y", "s", "z", "Return")
    print("by initials: " + desk.until("initials", lambda t: t == "操作员设置"))
    desk.keys("Escape")

    desk.until("main window", is_main)
    desk.keys("F2")
    desk.until("lock", is_lock)
    for key in ("Escape", "alt+F4", "F1", "ctrl+k", "ctrl+7", "6", "F2"):
        desk.keys(key)
        desk.stays(f"lock after {key}", is_lock, 0.3)
    # What the close box does, to the lock and to the window behind it; a click into that window, and a key.
    for name in (main, "系统锁定"):
        desk.xdo("windowactivate", *desk.xdo("search", "--onlyvisible", "--name", re.escape(name)).split()[:1])
        time.sleep(0.2)
        desk.keys("alt+F4")
        time.sleep(0.2)
    desk.xdo("mousemove", "400", "250", "click", "1")
    desk.keys("7")
    time.sleep(0.5)
    if desk.program.poll() is not None:
        raise Failure("the lock: the program has ended")
    desk.until("lock", is_lock)
    desk.xdo("type", "wrong")
    desk.keys("F5")
    desk.until("wrong password", lambda t: t == "系统提示")
    desk.keys("Return")
    desk.until("lock", is_lock)
    desk.keys("F5")  # the administrator of a new shop has no password yet
    desk.until("unlocked", is_main)
    print("the lock holds")

    desk.keys("Escape")
    desk.until("question", lambda t: t == "信息提醒")
    desk.keys("Escape")
    desk.until("stayed", is_main)
    desk.keys("Escape")
    desk.until("question", lambda t: t == "信息提醒")
    desk.keys("alt+y")
    desk.program.wait(20)
    print(f"left with status {desk.program.returncode}")
    return desk.program.returncode


def main():
    program = sys.argv[1] if len(sys.argv) > 1 else str(TOP / "build/shared/src/app/jxc")
    desk = Desk(program)
    try:
        return tour(desk)
    except (Failure, subprocess.TimeoutExpired) as failure:
        print(f"FAILED: {failure}", file=sys.stderr)
        return 1
    finally:
        desk.close()


if __name__ == "__main__":
    sys.exit(main())
