#!/usr/bin/env python3
"""Two users of one machine share a shop in a folder of a group, as README tells it: at the console, and in two windows at
once, each writing to what the other has made.

Usage: tests/machine/two_users_test.py JXC JXCCTL
As root only, who can be anybody; skipped with status 77 otherwise. The users are numbers: nothing is entered on the machine.
"""

import os
import pathlib
import stat
import subprocess
import sys
import tempfile

TOP = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(TOP / "tests/journeys"))
from desk import Desk, begin, missing_tools  # pylint: disable=wrong-import-position

SHOP = 61100  # the group
ANNA, BEN = 61001, 61002
SKIPPED = 77


class User:
    def __init__(self, number, folder):
        self.home = folder / str(number)
        self.home.mkdir(mode=0o700)
        os.chown(self.home, number, number)
        self.how = {"user": number, "group": number, "extra_groups": [SHOP], "umask": 0o022}
        self.env = {"HOME": str(self.home), "XDG_RUNTIME_DIR": str(self.home)}

    def console(self, program, shop, *words):
        done = subprocess.run([program, "--home", shop, *words], capture_output=True, encoding="utf-8", timeout=120,
                              check=False, env=dict(os.environ, **self.env), **self.how)
        if done.returncode != 0:
            raise AssertionError(f"{words}: {done.stdout}{done.stderr}")
        return done.stdout


class Window(Desk):
    """The program of a user over the shared shop, on a display of his own."""

    def __init__(self, program, shop, user):
        self.user, self.shop = user, shop
        super().__init__(program)

    def spawn(self, words, **how):
        if "--home" not in words:
            return super().spawn(words, **how)
        return super().spawn([words[0], "--home", self.shop], **{**how, "env": dict(how["env"], **self.user.env)},
                             **self.user.how)

    def add_warehouse(self, name):
        self.keys("ctrl+k", *"cksz", "Return")
        self.until("warehouses", lambda title: title == "仓库设置")
        self.keys("F2")
        self.until("a new one", lambda title: title == "增加仓库")
        self.keys(*name, "F5")
        self.until("saved", lambda title: title == "仓库设置")
        self.keys("Escape")
        self.until("main window", lambda title: "[" in title)


def everything_is_the_groups(shop):
    for path in [pathlib.Path(shop), *pathlib.Path(shop).rglob("*")]:
        if path.suffix == ".lock":
            continue  # of one user's window: nobody else needs it
        found = path.stat()
        may = stat.S_IRGRP | stat.S_IWGRP | (stat.S_IXGRP | stat.S_ISGID if path.is_dir() else 0)
        if found.st_gid != SHOP or found.st_mode & may != may or found.st_mode & stat.S_IRWXO:
            raise AssertionError(f"{path}: {stat.filemode(found.st_mode)} of group {found.st_gid}")


def main(program, console):
    if os.geteuid() != 0:
        print("skipped: only root can be two users")
        return SKIPPED
    if missing := missing_tools():
        print("skipped: not installed: " + missing)
        return SKIPPED
    with tempfile.TemporaryDirectory(prefix="jxc-two-users-") as name:
        folder = pathlib.Path(name)
        folder.chmod(0o755)
        shop = str(folder / "shop")
        os.mkdir(shop)
        os.chown(shop, 0, SHOP)
        os.chmod(shop, 0o2770)
        anna, ben = User(ANNA, folder), User(BEN, folder)
        anna.console(console, shop, "demo", "--months", "1", "--goods", "20", "--documents", "2")
        ben.console(console, shop, "sql", "-c", "insert into jxc_zone (z_name) values ('东区')")
        windows = []
        try:
            for user in (anna, ben):
                windows.append(Window(program, shop, user))
                begin(windows[-1])
            for number, window in enumerate([*windows, *windows]):
                window.add_warehouse(f"{number}7")
        finally:
            for window in windows:
                window.close()
        told = ben.console(console, shop, "sql", "-c", "select count(*) from jxc_ckxx where ck_name like '_7'")
        if told.split()[-1] != "4":
            raise AssertionError(told)
        anna.console(console, shop, "prove", "--wrong")
        everything_is_the_groups(shop)
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
