#!/usr/bin/env python3
"""Kills the program while it clears an account set, closes its books, makes a set or deletes one, and lets the disk be
full there: each set is afterwards as it was before or as it should be, never between, to the sums of every column, and
`jxcctl prove` finds nothing wrong. The file for the head office stands whole under its name or not at all.

Usage: sets_test.py JXCCTL TORTURE_SETS [KILLS [SEED]]      (12 kills of each kind when not said; 200 by hand)
Ends with status 77 (skipped) where a small disk cannot be mounted, after the rest has passed.
"""

import contextlib
import pathlib
import random
import shutil
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time

from books import figures

FAULTS = []


def fault(text):
    FAULTS.append(text)
    print("FAULT", text, flush=True)


def proves(jxcctl, file):
    proof = subprocess.run([jxcctl, "--db", str(file), "prove", "--wrong"], capture_output=True, encoding="utf-8")
    if proof.returncode:
        fault(f"{file.name}: {proof.stdout}{proof.stderr}")


def killed(command, after, longest, moments):
    """Runs until it is killed at a random moment behind the line `after`: whether it had not ended by itself before."""
    process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    for line in process.stdout:
        if line.strip() == after:
            break
    time.sleep(moments.uniform(0, longest))
    process.send_signal(signal.SIGKILL)
    process.stdout.close()
    return process.wait() == -signal.SIGKILL


def timed(command):
    """How long it takes, and how long from the line "copied" on, or "begin" without one; its exit status."""
    began = copied = time.monotonic()
    process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    for line in process.stdout:
        if line.strip() in ("begin", "copied"):
            copied = time.monotonic()
    process.stdout.close()
    outcome = process.wait()
    return time.monotonic() - began, time.monotonic() - copied, outcome


class Shop:
    def __init__(self, jxcctl, driver, folder):
        self.jxcctl, self.driver = jxcctl, driver
        self.home = pathlib.Path(folder)
        self.data = self.home / "data"
        self.data.mkdir(parents=True, exist_ok=True)
        self.file = self.data / "jxc.mdb"

    def run(self, *words):
        return subprocess.run([self.driver, str(self.home), *words], capture_output=True, encoding="utf-8", timeout=120)

    def restore(self, original):
        shutil.rmtree(self.home / "backup", ignore_errors=True)
        for left in self.data.glob("jxc.mdb*"):
            left.unlink()
        shutil.copyfile(original, self.file)


def emptyings(shop, original, kills, moments):
    """Commands that take rows away for good: the clearings, and a closing in the middle of what the shop lived."""
    before = figures(original)
    for words in (("clear", "business"), ("clear", "all"), ("close", middle(original))):
        shop.restore(original)
        whole, taking, outcome = timed([shop.driver, str(shop.home), *words])
        after = figures(shop.file)
        if outcome or after["jxc_goodslist"][0] >= before["jxc_goodslist"][0]:
            return fault(f"{words}: nothing was taken away")
        proves(shop.jxcctl, shop.file)
        seen, cut = {"before": 0, "after": 0}, 0
        for kill in range(kills):
            shop.restore(original)
            # Most of the kills behind the backup, where rows go.
            mark, longest = ("begin", whole) if kill % 4 == 0 else ("copied", taking * 1.2)
            cut += killed([shop.driver, str(shop.home), *words], mark, longest, moments)
            now = figures(shop.file)
            if now not in (before, after):
                fault(f"{words}, kill {kill}: " + str({name: (before.get(name), now.get(name), after.get(name))
                                                       for name in before | now
                                                       if now.get(name) not in (before.get(name), after.get(name))}))
            seen["before" if now == before else "after"] += 1
            if now != before or kill % 10 == 0:  # what is as before to every sum proves as before
                proves(shop.jxcctl, shop.file)
        print(f"{' '.join(words)}: {kills} kills, {cut} of them before its end: {seen}", flush=True)


def middle(file):
    with contextlib.closing(sqlite3.connect(file)) as db:
        return db.execute("select substr(gl_kdrq,1,10) from jxc_goodslist order by gl_kdrq limit 1 offset "
                          "(select count(*)/2 from jxc_goodslist)").fetchone()[0]


def sets(shop, kills, moments, seed):
    made = unfinished = 0
    for kill in range(kills):
        killed([shop.driver, str(shop.home), "sets", str(seed + kill)], "begin", 1.5, moments)
        unfinished += any(path.name.endswith((".new", ".del")) for path in shop.data.iterdir())
        listed = shop.run("list")
        if listed.returncode:
            fault(f"kill {kill}: {listed.stderr}")
        rows = dict(line.split() for line in listed.stdout.splitlines())
        files = {path.name for path in shop.data.glob("jxc_*") if not path.name.endswith(("-wal", "-shm"))}
        if files != set(rows) - {"jxc.mdb"} or set(rows.values()) != {"本机文件"}:
            fault(f"kill {kill}: listed {rows}, there are {files}")
        for name in files:
            made += 1
            if figures(shop.data / name).get("jxc_admin", (0,))[0] != 1:
                fault(f"kill {kill}: {name} is no whole set")
    print(f"sets: {kills} kills, {unfinished} of them with a set half made or half gone, {made} sets looked at", flush=True)


def exports(shop, original, kills, moments):
    """The file for the head office is whole or not there, its day moves with it and never without, and what a killed
    one leaves beside it goes with the next one, which holds the same."""
    shop.restore(original)
    sent = shop.home / "sent"
    sent.mkdir()
    command = [shop.driver, str(shop.home), "export", str(sent)]

    def ask(statement):
        with contextlib.closing(sqlite3.connect(shop.file)) as db, db:
            return db.execute(statement).fetchone()

    while ask("select count(*) from jxc_kcsp")[0] < 30000:  # a file that takes its time
        ask("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_cbj) select g_sn,ck_sn,kc_sl,kc_cbj from jxc_kcsp")

    def left():
        """What stands under the names that are told, and how many files beside them."""
        files = list(sent.iterdir())
        told = [path for path in files if not path.name.startswith(".")]
        return told, len(files) - len(told)

    _, writing, outcome = timed(command)
    wanted = left()[0][0].read_bytes() if outcome == 0 else fault("no file for the head office")
    cut = half = done = 0
    for kill in range(kills):
        for path in left()[0]:
            path.unlink()
        ask("update jxc_fd set fd_dcrq=''")
        cut += killed(command, "begin", writing, moments)
        told, beside = left()
        day, = ask("select fd_dcrq from jxc_fd")
        if any(path.read_bytes() != wanted for path in told) or len(told) > 1 or beside > 1 or (day and not told):
            fault(f"export, kill {kill}: {[path.name for path in sent.iterdir()]}, exported on {day!r}")
        half += beside
        done += bool(told)
    last = subprocess.run(command, capture_output=True).returncode
    told, beside = left()
    if last or beside or any(path.read_bytes() != wanted for path in told):
        fault(f"the export behind the kills: status {last}, {[path.name for path in sent.iterdir()]}")
    print(f"export: {kills} kills, {cut} of them before its end, {half} with a file half written, {done} behind it",
          flush=True)


def full_disk(shop, original):
    """Clearing, closing and a new set where the disk fills; whether that could be tried."""
    disk = shop.home / "small"
    disk.mkdir()
    size = original.stat().st_size
    if subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={size * 6 // 1024 + 64}k", "tmpfs", str(disk)],
                      capture_output=True).returncode:
        return False
    try:
        small = Shop(shop.jxcctl, shop.driver, disk)
        before, outcomes = figures(original), []
        commands = (("close", middle(original)), ("clear", "business"), ("clear", "all"))
        for number, left in enumerate(size * part // 8 for part in (0, 1, 2, 2, 2, 7, 9, 9, 12, 12, 16, 16, 20, 36, 36, 36)):
            small.restore(original)
            filler = disk / "filler"
            with open(filler, "wb", buffering=0) as file:
                try:
                    while True:
                        file.write(b"\0" * 65536)
                except OSError:
                    pass
                file.truncate(max(file.tell() - left, 0))
            words = commands[number % len(commands)] if left >= size // 4 else ("sets", "1")
            ran = small.run(*words)
            filler.unlink()
            if ran.returncode and (figures(small.file) != before or not ran.stderr):
                fault(f"full disk, {left} bytes free, {words}: changed though it failed, or without a word: {ran.stderr}")
            if ran.returncode not in (0, 1, 2):
                fault(f"full disk, {left} bytes free, {words}: ended with {ran.returncode}")
            outcomes.append(ran.returncode)
            proves(shop.jxcctl, small.file)
            listed = {line.split()[0] for line in small.run("list").stdout.splitlines()}
            there = {path.name for path in small.data.glob("jxc_*") if not path.name.endswith(("-wal", "-shm"))}
            if there != listed - {"jxc.mdb"}:
                fault(f"full disk: listed {listed}, there are {there}")
            for name in there:
                (small.data / name).unlink()
            (small.data / "codeinfo.dll").unlink(missing_ok=True)
    finally:
        subprocess.run(["umount", "-l", str(disk)], check=True)
    if 0 not in outcomes:
        fault("full disk: nothing fitted, so nothing was shown")
    print(f"full disk: {outcomes.count(0)} fitted, {len(outcomes) - outcomes.count(0)} did not", flush=True)
    return True


def main():
    jxcctl, driver = sys.argv[1:3]
    kills = int(sys.argv[3]) if len(sys.argv) > 3 else 12
    seed = int(sys.argv[4]) if len(sys.argv) > 4 else 1
    moments = random.Random(seed)
    with tempfile.TemporaryDirectory(prefix="jxc-sets-") as folder:
        shop = Shop(jxcctl, driver, pathlib.Path(folder) / "home")
        original = pathlib.Path(folder) / "original.mdb"
        subprocess.run([jxcctl, "--db", str(original), "demo", "--months", "1", "--goods", "40"], check=True,
                       stdout=subprocess.DEVNULL)
        emptyings(shop, original, kills, moments)
        shop.restore(original)
        sets(shop, kills, moments, seed)
        exports(shop, original, kills, moments)
        tried = full_disk(shop, original)
    if FAULTS:
        raise SystemExit(f"{len(FAULTS)} faults")
    if not tried:
        raise SystemExit(77)


if __name__ == "__main__":
    main()
