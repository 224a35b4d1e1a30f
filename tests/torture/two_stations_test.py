#!/usr/bin/env python3
"""Two stations audit and cancel the same receipts in one account file at the same time. Nothing is posted twice or lost,
and neither station is told that the file is busy.

Usage: two_stations_test.py JXCCTL TORTURE_AUDIT [SECONDS [SEED]]      (4 seconds when not said; a minute by hand)
"""

import collections
import pathlib
import random
import subprocess
import sys
import tempfile

from books import Books

# Few documents, so that the stations meet at the same one often; many, so that they meet at goods and ledgers.
ROUNDS = (3, 40)


def run_stations(driver, file, seconds, seed):
    """Lets both work; what each told as done, one list a station. Fails when one of them ended with a complaint."""
    stations = []
    for i in range(2):
        told = tempfile.TemporaryFile("w+")  # not a pipe: nobody reads it meanwhile
        stations.append((subprocess.Popen([driver, file, "share", str(seed + i), str(seconds)], stdout=told,
                                          stderr=subprocess.PIPE, text=True), told))
    lists = []
    for process, told in stations:
        complaint = process.communicate(timeout=seconds + 120)[1]
        if process.returncode:
            raise SystemExit(f"a station failed: {complaint}")
        told.seek(0)
        lists.append([line.split() for line in told if line != "ready\n"])
        told.close()
    return lists


def main():
    jxcctl, driver = sys.argv[1:3]
    seconds = int(sys.argv[3]) if len(sys.argv) > 3 else 4
    seed = int(sys.argv[4]) if len(sys.argv) > 4 else random.randrange(1 << 30)
    print(f"seed {seed}")
    for receipts in ROUNDS:
        with tempfile.TemporaryDirectory(prefix="jxc-stations-") as folder:
            file = str(pathlib.Path(folder, "jxc.mdb"))
            subprocess.run([jxcctl, "--db", file, "create"], check=True)
            subprocess.run([driver, file, "prepare", str(receipts)], check=True)
            told = run_stations(driver, file, max(1, seconds // len(ROUNDS)), seed)
            books = Books(file, receipts)
            faults = books.faults()
            # Audits and cancels of one document take turns, whichever station does them.
            steps = collections.Counter()
            for what, number in told[0] + told[1]:
                steps[number] += 1 if what == "A" else -1
            audited = books.audited()
            faults += [f"{number}: {count} audits over cancels told" for number, count in steps.items()
                       if count != (number in audited)]
            books.db.close()
            print(f"{receipts} receipts: {len(told[0])} and {len(told[1])} audits and cancels")
            if faults or not told[0] or not told[1]:
                print(*faults, sep="\n  ")
                return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
