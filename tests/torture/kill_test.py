#!/usr/bin/env python3
"""Kills the program at random moments while it audits and cancels receipts, and looks at the books after each kill:
every receipt is wholly audited or wholly waiting, nothing that was told as done is lost, and the file is whole.

Usage: kill_test.py JXCCTL TORTURE_AUDIT [KILLS [SEED]]      (15 kills when not said; 200 by hand now and then)
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
LONGEST = 0.6  # seconds from the first command to the kill


def work_and_kill(driver, file, seed, after):
    """Lets the program work, kills it, and returns the commands that it told as done. Fails when it ended by itself."""
    process = subprocess.Popen([driver, file, "work", str(seed)], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    lines = []
    started = threading.Event()

    def listen():
        for line in process.stdout:
            started.set()
            if line.endswith("\n"):
                lines.append(line.strip())
        started.set()

    listener = threading.Thread(target=listen)
    listener.start()
    started.wait(30)
    time.sleep(after)
    process.send_signal(signal.SIGKILL)
    process.wait()
    listener.join()
    complaint = process.stderr.read()
    process.stderr.close()
    process.stdout.close()
    if process.returncode != -signal.SIGKILL:
        raise SystemExit(f"the program ended by itself: {complaint}")
    return [line.split() for line in lines if line != "ready"]


def main():
    jxcctl, driver = sys.argv[1:3]
    kills = int(sys.argv[3]) if len(sys.argv) > 3 else 15
    seed = int(sys.argv[4]) if len(sys.argv) > 4 else random.randrange(1 << 30)
    print(f"seed {seed}")
    moments = random.Random(seed)
    commands = in_the_middle = 0
    with tempfile.TemporaryDirectory(prefix="jxc-kill-") as folder:
        file = str(pathlib.Path(folder, "jxc.mdb"))
        subprocess.run([jxcctl, "--db", file, "create"], check=True)
        subprocess.run([driver, file, "prepare", str(RECEIPTS)], check=True)
        expected = set()
        for kill in range(kills):
            told = work_and_kill(driver, file, seed + kill, moments.uniform(0, LONGEST))
            commands += len(told)
            for what, number in told:
                (expected.add if what == "A" else expected.discard)(number)
            in_the_middle += pathlib.Path(file + "-wal").exists()
            books = Books(file, RECEIPTS)
            faults = books.faults()
            # One command may have been committed without having been told any more.
            untold = books.audited() ^ expected
            if len(untold) > 1:
                faults.append(f"told as done and lost, or done and not told: {sorted(untold)}")
            books.db.close()
            if faults:
                print(f"kill {kill + 1}:", *faults, sep="\n  ")
                return 1
            expected ^= untold
    print(f"{kills} kills, {commands} audits and cancels told as done, journal open at {in_the_middle} of the kills: "
          "every receipt wholly audited or wholly waiting")
    return 0 if commands else 1


if __name__ == "__main__":
    sys.exit(main())
