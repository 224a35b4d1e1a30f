#!/usr/bin/env python3
"""Prints through a print server of its own into a file and reads the paper back. Usage: cups_test.py TEST_SCREENS

The server (cupsd) listens on a free port of this machine only, keeps everything in a temporary folder and ends with the test.
Skipped (77) where cups or poppler are not installed: nothing else needs a print server.
"""

import os
import pathlib
import re
import shutil
import socket
import subprocess
import sys
import tempfile
import time

SKIPPED = 77
PATH = os.environ.get("PATH", "") + ":/usr/sbin:/sbin"
DRIVER = "lsb/usr/cupsfilters/Generic-PDF_Printer-PDF.ppd"
# The driver of a plain PDF printer knows sheets only; forms and rolls need a printer that takes any size.
ANY_SIZE = """
*MaxMediaWidth: "1000"
*MaxMediaHeight: "15000"
*HWMargins: 0 0 0 0
*NonUIOrderDependency: 100 AnySetup *CustomPageSize
*CustomPageSize True: "pop pop pop <</PageSize[5 -2 roll]/ImagingBBox null>>setpagedevice"
*ParamCustomPageSize Width: 1 points 36 1000
*ParamCustomPageSize Height: 2 points 36 15000
*ParamCustomPageSize WidthOffset: 3 points 0 0
*ParamCustomPageSize HeightOffset: 4 points 0 0
*ParamCustomPageSize Orientation: 5 int 0 3
"""


def run(*words: str, env: dict, check: bool = True) -> str:
    done = subprocess.run(words, env=env, text=True, capture_output=True, timeout=60)
    if check and done.returncode != 0:
        raise RuntimeError(f"{words}: {done.stdout}{done.stderr}")
    return done.stdout


def write_settings(home: pathlib.Path, port: int) -> None:
    for name in ("spool", "cache", "state", "out"):
        (home / name).mkdir()
    (home / "cupsd.conf").write_text(
        f"Listen 127.0.0.1:{port}\nWebInterface No\nDefaultAuthType None\n"
        "<Location />\nAllow all\n</Location>\n<Location /admin>\nAllow all\n</Location>\n"
        "<Policy default>\n<Limit All>\nOrder deny,allow\nAllow all\n</Limit>\n</Policy>\n")
    folders = {"CacheDir": "cache", "RequestRoot": "spool", "StateDir": "state", "TempDir": "spool", "ServerRoot": "."}
    logs = {"AccessLog": "access", "ErrorLog": "error", "PageLog": "page"}
    (home / "cups-files.conf").write_text(
        "FileDevice Yes\nUser lp\nGroup lp\nSystemGroup root\n"
        + "".join(f"{key} {home / folder}\n" for key, folder in folders.items())
        + "".join(f"{key} {home / name}_log\n" for key, name in logs.items()))
    subprocess.run(["chmod", "-R", "a+rwX", str(home)], check=True)


def free_port() -> int:
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def wait_for(condition, what: str) -> None:
    for _ in range(150):
        if condition():
            return
        time.sleep(0.1)
    raise RuntimeError(f"waited in vain for {what}")


def answers(port: int) -> bool:
    with socket.socket() as probe:
        return probe.connect_ex(("127.0.0.1", port)) == 0


def check_paper(home: pathlib.Path, env: dict, tests: str, what: str, size: str, pages: int, words: list[str]) -> None:
    paper = home / "out" / "paper.pdf"
    paper.unlink(missing_ok=True)
    run(tests, f"--gtest_filter=PrintServer.{what}", env=env)
    wait_for(lambda: paper.exists() and not run("lpstat", "-o", env=env), what)
    found = run("pdfinfo", str(paper), env=env)
    text = run("pdftotext", str(paper), "-", env=env).replace(" ", "")
    assert re.search(rf"Pages:\s+{pages}\b", found), found
    assert size in found, found
    for word in words:
        assert word in text, (word, text)
    print(f"{what}: {pages} pages, {size}")


def main(tests: str) -> int:
    needed = ["cupsd", "lpadmin", "lpstat", "lpinfo", "pdfinfo", "pdftotext"]
    if missing := [name for name in needed if shutil.which(name, path=PATH) is None]:
        print("skipped: not installed: " + ", ".join(missing))
        return SKIPPED
    port = free_port()
    with tempfile.TemporaryDirectory(prefix="jxc-cups-") as folder:
        home = pathlib.Path(folder)
        os.chmod(home, 0o755)
        env = dict(os.environ, PATH=PATH, CUPS_SERVER=f"127.0.0.1:{port}", QT_QPA_PLATFORM="offscreen",
                   JXC_TEST_PRINTER="shop", LC_ALL="C.UTF-8")
        write_settings(home, port)
        server = subprocess.Popen(["cupsd", "-f", "-c", str(home / "cupsd.conf"), "-s", str(home / "cups-files.conf")],
                                  env=env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            wait_for(lambda: answers(port), "the print server")
            if DRIVER not in run("lpinfo", "-m", env=env):
                print("skipped: no driver for a PDF printer")
                return SKIPPED
            device = f"file:{home / 'out' / 'paper.pdf'}"
            run("lpadmin", "-p", "sheets", "-E", "-v", device, "-m", DRIVER, env=env)
            any_size = home / "any.ppd"
            any_size.write_text((home / "ppd" / "sheets.ppd").read_text() + ANY_SIZE)
            run("lpadmin", "-p", "shop", "-E", "-v", device, "-P", str(any_size), env=env)
            run("lpadmin", "-d", "shop", env=env)
            # 241 by 139.7 mm, 58 mm wide; a sheet on its side comes out of the printer upright.
            check_paper(home, env, tests, "Form", "683 x 396 pts", 6, ["商品销售单", "第3页共3页"])
            check_paper(home, env, tests, "Slip", "164 x ", 1, ["眼镜专卖店", "XS21050310001", "合计：512.00"])
            check_paper(home, env, tests, "Landscape", "595 x 842 pts", 1, ["客户签收"])
            return 0
        finally:
            server.terminate()
            server.wait(timeout=20)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
