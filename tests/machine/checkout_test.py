#!/usr/bin/env python3
"""What a newcomer does with a checkout: a folder with an odd name, a copy, a first build by root, packages that cannot be
installed. Usage: tests/machine/checkout_test.py [unittest option]…
"""

import os
import pathlib
import re
import shlex
import stat
import subprocess
import tempfile
import unittest

TOP = pathlib.Path(__file__).resolve().parents[2]
NOBODY = 65534


class Checkout(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="jxc-checkout-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.folder.chmod(0o755)

    def do(self, *words, status=0, **how):
        done = subprocess.run(words, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              encoding="utf-8", timeout=250, check=False, **how)
        self.assertEqual(done.returncode, status, done.stdout[-3000:])
        return done.stdout

    def in_checkout(self, top, command, **how):
        """With the routines that ./run, ./test and tools/package.sh share."""
        return self.do("bash", "-euc", f'top={shlex.quote(str(top))}; . "$top/tools/checkout.sh"; {command}', **how)

    def test_a_folder_with_an_odd_name_builds_and_a_copy_builds_itself(self):
        first = self.folder / "眼镜店 (1) & co"
        first.mkdir()
        files = self.do("git", "-C", str(TOP), "ls-files", "-z").rstrip("\0").split("\0")
        there = [name for name in files if (TOP / name).exists()]
        packed = self.folder / "files.tar"
        self.do("tar", "-C", str(TOP), "-cf", str(packed), *there)
        self.do("tar", "-C", str(first), "-xf", str(packed))
        build = "build check jxc_jet"
        self.in_checkout(first, build)
        self.assertNotIn("anew", self.in_checkout(first, build))
        # The resources, which everything that is linked has in it, without all the rest that stands before them.
        made = [f"src/qrc_{name}.cpp" for name in ("look", "report_templates")]
        for line in self.do("ninja", "-C", str(first / "build/check"), "-t", "commands", *made).splitlines():
            if "rcc --name" in line:
                self.do("sh", "-c", line)
        self.assertTrue(all((first / "build/check" / name).stat().st_size > 1000 for name in made))
        second = self.folder / "moved"
        first.rename(second)
        self.assertIn("anew", self.in_checkout(second, build))
        # Nothing of the build knows the old place any more.
        self.assertIn(f"CMAKE_HOME_DIRECTORY:INTERNAL={second}\n", (second / "build/check/CMakeCache.txt").read_text())
        self.assertNotIn("(1)", (second / "build/check/build.ninja").read_text())

    def test_what_is_not_ones_own_is_told_with_what_helps(self):
        (self.folder / "tools").symlink_to(TOP / "tools")
        (self.folder / "build/check").mkdir(parents=True)
        if os.geteuid() != 0:
            (self.folder / "build/check").chmod(0o555)
            told = self.in_checkout(self.folder, "build check", status=1)
            self.assertIn("sudo chown -R", told)
            self.assertIn("git clone", told)
            return
        # Root goes on as the owner, and what was made is the owner's.
        setup = self.folder / "tools/setup.sh"
        (self.folder / "tools").unlink()
        (self.folder / "tools").mkdir()
        (self.folder / "tools/checkout.sh").write_text((TOP / "tools/checkout.sh").read_text())
        setup.write_text("#!/bin/sh\nexit 0\n")
        setup.chmod(0o755)
        for path in [self.folder, *self.folder.rglob("*")]:
            os.chown(path, NOBODY, NOBODY)
        self.in_checkout(self.folder, 'hand_to_owner build /usr/bin/touch "$top/build/made"; touch "$top/build/by_root"')
        self.assertEqual((self.folder / "build/made").stat().st_uid, NOBODY)
        self.assertFalse((self.folder / "build/by_root").exists())

    def test_packages_that_cannot_be_installed_end_in_the_command_that_helps(self):
        wanted = re.findall(r"^build\s+(\S+)", (TOP / "packaging/debian-packages.txt").read_text(encoding="utf-8"),
                            re.MULTILINE)
        refusing = "echo 'no' >&2; exit 1"
        for what, commands in {
            "no sudo": {"id": "case $1 in -u) echo 1000;; *) echo anna;; esac"},
            "sudo refuses": {"id": "case $1 in -u) echo 1000;; *) echo anna;; esac", "sudo": refusing},
            "no lists of packages": {"id": "echo 0", "apt-get": refusing},
        }.items():
            with self.subTest(what):
                bin_folder = self.folder / what.replace(" ", "_")
                bin_folder.mkdir()
                commands = {"dpkg-query": "exit 1", **commands}
                for name in ("bash", "dirname", "env", "grep", "readlink", "sed", "rm"):
                    (bin_folder / name).symlink_to("/usr/bin/" + name)
                for name, text in commands.items():
                    (bin_folder / name).write_text("#!/bin/sh\n" + text + "\n")
                    (bin_folder / name).chmod(stat.S_IRWXU)
                told = self.do("/usr/bin/bash", str(TOP / "tools/setup.sh"), "build", status=1, env={"PATH": str(bin_folder)})
                self.assertIn("apt-get update && apt-get install --no-install-recommends " + " ".join(wanted), told)

    def test_no_test_of_that_name_is_a_failure(self):
        if not (TOP / "build/check/CTestTestfile.cmake").exists():
            self.skipTest("./test has not built here")
        self.do("ctest", "--preset", "check", "-R", "^no test of this name$", status=8, cwd=TOP)


if __name__ == "__main__":
    unittest.main(verbosity=2)
