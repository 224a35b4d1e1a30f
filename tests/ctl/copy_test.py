#!/usr/bin/env python3
"""jxcctl copy as an administrator uses it: an account set moves to a server and back without a cell changed; what breaks off
leaves nothing behind. Usage: copy_test.py JXCCTL ADDRESS_FILE [unittest option]…

With JXC_COPY_FILE=FILE the account set of that file is copied both ways and killed midway instead of a small one."""

import contextlib
import itertools
import os
import pathlib
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import time
import unittest

JXCCTL = ADMIN = ""
LARGE = os.environ.get("JXC_COPY_FILE")
NAME = "jxc_copy"


def psql(statement, address=None):
    return subprocess.run(["psql", address or ADMIN, "-XAtq", "-v", "ON_ERROR_STOP=1", "-c", statement], check=True,
                          capture_output=True, text=True).stdout.strip()


def table_names(base):
    return [name for name, in base.execute("select name from sqlite_master where type='table' order by name")
            if not name.startswith("sqlite_stat")]


def differences(one, other):
    """Every cell of every table with its type, and where the counters stand: the first row of each table that differs."""
    first, second = (sqlite3.connect(f"file:{file}?mode=ro", uri=True) for file in (one, other))
    with contextlib.closing(first), contextlib.closing(second):
        if table_names(first) != table_names(second):
            return [(table_names(first), table_names(second))]
        found = []
        for name in table_names(first):
            rows = [base.execute(f'select * from "{name}" order by 1') for base in (first, second)]
            found += [(name, pair) for pair in itertools.islice(
                (pair for pair in itertools.zip_longest(*rows) if pair[0] != pair[1]), 1)]
        return found


class Copy(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory(prefix="jxcctl-复制-")
        cls.shop = LARGE
        if not LARGE:
            home = pathlib.Path(cls.folder.name, "shop")
            home.mkdir()
            subprocess.run([JXCCTL, "--home", str(home), "demo", "--months", "1", "--goods", "40", "--documents", "5",
                            "--until", "2025-06-30", "--seed", "3"], check=True, stdout=subprocess.DEVNULL)
            cls.shop = str(home / "data" / "jxc.mdb")
            # The hard cases: a counter behind a deleted row, every kind of white space, no text and an empty one.
            subprocess.run([JXCCTL, "--db", cls.shop, "sql"], check=True, stdout=subprocess.DEVNULL, text=True, input=(
                "insert into jxc_color (color_name) values ('最后一个');\n"
                "delete from jxc_color where color_name='最后一个';\n"))
            base = sqlite3.connect(cls.shop)
            base.execute("update jxc_goods set g_name=? where id=(select min(id) from jxc_goods)",
                         ("制表\t换行\n回车\r反斜线\\N \\. 引号'\" 𠮷",))
            base.execute("update jxc_goods set gg_name='' where id=(select max(id) from jxc_goods)")
            base.execute("update jxc_goods set g_jm=null where id=(select max(id) from jxc_goods)")
            base.commit()
            base.close()

    @classmethod
    def tearDownClass(cls):
        psql(f"drop database if exists {NAME} with (force)")
        cls.folder.cleanup()

    def setUp(self):
        psql(f"drop database if exists {NAME} with (force)")
        psql(f"create database {NAME} template template0 encoding 'UTF8'")
        self.server = ADMIN + " dbname=" + NAME
        self.back = pathlib.Path(tempfile.mkdtemp(dir=self.folder.name)) / "back.mdb"

    def copy(self, source, target, status=0):
        began = time.monotonic()
        ran = subprocess.run([JXCCTL, "copy", str(source), str(target), "--quiet"], capture_output=True, text=True,
                             encoding="utf-8", timeout=900)
        self.assertEqual(ran.returncode, status, ran.stderr)
        self.took = time.monotonic() - began
        return ran.stderr if status else ran.stdout

    def killed_midway(self, source, target):
        """Starts a copy and kills it when half of the rows have gone over."""
        process = subprocess.Popen([JXCCTL, "copy", str(source), str(target)], stdout=subprocess.PIPE)
        told = b""
        while True:
            piece = os.read(process.stdout.fileno(), 4096)
            self.assertTrue(piece, "it was told nothing in between")
            told += piece
            words = told.rsplit(b"\r", 1)[-1].split()
            if len(words) > 2 and words[1] == b"/" and int(words[0]) * 2 >= int(words[2]):
                break
        process.kill()
        process.wait()
        process.stdout.close()
        self.assertNotIn("复制完成".encode(), told)

    def server_tables(self):
        return int(psql("select count(*) from pg_class where relkind='r' and relnamespace='public'::regnamespace",
                        self.server))

    def test_there_and_back_without_a_cell_changed(self):
        self.assertIn("复制完成", self.copy(self.shop, self.server))
        there = self.took
        self.assertIn("复制完成", self.copy(self.server, self.back))
        if LARGE:
            print(f"to the server {there:.1f} s, back {self.took:.1f} s")
        self.assertEqual([each.name for each in self.back.parent.iterdir()], ["back.mdb"])
        self.assertEqual(self.back.stat().st_mode & 0o077, 0)
        self.assertEqual(differences(self.shop, self.back), [])
        if not LARGE:
            proved = subprocess.run([JXCCTL, "--db", self.server, "prove"], capture_output=True, text=True)
            self.assertEqual(proved.returncode, 0, proved.stdout)

        # Neither place takes a second one, and nothing of the first is touched.
        self.assertIn("已经有数据表", self.copy(self.shop, self.server, status=1))
        self.assertIn("已经存在", self.copy(self.server, self.back, status=1))
        self.assertEqual(differences(self.shop, self.back), [])
        self.back.unlink()
        self.copy(self.server, self.back)
        self.assertEqual(differences(self.shop, self.back), [])

    def test_what_was_killed_in_the_middle_left_nothing_and_is_started_again(self):
        self.killed_midway(self.shop, self.server)
        for _ in range(100):  # the server notices the end of the connection by itself
            if psql(f"select count(*) from pg_stat_activity where datname='{NAME}' and application_name='jxc'") == "0":
                break
            time.sleep(0.1)
        self.assertEqual(self.server_tables(), 0)
        self.copy(self.shop, self.server)

        self.killed_midway(self.server, self.back)
        self.assertFalse(self.back.exists())
        self.copy(self.server, self.back)
        self.assertEqual([each.name for each in self.back.parent.iterdir()], ["back.mdb"])
        self.assertEqual(differences(self.shop, self.back), [])

    def test_a_damaged_source_leaves_the_target_empty(self):
        if LARGE:
            self.skipTest("a small one does")
        damaged = self.back.with_name("damaged.mdb")
        shutil.copy(self.shop, damaged)
        base = sqlite3.connect(damaged)
        page, = base.execute("select rootpage from sqlite_master where name='jxc_goodslist'").fetchone()
        size, = base.execute("pragma page_size").fetchone()
        base.close()
        with open(damaged, "r+b") as out:
            out.seek((page - 1) * size)
            out.write(b"\xa5" * size)
        self.assertTrue(self.copy(damaged, self.server, status=1))
        self.assertEqual(self.server_tables(), 0)
        self.assertTrue(self.copy(damaged, self.back, status=1))
        self.assertEqual([each.name for each in self.back.parent.iterdir()], ["damaged.mdb"])
        self.assertIn("不存在", self.copy(self.back.with_name("none.mdb"), self.server, status=1))
        self.assertEqual(self.server_tables(), 0)
        self.copy(self.shop, self.server)


if __name__ == "__main__":
    JXCCTL = os.path.abspath(sys.argv[1])
    ADMIN = pathlib.Path(sys.argv[2]).read_text(encoding="utf-8").strip()
    unittest.main(argv=sys.argv[:1] + sys.argv[3:])
