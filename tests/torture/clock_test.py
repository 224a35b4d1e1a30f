#!/usr/bin/env python3
"""Clocks that are wrong: a workstation whose date goes back, one in another time zone beside one in this, and both at
work in one account file at once. Documents get numbers of their own whatever day it seems to be, nothing is posted twice
or lost, and the books agree.

Usage: clock_test.py JXCCTL TORTURE_AUDIT [SECONDS [SEED]]      (2 seconds of work at a time when not said)
"""

import collections
import os
import pathlib
import random
import subprocess
import sys
import tempfile

# As far apart as two places can be: between them it is always two different days.
EAST, WEST = "Etc/GMT-14", "Etc/GMT+12"
RECEIPTS = 12


def main():
    jxcctl, driver = sys.argv[1:3]
    seconds = sys.argv[3] if len(sys.argv) > 3 else "2"
    seed = int(sys.argv[4]) if len(sys.argv) > 4 else random.randrange(1 << 30)
    print(f"seed {seed}")
    faults = []
    with tempfile.TemporaryDirectory(prefix="jxc-clock-") as folder:
        file = str(pathlib.Path(folder, "jxc.mdb"))

        def start(zone, *words):
            return subprocess.Popen([driver, file, *map(str, words)], env=dict(os.environ, TZ=zone),
                                    stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)

        def end(process):
            told, complaint = process.communicate(timeout=300)
            if process.returncode:
                raise SystemExit(f"a station failed: {complaint}")
            return [line.split() for line in told.splitlines() if line != "ready"]

        def rows(statement):
            printed = subprocess.run([jxcctl, "--db", file, "sql", "-c", statement], check=True, capture_output=True,
                                     encoding="utf-8").stdout
            return [line.split("\t") for line in printed.splitlines()[1:]]

        def check(moment):
            proof = subprocess.run([jxcctl, "--db", file, "prove"], capture_output=True, encoding="utf-8")
            if proof.returncode:
                faults.append(f"{moment}: {proof.stdout}{proof.stderr}")
            doubled = rows("select j_sn from jxc_jhd group by j_sn having count(*)>1")
            faults.extend(f"{moment}: two documents with the number {number}" for number, in doubled)

        subprocess.run([jxcctl, "--db", file, "create"], check=True, env=dict(os.environ, TZ=EAST))
        end(start(EAST, "prepare", RECEIPTS))
        steps = collections.Counter()

        def count(told):
            for what, number in told:
                steps[number] += 1 if what == "A" else -1

        count(end(start(EAST, "share", seed, seconds)))
        check("before the clock went back")
        first_days = {day for day, in rows("select distinct j_jhrq from jxc_jhd")}

        # The clock goes back by a day or two, behind documents that are audited already.
        end(start(WEST, "prepare", RECEIPTS))
        days = {day for day, in rows("select distinct j_jhrq from jxc_jhd")}
        if len(days) < 2 or max(days) != max(first_days):
            faults.append(f"the clock did not go back: {sorted(days)}")
        count(end(start(WEST, "share", seed + 1, seconds)))
        check("after the clock went back")

        # Two stations that do not agree what day it is, at the same documents.
        both = [start(zone, "share", seed + 2 + i, seconds) for i, zone in enumerate((EAST, WEST))]
        for station in both:
            count(end(station))
        check("two stations with different days")

        # And forward again: the later day goes on behind its own documents.
        end(start(EAST, "prepare", RECEIPTS))
        count(end(start(EAST, "share", seed + 4, seconds)))
        check("after the clock went forward again")

        audited = {number for number, in rows("select j_sn from jxc_jhd where j_status=1")}
        total = int(rows("select count(*) from jxc_jhd")[0][0])
        if total != 3 * RECEIPTS:
            faults.append(f"{total} receipts, not {3 * RECEIPTS}")
        faults += [f"{number}: {times} audits over cancels told" for number, times in steps.items()
                   if times != (number in audited)]
    print(f"{total} receipts of {len(days)} days, {len(steps)} of them worked on in two zones")
    if faults or not steps:
        print(*faults, sep="\n")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
