#!/usr/bin/env python3
"""Kills the program while it clears an account set, makes one or deletes one, and lets the disk be full there: each set
is afterwards as it was before or as it should be, never between, and `jxcctl prove` finds nothing wrong.

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

FAULTS = []


def fault(text):
    FAULTS.append(text)
    print("FAULT", text, flush=True)


def counts(file):
    """How many rows each table has, of a file that is whole; the log aside, which tells of the clearing."""
    with contextlib.closing(sqlite3.connect(file)) as db:
        whole, = db.execute("pragma integrity_check").fetchone()
        names = sorted(name for name, in db.execute("select name from sqlite_schema where type='table'"))
        rows = {name: db.execute(f"select count(*) from [{name}]").fetchone()[0] for name in names
                if name not in ("jxc_log", "jxc_logchain", "jxc_zmsd", "sqlite_sequence")}
    return rows if whole == "ok" else {"damaged": whole}


def proves(jxcctl, file):
    proof = subprocess.run([jxcctl, "--db", str(file), "prove", "--wrong"], capture_output=True, encoding="utf-8")
    if proof.returncode:
        fault(f"{file.name}: {proof.stdout}{proof.stderr}")


def killed(command, after, longest, moments):
    """Runs until it is killed at a random moment behind the line `after`, or has ended by itself."""
    process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    for line in process.stdout:
        if line.strip() == after:
            break
    time.sleep(moments.uniform(0, longest))
    process.send_signal(signal.SIGKILL)
    process.wait()
    process.stdout.close()


def timed(command):
    """How long it takes, and how long from the line "copied" on; its exit status."""
    began = copied = time.monotonic()
    process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    for line in process.stdout:
        if line.strip() == "copied":
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


def clearings(shop, original, kills, moments):
    before = counts(original)
    for what in ("business", "all"):
        shop.restore(original)
        whole, clearing, outcome = timed([shop.driver, str(shop.home), "clear", what])
        if outcome:
            return fault(f"{what}: it was not cleared")
        after = counts(shop.file)
        if after == before or after["jxc_goodslist"]:
            fault(f"{what}: nothing was cleared")
        proves(shop.jxcctl, shop.file)
        seen = {"before": 0, "after": 0}
        for kill in range(kills):
            shop.restore(original)
            # Most of the kills behind the backup, where tables go.
            mark, longest = ("begin", whole) if kill % 4 == 0 else ("copied", clearing * 1.2)
            killed([shop.driver, str(shop.home), "clear", what], mark, longest, moments)
            now = counts(shop.file)
            if now not in (before, after):
                fault(f"{what}, kill {kill}: " + str({name: (before.get(name), now.get(name)) for name in before | now
                                                       if now.get(name) not in (before.get(name), after.get(name))}))
            seen["before" if now == before else "after"] += 1
            proves(shop.jxcctl, shop.file)
        print(f"clearing of {what}: {kills} kills, {seen}", flush=True)


def sets(shop, kills, moments, seed):
    made = 0
    for kill in range(kills):
        killed([shop.driver, str(shop.home), "sets", str(seed + kill)], "begin", 1.5, moments)
        listed = shop.run("list")
        if listed.returncode:
            fault(f"kill {kill}: {listed.stderr}")
        rows = dict(line.split() for line in listed.stdout.splitlines())
        files = {path.name for path in shop.data.glob("jxc_*") if not path.name.endswith(("-wal", "-shm"))}
        if files != set(rows) - {"jxc.mdb"} or set(rows.values()) != {"本机文件"}:
            fault(f"kill {kill}: listed {rows}, there are {files}")
        for name in files:
            made += 1
            if counts(shop.data / name).get("jxc_admin") != 1:
                fault(f"kill {kill}: {name} is no whole set")
    print(f"sets: {kills} kills, {made} sets looked at", flush=True)


def full_disk(shop, original):
    """Clearing and a new set where the disk fills; whether that could be tried."""
    disk = shop.home / "small"
    disk.mkdir()
    size = original.stat().st_size
    if subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={size * 6 // 1024 + 64}k", "tmpfs", str(disk)],
                      capture_output=True).returncode:
        return False
    try:
        small = Shop(shop.jxcctl, shop.driver, disk)
        before, outcomes = counts(original), []
        for left in [size * part // 8 for part in (0, 1, 2, 4, 7, 9, 12, 16, 20, 36)]:
            small.restore(original)
            filler = disk / "filler"
            with open(filler, "wb", buffering=0) as file:
                try:
                    while True:
                        file.write(b"\0" * 65536)
                except OSError:
                    pass
                file.truncate(max(file.tell() - left, 0))
            words = ("sets", "1") if left < size // 4 else ("clear", "all" if left > size * 3 // 2 else "business")
            ran = small.run(*words)
            filler.unlink()
            if ran.returncode and (counts(small.file) != before or not ran.stderr):
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
        subprocess.run([jxcctl, "--db", str(original), "demo", "--months", "2", "--goods", "120"], check=True,
                       stdout=subprocess.DEVNULL)
        clearings(shop, original, kills, moments)
        shop.restore(original)
        sets(shop, kills, moments, seed)
        tried = full_disk(shop, original)
    if FAULTS:
        raise SystemExit(f"{len(FAULTS)} faults")
    if not tried:
        raise SystemExit(77)


if __name__ == "__main__":
    main()
