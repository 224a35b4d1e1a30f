#!/usr/bin/env python3
"""The goods catalogue with 102,060 lenses in a real window: memory of the program with the list open, while it is
searched, and while it follows another station.

Usage: tests/journeys/big_catalogue.py [PROGRAM]     (a release build tells the truth about memory)
The exit status is 1 when the program ever held more than 400 MB.
"""

import pathlib
import sqlite3
import sys
import time

from desk import Failure, begin, run

MOST = 400_000  # kB


def memory(desk, when):
    lines = pathlib.Path(f"/proc/{desk.program.pid}/status").read_text().splitlines()
    found = {line.split(":")[0]: int(line.split()[1]) for line in lines if line.startswith(("VmRSS", "VmHWM"))}
    print(f"{when}: {found['VmRSS'] / 1000:.0f} MB, at most {found['VmHWM'] / 1000:.0f} MB so far")
    if found["VmHWM"] > MOST:
        raise Failure(f"{when}: more than {MOST} kB")


def fill(file):
    """Sixty lens ranges of 81 by 21 powers, as another station would have made them."""
    account = sqlite3.connect(file, timeout=20)
    columns = [row[1] for row in account.execute("pragma table_info(jxc_goods)") if row[1].lower() != "id"]
    first = account.execute(f"select {','.join(columns)} from jxc_goods limit 1").fetchone()
    rows = []
    for product in range(60):
        name = f"晶朗1.{50 + product % 25}非球面加硬加膜镜片第{product}款"
        for sphere in range(81):
            for cylinder in range(21):
                q, c = f"{-12 + sphere * .25:g}", f"{-5 + cylinder * .25:g}"
                row = dict(zip(columns, first), g_sn=str(20000001 + len(rows)), g_qc=name, g_qgd=q, g_sgd=c,
                           g_name=f"{name}:屈光度{q}:散光度{c}", g_jm=f"JL1.{50 + product % 25}FQMJP{product}K",
                           g_isjp=1, g_jy=0, gc_sn="1000", gc_cid=2, dw_name="片", dw_name2="片",
                           g_jj=28 + product, g_sj=120 + product, g_bz="")
                rows.append(tuple(row[column] for column in columns))
    account.executemany(f"insert into jxc_goods({','.join(columns)}) values({','.join('?' * len(columns))})", rows)
    account.commit()
    account.close()
    return len(rows)


def journey(desk):
    desk.until("login", lambda title: "操作员登录" in title, 60)
    print(f"{fill(desk.home + '/data/jxc.mdb')} lenses")
    begin(desk)
    memory(desk, "main window")
    desk.keys("ctrl+7", "1")
    desk.until("catalogue", lambda title: title == "商品信息管理")
    time.sleep(8)
    memory(desk, "list open")
    desk.xdo("type", "--delay", "60", "1.67 -2.25 -0.75")
    time.sleep(2)
    memory(desk, "searched")
    desk.keys("ctrl+a", "BackSpace")
    account = sqlite3.connect(desk.home + "/data/jxc.mdb", timeout=20)
    account.execute("update jxc_goods set g_sj=g_sj+1")
    account.commit()
    account.close()
    time.sleep(15)
    memory(desk, "read anew after another station")


if __name__ == "__main__":
    sys.exit(run(journey))
