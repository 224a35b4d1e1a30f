#!/usr/bin/env python3
"""What becomes of the account file when it is damaged, foreign, write-protected, or when the disk is full: a clear
message, and nothing lost. Usage: bad_file_test.py JXCCTL TORTURE_AUDIT [unittest option]…

Ends with status 77 (skipped) where a small disk for the test cannot be mounted, after the other cases have passed.
"""

import os
import pathlib
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import unittest

from books import Books

JXCCTL = DRIVER = ""
NOBODY = 65534


class Case(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="jxc-bad-")
        self.addCleanup(folder.cleanup)
        self.home = pathlib.Path(folder.name)
        self.use(self.home)

    def use(self, home):
        self.data = home / "data"
        self.data.mkdir(exist_ok=True)
        self.file = self.data / "jxc.mdb"

    def run_it(self, *words, status=0, **how):
        ran = subprocess.run([how.pop("program", JXCCTL), "--db", str(self.file), *words], capture_output=True,
                             encoding="utf-8", timeout=120, **how)
        self.assertEqual(ran.returncode, status, ran.stderr)
        return ran.stderr if status else ran.stdout

    def refused(self, *words, names="jxc.mdb", **how):
        """The command fails with words that name the file, and without a trace of the machinery."""
        complaint = self.run_it(*words, status=1, **how)
        self.assertIn(names, complaint)
        self.assertNotIn("terminate", complaint)
        return complaint

    def names(self):
        return sorted(path.name for path in self.data.iterdir())

    def colours(self):
        return self.run_it("sql", "-c", "select color_name from jxc_color order by id").splitlines()[1:]


class BadFile(Case):
    def test_what_is_no_account_set_is_refused_and_left_alone(self):
        foreign = self.home / "foreign.db"
        with sqlite3.connect(foreign) as db:
            db.execute("create table recipes (name text)")
        db.close()
        self.run_it("create")
        whole = self.file.read_bytes()
        for what, content in {
            "empty": b"",
            "text": "进销存\n".encode() * 1000,
            "foreign database": foreign.read_bytes(),
            "cut off": whole[:len(whole) // 3],
            "head overwritten": b"\0" * 4096 + whole[4096:],
        }.items():
            with self.subTest(what):
                self.file.write_bytes(content)
                self.refused("sql", "-c", "select g_sn from jxc_goods order by g_sn")
                self.refused("sql", "-c", "insert into jxc_color (color_name) values ('红')")
                self.refused("upgrade")
                copy = self.home / "copy.DAT"
                self.refused("backup", str(copy))
                self.assertFalse(copy.exists(), "half a backup is worse than none")
                self.assertEqual(self.file.read_bytes(), content, "left as it was, for whoever can rescue it")

    def test_pages_that_went_bad_are_told_when_they_are_met(self):
        self.run_it("create")
        self.run_it("sql", input=";".join(f"insert into jxc_djbz (dj_name,dj_pl) values ('备注{i}',{i})" for i in range(5000)))
        with open(self.file, "r+b") as damaged:
            size = damaged.seek(0, os.SEEK_END)
            damaged.seek(size - 16 * 4096)
            damaged.write(b"\xa5" * (16 * 4096))
        content = self.file.read_bytes()
        self.refused("sql", "-c", "select * from jxc_djbz")
        self.assertEqual(self.file.read_bytes(), content)
        # What lies elsewhere can still be read and carried over.
        self.assertIn("admin", self.run_it("sql", "-c", "select a_name from jxc_admin"))

    def test_the_proof_and_the_backup_call_a_damaged_file_by_name(self):
        self.run_it("demo", "--months", "1", "--goods", "30")
        backup = self.home / "backup.DAT"
        self.run_it("backup", str(backup))
        good = backup.read_bytes()
        with sqlite3.connect(self.file) as db:
            page, = db.execute("select rootpage from sqlite_schema where type='index' and tbl_name='jxc_goodslist'").fetchone()
        db.close()
        with open(self.file, "r+b") as damaged:  # a page of an index that this proof never asks
            damaged.seek(page * 4096 - 512)
            damaged.write(b"\0" * 512)
        told = subprocess.run([JXCCTL, "--db", str(self.file), "prove"], capture_output=True, encoding="utf-8", timeout=60)
        self.assertEqual(told.returncode, 1)
        self.assertIn("damage", told.stdout)
        self.assertIn("jxc.mdb", told.stderr)
        self.assertIn("没有改动", self.refused("backup", "--force", str(backup)))
        self.assertEqual(backup.read_bytes(), good)

    def test_what_a_stranger_has_planted_neither_runs_nor_hides(self):
        self.run_it("create")
        with sqlite3.connect(self.file) as db:
            db.execute("create trigger helper after insert on jxc_log begin update jxc_admin set r_sn='100001';"
                       " delete from jxc_log where id=new.id; end")
            db.execute("create view jxc_ghs_view as select * from jxc_ghs")
            db.execute("create table sideboard (name text)")
            db.execute("create index ix_helper on jxc_admin (a_name)")
        db.close()
        self.run_it("sql", "-c", "update jxc_admin set r_sn='100002'", "-c",
                    "insert into jxc_log (log_time,a_name,log_note) values ('2026-01-01 00:00:00','x','y')")
        self.assertEqual(self.run_it("sql", "-c", "select r_sn from jxc_admin").split()[1:], ["100002"])
        self.assertEqual(self.run_it("sql", "-c", "select log_note from jxc_log").split()[1:], ["y"])
        self.refused("sql", "-c", "select * from jxc_ghs_view", names="jxc_ghs_view")
        told = subprocess.run([JXCCTL, "--db", str(self.file), "prove"], capture_output=True, encoding="utf-8", timeout=60)
        self.assertEqual(told.returncode, 1)
        for name in ("foreign-code", "触发器 helper（jxc_log）", "foreign-table"):
            self.assertIn(name, told.stdout)

    def test_what_a_killed_backup_left_goes_with_the_next_one(self):
        self.run_it("create")
        left, young, own = (self.home / name for name in ("shop20260101120000.DAT.999999999.tmp",
                                                          "shop20260101130000.DAT.999999998.tmp",
                                                          "photos.db.999999997.tmp"))
        left.write_bytes(b"SQLite format 3\0")
        young.write_bytes(b"SQLite format 3\0")
        own.write_bytes(b"SQLite format 3\0")
        for path in (left, own):
            os.utime(path, (10**9, 10**9))
        self.run_it("backup", str(self.home / "shop20260102120000.DAT"))
        self.assertEqual([path.exists() for path in (left, young, own)], [False, True, True])

    def test_a_folder_in_the_place_of_the_file(self):
        self.file.mkdir()
        self.refused("sql", "-c", "select 1")
        self.refused("create")
        self.refused("create", "--force")
        self.assertTrue(self.file.is_dir())

    def bound(self, *paths):
        """How to run a command as one whom permissions bind. Root may write everywhere: another user tries for him, with
        a program that he can reach; `paths` are his then."""
        if os.geteuid() != 0:
            return {}
        program = self.home / "jxcctl"
        if not program.exists():
            shutil.copy(JXCCTL, program)
        self.home.chmod(0o755)
        for path in paths:
            os.chown(path, NOBODY, NOBODY)
        return {"user": NOBODY, "group": NOBODY, "program": str(program)}

    def test_a_write_protected_folder_lets_nothing_be_lost(self):
        self.run_it("create")
        self.run_it("sql", "-c", "insert into jxc_color (color_name) values ('红')")
        before = self.colours()
        self.data.chmod(0o555)
        self.addCleanup(self.data.chmod, 0o755)
        how = self.bound(self.data, self.file)
        for words in (("sql", "-c", "insert into jxc_color (color_name) values ('蓝')"), ("create", "--force"), ("upgrade",)):
            self.refused(*words, **how)
        self.data.chmod(0o755)
        self.assertEqual(self.colours(), before)
        self.assertEqual(self.names(), ["jxc.mdb"])

    def test_a_write_protected_file_is_told_and_left_alone(self):
        self.run_it("create")
        content = self.file.read_bytes()
        self.file.chmod(0o444)
        how = self.bound(self.data, self.file)
        complaint = self.refused("sql", "-c", "insert into jxc_color (color_name) values ('蓝')", **how)
        self.assertIn("写", complaint)
        self.refused("upgrade", **how)
        self.assertEqual(self.file.read_bytes(), content)
        self.assertEqual(self.names(), ["jxc.mdb"], "a file beside it with its protection would keep everybody out")
        # Once it may be written again, work goes on where it stood.
        self.file.chmod(0o644)
        self.run_it("sql", "-c", "insert into jxc_color (color_name) values ('蓝')", **how)
        self.assertEqual(self.colours()[-1], "蓝")

    def test_write_protected_side_files_are_mended_or_named(self):
        self.run_it("create")
        side = [self.data / "jxc.mdb-wal", self.data / "jxc.mdb-shm"]
        for path in side:
            path.touch(0o444)
        how = self.bound(self.data, self.file, *side)
        self.run_it("sql", "-c", "insert into jxc_color (color_name) values ('蓝')", **how)
        self.assertEqual(self.colours()[-1], "蓝")
        if os.geteuid() == 0:  # those of another user can only be named
            side[1].touch(0o644)
            self.refused("sql", "-c", "select 1", names="jxc.mdb-shm", **how)

    def test_a_folder_of_a_group_makes_files_of_the_group(self):
        self.run_it("create")
        self.assertEqual(self.file.stat().st_mode & 0o777, 0o600)
        self.data.chmod(0o2770)
        self.run_it("create", "--force")
        self.assertEqual(self.file.stat().st_mode & 0o777, 0o660)
        copy = self.data / "copy.DAT"
        self.run_it("backup", str(copy))
        self.assertEqual(copy.stat().st_mode & 0o777, 0o660)

    def test_folders_of_the_books_are_for_their_owner_or_for_the_group_that_shares_them(self):
        for mode, wanted in ((0o755, 0o700), (0o2770, 0o2770)):
            home = self.home / oct(mode)
            home.mkdir()
            home.chmod(mode)
            subprocess.run([JXCCTL, "--home", str(home), "create"], check=True, timeout=60)
            self.assertEqual((home / "data").stat().st_mode & 0o7777, wanted)


class SmallDisk(Case):
    """Root mounts one; an ordinary user is root in a namespace of his own, where these run once more."""

    def small_disk(self, size):
        disk = self.home / "disk"
        disk.mkdir()
        if subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={size}", "tmpfs", str(disk)], capture_output=True).returncode:
            self.skipTest("no small disk can be mounted here")
        self.addCleanup(subprocess.run, ["umount", str(disk)], check=True)
        self.use(disk)
        return disk

    def test_a_demonstration_shop_that_does_not_fit_leaves_nothing(self):
        self.small_disk("2m")
        self.refused("demo", "--months", "2", "--goods", "300", names="磁盘")
        self.assertEqual(list(self.data.iterdir()), [])

    def test_a_set_on_a_read_only_medium_is_read_proved_and_copied(self):
        disk = self.small_disk("12m")
        self.run_it("create")
        self.run_it("sql", "-c", "insert into jxc_color (color_name) values ('红')")
        before = self.colours()
        subprocess.run(["mount", "-o", "remount,ro", str(disk)], check=True)
        self.assertEqual(self.colours(), before)
        self.assertIn("没有发现错误", self.run_it("prove"))
        copy = self.home / "copy.DAT"
        self.run_it("backup", str(copy))
        self.assertIn("只读", self.refused("sql", "-c", "delete from jxc_color", names="只读"))
        subprocess.run(["mount", "-o", "remount,rw", str(disk)], check=True)
        self.assertEqual(self.names(), ["jxc.mdb"])
        self.file = copy
        self.assertEqual(self.colours(), before)

    def test_a_full_disk_stops_the_work_and_loses_nothing(self):
        disk = self.small_disk("12m")
        receipts = 20
        self.run_it("create")
        subprocess.run([DRIVER, str(self.file), "prepare", str(receipts)], check=True)
        self.run_it("sql", "-c", "insert into jxc_color (color_name) values ('红')")
        before = self.colours()
        filler = disk / "filler"

        def fill(leave):
            # To the last block, then give back so many bytes.
            with open(filler, "wb", buffering=0) as file:
                try:
                    while True:
                        file.write(b"\0" * 4096)
                except OSError:
                    pass
                file.truncate(file.tell() - leave)

        fill(0)
        self.refused("sql", "-c", "insert into jxc_color (color_name) values ('蓝')", names="磁盘")
        self.refused("create", "--force", names="磁盘")
        copy = disk / "copy.DAT"
        self.refused("backup", str(copy), names="磁盘")
        self.assertEqual(sorted(p.name for p in disk.iterdir() if p != self.data), ["filler"])

        # Rules: receipts are audited until there is no room left, at whatever statement that happens.
        for leave in (64 << 10, 256 << 10, 700 << 10):
            with self.subTest(leave=leave):
                filler.unlink()
                fill(leave)
                worked = subprocess.run([DRIVER, str(self.file), "work", "1"], capture_output=True, encoding="utf-8",
                                        timeout=120)
                self.assertEqual(worked.returncode, 1)
                self.assertIn("磁盘", worked.stderr)
                filler.unlink()
                books = Books(str(self.file), receipts)
                self.assertEqual(books.faults(), [])
                books.db.close()
                self.run_it("prove")
                fill(0)

        filler.unlink()
        self.assertEqual(self.colours(), before)
        self.run_it("sql", "-c", "insert into jxc_color (color_name) values ('蓝')")
        self.assertEqual(self.colours(), before + ["蓝"])


def small_disks_as_root():
    """For an ordinary user: the status of these cases in a namespace where he is root."""
    words = ["unshare", "--map-root-user", "--mount", sys.executable, __file__, JXCCTL, DRIVER, "SmallDisk"]
    if subprocess.run([*words[:3], "true"], capture_output=True, check=False).returncode != 0:
        print("skipped: no small disk can be mounted here")
        return 77
    return subprocess.run(words, check=False).returncode


if __name__ == "__main__":
    JXCCTL, DRIVER = sys.argv.pop(1), sys.argv.pop(1)
    is_root = os.geteuid() == 0
    result = unittest.main(exit=False, defaultTest=None if is_root else "BadFile").result
    disks = 0 if is_root or not result.wasSuccessful() or len(sys.argv) > 1 else small_disks_as_root()
    sys.exit(1 if not result.wasSuccessful() or disks == 1 else 77 if result.skipped or disks else 0)
