#!/usr/bin/env python3
"""Kills two stations at random moments while they audit and cancel documents in one account set. After each kill
`jxcctl prove` finds nothing wrong: after the first of a round beside the station that still works and has to go on with
what the dead one left, after the second with nobody there. After each round, every document is wholly audited or wholly
waiting, nothing that was told as done is lost, and the file is whole. Most of the rounds work on receipts, whose books
are checked past the program as well, on documents of ten families, on putaways and issues with the returns that close
their rests, on loans that come back or become sales, on expenses and on invoices, the others on long counts.

Usage: kill_test.py JXCCTL TORTURE_AUDIT [KILLS [SEED]]      (36 kills when not said; 1000 by hand now and then)
"""

import pathlib
import random
import signal
import sqlite3
import subprocess
import sys
import tempfile
import threading
import time

from books import Books

RECEIPTS = 40
DOCUMENTS = 8  # of each family
PARTS = 12  # putaways, and issues
EXPENSES = 16
INVOICES = 16
STATIONS = 2
LONGEST = 0.6  # seconds from the first command to the kill
COUNTED, COUNTED_BY_HAND = 500, 5000  # goods of a count


class Station:
    """One workstation: a process that audits and cancels receipts until it is killed."""

    def __init__(self, driver, file, seed, station):
        self.process = subprocess.Popen([driver, file, "work", str(seed), str(station), str(STATIONS)],
                                        stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        self.lines = []
        self.started = threading.Event()
        self.listener = threading.Thread(target=self.listen)
        self.listener.start()

    def listen(self):
        for line in self.process.stdout:
            self.started.set()
            if line.endswith("\n"):
                self.lines.append(line.split())
        self.started.set()

    def kill(self):
        """Returns the commands that it told as done. Fails when it ended by itself."""
        self.process.send_signal(signal.SIGKILL)
        self.process.wait()
        self.listener.join()
        complaint = self.process.stderr.read()
        self.process.stderr.close()
        self.process.stdout.close()
        if self.process.returncode != -signal.SIGKILL:
            raise SystemExit(f"the program ended by itself: {complaint}")
        return self.lines[1:]


def prove(jxcctl, file):
    """What `jxcctl prove` says is wrong; empty when the books agree."""
    proof = subprocess.run([jxcctl, "--db", file, "prove", "--wrong"], capture_output=True, text=True, encoding="utf-8")
    return [] if proof.returncode == 0 else [f"prove: {proof.stdout}{proof.stderr}"]


def work_and_kill(programs, file, seed, moments, longest):
    """What the stations told as done, whether the last one left a journal, and what the proofs after their kills found."""
    jxcctl, driver = programs
    stations = [Station(driver, file, seed + station, station) for station in range(STATIONS)]
    for station in stations:
        station.started.wait(60)
    told, faults = [], []
    for number, station in enumerate(stations, 1):
        time.sleep(moments.uniform(0, longest / STATIONS))
        told += station.kill()
        left_behind = pathlib.Path(file + "-wal").exists()
        faults += [f"after kill {number} of the round, {fault}" for fault in prove(jxcctl, file)]
    return told, left_behind, faults


class AllBooks:
    """The documents of all families in the account file, read past the program; the rest is for `prove`."""

    HEADS = (("jxc_jhd", "j_sn", "j_status"), ("jxc_thd", "gl_djh", "th_status"), ("jxc_lsxsd", "gl_djh", "ls_status"),
             ("jxc_xsthd", "gl_djh", "th_status"), ("jxc_kcdbd", "gl_djh", "db_status"), ("jxc_bsd", "gl_djh", "bs_status"),
             ("jxc_byd", "gl_djh", "by_status"), ("jxc_cfd", "gl_djh", "cf_status"), ("jxc_kbd", "gl_djh", "kb_status"),
             ("jxc_khjh", "gl_djh", "jh_status"))

    def __init__(self, file, documents):
        self.db = sqlite3.connect(file)
        self.documents = documents  # of each family

    def audited(self):
        return {number for head, field, status in self.HEADS
                for number, in self.db.execute(f"select {field} from {head} where {status}=1")}

    def faults(self):
        found = [f"integrity: {row[0]}" for row in self.db.execute("pragma integrity_check") if row[0] != "ok"]
        for head, *_ in self.HEADS:
            count = self.db.execute(f"select count(*) from {head}").fetchone()[0]
            if count != self.documents:
                found.append(f"{count} heads in {head}")
        return found


class PartBooks(AllBooks):
    """Putaways and issues, and the returns that close a rest, which come and go."""

    HEADS = (("jxc_rkd", "gl_djh", "rk_status"), ("jxc_ckd", "gl_djh", "ck_status"))
    SOURCES = (("jxc_jhsp", "j_sn", "jh_qxsl"), ("jxc_lsxssp", "gl_djh", "ls_qxsl"))

    def audited(self):
        return super().audited() | {number for lines, field, closed in self.SOURCES
                                    for number, in self.db.execute(f"select distinct {field} from {lines} where {closed}>0")}


class LoanBooks(AllBooks):
    """Loans that are out, and those that came back or were kept: returns and sales come and go."""

    HEADS = ()

    def audited(self):
        return {number for number, in self.db.execute("select distinct gl_djh2 from jxc_khjhsp where gl_djh like 'HH%'")}

    def faults(self):
        count = self.db.execute("select count(*) from jxc_khjh where jh_flag='jh'").fetchone()[0]
        torn = self.db.execute("select count(*) from jxc_khjhsp a where jh_flag='销售' and not exists "
                               "(select 1 from jxc_lsxssp b where b.gl_djh2=a.gl_djh)").fetchone()[0]
        return super().faults() + ([f"{count} loans"] if count != self.documents else []) + (
            [f"{torn} returns without their sale"] if torn else [])


class ExpenseBooks(AllBooks):
    """Expenses and incomes: an audited one has its cash line, unless it is not booked; a waiting one has none."""

    HEADS = (("jxc_yyfy", "gl_djh", "fy_chk"),)

    def faults(self):
        lines = dict(self.db.execute("select gl_djh,sum(xj_je) from jxc_xjyh group by gl_djh"))
        return super().faults() + [
            f"{number}: {lines.get(number)} in the cash ledger"
            for number, state, account, yuan in self.db.execute("select gl_djh,fy_chk,fy_kmmc,fy_je from jxc_yyfy")
            if lines.get(number) != (yuan if state == "1" and account != "不记入账户" else None)]


class InvoiceBooks(AllBooks):
    """Invoices by hand: the balance of each partner runs along those that count; those that wait have none."""

    HEADS = (("jxc_fpdjb", "gl_djh", "fp_check"),)

    def faults(self):
        found, balances = super().faults(), {}
        for number, side, yuan, stored, counts in self.db.execute(
                "select gl_djh,fp_type,fp_kpje,fp_ljje,fp_check from jxc_fpdjb order by fp_rq,id"):
            balances[side] = balances.get(side, 0) - (yuan if counts else 0)
            due = balances[side] if counts else 0
            if abs(stored - due) > 1e-6:
                found.append(f"{number}: balance {stored} where it should be {due}")
        return found


class CountBooks(AllBooks):
    """Two long counts: every line has its row in the ledger, or none has."""

    HEADS = (("jxc_kcpd", "gl_djh", "pd_status"),)

    def __init__(self, file, goods):
        super().__init__(file, STATIONS)
        self.goods = goods

    def faults(self):
        rows = dict(self.db.execute("select gl_djh,count(*) from jxc_goodslist group by gl_djh"))
        audited = self.audited()
        return super().faults() + [f"{number}: {rows.get(number, 0)} rows of the ledger"
                                   for number, in self.db.execute("select gl_djh from jxc_kcpd")
                                   if rows.get(number, 0) != (self.goods if number in audited else 0)]


def torture(programs, file, mode, documents, open_books, rounds, seed, moments, longest):
    """Returns how many commands were told as done, and in how many rounds a journal was left behind."""
    jxcctl, driver = programs
    subprocess.run([jxcctl, "--db", file, "create"], check=True)
    subprocess.run([driver, file, mode, str(documents)], check=True)
    expected = set()
    commands = in_the_middle = 0
    for turn in range(rounds):
        told, left_behind, faults = work_and_kill(programs, file, seed + turn * STATIONS, moments, longest)
        commands += len(told)
        for what, number in told:
            (expected.add if what == "A" else expected.discard)(number)
        in_the_middle += left_behind
        books = open_books(file, documents)
        faults += books.faults()
        # One command a station may have been committed without having been told any more.
        untold = books.audited() ^ expected
        if len(untold) > STATIONS:
            faults.append(f"told as done and lost, or done and not told: {sorted(untold)}")
        books.db.close()
        if faults:
            print(f"{mode}, round {turn + 1}:", *faults, sep="\n  ")
            raise SystemExit(1)
        expected ^= untold
    return commands, in_the_middle


def main():
    programs = sys.argv[1:3]
    kills = int(sys.argv[3]) if len(sys.argv) > 3 else 36
    total = kills // STATIONS
    long_ones = max(1, total // 8)
    counted = COUNTED if total < 50 else COUNTED_BY_HAND
    seed = int(sys.argv[4]) if len(sys.argv) > 4 else random.randrange(1 << 30)
    print(f"seed {seed}")
    moments = random.Random(seed)
    for mode, documents, open_books, rounds, longest in (
            ("prepare", RECEIPTS, Books, (total - long_ones) // 6, LONGEST),
            ("prepare-all", DOCUMENTS, AllBooks, (total - long_ones) // 6, LONGEST),
            ("prepare-parts", PARTS, PartBooks, (total - long_ones) // 6, LONGEST),
            ("prepare-loans", PARTS, LoanBooks, (total - long_ones) // 6, LONGEST),
            ("prepare-expenses", EXPENSES, ExpenseBooks, (total - long_ones) // 6, LONGEST),
            ("prepare-invoices", INVOICES, InvoiceBooks, (total - long_ones) // 6, LONGEST),
            ("prepare-counts", counted, CountBooks, long_ones, LONGEST * (1 + counted / 500))):
        with tempfile.TemporaryDirectory(prefix="jxc-kill-") as folder:
            file = str(pathlib.Path(folder, "jxc.mdb"))
            commands, in_the_middle = torture(programs, file, mode, documents, open_books, rounds, seed, moments, longest)
            print(f"{mode}: {rounds * STATIONS} kills, {commands} audits and cancels told as done, journal left behind in "
                  f"{in_the_middle} of {rounds} rounds: every document wholly audited or wholly waiting, proof clean "
                  "after each kill", flush=True)
            if not commands:
                return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
