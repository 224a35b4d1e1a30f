#!/usr/bin/env python3
"""Backups and restores that are killed at random moments, or meet a full disk, and backups of a set that two stations
post into. After each kill the backup opens and is the one from before or the new one, and the set is the one from
before or the restored one, wholly: `jxcctl prove` is clean, and the rows and sums of all tables are those of one of the
two.

Usage: kept_safe_test.py JXCCTL TORTURE_AUDIT [KILLS [SECONDS [SEED]]]
       (12 kills of each and 6 seconds of two stations when not said; 200 and 600 by hand now and then)
"""

import functools
import os
import pathlib
import random
import sqlite3
import shutil
import signal
import subprocess
import sys
import tempfile
import time

from books import figures
from kill_test import Station

JXCCTL = DRIVER = ""


def run(file, *words, status=0):
    ran = subprocess.run([JXCCTL, "--db", str(file), *words], capture_output=True, encoding="utf-8", timeout=1200)
    if status is not None and ran.returncode != status:
        raise SystemExit(f"{words}: status {ran.returncode}\n{ran.stdout}{ran.stderr}")
    return ran.stdout + ran.stderr


def mark(file):
    """What tells one state of a set from another."""
    state = figures(file)
    assert "damaged" not in state, state
    return state


def restored_from(file):
    """The backup that the log names; nothing where it tells of none."""
    with sqlite3.connect(f"file:{file}?mode=ro", uri=True) as db:
        row = db.execute("select log_note from jxc_log where log_note like '恢复数据：%' order by id desc").fetchone()
    db.close()
    return row[0].split("：")[1].split("，")[0] if row else None


def add_colour(file):
    run(file, "sql", "-c", "insert into jxc_color (color_name) values ('色')")


def proved(file):
    """Of a backup a copy is proved: whoever opens it to write changes what its sum says."""
    if file.suffix == ".DAT":
        file = pathlib.Path(shutil.copy(file, file.parent / "looked-at.mdb"))
    run(file, "prove", "--wrong")


def killed(moments, longest, file, *words):
    """Whether the command was killed before its end; not while the program starts, which does nothing yet."""
    process = subprocess.Popen([JXCCTL, "--db", str(file), *words], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    time.sleep(moments.uniform(start_of(file), longest))
    process.send_signal(signal.SIGKILL)
    return process.wait() == -signal.SIGKILL


def duration(file, *words):
    begun = time.monotonic()
    run(file, *words)
    return time.monotonic() - begun


@functools.cache
def start_of(file):
    """How long the program takes before a command begins."""
    return min(duration(file, "sql", "-c", "select 1") for _ in range(5))


def check_sum(file):
    if pathlib.Path(f"{file}.sum").exists():
        subprocess.run(["b2sum", "-l", "256", "-c", f"{file.name}.sum"], cwd=file.parent, check=True, capture_output=True)


def kill_backups(folder, kills, moments):
    file, copy = folder / "jxc.mdb", folder / "copy.DAT"
    longest = duration(file, "backup", str(copy)) * 1.1
    died, seen = 0, {"before": 0, "after": 0}
    for kill in range(kills):
        before = mark(copy)
        add_colour(file)
        died += killed(moments, longest, file, "backup", "--force", str(copy))
        now = mark(copy)
        if now not in (before, mark(file)):
            raise SystemExit("a backup between two states")
        seen["before" if now == before else "after"] += 1
        check_sum(copy)
        if now != before or kill % 10 == 0:  # what is as before to every sum proves as before
            proved(copy)
    print(f"{died} of {kills} backups were killed, {seen}: each left the one before or the new one, proved", flush=True)


def kill_restores(folder, kills, moments):
    file, other = folder / "jxc.mdb", folder / "other.mdb"
    run(other, "demo", "--months", "1", "--goods", "50")
    copies = []
    for each in (file, other):
        copies.append(folder / f"copy{len(copies)}.DAT")
        run(each, "backup", str(copies[-1]))
    longest = min(duration(file, "restore", "--yes", str(copy)) for copy in copies)
    died, seen = 0, {"before": 0, "after": 0}
    for kill in range(kills):
        before = mark(file)
        source = copies[before == mark(copies[0])]
        chosen = mark(source)
        died += killed(moments, longest, file, "restore", "--yes", str(source))
        now = mark(file)
        if now not in (before, chosen):
            raise SystemExit("a set between two states")
        if before != chosen and now == chosen and restored_from(file) != source.name:
            raise SystemExit("restored without a word in the log")
        seen["before" if now == before else "after"] += 1
        if now != before or kill % 10 == 0:
            proved(file)
        for left in folder.glob("*(恢复前)*"):
            if left.suffix == ".DAT":
                mark(left)
            left.unlink()
    print(f"{died} of {kills} restores were killed, {seen}: each left the set before or the restored one, proved",
          flush=True)


def back_up_beside_stations(folder, seconds):
    file = folder / "busy.mdb"
    run(file, "create")
    subprocess.run([DRIVER, str(file), "prepare-all", "8"], check=True)
    stations = [Station(DRIVER, str(file), 7 + station, station) for station in range(2)]
    copies = []
    end = time.monotonic() + seconds
    while time.monotonic() < end or len(copies) < 3:
        copies.append(folder / f"busy{len(copies)}.DAT")
        run(file, "backup", str(copies[-1]))
        time.sleep(max(0.3, seconds / 200))  # some two hundred, each of which is to be restored
    told = sum(len(station.kill()) for station in stations)
    if told == 0:
        raise SystemExit("nobody posted")
    print(f"{len(copies)} backups in {seconds} s while two stations did {told} commands", flush=True)
    restored = folder / "restored.mdb"
    for copy in copies:
        check_sum(copy)
        run(restored, "restore", "--yes", str(copy))
        proved(restored)
        if mark(restored) != mark(copy):
            raise SystemExit(f"{copy.name}: another state")
        for kept in folder.glob("*(恢复前)*"):
            kept.unlink()
    print("each of them restored and proved", flush=True)


def meet_full_disks(folder, moments):
    """False where no small disk can be mounted."""
    disk = folder / "disk"
    disk.mkdir()
    if subprocess.run(["mount", "-t", "tmpfs", "-o", "size=40m", "tmpfs", str(disk)], capture_output=True).returncode:
        return False
    try:
        file, copy, source = disk / "jxc.mdb", disk / "copy.DAT", folder / "full.DAT"
        run(file, "demo", "--months", "1", "--goods", "30")
        add_colour(file)
        run(file, "backup", str(source))
        run(file, "backup", str(copy))
        add_colour(file)
        size = file.stat().st_size
        for _ in range(6):
            before, kept = mark(file), mark(copy)
            filler = disk / "filler"
            room = os.statvfs(disk)
            with open(filler, "wb") as out:
                out.write(b"\0" * max(0, room.f_bavail * room.f_frsize - int(moments.uniform(0, 3.2) * size)))
            for words in (("backup", "--force", str(copy)), ("restore", "--yes", str(source))):
                said = run(file, *words, status=None)
                if "terminate" in said:
                    raise SystemExit(said)
            filler.unlink()
            if mark(file) not in (before, mark(source)) or mark(copy) not in (kept, before):
                raise SystemExit("a full disk left something between two states")
            proved(file)
            proved(copy)
            for left in disk.glob("*(恢复前)*"):
                left.unlink()
            add_colour(file)
    finally:
        subprocess.run(["umount", str(disk)], check=True)
    print("full disks: the set and its backup as before or new, proved")
    return True


def main():
    global JXCCTL, DRIVER
    JXCCTL, DRIVER = sys.argv[1:3]
    kills = int(sys.argv[3]) if len(sys.argv) > 3 else 12
    seconds = int(sys.argv[4]) if len(sys.argv) > 4 else 6
    seed = int(sys.argv[5]) if len(sys.argv) > 5 else random.randrange(1 << 30)
    print(f"seed {seed}", flush=True)
    moments = random.Random(seed)
    with tempfile.TemporaryDirectory(prefix="jxc-kept-") as name:
        folder = pathlib.Path(name)
        run(folder / "jxc.mdb", "demo", "--months", "1", "--goods", "30")
        kill_backups(folder, kills, moments)
        kill_restores(folder, kills, moments)
        back_up_beside_stations(folder, seconds)
        if not meet_full_disks(folder, moments):
            print("no small disk can be mounted here")
            sys.exit(77)


if __name__ == "__main__":
    main()
