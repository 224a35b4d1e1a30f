#!/usr/bin/env python3
"""Many stations on one server make, audit and cancel documents of eleven families over the same fifty goods at the same
time. Numbers are unique and without gaps, what was told as done is there, and the books prove. With --cut, connections are
cut, a station is killed and the server is restarted meanwhile: nothing is lost, nothing is there twice, nothing stays
locked.

Usage: stations_test.py JXCCTL TORTURE_AUDIT ADDRESS_FILE|- [SECONDS [SEED [STATIONS]]] [--cut]

With "-" a server of its own is started and stopped. By hand, 5,000 documents and more: stations_test.py … - 300
"""

import collections
import os
import pathlib
import random
import subprocess
import sys
import tempfile
import time

from books import Server

SERVER = pathlib.Path(__file__).resolve().parents[2] / "tools" / "postgres.sh"


def psql(address, statement):
    return subprocess.run(["psql", address, "-XAtq", "-v", "ON_ERROR_STOP=1", "-c", statement], check=True,
                          capture_output=True, text=True).stdout.strip()


def disturb(address_file, admin, moments, seconds, victim):
    """Cuts a connection now and then, restarts the server once or twice, and kills the victim in the middle. Returns how
    often it cut and restarted."""
    cuts = restarts = 0
    begin = time.monotonic()
    while time.monotonic() < begin + seconds:
        time.sleep(moments.uniform(0.3, 1.5))
        if time.monotonic() > begin + seconds / 2:
            victim.kill()
        if moments.random() < 0.08:
            subprocess.run([SERVER, "restart", address_file, "immediate"], check=True, timeout=60)
            restarts += 1
            continue
        try:
            cuts += psql(admin, "select pg_terminate_backend(pid) from pg_stat_activity where datname='jxc_stations' and "
                                "pid<>pg_backend_pid() order by random() limit 1") == "t"
        except subprocess.CalledProcessError:
            pass  # the server is not back yet
    return cuts, restarts


# head, number, status
FAMILIES = (("jxc_jhd", "j_sn", "j_status"), ("jxc_lsxsd", "gl_djh", "ls_status"), ("jxc_thd", "gl_djh", "th_status"),
            ("jxc_xsthd", "gl_djh", "th_status"), ("jxc_kcdbd", "gl_djh", "db_status"), ("jxc_bsd", "gl_djh", "bs_status"),
            ("jxc_byd", "gl_djh", "by_status"), ("jxc_kcpd", "gl_djh", "pd_status"),
            ("jxc_rkd", "gl_djh", "rk_status"), ("jxc_ckd", "gl_djh", "ck_status"), ("jxc_khjh", "gl_djh", "jh_status"))
# A return of a loan goes with its cancel, and so does the sale of what the customer kept.
COME_AND_GO = ("HH", "XS")


def heads_of(server):
    return dict(server.rows(" union all ".join(
        f"select {number} as number,{status} as status from {head}" for head, number, status in FAMILIES)))


def number_faults(server, calm):
    found = []
    for table, field, _ in FAMILIES:
        numbers = [row[0] for row in server.rows(f"select {field} from {table}")]
        found += [f"{number} stands for {count} documents"
                  for number, count in collections.Counter(numbers).items() if count > 1]
        serials = collections.defaultdict(list)
        for number in numbers:
            serials[number[:8]].append(int(number[8:]))
        for day, taken in serials.items():
            if calm and not day.startswith(COME_AND_GO) and sorted(taken) != list(range(10001, 10001 + len(taken))):
                found.append(f"numbers of {day} have gaps: {sorted(set(range(10001, max(taken))) - set(taken))}")
    return found


def tells_of_checksums(jxcctl, address_file):
    """A server that would not notice what its disk changes is named by the proof; 1 when it is not."""
    address = pathlib.Path(address_file).read_text(encoding="utf-8").strip() + " dbname=jxc_stations"
    proof = subprocess.run([jxcctl, "--db", address, "prove"], capture_output=True, text=True, timeout=120)
    if "no-checksums" in proof.stdout:
        return 0
    print("the proof says nothing of data checksums:", proof.stdout, proof.stderr)
    return 1


def main():
    words = [word for word in sys.argv[1:] if word != "--cut"]
    if words[2] != "-":
        return work(words, words[2])
    with tempfile.TemporaryDirectory(prefix="jxc-stations-") as folder:
        address_file = str(pathlib.Path(folder, "address"))
        without = os.environ | {"JXC_PG_CHECKSUMS": ""}
        subprocess.run([SERVER, "start", address_file], check=True, timeout=120, env=without)
        try:
            return work(words, address_file) or tells_of_checksums(words[0], address_file)
        finally:
            subprocess.run([SERVER, "stop", address_file], check=True, timeout=120)


def work(words, address_file):
    cut = "--cut" in sys.argv
    jxcctl, driver = words[:2]
    seconds = int(words[3]) if len(words) > 3 else 8
    seed = int(words[4]) if len(words) > 4 else random.randrange(1 << 30)
    count = int(words[5]) if len(words) > 5 else 8
    print(f"seed {seed}")
    admin = pathlib.Path(address_file).read_text().strip()
    psql(admin, "drop database if exists jxc_stations with (force)")
    psql(admin, "create database jxc_stations template template0")
    address = admin + " dbname=jxc_stations"
    subprocess.run([jxcctl, "--db", address, "create"], check=True)
    subprocess.run([driver, address, "post", "0"], check=True)
    before = heads_of(Server(address))

    stations = []
    for i in range(count):
        told = tempfile.TemporaryFile("w+")  # not a pipe: nobody reads it meanwhile
        stations.append((subprocess.Popen([driver, address, "post", str(seed), str(seconds), str(i)], stdout=told,
                                          stderr=subprocess.PIPE, text=True), told))
    victim = stations[-1][0]
    cuts, restarts = disturb(address_file, admin, random.Random(seed), seconds, victim) if cut else (0, 0)
    lines, took = [], []
    for process, told in stations:
        complaint = process.communicate(timeout=seconds + 120)[1]
        killed = cut and process is victim
        if process.returncode and not killed:
            raise SystemExit(f"a station failed: {complaint}")
        told.seek(0)
        own = [line.split() for line in told if line != "ready\n" and line.endswith("\n")]
        if killed:
            own.append(["U", "-"])  # its last command may have been kept and not told any more
        took += [int(word) / 1000 for what, word in own if what == "T"]
        lines += [line for line in own if line[0] != "T"]
        told.close()

    server = Server(address)
    faults = number_faults(server, not cut)
    done = collections.Counter(what for what, _ in lines)
    due = collections.Counter(before.keys())
    for what, number in lines:
        due[number] += {"S": 1, "G": -1}.get(what, 0)
    heads = heads_of(server)
    # What a customer keeps is two documents at one stroke.
    otherwise = [f"{number} was told {times} times as there" for number, times in due.items() if times != (number in heads)]
    otherwise += [f"{number} is there and was told by nobody" for number in heads if number not in due]
    if len(otherwise) > 2 * done["U"]:
        faults += otherwise + [f"{done['U']} commands were told as unknown"]
    steps = collections.Counter()
    for what, number in lines:
        steps[number] += {"A": 1, "C": -1}.get(what, 0)
    wrong = [number for number, status in heads.items() if number not in before and steps[number] != (status == 1)]
    if len(wrong) > 2 * done["U"]:
        log = {number: server.rows(f"select log_time,a_name,log_note from jxc_log where log_note like '%{number}%' order by id")
               for number in wrong}
        faults += [f"{number}: {steps[number]} audits over cancels told, state {heads[number]}, log {log[number]}"
                   for number in wrong]
    proof = subprocess.run([jxcctl, "--db", address, "prove", "--wrong"], capture_output=True, text=True)
    if proof.returncode:
        faults.append(proof.stdout + proof.stderr)
    commands = done["S"] + done["A"] + done["C"]
    took.sort()
    print(f"{count} stations, {seconds} s: {done['S']} saved, {done['A']} audited, {done['C']} cancelled "
          f"({commands / seconds:.1f} commands a second; a step with its waits: median {took[len(took) // 2]:.1f} ms, "
          f"99 of 100 within {took[len(took) * 99 // 100]:.0f} ms, longest {took[-1]:.0f} ms); "
          f"{cuts} connections cut, {restarts} restarts, {done['L']} commands told as not saved, {done['U']} as unknown")
    print(*faults, sep="\n")
    return 1 if faults or not commands else 0


if __name__ == "__main__":
    sys.exit(main())
