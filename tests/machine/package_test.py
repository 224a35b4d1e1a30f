#!/usr/bin/env python3
"""The Debian package on a fresh machine: made by the one command, installed into a root that holds nothing but Debian's
essential packages and what the package asks for, started there, looked at, updated and removed.

Usage: tests/machine/package_test.py PRESET [PICTURE]      (the build that is packed; where the picture of the start goes)
The root is put together from files that are installed on this machine, so no network is needed; dpkg itself judges
there whether the package has what it asks for. Skipped with status 77 where no root can be entered.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time

TOP = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(TOP / "tests/journeys"))
from desk import Display, missing_tools  # pylint: disable=wrong-import-position

SKIPPED = 77
LEFT_OUT = re.compile(r"/usr/share/(?:doc|man|locale|info|lintian|bug)/")


def run(*words, **how):
    done = subprocess.run(words, capture_output=True, encoding="utf-8", timeout=300, check=False, **how)
    if done.returncode != 0:
        raise AssertionError(f"{words}: {done.stdout[-2000:]}{done.stderr[-2000:]}")
    return done.stdout


def paragraphs():
    """Name → fields of what is installed here; a name that a package provides leads to it as well."""
    found = {}
    for text in pathlib.Path("/var/lib/dpkg/status").read_text(encoding="utf-8").split("\n\n"):
        fields = dict(re.findall(r"^(\S+): (.*(?:\n .*)*)", text, re.MULTILINE))
        if fields.get("Status", "").endswith(" installed"):
            fields["text"] = text
            found[fields["Package"]] = fields
            for other in re.findall(r"[\w.+-]+", re.sub(r"\([^)]*\)", "", fields.get("Provides", ""))):
                found.setdefault(other, fields)
    return found


def closure(needs, here):
    """Fields of the essential packages, and of what `needs` asks for, by name."""
    taken = {}
    waiting = [fields["Package"] for fields in here.values() if fields.get("Essential") == "yes"]

    def ask(relation):
        for group in filter(None, re.split(r",\s*", re.sub(r"\([^)]*\)|:\w+", "", relation))):
            names = [name.strip() for name in group.split("|")]
            found = next((name for name in names if name in here), None)
            if found is None:
                raise AssertionError(f"not installed here, so nothing is there to install: {group}")
            waiting.append(found)

    ask(needs)
    while waiting:
        fields = here[waiting.pop()]
        if fields["Package"] not in taken:
            taken[fields["Package"]] = fields
            ask(", ".join(filter(None, (fields.get("Depends"), fields.get("Pre-Depends")))))
    return taken


class Root:
    """A root of its own, entered as its root user."""

    def __init__(self, folder):
        self.folder = folder
        # An ordinary user is root in a namespace of his own.
        self.enter = ["unshare", "--mount", *([] if os.geteuid() == 0 else ["--map-root-user"]), "sh", "-c",
                      'mount --rbind /dev "$0/dev" && mount --rbind /proc "$0/proc" && exec chroot "$0" "$@"', str(folder)]
        self.env = {"PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "HOME": "/root"}  # and no locale

    def fill(self, packages):
        for name in ("bin", "sbin", "lib", "lib64"):
            (self.folder / "usr" / name).mkdir(parents=True)
            (self.folder / name).symlink_to(f"usr/{name}")
        for name in ("dev", "proc", "etc", "root", "tmp", "var/lib/dpkg/info", "var/lib/dpkg/updates"):
            (self.folder / name).mkdir(parents=True, exist_ok=True)
        names = [name + (":" + fields["Architecture"] if fields.get("Multi-Arch") == "same" else "")
                 for name, fields in packages.items()]
        files = {path for path in run("dpkg-query", "-L", *names).splitlines()
                 if path.startswith("/") and not LEFT_OUT.match(path) and (os.path.islink(path) or os.path.isfile(path))
                 and os.access(path, os.R_OK)}
        plain = sorted(path.lstrip("/") for path in files if path not in ("/bin", "/sbin", "/lib", "/lib64"))
        packed = self.folder / "tmp/files.tar"
        run("tar", "-C", "/", "--no-recursion", "-cf", str(packed), "-T", "-", input="\n".join(plain))
        run("tar", "-C", str(self.folder), "--no-same-owner", "-xf", str(packed))
        packed.unlink()
        (self.folder / "etc/passwd").write_text("root:x:0:0::/root:/bin/sh\n")
        (self.folder / "etc/group").write_text("root:x:0:\n")
        (self.folder / "var/lib/dpkg/status").write_text(
            "\n\n".join(fields["text"].strip() for fields in packages.values()) + "\n\n", encoding="utf-8")
        self.do("ldconfig")

    def do(self, *words):
        return run(*self.enter, *words, env=self.env)


def check_start(root, picture):
    """The program as its menu entry starts it, on a display; the picture shows the login."""
    display = Display("1280x720")
    try:
        program = display.spawn([*root.enter, "jxc"], env=dict(root.env, DISPLAY=display.env["DISPLAY"]))
        end = time.monotonic() + 60
        while "操作员登录" not in subprocess.run(["xdotool", "getactivewindow", "getwindowname"], env=display.env,
                                                capture_output=True, encoding="utf-8", check=False).stdout:
            if program.poll() is not None or time.monotonic() > end:
                raise AssertionError("no login window came up")
            time.sleep(0.2)
        time.sleep(0.5)
        run("import", "-window", "root", str(picture), env=display.env)
        colours = int(run("identify", "-format", "%k", str(picture)))
        assert colours > 50, f"the picture has {colours} colours only"
    finally:
        display.close()


def main(preset, picture):
    if missing := missing_tools():
        print("skipped: not installed: " + missing)
        return SKIPPED
    with tempfile.TemporaryDirectory(prefix="jxc-package-") as work:
        began = time.strftime("%Y%m%d%H%M%S", time.gmtime())
        environment = {name: value for name, value in os.environ.items() if not name.startswith(("LC_", "LANG"))}
        package = run(str(TOP / "tools/package.sh"), "--preset", preset, "--out", work, env=environment).split("\n")[-2]
        version, needs = (run("dpkg-deb", "-f", package, field).strip() for field in ("Version", "Depends"))
        assert re.fullmatch(r"[0-9.]+\+\d{14}", version) and version.split("+")[1] >= began, version

        root = Root(pathlib.Path(work) / "root")
        root.folder.mkdir()
        if subprocess.run([*root.enter[:-4], "true"], capture_output=True, check=False).returncode != 0:
            print("skipped: this user may not enter a root of his own (unshare)")
            return SKIPPED
        packages = closure(needs, paragraphs())
        assert {"fonts-wqy-microhei", "fonts-noto-cjk"} & packages.keys(), "Chinese needs a font"
        root.fill(packages)
        shutil.copy(package, root.folder / "tmp/jxc.deb")
        root.do("dpkg", "-i", "/tmp/jxc.deb")
        check_start(root, picture or pathlib.Path(work) / "start.png")
        data = root.folder / "root/.local/share/jxc/data/jxc.mdb"
        assert data.exists(), "the data of an installed program stand in the folder of the user"
        # The console finds the same set; it outlives an update and a removal.
        root.do("jxcctl", "prove")
        root.do("dpkg", "-i", "/tmp/jxc.deb")
        root.do("dpkg", "--purge", "jxc")
        assert data.exists() and not (root.folder / "usr/share/jxc").exists()
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], *(sys.argv[2:] or [None])))
