#!/usr/bin/env python3
"""A morning of twenty deliveries in the real window: receipts are booked, their goods come bit by bit and are put away by
scanner alone. What lies on the shelf, and what still waits, is compared with what this script has worked out by itself.

Usage: tests/journeys/deliveries.py [--program PROGRAM]
Needs xvfb, openbox, xdotool. Prints figures; the exit status is 1 when anything differs.
"""

import argparse
import contextlib
import pathlib
import random
import sqlite3
import sys
import time

from desk import TOP, Desk, Failure, begin
from shop_day import (KINDS, Kind, Scanner, Shop, barcode, close_document, code, conclude, make_shop, open_document, prove,
                      save, scan, told)

KINDS["putaway"] = Kind("sprk", "商品入库", "商品入库 - 选择待入库商品", "入库商品明细", "jxc_rkd", "rk_status", "jxc_rksp", "rk_sl")


def deliveries_morning(program, jxcctl):
    """Twenty receipts were booked; their goods come one delivery after the other, by scanner alone. Of every fourth one
    a part only: what is missing still waits at noon."""
    dice = random.Random(23)
    goods, deliveries = 400, 20

    def prepare(home):
        make_shop(jxcctl, goods, 0)(home)
        with contextlib.closing(sqlite3.connect(pathlib.Path(home) / "data/jxc.mdb")) as db, db:
            db.execute("update jxc_xtcs set cs_sprk=1")

    desk = Desk(program, prepare)
    try:
        shop = Shop(desk.home)
        scanner = Scanner(desk)
        begin(desk)
        left = list(range(goods))
        dice.shuffle(left)
        ordered = []
        open_document(desk, "receipt")
        for _ in range(deliveries):
            lines = {left.pop(): dice.randint(1, 3) for _ in range(dice.randint(4, 9))}
            codes = [barcode(i) for i, pieces in lines.items() for _ in range(pieces)]
            scan(desk, shop, scanner, "receipt", codes, len(codes), 60, pause=0.1)
            save(desk, shop, "receipt")
            ordered.append(lines)
        close_document(desk)
        if shop.number("select sum(kc_sl) from jxc_kcsp") != 0:
            raise Failure("goods lie on the shelf that have not come")
        shelf = {code(i): 0.0 for i in range(goods)}
        missing = scans = 0
        start = time.monotonic()
        late = []
        open_document(desk, "putaway")
        for number, lines in enumerate(ordered):
            come = list(lines)
            if number % 4 == 3:
                missing += 1
                come = come[:-2]
            if number % 5 == 2:
                desk.keys("shift+Tab")  # wherever the focus is
            codes = [barcode(i) for i in come]
            late.append(scan(desk, shop, scanner, "putaway", codes, sum(lines[i] for i in come), 60, pause=0.1))
            save(desk, shop, "putaway")
            scans += len(come)
            for i in come:
                shelf[code(i)] += lines[i]
        close_document(desk)
        scanner.close()
        print(f"deliveries: {deliveries} putaways, {scans} scans in {time.monotonic() - start:.0f} s, the last piece "
              f"{max(late):.1f} s behind its code at the most")
        found = dict(shop.rows("select g_sn,sum(kc_sl) from jxc_kcsp group by g_sn"))
        wrong = [(g, s, found.get(g)) for g, s in shelf.items() if abs(found.get(g, 0) - s) > 1e-6]
        wrong += told({"receipts that still wait": (shop.number("select count(*) from jxc_jhd where j_crk=0"), missing),
                       "putaways": (shop.audited("putaway"), deliveries)})
        conclude(f"shelf of {goods} goods", wrong)
        prove(jxcctl, desk)
    finally:
        desk.close()


def main():
    arguments = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    arguments.add_argument("--program", default=str(TOP / "build/shared/src/app/jxc"))
    program = arguments.parse_args().program
    try:
        deliveries_morning(program, str(pathlib.Path(program).with_name("jxcctl")))
    except Failure as failure:
        print(f"FAILED: {failure}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
