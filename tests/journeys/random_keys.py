#!/usr/bin/env python3
"""Random keys through the real window: commands by their initials, F-keys, texts, arrows, Esc, y and n. At the end the
program is alive, a window has the keys, the memory is flat and the books are proven.

Usage: tests/journeys/random_keys.py PROGRAM JXCCTL [KEYS [SEED]]      (default: 600 keys, as the suite runs it)
Needs xvfb, openbox, xdotool; skipped with status 77 where they are missing. By hand: 20000 keys, a quarter of an hour.
"""

import pathlib
import random
import subprocess
import sys
import time

from desk import Failure, begin, demo_shop, is_main, run
from shop_day import prove

BURST = 12          # keys that are sent without waiting for anything
PATIENCE = 20       # seconds that a window may be busy: a statistic, a recomputation
CALM = 0.25         # seconds without a new window: nothing is on its way any more
MOST_GROWTH = 1.6   # of the program's own memory once every command has been open: there are dialogs behind them
LONG = 5000         # keys from which on the memory is weighed
COMMANDS = ("cgjh cgth wlzw jthcx dqkccx spxs gkth xsthcx kcdb kcpd kcbsby cfkb yszb yfzb jhyb spcgtj ywycgtj ckyb "
            "ywyxstj spxstj spxsph yyfx jxctj djcx ghsgl khzhgl ywygl xjyh spgl ghssz khsz ygsz cksz czysz xtsz xtwh "
            "jsgl sjhd ckrz bqjl").split()
KEYS = (  # weight, keys
    (20, [f"F{n}" for n in range(2, 13)]),
    (22, ["Return", "Tab", "shift+Tab", "Down", "Up", "Next", "Prior", "Home", "End", "space"]),
    (12, ["Escape"]),
    (8, ["y", "n"]),
    (20, list("0123456789") + ["period", "minus", "BackSpace", "Delete"]),
    (10, list("abcdegjkqsxz")),
    (6, ["ctrl+d", "ctrl+e", "ctrl+s", "ctrl+p", "ctrl+Tab", "ctrl+a", "ctrl+c", "ctrl+v", "ctrl+Return", "alt+Down", "Menu"]),
)


def burst(chance, in_main):
    """Keys of one stretch, up to an Esc; from the main window first a command."""
    keys = ["ctrl+k", *chance.choice(COMMANDS), "Return"] if in_main else []
    weights, kinds = zip(*KEYS)
    while len(keys) < BURST and "Escape" not in keys:
        keys.append(chance.choice(chance.choices(kinds, weights)[0]))
    return keys


def memory(desk):
    """MB that the program has for itself: neither libraries nor pictures of windows, which the display holds."""
    status = pathlib.Path(f"/proc/{desk.program.pid}/status").read_text(encoding="ascii")
    return int(next(line for line in status.splitlines() if line.startswith("RssAnon")).split()[1]) / 1024


class Drill:
    def __init__(self, desk, console, seed):
        self.desk, self.console, self.program = desk, console, desk.program.args[0]
        self.chance = random.Random(seed)
        self.sent = self.begun = 0
        # MB once every command was open, and what the keys made of it: of the process that grew most.
        self.base = self.most = 0.0
        self.last = []

    def enter(self):
        """Starts over after the operator has left the program, as random keys do too."""
        self.begun += 1
        # Nobody knows a password that was set by chance.
        subprocess.run([self.console, "--home", self.desk.home, "sql", "-c", "update jxc_admin set a_pwd=''"], check=True,
                       stdout=subprocess.DEVNULL)
        if self.desk.program.poll() is not None:
            self.desk.program = self.desk.spawn([self.program, "--home", self.desk.home], env=self.desk.env)
            self.desk.until("login", lambda title: "操作员登录" in title, 60)
            self.desk.keys("F5")
            self.desk.until("after login", lambda title: "操作员登录" not in title)
        else:
            begin(self.desk)
        self.first = 0.0

    def open_all(self):
        """Each command once, so that what grows afterwards is no screen that was opened for the first time."""
        for command in COMMANDS:
            self.desk.keys("ctrl+k", *command, "Return")
            time.sleep(0.2)
            end = time.monotonic() + PATIENCE
            while not is_main(title := self.heard()) and time.monotonic() < end:
                self.desk.keys("n" if title == "信息提醒" else "Escape")
                time.sleep(0.05)
        self.first = memory(self.desk)

    def weigh(self):
        now = memory(self.desk)
        if not self.base or now / self.first > self.most / self.base:
            self.base, self.most = self.first, now

    def heard(self):
        """A window has the keys, within the patience of an operator."""
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            title = self.desk.title()
            if self.desk.program.poll() is not None or title:
                return title
            time.sleep(0.05)
        raise Failure(f"no window has the keys after {self.sent} keys; the last ones: {' '.join(self.last)}")

    def settled(self):
        """The same once a question that is on its way has come: keys for a command would answer it."""
        title, since = self.heard(), time.monotonic()
        while self.desk.program.poll() is None and time.monotonic() - since < CALM:
            time.sleep(0.05)
            if (now := self.heard()) != title:
                title, since = now, time.monotonic()
        return title

    def owner(self):
        """Title of the window over which the one with the keys stands."""
        box = self.desk.xdo("getactivewindow")
        told = subprocess.run(["xprop", "-id", box, "WM_TRANSIENT_FOR"], env=self.desk.env, capture_output=True,
                              text=True, check=False).stdout
        return self.desk.xdo("getwindowname", told.split("# ")[1].strip()) if "# " in told else ""

    def press(self, total):
        title = ""
        while self.sent < total:
            # Who leaves the program is asked, and stays: the keys go to one and the same process.
            stays = title == "信息提醒" and is_main(self.owner())
            self.last = ["n"] if stays else burst(self.chance, is_main(title))
            self.desk.xdo("key", "--delay", "4", *self.last)
            self.sent += len(self.last)
            title = self.settled() if self.last[-1] == "Escape" else self.heard()
            status = self.desk.program.poll()
            if status is None:
                if self.first:
                    self.weigh()
            else:
                if status != 0:
                    raise Failure(f"the program ended with {status} after {self.sent} keys: {' '.join(self.last)}")
                self.enter()
                if total >= LONG:
                    self.open_all()


def drill(desk):
    total, seed = (int(word) for word in sys.argv[3:] + ["600", "19"][len(sys.argv) - 3:])
    print(f"seed {seed}")
    walk = Drill(desk, sys.argv[2], seed)
    walk.enter()
    if total >= LONG:
        walk.open_all()
    walk.press(total)
    print(f"{walk.sent} keys, {walk.begun} starts, in “{desk.title()}”; {walk.base:.0f} MB with every command open, at "
          f"most {walk.most:.0f} MB later")
    if walk.most > walk.base * MOST_GROWTH:
        raise Failure("the memory grows")
    if desk.program.poll() is not None:
        raise Failure("the program has ended")
    prove(walk.console, desk)


if __name__ == "__main__":
    sys.exit(run(drill, demo_shop))
