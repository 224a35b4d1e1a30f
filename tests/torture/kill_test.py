#!/usr/bin/env python3
"""Kills two stations at random moments while they audit and cancel receipts in one account set, and looks at the books
after each round: every receipt is wholly audited or wholly waiting, nothing that was told as done is lost, the running
figures are right, and the file is whole.

Usage: kill_test.py JXCCTL TORTURE_AUDIT [ROUNDS [SEED]]      (15 rounds when not said; 200 by hand now and then)
"""

import pathlib
import random
import signal
import subprocess
import sys
import tempfile
import threading
import time

from books import Books

RECEIPTS = 40
STATIONS = 2
LONGEST = 0.6  # seconds from the first command to the kill


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


def work_and_kill(driver, file, seed, moments):
    stations = [Station(driver, file, seed + station, station) for station in range(STATIONS)]
    for station in stations:
        station.started.wait(60)
    told = []
    for station in stations:
        time.sleep(moments.uniform(0, LONGEST / STATIONS))
        told += station.kill()
    return told


def main():
    jxcctl, driver = sys.argv[1:3]
    rounds = int(sys.argv[3]) if len(sys.argv) > 3 else 15
    seed = int(sys.argv[4]) if len(sys.argv) > 4 else random.randrange(1 << 30)
    print(f"seed {seed}")
    moments = random.Random(seed)
    commands = in_the_middle = 0
    with tempfile.TemporaryDirectory(prefix="jxc-kill-") as folder:
        file = str(pathlib.Path(folder, "jxc.mdb"))
        subprocess.run([jxcctl, "--db", file, "create"], check=True)
        subprocess.run([driver, file, "prepare", str(RECEIPTS)], check=True)
        expected = set()
        for turn in range(rounds):
            told = work_and_kill(driver, file, seed + turn * STATIONS, moments)
            commands += len(told)
            for what, number in told:
                (expected.add if what == "A" else expected.discard)(number)
            in_the_middle += pathlib.Path(file + "-wal").exists()
            books = Books(file, RECEIPTS)
            faults = books.faults()
            # One command a station may have been committed without having been told any more.
            untold = books.audited() ^ expected
            if len(untold) > STATIONS:
                faults.append(f"told as done and lost, or done and not told: {sorted(untold)}")
            books.db.close()
            if faults:
                print(f"round {turn + 1}:", *faults, sep="\n  ")
                return 1
            expected ^= untold
    print(f"{rounds} rounds of {STATIONS} kills, {commands} audits and cancels told as done, journal left behind in "
          f"{in_the_middle} rounds: every receipt wholly audited or wholly waiting")
    return 0 if commands else 1


if __name__ == "__main__":
    sys.exit(main())
