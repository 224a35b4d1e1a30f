#!/usr/bin/env python3
"""The keyboard is never lost: after every dialog a window has the keys again, and keys typed before a dialog had them
reach it. On a display of its own with a window manager, over a small demonstration shop.

Usage: tests/journeys/keyboard_test.py PROGRAM JXCCTL
Needs xvfb, openbox, xdotool; skipped with status 77 where they are missing.
"""

import contextlib
import sqlite3
import subprocess
import sys
import time

from desk import Failure, begin, demo_shop, is_called, is_main, open_by_initials, run

NOTICE, QUESTION = "系统提示", "信息提醒"


def repair(desk, key, dialog):
    """A recomputation: question, progress, notice, and the dialog closes behind it."""
    desk.keys(key)
    desk.until(dialog, is_called(dialog))
    desk.keys("F5")
    desk.until(f"question of {dialog}", is_called(QUESTION))
    desk.keys("y")
    desk.until(f"end of {dialog}", is_called(NOTICE), 60)
    desk.keys("Return")
    desk.until(f"after {dialog}", is_called("数据核对"), 3)


def lowest_stock(desk):
    """Of the marked goods, from the list's menu: 修改最低库存 is its ninth command."""
    desk.keys("Menu")
    time.sleep(0.3)
    desk.keys(*["Down"] * 9, "Return")
    desk.until("lowest stock", is_called("修改最低库存"))
    desk.keys("5", "F5")
    seen = desk.until("answer", lambda title: title in (NOTICE, QUESTION), 10)
    desk.keys("Return")
    if seen == QUESTION:
        desk.until("told", is_called(NOTICE), 10)
        desk.keys("Return")
    desk.until("after lowest stock", is_called("商品信息管理"), 3)


def typed_ahead(desk):
    """Ten kinds of suppliers, all their keys at once: dialogs open and close quicker than any desktop hands keys over."""
    desk.keys("F8")
    desk.until("kinds", is_called("供货商类别"))
    names = [f"k{chr(97 + i)}x" for i in range(10)]
    desk.xdo("key", "--delay", "0", *[key for name in names for key in ("F2", *name, "F5")])
    time.sleep(1)
    desk.until("after ten kinds", is_called("供货商类别"))
    shop = sqlite3.connect(f"file:{desk.home}/data/jxc.mdb?mode=ro", uri=True)
    with contextlib.closing(shop):
        found = [name for name, in shop.execute("select gt_name from jxc_ghstype where gt_name like 'k_x' order by id")]
    if found != names:
        raise Failure(f"typed ahead: {found}")
    desk.keys("Escape")


def unknown_code(desk):
    """Scanned last: its notice stays in sight over the document, which keeps the keys for the next code; Enter and Esc
    take it away, and nothing else."""
    title = "采购进货"
    for key in ("Return", "Escape"):
        before = desk.windows()
        desk.xdo("type", "--delay", "3", "9999999999999")
        desk.xdo("key", "Return")
        time.sleep(1)
        if len(desk.windows() - before) != 1 or desk.title() != title:
            raise Failure(f"unknown code: {len(desk.windows() - before)} notices over “{desk.title()}”")
        desk.keys(key)
        time.sleep(0.5)
        if desk.windows() != before or desk.title() != title:
            raise Failure(f"unknown code, {key}: the window is “{desk.title()}”")
    desk.keys("Escape")


def second_start(desk):
    """Brings the running window back to the front, from behind and from the task bar, and ends."""
    desk.until("main window", is_main)
    desk.xdo("getactivewindow", "windowminimize")
    time.sleep(0.5)
    if is_main(desk.title()):
        raise Failure("second start: the window was not minimised")
    subprocess.run([desk.program.args[0], "--home", desk.home], env=desk.env, timeout=30, check=True)
    desk.until("second start", is_main, 5)


def journey(desk):
    begin(desk)
    second_start(desk)
    open_by_initials(desk, "sjhd", "数据核对")
    for _ in range(3):
        repair(desk, "F6", "重新计算结存数据")
        repair(desk, "F7", "出库成本价同步")
    desk.keys("Escape")
    open_by_initials(desk, "cgjh", "采购进货")
    unknown_code(desk)
    open_by_initials(desk, "spgl", "商品信息管理")
    desk.keys("Tab", "Tab", "Tab", "Down")  # past both boxes into the list
    for _ in range(6):
        lowest_stock(desk)
    desk.keys("Escape")
    open_by_initials(desk, "ghssz", "供货商设置")
    typed_ahead(desk)


if __name__ == "__main__":
    sys.exit(run(journey, demo_shop))
