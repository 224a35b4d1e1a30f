#!/usr/bin/env python3
"""Days of a shop in the real window, by keys alone: forty documents by the keyboard, forty by the scanner, forty within
the house and a count. What stands in the books at the end is compared with what this script has worked out by itself.

Usage: tests/journeys/shop_day.py [--program PROGRAM] [keyboard] [scanner] [house]      (default: all)
Needs xvfb, openbox, xdotool. Prints figures; the exit status is 1 when anything differs.
"""

import argparse
import collections
import contextlib
import pathlib
import random
import sqlite3
import subprocess
import sys
import time

from desk import TOP, Desk, Failure, begin, is_main

DOCUMENTS = {  # initials of the command, title, its line dialog, heads and their due column, sign of stock and of cash
    "receipt": ("cgjh", "采购进货", "进货商品明细", "jxc_jhd", "j_status", 1, -1),
    "return": ("cgth", "采购退货", "采购退货商品明细", "jxc_thd", "th_status", -1, 1),
    "sale": ("spxs", "商品销售", "销售商品明细", "jxc_lsxsd", "ls_status", -1, 1),
    "back": ("gkth", "顾客退货", "退货商品明细", "jxc_xsthd", "th_status", 1, -1),
}
UNKNOWN = "9999999999999"
HOUSE = {  # initials of the command, title, heads and their status, lines and their quantity
    "transfer": ("kcdb", "库存调拨", "jxc_kcdbd", "db_status", "jxc_dbsp", "db_sl"),
    "loss": ("kcbsby", "库存报损报溢", "jxc_bsd", "bs_status", "jxc_bssp", "bs_sl"),
    "count": ("kcpd", "库存盘点", "jxc_kcpd", "pd_status", "jxc_kcpdsp", "pd_sl"),
}


class Books:
    """What the shop should have, worked out line by line."""

    def __init__(self, stock):
        self.stock = collections.defaultdict(float, stock)
        self.cash = self.suppliers = self.customers = 0.0

    def enter(self, kind, lines, paid=None):
        _, _, _, _, _, stock_sign, cash_sign = DOCUMENTS[kind]
        due = sum(round(quantity * price, 2) for _, quantity, price in lines)
        paid = due if paid is None else paid
        for goods, quantity, _ in lines:
            self.stock[goods] += stock_sign * quantity
        self.cash += cash_sign * paid
        open_amount = due - paid
        if kind in ("receipt", "return"):
            self.suppliers += open_amount if kind == "receipt" else -open_amount
        else:
            self.customers += open_amount if kind == "sale" else -open_amount

    def compare(self, shop):
        found = {goods: stock for goods, stock in shop.rows("select g_sn,sum(kc_sl) from jxc_kcsp group by g_sn")}
        wrong = [(g, s, found.get(g)) for g, s in self.stock.items() if abs(found.get(g, 0) - s) > 1e-6]
        figures = {
            "cash": (self.cash, shop.number("select sum(xj_je) from jxc_xjyh")),
            "owed to suppliers": (self.suppliers, shop.number("select sum(ghs_lwje) from jxc_ghsxx")),
            "owed by customers": (self.customers, shop.number("select sum(kh_lwje) from jxc_khxx")),
        }
        for name, (wanted, there) in figures.items():
            print(f"  {name}: {there:.2f}, worked out {wanted:.2f}")
            if abs(wanted - there) > 0.005:
                wrong.append((name, wanted, there))
        print(f"  stock of {len(self.stock)} goods: {'as worked out' if not wrong else 'see below'}")
        if wrong:
            raise Failure(f"the books differ: {wrong[:5]}")


class Shop:
    """The account set of the program under test, looked at from beside."""

    def __init__(self, home):
        self.file = pathlib.Path(home) / "data/jxc.mdb"

    def rows(self, statement, *values):
        with contextlib.closing(sqlite3.connect(f"file:{self.file}?mode=ro", uri=True, timeout=10)) as db:
            return db.execute(statement, values).fetchall()

    def number(self, statement):
        return self.rows(statement)[0][0] or 0

    def audited(self, kind):
        _, _, _, heads, status, _, _ = DOCUMENTS[kind]
        return self.number(f"select count(*) from {heads} where {status}=1")


def make_shop(jxcctl, goods, stock, second_warehouse=False):
    """Makes an account set with so many goods: code, barcode, cost and sale price follow from the number."""
    def prepare(home):
        subprocess.run([jxcctl, "--home", home, "create"], check=True, capture_output=True)
        db = sqlite3.connect(pathlib.Path(home) / "data/jxc.mdb")
        rows = [(code(i), f"镜架{i}", barcode(i), cost(i), cost(i), cost(i), price(i), price(i), stock, "1001",
                 f"镜架{i}") for i in range(goods)]
        db.executemany(
            "insert into jxc_goods (g_sn,g_name,g_jm,g_sptm,dw_name,g_jj,g_scjj,g_pjjj,g_sj,g_lsj,g_kc,g_cgpl,g_xspl,"
            "g_jy,g_gdcbj,gc_sn,g_isjp,g_qc,gg_name,color_name) values (?,?,'JJ',?,'付',?,?,?,?,?,?,0,0,0,0,?,0,?,'','')",
            rows)
        db.executemany("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj,kc_xssl) values (?,'100001',?,?,?,0)",
                       [(code(i), stock, stock, cost(i)) for i in range(goods)])
        ledger = ["gl_flag", "gl_djh", "gl_kdrq", "g_sn", "g_name", "gl_dj", "gl_cbj", "gl_zcb", "gl_sl", "gl_dzl", "gl_zje",
                  "gl_je", "gl_tax", "gl_taxdj", "gl_taxje", "gl_lsj", "gl_lr", "gl_qxsl", "gl_sqsl", "gl_sqje", "gl_pjjj",
                  "gl_kc", "gl_kczje", "gl_sysl", "gl_dqkc", "a_name", "ck_sn", "ck_name"]
        db.executemany(
            f"insert into jxc_goodslist ({','.join(ledger)}) values ({','.join('?' * len(ledger))})",
            [("qc", "", "2020-01-01", code(i), f"镜架{i}", cost(i), 0, 0, stock, 1, stock * cost(i), stock * cost(i), 0, cost(i),
              0, 0, 0, 0, 0, 0, cost(i), stock, stock * cost(i), stock, 0, "admin", "100001", "主仓库") for i in range(goods)])
        db.execute("update jxc_xtcs set cs_shdj=1,cs_kc=1,cs_possk=1,cs_xjyh=1,cs_activatets='1',cs_cgje=0,cs_xsje=0,"
                   "cs_hs=0,cs_jhzk=0")
        if second_warehouse:
            db.execute("insert into jxc_ckxx (ck_sn,ck_name) values ('100002','分店')")
        db.commit()
        db.execute("analyze")
        db.commit()
        db.close()
    return prepare


def code(i):
    return str(10000001 + i)


def barcode(i):
    return str(6900000000000 + i * 7)


def cost(i):
    return 10.0 + i % 37


def price(i):
    return cost(i) * 2 + 5


class Scanner:
    """One xdotool that stays, so that codes come as quickly as from a scanner."""

    def __init__(self, desk):
        self.pipe = subprocess.Popen(["xdotool", "-"], stdin=subprocess.PIPE, env=desk.env, text=True)

    def send(self, *codes):
        for each in codes:
            self.pipe.stdin.write(f"type --delay 3 {each}\nkey --delay 3 Return\n")
        self.pipe.stdin.flush()

    def close(self):
        self.pipe.stdin.close()
        self.pipe.wait(30)


def open_document(desk, kind):
    initials, title = (DOCUMENTS.get(kind) or HOUSE[kind])[:2]
    desk.keys("ctrl+k", *initials, "Return")
    desk.until(title, lambda t: t == title)


def close_document(desk):
    desk.keys("Escape")
    desk.until("main window", is_main)


def save(desk, shop, kind, seconds=20):
    """F5, yes, and the document stands in the books."""
    title = DOCUMENTS[kind][1]
    before = shop.audited(kind)
    desk.keys("F5")
    desk.until(f"{title}: question", lambda t: t == "信息提醒")
    desk.keys("y")
    end = time.monotonic() + 3
    while desk.title() == "信息提醒" and time.monotonic() < end:
        time.sleep(0.05)
    if desk.title() == "信息提醒":  # the key came before the box had the keyboard
        print(f"  {title}: the question had to be answered twice")
        desk.keys("y")
    wait(lambda: f"{title} was not saved; the window is “{desk.title()}”", lambda: shop.audited(kind) > before, seconds)
    desk.until(title, lambda t: t == title)


def wait(what, done, seconds=20):
    end = time.monotonic() + seconds
    while not done():
        if time.monotonic() > end:
            raise Failure(what())
        time.sleep(0.02)


def type_document(desk, shop, kind, lines, paid):
    _, title, dialog = DOCUMENTS[kind][:3]
    desk.keys("F2")
    picking = title + " - 选择商品"
    desk.until(picking, lambda t: t == picking)
    for number, (goods, quantity, each) in enumerate(lines, 1):
        desk.xdo("type", "--delay", "15", goods)
        time.sleep(0.3)  # the list follows the search
        desk.keys("Return")
        desk.until(dialog, lambda t: t == dialog)
        desk.xdo("type", "--delay", "15", f"{quantity:g}")
        desk.keys("Return")
        desk.xdo("type", "--delay", "15", f"{each:g}")
        desk.keys("F5")
        desk.until(picking, lambda t: t == picking)
        wait(lambda: f"{title}: line {number} is not on the list; the window is “{desk.title()}”",
             lambda: shop.number("select count(*) from jxc_tempspxf") == number)
        desk.keys("ctrl+a")
    desk.keys("F5")
    desk.until(title, lambda t: t == title)
    if paid is not None:
        desk.keys("Return")  # nothing to scan: on to the money
        desk.xdo("type", "--delay", "15", f"{paid:g}")


def keyboard_day(program, jxcctl):
    """Forty documents of all four kinds; every third one is paid in part."""
    dice = random.Random(7)
    goods = 60
    desk = Desk(program, make_shop(jxcctl, goods, 200))
    try:
        shop = Shop(desk.home)
        books = Books({code(i): 200 for i in range(goods)})
        begin(desk)
        start = time.monotonic()
        keyed = 0
        for kind, count in (("receipt", 12), ("sale", 16), ("back", 6), ("return", 6)):
            open_document(desk, kind)
            for number in range(count):
                lines = [(code(i), dice.randint(1, 9), price(i) + 3 if kind in ("sale", "back") else cost(i) + dice.randint(0, 2))
                         for i in dice.sample(range(goods), dice.randint(2, 4))]
                due = sum(quantity * each for _, quantity, each in lines)
                paid = round(due / 2) if number % 3 == 1 and kind != "back" else None
                type_document(desk, shop, kind, lines, paid)
                save(desk, shop, kind)
                books.enter(kind, lines, paid)
                keyed += len(lines)
            close_document(desk)
        print(f"keyboard: 40 documents, {keyed} lines in {time.monotonic() - start:.0f} s")
        books.compare(shop)
        prove(jxcctl, desk)
    finally:
        desk.close()


def scanner_day(program, jxcctl):
    """Twenty receipts and twenty sales, nothing but codes: some twice, and codes that nobody knows in between, each
    with the next code right behind it."""
    dice = random.Random(11)
    goods = 2000
    desk = Desk(program, make_shop(jxcctl, goods, 50))
    try:
        shop = Shop(desk.home)
        books = Books({code(i): 50 for i in range(goods)})
        scanner = Scanner(desk)
        begin(desk)
        start = time.monotonic()
        scans = refused = 0
        for kind in ("receipt", "sale"):
            table = "jxc_jhsp" if kind == "receipt" else "jxc_lsxssp"
            column = "jh_sl" if kind == "receipt" else "ls_sl"
            open_document(desk, kind)
            for number in range(20):
                picked = [dice.randrange(goods) for _ in range(dice.randint(8, 20))]
                picked += dice.sample(picked, 3)
                codes = [barcode(i) for i in picked]
                codes.insert(4, UNKNOWN)
                before = shop.number(f"select sum({column}) from {table}")
                scanner.send(*codes)
                end = time.monotonic() + 60
                while shop.number(f"select sum({column}) from {table}") < before + len(picked):
                    if time.monotonic() > end:
                        there = shop.number(f"select sum({column}) from {table}") - before
                        raise Failure(f"{kind} {number}: {there:g} of {len(picked)} codes; the window is “{desk.title()}”")
                    time.sleep(0.02)
                save(desk, shop, kind)
                counted = collections.Counter(picked)
                books.enter(kind, [(code(i), n, cost(i) if kind == "receipt" else price(i)) for i, n in counted.items()])
                scans += len(picked)
                refused += 1
            close_document(desk)
        scanner.close()
        print(f"scanner: 40 documents, {scans} codes and {refused} unknown ones in {time.monotonic() - start:.0f} s")
        books.compare(shop)
        prove(jxcctl, desk)
    finally:
        desk.close()


def house_day(program, jxcctl):
    """Twenty transfers and twenty losses by the scanner, then a count of a hundred scans at ten a second, some of them
    with a multiple before the code."""
    dice = random.Random(13)
    goods = 300
    desk = Desk(program, make_shop(jxcctl, goods, 50, second_warehouse=True))
    try:
        shop = Shop(desk.home)
        here = collections.Counter({code(i): 50 for i in range(goods)})
        there, lost = collections.Counter(), 0.0
        scanner = Scanner(desk)
        begin(desk)
        start = time.monotonic()
        scans = 0

        def quantity(kind):
            _, _, _, _, lines, column = HOUSE[kind]
            return shop.number(f"select sum({column}) from {lines}")

        def scanned(kind, codes, pieces, seconds):
            before = quantity(kind)
            scanner.send(*codes)
            wait(lambda: f"{kind}: {quantity(kind) - before:g} of {pieces} pieces; the window is “{desk.title()}”",
                 lambda: quantity(kind) - before >= pieces, seconds)

        def stored(kind):
            _, title, heads, status, _, _ = HOUSE[kind]
            before = shop.number(f"select count(*) from {heads} where {status}=1")
            desk.keys("F5")
            desk.until(f"{title}: question", lambda t: t == "信息提醒")
            desk.keys("y")
            wait(lambda: f"{title} was not saved; the window is “{desk.title()}”",
                 lambda: shop.number(f"select count(*) from {heads} where {status}=1") > before)
            desk.until(title, lambda t: t == title)

        for kind in ("transfer", "loss"):
            open_document(desk, kind)
            for _ in range(20):
                picked = [dice.randrange(goods) for _ in range(dice.randint(3, 8))]
                scanned(kind, [barcode(i) for i in picked], len(picked), 30)
                if kind == "transfer":  # the refusal leads to the input that is missing
                    desk.keys("F5")
                    desk.until("no warehouse", lambda t: t == "系统提示")
                    desk.keys("Return")
                    desk.until(HOUSE[kind][1], lambda t: t == HOUSE[kind][1])
                    desk.keys("End")
                stored(kind)
                for i in picked:
                    here[code(i)] -= 1
                    if kind == "transfer":
                        there[code(i)] += 1
                    else:
                        lost += cost(i)
                scans += len(picked)
            close_document(desk)
        print(f"house: 40 documents, {scans} codes in {time.monotonic() - start:.0f} s")

        open_document(desk, "count")
        counted = collections.Counter()
        codes = []
        for number in range(100):
            i, times = dice.randrange(60), dice.choice((1, 1, 1, 12))
            counted[code(i)] += times
            codes.append(f"{times}*{barcode(i)}" if times > 1 else str(barcode(i)))
        began = time.monotonic()
        before = quantity("count")
        for number, each in enumerate(codes):
            scanner.send(each)
            time.sleep(max(0.0, began + (number + 1) / 10 - time.monotonic()))
        wait(lambda: f"count: {quantity('count') - before:g} of {counted.total()} pieces; the window is “{desk.title()}”",
             lambda: quantity("count") - before >= counted.total(), 30)
        print(f"  count: 100 scans, {counted.total()} pieces, all there {time.monotonic() - began:.1f} s after the first")
        stored("count")
        close_document(desk)
        scanner.close()
        here.update({goods: pieces - here[goods] for goods, pieces in counted.items()})
        wrong = [(warehouse, goods, pieces, wanted[goods])
                 for warehouse, wanted in (("100001", here), ("100002", there))
                 for goods, pieces in shop.rows("select g_sn,kc_sl from jxc_kcsp where ck_sn=? and g_sn<>'00000000'", warehouse)
                 if abs(pieces - wanted[goods]) > 1e-6]
        booked = shop.number("select sum(fy_je) from jxc_yyfy where gl_djh like 'BS%'")
        print(f"  lost: {booked:.2f}, worked out {-lost:.2f}; stock in two warehouses: {wrong[:3] or 'as worked out'}")
        if wrong or abs(abs(booked) - lost) > 0.005:
            raise Failure("the books differ")
        prove(jxcctl, desk)
    finally:
        desk.close()


def prove(jxcctl, desk):
    done = subprocess.run([jxcctl, "--home", desk.home, "prove"], capture_output=True, text=True)
    print("  prove: " + (done.stdout.strip().splitlines() or ["?"])[-1])
    if done.returncode != 0:
        raise Failure("the proof finds faults: " + done.stdout[-500:] + done.stderr[-500:])


def main():
    arguments = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    arguments.add_argument("--program", default=str(TOP / "build/shared/src/app/jxc"))
    arguments.add_argument("days", nargs="*", choices=["keyboard", "scanner", "house", []])
    chosen = arguments.parse_args()
    jxcctl = str(pathlib.Path(chosen.program).with_name("jxcctl"))
    days = {"keyboard": keyboard_day, "scanner": scanner_day, "house": house_day}
    try:
        for name in chosen.days or days:
            days[name](chosen.program, jxcctl)
    except Failure as failure:
        print(f"FAILED: {failure}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
