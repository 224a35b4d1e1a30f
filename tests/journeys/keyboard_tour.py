#!/usr/bin/env python3
"""A tour of the main window by the keyboard alone, in a real window on a display of its own.

Logs in, opens every command of every page by its digit and leaves it by Esc, finds a command by its initials, tries
to get past the screen lock by every key and by the close box, and leaves the program.

Usage: tests/journeys/keyboard_tour.py [PROGRAM]      (default: build/shared/src/app/jxc)
Needs xvfb, openbox, xdotool. Prints what opened; the exit status is 1 when something did not go as it should.
"""

import re
import subprocess
import sys
import time

from desk import Failure, begin, is_main, run

TILES = [5, 5, 6, 6, 13, 8, 9]  # commands of each page with the parameters of a new shop


def is_lock(title):
    return title == "系统锁定"


def tour(desk):
    main = begin(desk)

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


if __name__ == "__main__":
    sys.exit(run(tour))
