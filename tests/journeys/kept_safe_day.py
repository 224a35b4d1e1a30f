#!/usr/bin/env python3
"""The day of whoever keeps the account set safe, in the real window and by keys alone: a backup, the books locked, a
command refused, the lock opened; a month closed with its list, its question and its archive, which only reads; the file
for the head office; a new account set that goes again; and the backup restored, which ends at the login. What each of
them left is read past the program.

Usage: tests/journeys/kept_safe_day.py PROGRAM JXCCTL
Needs xvfb, openbox, xdotool; skipped with status 77 where they are missing.
"""

import contextlib
import datetime
import pathlib
import shutil
import sqlite3
import subprocess
import sys
import time

from desk import Failure, begin, demo_shop, is_main, run
from shop_day import asked, at, close_document, wait

TODAY = datetime.date.today()
LAST_MONTH = TODAY.replace(day=1) - datetime.timedelta(days=1)
LOCKED = TODAY - datetime.timedelta(days=20)


class Keeper:
    def __init__(self, desk):
        self.desk = desk
        self.home = pathlib.Path(desk.home)

    def ask(self, statement):
        shop = sqlite3.connect(f"file:{self.home}/data/jxc.mdb?mode=ro", uri=True)
        with contextlib.closing(shop):
            return shop.execute(statement).fetchone()[0]

    def open(self, initials, title):
        self.desk.until("main window", is_main)
        self.desk.keys("ctrl+k", *initials, "Return")
        at(self.desk, title)

    def write(self, text):
        """In the place of what stands in the input."""
        self.desk.keys("ctrl+a")
        self.desk.xdo("type", "--delay", "15", "--", str(text))

    def told(self, what, seconds=60):
        """A notice, put away."""
        self.desk.until(what, lambda title: title == "系统提示", seconds)
        time.sleep(0.2)
        self.desk.keys("Return")

    def found(self, what, statement, value):
        wait(lambda: f"{what}: {self.ask(statement)}, not {value}", lambda: self.ask(statement) == value, 10)
        print(f"  {what}: {value}", flush=True)

    def files(self, folder, pattern):
        return sorted((self.home / folder).glob(pattern))


def back_up(keeper):
    desk = keeper.desk
    (keeper.home / "safe").mkdir()
    keeper.open("bf", "备份/恢复数据库")
    keeper.write(keeper.home / "safe")
    desk.keys("F5")
    keeper.told("the backup")
    at(desk, "备份/恢复数据库")
    desk.picture("backup")
    close_document(desk)
    copy, = keeper.files("safe", "*.DAT")
    return shutil.copy(copy, keeper.home / "copy.DAT")  # a name that keys can type


def lock(keeper):
    desk = keeper.desk
    keeper.open("zmsd", "账目锁定")
    keeper.write(LOCKED)
    desk.keys("F5")
    asked(desk, "y")
    at(desk, "账目锁定")
    desk.picture("locked")
    keeper.found("locked up to", "select sd_rq from jxc_zmsd order by id desc", str(LOCKED))
    close_document(desk)
    keeper.open("fyjsr", "费用及收入")
    before = keeper.ask("select count(*) from jxc_yyfy")
    desk.keys("F6")
    at(desk, "费用信息")
    desk.keys("Down", "Return")  # the first type
    keeper.write("5")
    desk.keys(*["Return"] * 4)
    keeper.write(LOCKED)
    desk.keys("F5")
    keeper.told("an expense of a locked day is refused")
    keeper.write(TODAY)  # the refusal leads to the date
    desk.keys("F5")
    at(desk, "费用及收入")
    keeper.found("expenses of today", "select count(*) from jxc_yyfy", before + 1)
    close_document(desk)
    keeper.open("zmsd", "账目锁定")
    desk.keys("F6")
    asked(desk, "y")
    keeper.found("the books are open", "select sd_rq from jxc_zmsd order by id desc", "")
    at(desk, "账目锁定")
    close_document(desk)


def close_month(keeper):
    desk = keeper.desk
    until = f"gl_kdrq<='{LAST_MONTH} 23:59:59'"
    keeper.open("sjjs", "数据结算")
    keeper.write(LAST_MONTH)
    desk.keys("F3")  # what will go
    at(desk, "数据结算")
    desk.picture("closing-list")
    desk.keys("F5")
    desk.until("the question", lambda title: title == "信息提醒")
    desk.picture("closing-question")
    asked(desk, "y")
    keeper.told("the archive")
    keeper.told("the closing")
    at(desk, "数据结算")
    desk.picture("closing-sheet")
    keeper.found("rows before the closing that are not carried",
                 f"select count(*) from jxc_goodslist where {until} and gl_flag<>'qc'", 0)
    keeper.found("the books are locked", "select sd_rq from jxc_zmsd order by id desc", str(LAST_MONTH))
    desk.keys("F6")
    desk.until("the archive", lambda title: title.startswith("结算档案（只读）"))
    desk.picture("archive")
    desk.keys("F5")
    desk.until("an enquiry of the archive", lambda title: title.endswith("（结算档案，只读）"))
    desk.picture("archive-enquiry")
    desk.keys("Escape")
    desk.until("the archive", lambda title: title.startswith("结算档案（只读）"))
    desk.keys("ctrl+End", "F5")  # the last command of the list writes
    keeper.told("an archive offers no command that writes")
    desk.until("the archive", lambda title: title.startswith("结算档案（只读）"))
    desk.keys("Escape")
    at(desk, "数据结算")
    desk.picture("closing-archives")
    close_document(desk)


def export_branch(keeper):
    desk = keeper.desk
    keeper.open("bdsjdc", "数据导出(分店编号:100001分店名称:旗舰店)")
    keeper.write(LAST_MONTH.replace(day=1))
    desk.picture("branch")
    desk.keys("F5")
    keeper.told("the file for the head office")
    desk.until("main window", is_main)
    keeper.found("last export", "select fd_dcrq from jxc_fd", str(TODAY))
    sheet, = keeper.files("", "*.xls")
    if sheet.stat().st_size < 4096:
        raise Failure(f"{sheet.name} is empty")


def new_set(keeper):
    desk = keeper.desk
    keeper.open("ztgl", "帐套管理")
    desk.keys("F2")
    at(desk, "增加帐套")
    keeper.write("erdian")
    desk.picture("set-new")
    desk.keys("F5")
    at(desk, "帐套管理")
    desk.picture("sets")
    wait(lambda: "no new set", lambda: keeper.files("data", "jxc_100002.mdb"))
    desk.keys("ctrl+d")
    asked(desk, "y")
    wait(lambda: "the set is still there", lambda: not keeper.files("data", "jxc_100002.mdb*"))
    at(desk, "帐套管理")
    close_document(desk)


def restore(keeper, copy):
    desk = keeper.desk
    keeper.open("bf", "备份/恢复数据库")
    desk.keys("ctrl+Tab")
    keeper.write(copy)
    desk.keys("F5")
    desk.until("the question", lambda title: title == "信息提醒", 60)
    desk.picture("restore-question")
    asked(desk, "y")
    keeper.told("the restore")
    desk.until("login", lambda title: "操作员登录" in title, 60)
    keeper.found("closings after the restore", "select count(*) from jxc_jsda", 0)
    if not keeper.files("safe", "*(恢复前)*.DAT"):
        raise Failure("the set from before the restore was not kept")
    desk.keys("F5")
    desk.until("main window", is_main)


def journey(desk):
    keeper = Keeper(desk)
    begin(desk)
    copy = back_up(keeper)
    for part in (lock, close_month, export_branch, new_set):
        part(keeper)
    restore(keeper, copy)
    proof = subprocess.run([sys.argv[2], "--home", desk.home, "prove", "--wrong"], capture_output=True, text=True)
    if proof.returncode:
        raise Failure(proof.stdout + proof.stderr)


if __name__ == "__main__":
    sys.exit(run(journey, lambda home: demo_shop(home, months=2)))
