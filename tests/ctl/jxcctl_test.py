#!/usr/bin/env python3
"""jxcctl as an administrator types it: the real program on real files. Usage: jxcctl_test.py JXCCTL [unittest option]…"""

import contextlib
import os
import pathlib
import sqlite3
import subprocess
import sys
import tempfile
import unittest

JXCCTL = ""


class Console(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="jxcctl-帐套-")
        self.addCleanup(folder.cleanup)
        self.home = pathlib.Path(folder.name)
        self.file = self.home / "data" / "jxc.mdb"

    def run_it(self, *words, status=0, text=""):
        """Runs one command on the account set of this test; returns what it printed, or its complaint when it fails."""
        ran = subprocess.run([JXCCTL, "--home", str(self.home), *words], input=text, capture_output=True, text=True,
                             encoding="utf-8", timeout=60, env={"LANG": "C"})
        self.assertEqual(ran.returncode, status, ran.stderr)
        self.assertEqual(bool(ran.stderr), status != 0, "only failures complain: " + ran.stderr)
        return ran.stderr if status else ran.stdout

    def rows(self, statement):
        """The rows of a select, without the header line."""
        return [line.split("\t") for line in self.run_it("sql", "-c", statement).splitlines()[1:]]

    def test_an_account_set_is_made_once_and_again_only_by_force(self):
        self.run_it("sql", "-c", "select 1", status=1)  # nothing there yet, and nothing made by looking
        self.assertEqual(list(self.home.iterdir()), [])
        self.run_it("create")
        self.assertEqual(self.rows("select a_name,a_jyt from jxc_admin order by id"), [["admin", "0"]])
        self.assertEqual(self.file.stat().st_mode & 0o077, 0, "the books are nobody else's business")
        self.assertTrue((self.home / "data" / "codeinfo.dll").exists())

        self.run_it("sql", "-c", "insert into jxc_color (color_name) values ('红')")
        colours = self.rows("select count(*) from jxc_color")
        self.assertIn("--force", self.run_it("create", status=1))
        self.assertEqual(self.rows("select count(*) from jxc_color"), colours)
        at_work = sqlite3.connect(self.file)
        at_work.execute("select count(*) from jxc_color").fetchone()
        self.assertIn("正在使用", self.run_it("create", "--force", status=1))
        at_work.close()
        self.run_it("create", "--force")
        self.assertEqual(self.rows("select count(*) from jxc_color"), [[str(int(colours[0][0]) - 1)]])
        names = sorted(p.name for p in self.file.parent.iterdir())
        self.assertEqual(names[:2], ["codeinfo.dll", "jxc.mdb"])
        self.assertEqual(len(names), 3)
        with sqlite3.connect(self.file.parent / names[2]) as old:
            self.assertEqual(str(old.execute("select count(*) from jxc_color").fetchone()[0]), colours[0][0])
        old.close()

    def test_a_set_that_cannot_make_way_goes_back_or_is_named(self):
        """Renaming fails at the commands that are named, as on a dying disk."""
        failing = self.home / "failing.so"
        source = self.home / "failing.c"
        source.write_text("#define _GNU_SOURCE\n#include <dlfcn.h>\n#include <errno.h>\n#include <stdlib.h>\n#include <string.h>\n"
                          "int rename(const char* from, const char* to) {\n"
                          "  static int calls = '0';\n  ++calls;\n"
                          "  if (strchr(getenv(\"FAILS\"), calls)) { errno = EIO; return -1; }\n"
                          "  return ((int (*)(const char*, const char*))dlsym(RTLD_NEXT, \"rename\"))(from, to);\n}\n")
        subprocess.run(["cc", "-shared", "-fPIC", "-o", failing, source, "-ldl"], check=True)
        self.run_it("create")
        log = self.file.with_name("jxc.mdb-wal")

        def forced(fails, has_log):
            log.write_bytes(b"of a crash") if has_log else log.unlink(missing_ok=True)
            ran = subprocess.run([JXCCTL, "--home", str(self.home), "create", "--force"], capture_output=True, text=True,
                                 encoding="utf-8", env={"LANG": "C", "LD_PRELOAD": str(failing), "FAILS": fails,
                                                        "ASAN_OPTIONS": "verify_asan_link_order=0"})
            self.assertEqual(ran.returncode, 1, ran.stderr)
            there = sorted(p.name for p in self.file.parent.iterdir() if p.name.startswith("jxc.mdb"))
            return ran.stderr, there

        for fails, has_log in ("1", False), ("2", False), ("2", True), ("3", True):
            self.assertEqual(forced(fails, has_log)[1], ["jxc.mdb"] + ["jxc.mdb-wal"] * has_log)
        words, there = forced("23", True)  # the log stays, and the set cannot come back to it
        self.assertEqual(len(there), 2)
        self.assertIn(f"{there[1]} → jxc.mdb", words)
        there_again = self.file.with_name(there[1]).rename(self.file)
        words, there = forced("23", False)  # the new one does not come, and the old one cannot come back
        self.assertIn(f"原来的帐套现在叫 {there_again.with_name(there[0])}", words)

    def test_a_demonstration_shop_whose_books_agree(self):
        words = ["demo", "--months", "1", "--goods", "40", "--documents", "5", "--until", "2025-06-30", "--seed", "3"]
        self.run_it(*words)
        self.assertEqual(self.rows("select max(left(ls_xsrq,10)) from jxc_lsxsd"), [["2025-06-30"]])
        self.run_it("prove")
        self.assertIn("--force", self.run_it(*words, status=1))
        self.run_it("demo", "--months", "0", status=2)

    def test_the_books_are_proved_and_the_status_tells(self):
        self.run_it("create")
        self.assertIn("没有发现错误", self.run_it("prove"))
        self.run_it("sql", "-c", "update jxc_khxx set kh_lwje=3")
        self.assertIn("1 类错误", self.run_it("prove", "--wrong", status=1))
        self.assertEqual(self.rows("select kh_lwje from jxc_khxx"), [["3"]])
        self.run_it("prove", "--all", status=2)

    def test_a_set_with_passwords_is_open_to_administrators_and_its_owner_only(self):
        self.run_it("create")
        self.run_it("sql", "-c", "update jxc_admin set a_pwd='ge-heim'")

        def call(*words, password=None):
            """With a password on a descriptor, and without a terminal that could be asked."""
            out, into = os.pipe()
            os.write(into, ((password or "") + "\n").encode())
            os.close(into)
            given = ["--password-fd", str(out)] if password is not None else []
            ran = subprocess.run([JXCCTL, "--home", str(self.home), *given, *words], stdin=subprocess.DEVNULL, text=True,
                                 capture_output=True, timeout=60, pass_fds=[out], start_new_session=True)
            os.close(out)
            return ran.returncode, ran.stdout + ran.stderr

        look = ["sql", "-c", "select a_sn from jxc_admin"]
        copy = str(self.home / "copy.DAT")
        for words in (look, ["upgrade"], ["prove"], ["backup", copy]):
            self.assertIn("--password-fd", call(*words)[1])
        self.assertEqual(call(*look, password="geheim")[0], 1)
        self.assertEqual(call(*look, password="ge-heim"), (0, "a_sn\n100001\n"))
        self.assertIn("不是系统管理员", call("--operator", "王芳", *look, password="ge-heim")[1])
        self.assertEqual(call("upgrade", password="ge-heim")[0], 0)
        self.assertEqual(call(*look, password="ge-heim")[0], 0, "a hash by now")
        for _ in range(5):
            self.assertIn("密码不正确", call(*look, password="GE-HEIM")[1])
        self.assertIn("请30秒后再试", call(*look, password="ge-heim")[1], "failures count as at the window")
        with contextlib.closing(sqlite3.connect(self.file)) as books, books:
            books.execute("update jxc_adminmm set mm_failed='2020-01-01 00:00:00'")
        self.assertEqual(call(*look, password="ge-heim")[0], 0, "he has waited")
        self.assertEqual(call("--as-owner", "prove")[0], 0)
        self.assertEqual(call("--as-owner", "backup", copy)[0], 0)
        self.assertEqual(call("--as-owner", *look)[0], 1, "not for what changes or shows rows")
        self.assertNotIn(b"ge-heim", self.file.read_bytes() + pathlib.Path(copy).read_bytes())

    def test_rows_come_as_lines_and_an_empty_value_as_nothing(self):
        self.run_it("create")
        printed = self.run_it(
            "sql",
            "-c", "insert into jxc_goods (g_sn,g_name,g_sj) values ('01000001','镜架;A''型',99.9)",
            "-c", "select g_sn,g_name,g_bz,g_sj from jxc_goods where g_sn='01000001'; "
                  "select g_sn from jxc_goods where 1>2")
        self.assertEqual(printed, "g_sn\tg_name\tg_bz\tg_sj\n01000001\t镜架;A'型\t\t99.9\ng_sn\n")

        self.run_it("sql", text="update jxc_goods set g_bz='两\t列\n两行' where g_sn='01000001'")
        self.assertEqual(self.rows("select g_bz from jxc_goods where g_sn='01000001'"), [["两\\t列\\n两行"]])

    def test_the_first_error_is_told_with_its_place_and_nothing_of_the_run_stays(self):
        self.run_it("create")
        script = self.home / "脚本.sql"
        script.write_text("\ufeff-- a remark; with a semicolon\n"
                          "insert into jxc_color (color_name) values ('青');\n"
                          "insert into jxc_color (color_name)\n  values ('蓝', 1 +);\n"
                          "insert into jxc_color (color_name) values ('紫')\n", encoding="utf-8")
        complaint = self.run_it("sql", "-f", str(script), status=1)
        self.assertRegex(complaint, r"脚本\.sql:4:1\d: ")
        self.assertEqual(self.rows("select id from jxc_color where color_name in ('青','紫')"), [])

        self.assertRegex(self.run_it("sql", "--check", "-c", "select g_sn from jxc_goods; select g_nix from jxc_goods",
                                     status=1), r"^-c:1:\d\d: .*g_nix")
        self.run_it("sql", "--check", "-c", "insert into jxc_color (color_name) values ('青')")
        self.assertEqual(self.rows("select id from jxc_color where color_name='青'"), [])

    def test_a_backup_is_whole_and_never_writes_over_something_by_accident(self):
        self.run_it("create")
        self.run_it("sql", "-c", "insert into jxc_color (color_name) values ('备份色')")
        copy = self.home / "备份.DAT"
        self.run_it("backup", str(copy))
        self.assertIn("--force", self.run_it("backup", str(copy), status=1))
        self.run_it("backup", str(self.file), "--force", status=1)

        # Copied over the set after a crash: the log of what stood there is told of, whatever is done with the set then.
        crashed, carried = self.home / "crashed.mdb", self.home / "carried.mdb"
        crashed.write_bytes(copy.read_bytes())
        at_work = sqlite3.connect(self.file)
        at_work.execute("update jxc_color set color_name=color_name||'!'")
        at_work.commit()
        crashed.with_name("crashed.mdb-wal").write_bytes(self.file.with_name("jxc.mdb-wal").read_bytes())
        at_work.close()
        moved = subprocess.run([JXCCTL, "copy", str(crashed), str(carried), "--quiet"], capture_output=True, text=True,
                               encoding="utf-8")
        self.assertEqual(moved.returncode, 0, moved.stderr)
        aside, = (p.name for p in self.home.glob("crashed.mdb-wal.*"))
        self.assertIn(f"日志已改名为 {aside}", moved.stderr)

        self.run_it("sql", "-c", "delete from jxc_color")
        self.run_it("upgrade")
        restored = subprocess.run([JXCCTL, "--db", str(copy), "sql", "-c", "select color_name from jxc_color where color_name='备份色'"],
                                  capture_output=True, text=True, encoding="utf-8", check=True)
        self.assertEqual(restored.stdout, "color_name\n备份色\n")

    def test_an_old_account_set_is_brought_up_to_date(self):
        self.run_it("create")
        self.assertEqual(self.rows("select cs_employdate from jxc_xtcs"), [[""]])
        self.run_it("upgrade")
        self.assertRegex(self.rows("select cs_employdate from jxc_xtcs")[0][0], r"^20\d\d-\d\d-\d\d$")

    def test_rows_go_into_sheets_of_one_file(self):
        self.run_it("create")
        file = self.home / "分店.xls"
        for sheet, columns, table in (("1", "ck_sn,ck_name", "jxc_ckxx"), ("2", "color_name", "jxc_color")):
            self.run_it("sql", "-c", f"select {columns} into {sheet} in '{file}' 'EXCEL 8.0;' from {table}")
        self.assertTrue(file.read_bytes().startswith(b"\xd0\xcf\x11\xe0"))
        self.assertIn("文件夹不存在", self.run_it(
            "sql", "-c", "select ck_sn into 1 in '/nowhere/a.xls' 'EXCEL 8.0;' from jxc_ckxx", status=1))

    def test_words_that_are_not_understood_do_nothing(self):
        for words in (["creat"], ["create", "--forced"], ["create", "now"], ["sql", "-c"], ["sql", "-x"], ["backup"],
                      ["backup", "a", "b"], ["upgrade", "now"], ["--db", "x.mdb", "create"], ["--db=x.mdb", "create"], ["--db"], []):
            with self.subTest(words):
                self.assertIn("--help", self.run_it(*words, status=2))
        self.assertFalse(self.file.exists())
        for words in (["--help"], ["create", "--help"], ["sql", "--help"], ["upgrade", "--help"], ["backup", "--help"]):
            self.assertIn("jxcctl [--home", self.run_it(*words))


if __name__ == "__main__":
    JXCCTL = sys.argv.pop(1)
    unittest.main()
