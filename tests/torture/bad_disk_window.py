#!/usr/bin/env python3
"""What an operator sees in the real window when the disk fills while a document is saved, when the account file is gone,
locked or write-protected: a message that says what to do, nothing lost, and work that goes on afterwards.

Usage: bad_disk_window.py [PROGRAM [PICTURES]]      (the folder for a picture of each message; default: none are kept)
Needs xvfb, openbox, xdotool, ImageMagick's import, and root, who may mount a small disk and start the program as
another user; ends with status 77 (skipped) otherwise.
"""

import contextlib
import os
import pathlib
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "journeys"))
from desk import TOP, Desk, Failure, begin, is_main  # noqa: E402
from shop_day import Shop, code, make_shop, open_document, prove, save, type_document, wait  # noqa: E402

NOBODY = 65534
MESSAGE, QUESTION = "系统提示", "信息提醒"


class Window:
    """The program on a display of its own, in a folder that the case has prepared; tells what it shows."""

    def __init__(self, programs, pictures, folder, prepare=None, **how):
        self.program, self.jxcctl = programs
        self.pictures = pictures
        self.desk = Desk(self.program, prepare, folder=folder, **how)
        self.shop = Shop(self.desk.home)

    def __enter__(self):
        return self

    def __exit__(self, *failure):
        self.desk.close()

    def picture(self, name):
        if self.pictures:
            time.sleep(0.4)  # until it is painted
            subprocess.run(["import", "-window", "root", str(self.pictures / f"{name}.png")], env=self.desk.env, check=True)

    def told(self, name):
        """The message box that comes up is kept as a picture and put away."""
        self.desk.until(name, lambda title: title == MESSAGE, 40)
        self.picture(name)
        self.desk.keys("Return")

    def ended(self, name):
        """The message, and the end of the program behind it."""
        self.told(name)
        wait(lambda: f"{name}: the program goes on, in “{self.desk.title()}”", lambda: self.desk.program.poll() is not None)

    def try_to_do(self, key, name, title):
        """The key, yes to the question, the message, and the window as it was."""
        self.desk.keys(key)
        self.desk.until(title, lambda shown: shown == QUESTION)
        self.desk.keys("y")
        self.told(name)
        self.desk.until(title, lambda shown: shown == title)


@contextlib.contextmanager
def small_disk(megabytes):
    with tempfile.TemporaryDirectory(prefix="jxc-disk-") as disk:
        subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={megabytes}m", "tmpfs", disk], check=True, capture_output=True)
        try:
            yield pathlib.Path(disk)
        finally:
            subprocess.run(["umount", disk], check=True)


def fill(disk):
    """To the last block. Returns what is to be removed to make room."""
    filler = disk / "filler"
    with open(filler, "wb", buffering=0) as file:
        with contextlib.suppress(OSError):
            while True:
                file.write(b"\0" * 4096)
    return filler


def heads(shop):
    return shop.number("select count(*) from jxc_jhd"), shop.audited("receipt")


LINES = [(code(i), 3, 10.0) for i in range(4)]


@contextlib.contextmanager
def typed_receipt(programs, pictures, folder):
    """A window with a receipt that has been typed and waits for F5."""
    with Window(programs, pictures, folder, make_shop(programs[1], 60, 50)) as window:
        begin(window.desk)
        open_document(window.desk, "receipt")
        type_document(window.desk, window.shop, "receipt", LINES, None)
        yield window


def disk_full_while_saving(programs, pictures):
    """F5 on a receipt: the message, the lines still there, and the same receipt saved once there is room."""
    with small_disk(24) as disk, typed_receipt(programs, pictures, disk) as window:
        filler = fill(disk)
        for attempt in (1, 2):
            window.try_to_do("F5", f"full-save-{attempt}", "采购进货")
            if heads(window.shop) != (0, 0):
                raise Failure(f"half a receipt: {heads(window.shop)}")
        window.picture("full-after")
        filler.unlink()
        save(window.desk, window.shop, "receipt")
        lines = window.shop.rows("select g_sn,jh_sl from jxc_jhsp where j_sn<>'' order by id")
        if heads(window.shop) != (1, 1) or lines != [(sn, quantity) for sn, quantity, _ in LINES]:
            raise Failure(f"the receipt is not what was typed: {heads(window.shop)}, {lines}")
        prove(programs[1], window.desk)


def disk_full_while_auditing_and_cancelling(programs, pictures):
    """Money in the cash book, one line waiting and one audited: both stay as they are until there is room."""
    title, today = "现金银行", time.strftime("%Y-%m-%d")

    def prepare(home):
        make_shop(programs[1], 20, 50)(home)
        with contextlib.closing(sqlite3.connect(pathlib.Path(home) / "data/jxc.mdb")) as db:
            db.execute("delete from jxc_xjyh")  # the first line is the one that the keys reach
            for number, checked, balance in (("XJ1", "1", 70), ("XJ2", "0", 0)):
                db.execute("insert into jxc_xjyh (gl_djh,xj_rq,xj_chk,xj_dlx,u_name,xj_je,xj_ljje,xj_kmmc,xj_note,a_name) "
                           "values (?,?,?,'现金银行收款','默认员工',70,?,'现金','','admin')", (number, today, checked, balance))
            db.commit()

    with small_disk(24) as disk, Window(programs, pictures, disk, prepare) as window:
        def audited():
            return "".join(row[0] for row in window.shop.rows("select xj_chk from jxc_xjyh order by gl_djh"))

        begin(window.desk)
        window.desk.keys("ctrl+k", *"xjy", "Return")
        window.desk.until(title, lambda shown: shown == title)
        filler = fill(disk)
        window.try_to_do("F9", "full-audit", title)
        window.desk.keys("ctrl+Tab")
        window.try_to_do("F9", "full-cancel", title)
        if audited() != "10":
            raise Failure(f"something has changed: {audited()}")
        filler.unlink()
        for key, after in (("F9", "00"), ("ctrl+Tab", "00"), ("F9", "01")):
            window.desk.keys(key)
            if key == "F9":
                window.desk.until(title, lambda shown: shown == QUESTION)
                window.desk.keys("y")
            wait(lambda: f"the lines stand at {audited()}; the window is “{window.desk.title()}”",
                 lambda: audited() == after or (after == "01" and audited() == "10"))
        prove(programs[1], window.desk)


def file_gone_and_back(programs, pictures):
    """The account file is moved away under the program: nothing is written into the void; back again, work goes on."""
    with tempfile.TemporaryDirectory(prefix="jxc-gone-") as folder, typed_receipt(programs, pictures, folder) as window:
        away = window.shop.file.with_name("moved-away")
        window.shop.file.rename(away)
        window.try_to_do("F5", "gone", "采购进货")
        away.rename(window.shop.file)
        save(window.desk, window.shop, "receipt")
        if heads(window.shop) != (1, 1):
            raise Failure(f"the receipt was not saved: {heads(window.shop)}")
        prove(programs[1], window.desk)


def file_locked(programs, pictures):
    """Another program holds the right to write for long."""
    with tempfile.TemporaryDirectory(prefix="jxc-lock-") as folder, typed_receipt(programs, pictures, folder) as window:
        with contextlib.closing(sqlite3.connect(window.shop.file, isolation_level=None)) as holder:
            holder.execute("begin immediate")
            window.try_to_do("F5", "locked", "采购进货")
            holder.execute("rollback")
        save(window.desk, window.shop, "receipt")
        prove(programs[1], window.desk)


def protected(programs, pictures, name, protect):
    """A start by a user who may not write: says so, ends, and leaves every byte as it was."""
    with tempfile.TemporaryDirectory(prefix="jxc-protected-") as folder:
        os.chmod(folder, 0o777)

        def prepare(home):
            make_shop(programs[1], 20, 50)(home)
            for path in [pathlib.Path(home), *pathlib.Path(home).rglob("*")]:
                shutil.chown(path, NOBODY, NOBODY)
            protect(pathlib.Path(home) / "data")
            before.append((pathlib.Path(home) / "data/jxc.mdb").read_bytes())

        before = []
        with Window(programs, pictures, folder, prepare, user=NOBODY, group=NOBODY) as window:
            window.ended(name)
            if window.shop.file.read_bytes() != before[0]:
                raise Failure("the account file has changed")


def file_protected(programs, pictures):
    protected(programs, pictures, "protected-file", lambda data: (data / "jxc.mdb").chmod(0o444))


def folder_protected(programs, pictures):
    protected(programs, pictures, "protected-folder", lambda data: data.chmod(0o555))


def file_closed(programs, pictures):
    protected(programs, pictures, "closed-file", lambda data: (data / "jxc.mdb").chmod(0o000))


def no_room_for_the_first_start(programs, pictures):
    """No account set yet, and no room for one: says so, ends, and the next start makes one."""
    with small_disk(1) as disk:
        with Window(programs, pictures, disk) as window:
            window.ended("full-first-start")
            left = [path.name for path in (pathlib.Path(window.desk.home) / "data").iterdir()]
            if "jxc.mdb" in left:
                raise Failure(f"half an account set stands there: {left}")


CASES = (disk_full_while_saving, disk_full_while_auditing_and_cancelling, file_gone_and_back, file_locked, file_protected, folder_protected, file_closed,
         no_room_for_the_first_start)


def main():
    if os.geteuid() != 0 or not all(shutil.which(each) for each in ("Xvfb", "openbox", "xdotool", "import")):
        print("needs root, Xvfb, openbox, xdotool, import")
        return 77
    program = sys.argv[1] if len(sys.argv) > 1 else str(TOP / "build/shared/src/app/jxc")
    programs = program, str(pathlib.Path(program).with_name("jxcctl"))
    pictures = pathlib.Path(sys.argv[2]) if len(sys.argv) > 2 else None
    if pictures:
        pictures.mkdir(parents=True, exist_ok=True)
    failed = 0
    for case in CASES:
        print(f"{case.__name__}:", flush=True)
        try:
            case(programs, pictures)
            print("  as it should be", flush=True)
        except Failure as failure:
            failed += 1
            print(f"  FAILED: {failure}", flush=True)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
