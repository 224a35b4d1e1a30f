#!/usr/bin/env python3
"""First days in the real window, by keys alone, and how many keys each of them takes: the owner from an empty account
set to the first receipt in the books, a buyer with twelve frames and twenty lenses, a salesperson with ten sales, a
return, an exchange and a part payment, and two receipts with contracts that are deleted from both ends. At the end the
books hold what was keyed in, so no key was lost.

Usage: tests/journeys/first_days.py [--program PROGRAM] [--plain] [owner] [buyer] [salesperson] [paper]     (default: all)
  --plain   the long ways: each list by its key, every piece from the list of goods, a question before each save
Needs xvfb, openbox, xdotool; skipped with status 77 where they are missing.
"""

import argparse
import contextlib
import pathlib
import sqlite3
import subprocess
import sys
import time

from desk import TOP, Desk, Failure, begin, missing_tools
from shop_day import (KINDS, Shop, asked, at, close_document, code, conclude, cost, make_shop, open_document, price, prove,
                      save, told, type_lines, wait)


class Hand(Desk):
    """Counts what it types: one for each key, whatever is held down with it."""

    count = 0

    def keys(self, *keys):
        self.count += len(keys)
        super().keys(*keys)

    def write(self, text):
        self.xdo("type", "--delay", "15", "--", text)

    def xdo(self, *words):
        if words[0] == "type":
            self.count += len(words[-1])
        return super().xdo(*words)

    def open(self, initials, title):
        self.keys("ctrl+k", *initials, "Return")
        at(self, title)


def new_article(hand, shop, name, bought, sold):
    """In the dialog 增加商品, which stays open for the next one."""
    before = shop.number("select count(*) from jxc_goods")
    hand.write(name)
    hand.keys(*["Return"] * 5)
    hand.write(f"{bought}")
    hand.keys("Return")
    hand.write(f"{sold}")
    hand.keys("F5")
    wait(lambda: f"{name} is not in the catalogue; the window is “{hand.title()}”",
         lambda: shop.number("select count(*) from jxc_goods") > before)
    at(hand, "增加商品")


def owner_day(hand, _, arguments):
    """A supplier, an article, and a receipt of it that stands in the books."""
    shop = Shop(hand.home)
    begin(hand)
    hand.open("ghssz", "供货商设置")
    hand.keys("F2")
    at(hand, "增加供货商")
    hand.write("Mingjing")
    hand.keys("F5")
    at(hand, "供货商设置")
    close_document(hand)
    hand.open("spgl", "商品信息管理")
    hand.keys("F2")
    at(hand, "增加商品")
    new_article(hand, shop, "RB5154", 180, 480)
    hand.keys("Escape")
    at(hand, "商品信息管理")
    close_document(hand)
    open_document(hand, "receipt")
    hand.keys(*["shift+Tab"] * 6)
    if arguments.plain:
        hand.keys("F2")
        at(hand, "选择供货商")
    hand.write("M")
    at(hand, "选择供货商")
    time.sleep(0.5)
    hand.keys("Return")
    at(hand, KINDS["receipt"].title)
    if arguments.plain:
        hand.keys("Tab")
    type_lines(hand, shop, "receipt", [("RB5154", 3)])
    hand.keys("F5")
    asked(hand, "y")
    wait(lambda: "the receipt was not saved", lambda: shop.number("select count(*) from jxc_jhd") == 1)
    at(hand, KINDS["receipt"].title)
    hand.keys(*["ctrl+Tab"] * arguments.plain, "F6")
    at(hand, "单据审核确认")
    hand.keys("F5")
    wait(lambda: f"the receipt was not audited; the window is “{hand.title()}”", lambda: shop.audited("receipt") == 1)
    conclude("the first receipt", told({
        "stock": (shop.number("select sum(kc_sl) from jxc_kcsp"), 3),
        "of the supplier": (shop.number("select sum(gl_je) from jxc_goodslist where gl_djh like 'CJ%'"), 540),
    }))


def take_piece(hand, shop, kind, number, arguments):
    """One piece, by its number in the barcode input; the long way from the list, with the price of a return."""
    if arguments.plain:
        type_lines(hand, shop, kind, [(code(number), 1, *([price(number)] if kind == "back" else []))])
        return
    before = shop.quantity(kind)
    hand.write(code(number))
    time.sleep(0.5)  # the list below the input follows
    hand.keys("Return")
    wait(lambda: f"{code(number)} is not on the document; the window is “{hand.title()}”",
         lambda: shop.quantity(kind) == before + 1)


def buyer_day(hand, console, arguments):
    """Twelve frames and a range of twenty lenses into the catalogue, and a receipt of all of them."""
    shop = Shop(hand.home)
    begin(hand)
    hand.open("spgl", "商品信息管理")
    hand.keys("F2")
    at(hand, "增加商品")
    for number in range(12):
        new_article(hand, shop, f"RB51{number:02}", 150 + number, 400)
    hand.keys("Escape")
    at(hand, "商品信息管理")
    hand.keys("F8")
    at(hand, "批量增加镜片")
    hand.write("ZL156")
    for keys, figure in ((1, "-2"), (1, "-1"), (2, "-0.75"), (1, "0"), (5, "30"), (1, "120")):
        hand.keys(*["Return"] * keys)
        hand.write(figure)
    hand.keys("F5")
    lenses = "select count(*) from jxc_goods where g_qc='ZL156'"
    wait(lambda: f"twenty lenses; the window is “{hand.title()}”", lambda: shop.number(lenses) == 20)
    at(hand, "商品信息管理")
    close_document(hand)
    open_document(hand, "receipt")
    type_lines(hand, shop, "receipt", [(f"RB51{number:02}", 2) for number in range(12)])
    hand.keys("F12")
    at(hand, "镜片光度表")
    time.sleep(0.5)
    hand.keys("Return")
    for _ in range(20):
        hand.keys("2", "Tab")
    hand.keys("F5")
    at(hand, KINDS["receipt"].title)
    wait(lambda: "thirty-two lines of two pieces", lambda: shop.quantity("receipt") == 64)
    save(hand, shop, "receipt")
    conclude("thirty-two lines", told({
        "pieces": (shop.number("select sum(kc_sl) from jxc_kcsp where g_sn in (select g_sn from jxc_goods "
                               "where g_name like 'RB51%' or g_qc='ZL156')"), 64),
        "cash": (-shop.number("select sum(xj_je) from jxc_xjyh"), 2 * sum(150 + n for n in range(12)) + 40 * 30),
    }))
    prove(console, hand)


def save_at_once(hand, shop, kind, is_first, arguments):
    """The first time the question is told to come no more."""
    if arguments.plain:
        save(hand, shop, kind)
        return
    before = shop.audited(kind)
    hand.keys("F5")
    if is_first:
        at(hand, "信息提醒")
        hand.keys("alt+d")
        asked(hand, "y")
    wait(lambda: f"not saved; the window is “{hand.title()}”", lambda: shop.audited(kind) > before)
    at(hand, KINDS[kind].title)


def salesperson_day(hand, console, arguments):
    """Ten sales; one frame comes back, one is exchanged for another, one sale is paid in part."""
    shop = Shop(hand.home)
    cash = 0
    begin(hand)
    open_document(hand, "sale")
    for number in range(10):
        take_piece(hand, shop, "sale", number, arguments)
        save_at_once(hand, shop, "sale", number == 0, arguments)
        cash += price(number)
    take_piece(hand, shop, "sale", 20, arguments)  # half of it now, the rest later
    hand.keys("Return")
    hand.write(f"{price(20) / 2:g}")
    save_at_once(hand, shop, "sale", False, arguments)
    cash += price(20) / 2
    close_document(hand)
    open_document(hand, "back")
    for number in (1, 2):
        take_piece(hand, shop, "back", number, arguments)
        save_at_once(hand, shop, "back", False, arguments)
        cash -= price(number)
    close_document(hand)
    open_document(hand, "sale")  # what the second customer takes for it
    take_piece(hand, shop, "sale", 30, arguments)
    save_at_once(hand, shop, "sale", False, arguments)
    cash += price(30)
    conclude("cash and customers", told({
        "cash": (shop.number("select sum(xj_je) from jxc_xjyh"), cash),
        "owed by customers": (shop.number("select sum(kh_lwje) from jxc_khxx"), price(20) / 2),
        "cost of what was sold": (sum(cost(n) for n in (0, *range(3, 10), 20, 30)),
                                  20 * sum(map(cost, range(60))) - shop.number("select sum(kc_sl*kc_cbj) from jxc_kcsp")),
    }))
    prove(console, hand)


def contract_receipt(hand, shop, name):
    """A receipt with a contract that is added from it, and a file to the contract."""
    scan = pathlib.Path(hand.home) / f"{name}.txt"
    scan.write_text(name)
    hand.keys("ctrl+h")
    hand.until("contracts of the supplier", lambda title: title.startswith("单据合同"))
    hand.keys("F3")
    at(hand, "合同设置")
    hand.write(name)
    hand.keys("F6")
    at(hand, "选择附件")
    hand.write(str(scan))
    hand.keys("Return")
    at(hand, "合同设置")
    hand.keys("F5")
    at(hand, KINDS["receipt"].title)
    type_lines(hand, shop, "receipt", [(code(1), 2)])
    before = shop.number("select count(*) from jxc_jhd")
    hand.keys("F5")
    asked(hand, "y")
    wait(lambda: f"the receipt was not saved; the window is “{hand.title()}”",
         lambda: shop.number("select count(*) from jxc_jhd") > before)
    at(hand, KINDS["receipt"].title)


def paper_day(hand, console, _):
    """Two receipts with a contract each; one is taken back from the contract, one from the receipt."""
    shop = Shop(hand.home)
    kept = lambda: len(list((pathlib.Path(hand.home) / "ghsht").glob("*.txt")))
    tied = lambda: shop.rows("select a.ht_sn,b.ht_name from jxc_jhd a left join jxc_htgl b on a.ht_sn=b.ht_sn and "
                             "b.gl_djh=a.j_sn order by a.id")
    begin(hand)
    open_document(hand, "receipt")
    contract_receipt(hand, shop, "RB2026")
    contract_receipt(hand, shop, "ZL156")
    conclude("two contracts with their files", told({"files": (kept(), 2)}) +
             [row for row in zip(tied(), [("100001", "RB2026"), ("100002", "ZL156")]) if row[0] != row[1]])
    hand.keys("ctrl+Tab")
    time.sleep(0.5)
    hand.keys("ctrl+h")  # of the newest, which stands first
    hand.until("contracts of the supplier", lambda title: title.startswith("单据合同"))
    time.sleep(0.5)
    hand.keys("F8")
    at(hand, "查看合同")
    hand.keys("Escape")
    hand.until("contracts of the supplier", lambda title: title.startswith("单据合同"))
    hand.keys("Escape")
    at(hand, KINDS["receipt"].title)
    hand.keys("ctrl+Delete")
    asked(hand, "y")
    wait(lambda: "the contract stayed", lambda: shop.number("select count(*) from jxc_htgl") == 1 and kept() == 1)
    at(hand, KINDS["receipt"].title)
    close_document(hand)
    hand.open("htgl", "合同管理")
    time.sleep(0.5)
    hand.keys("ctrl+d")
    asked(hand, "y")
    wait(lambda: "the contract stayed", lambda: shop.number("select count(*) from jxc_htgl") == 0 and kept() == 0)
    conclude("the receipt stands without", [row for row in tied() if row != ("", None)])
    prove(console, hand)


def with_contracts(prepare):
    def also(home):
        prepare(home)
        with contextlib.closing(sqlite3.connect(pathlib.Path(home) / "data/jxc.mdb")) as db, db:
            db.execute("update jxc_xtcs set cs_ht=1,cs_shdj=0")
    return also


def main():
    arguments = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    arguments.add_argument("--program", default=str(TOP / "build/shared/src/app/jxc"))
    arguments.add_argument("--plain", action="store_true")
    days = {"owner": owner_day, "buyer": buyer_day, "salesperson": salesperson_day, "paper": paper_day}
    arguments.add_argument("days", nargs="*", choices=[*days, []])
    chosen = arguments.parse_args()
    if missing := missing_tools():
        print("skipped: not installed: " + missing)
        return 77
    console = str(pathlib.Path(chosen.program).with_name("jxcctl"))
    for name in chosen.days or days:
        prepare = None if name == "owner" else make_shop(console, 60, 20)
        hand = Hand(chosen.program, with_contracts(prepare) if name == "paper" else prepare)
        try:
            days[name](hand, console, chosen)
            print(f"{name}: {hand.count} keys")
        except Failure as failure:
            print(f"FAILED: {name}: {failure}", file=sys.stderr)
            subprocess.run(["import", "-window", "root", "/tmp/first_days_fail.png"], env=hand.env, check=False)
            return 1
        finally:
            hand.close()
    return 0


if __name__ == "__main__":
    sys.exit(main())
