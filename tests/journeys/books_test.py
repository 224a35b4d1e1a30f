#!/usr/bin/env python3
"""Books beside trade by keys alone: rent is keyed in, audited and taken back, an invoice entered by hand and one
registered on a sale, an asset entered, and a figure of the statements opens what it is made of. Behind each command the
account file is read past the program. On a display of its own with a window manager, over a demonstration shop.

Usage: tests/journeys/books_test.py PROGRAM JXCCTL
Needs xvfb, openbox, xdotool; skipped with status 77 where they are missing.
"""

import contextlib
import sqlite3
import sys
import time

from desk import Failure, begin, demo_shop, is_called, open_by_initials, run

QUESTION, INVOICES, STATEMENTS = "信息提醒", "销售发票管理", "财务报表管理"


def dialog(desk, key, title):
    desk.keys(key)
    desk.until(f"{title} by {key}", is_called(title))


def answer_yes(desk, key, back):
    desk.keys(key)
    desk.until(f"question of {key}", is_called(QUESTION))
    desk.keys("y")
    desk.until(f"after {key}", is_called(back))


def row(desk, statement):
    """The first row of a statement over the account file."""
    shop = sqlite3.connect(f"file:{desk.home}/data/jxc.mdb?mode=ro", uri=True)
    with contextlib.closing(shop):
        return shop.execute(statement).fetchone()


def expect(desk, what, statement, wanted):
    """What a command has written, as soon as it stands there."""
    end = time.monotonic() + 5
    while (found := row(desk, statement)) != wanted:
        if time.monotonic() > end:
            raise Failure(f"{what}: {found}, not {wanted}")
        time.sleep(0.1)


def rent(desk):
    """Keyed in, audited and taken back: the till has it in between."""
    till = "select round(xj_ljje,2) from jxc_xjyh where xj_kmmc='现金' and xj_chk='1' order by xj_rq desc,id desc limit 1"
    before = row(desk, till)[0]
    open_by_initials(desk, "fyjsr", "费用及收入")
    dialog(desk, "F6", "费用信息")
    desk.keys("Down", "Return", *"1280", "F5")
    desk.until("after the entry", is_called("费用及收入"))
    newest = "from jxc_yyfy where gl_djh like 'FY%' order by id desc limit 1"
    expect(desk, "rent", f"select fy_je,fy_chk,fy_kmmc {newest}", (-1280, "0", "现金"))
    desk.keys("ctrl+End")
    answer_yes(desk, "F9", "费用及收入")
    expect(desk, "rent audited", f"select fy_chk {newest}", ("1",))
    expect(desk, "the till", till, (round(before - 1280, 2),))
    desk.keys("ctrl+Tab")  # what is audited, the newest first
    time.sleep(1)
    answer_yes(desk, "F9", "费用及收入")
    expect(desk, "rent taken back", f"select fy_chk {newest}", ("0",))
    expect(desk, "the till again", till, (before,))
    desk.keys("Escape")


def invoices(desk):
    """One by hand, and one registered on the first sale of the customer."""
    open_by_initials(desk, "xsfp", INVOICES)
    desk.keys("p")  # 普通客户
    desk.until("customers", is_called("选择客户"))
    desk.keys("Return")
    desk.until("customer chosen", is_called(INVOICES))
    dialog(desk, "F3", "增加销售发票")
    desk.keys(*"40", "Return", *"24771", "F5")
    desk.until("after the entry", is_called(INVOICES))
    expect(desk, "invoice", "select fp_kpje,fp_check,fp_djlx from jxc_fpdjb where fp_no='24771'", (40, 0, "XP"))
    # All of the customer's sales, whatever day of the month it is.
    desk.keys(*["shift+Tab"] * 4, "2", "0", "0", "0", "minus", "0", "1", "minus", "0", "1", *["Tab"] * 5, *"xs", "Return")
    time.sleep(1)
    desk.keys("F6")
    if desk.until("registration", lambda title: title in (QUESTION, "销售发票登记")) == QUESTION:  # it has an invoice
        desk.keys("y")
        desk.until("registration after all", is_called("销售发票登记"))
    desk.keys(*"3", "Return", *"24772", "F5")
    desk.until("after the registration", is_called(INVOICES))
    expect(desk, "registration", "select fp_kpje,fp_check,fp_djlx from jxc_fpdjb where fp_no='24772'", (3, 1, "XS"))
    answer_yes(desk, "F7", INVOICES)
    expect(desk, "exclusion", "select fp_check,fp_ljje from jxc_fpdjb where fp_no='24772'", (0, 0))
    desk.keys("Escape")


def asset(desk):
    open_by_initials(desk, "gdzc", "固定资产台帐")
    dialog(desk, "F3", "增加固定资产")
    desk.keys(*"zc9", "Return", *"jing", "Return", "Return", "Return", *"800", "F5")
    desk.until("after the asset", is_called("固定资产台帐"))
    expect(desk, "asset", "select zc_bh,zc_mc,zc_je from jxc_gdzc order by id desc limit 1", ("zc9", "jing", 800))
    desk.keys("Escape")


def statements(desk):
    """The income statement: a line below one of its figures opens its document, and Esc leads back."""
    open_by_initials(desk, "cwbb", STATEMENTS)
    desk.keys("ctrl+Tab")
    time.sleep(1)
    desk.keys("F2", *["Tab"] * 6, "Down")  # past the period into the statement: 销售收入
    time.sleep(1)
    desk.keys("Tab", "Return")
    desk.until("document of the figure", lambda title: title.startswith("打印预览"))
    desk.keys("Escape")
    desk.until("back at the statements", is_called(STATEMENTS))


def journey(desk):
    begin(desk)
    rent(desk)
    invoices(desk)
    asset(desk)
    statements(desk)


if __name__ == "__main__":
    sys.exit(run(journey, demo_shop))
