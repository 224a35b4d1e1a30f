#!/usr/bin/env python3
"""Runs clang-tidy over a build directory. Usage: tools/check_tidy.py BUILD_DIRECTORY [JOBS]

Meant for a unity build: the units that the build compiles are what is read, so that a header is parsed once for eight
files. Sources of ours that are included by a unit are checked like headers. What passed is remembered in the build
directory by a digest of all sources, settings and commands, and not read again.
"""

import concurrent.futures
import hashlib
import json
import pathlib
import re
import subprocess
import sys

TOP = pathlib.Path(__file__).resolve().parent.parent
# clang reads a command line that was written for gcc; errors are decided by the settings, not by -Werror.
EXTRA = ["--extra-arg=-Wno-unknown-warning-option", "--extra-arg=-Wno-error", "--quiet"]
GENERATED = re.compile(r"(mocs_compilation|qrc_|moc_)[^/]*\.cpp$")
INCLUDED = re.compile(r'^#include "(.+)"$', re.MULTILINE)


def units(build: pathlib.Path):
    """Source files of the build that hold code of ours under src/, with the command that compiles them."""
    for entry in json.loads((build / "compile_commands.json").read_text()):
        file = pathlib.Path(entry["directory"], entry["file"]).resolve()
        sources = [str(file)]
        if "Unity" in file.parts:
            sources = INCLUDED.findall(file.read_text())
        if GENERATED.search(str(file)) or all(GENERATED.search(name) for name in sources):
            continue
        if any(name.startswith(f"{TOP}/src/") for name in sources):
            yield file, entry["command"], sources


def our_headers() -> bytes:
    digest = hashlib.sha256()
    for path in sorted([*(TOP / "src").rglob("*.h"), TOP / ".clang-tidy", pathlib.Path(__file__)]):
        digest.update(str(path).encode() + b"\0" + path.read_bytes())
    return digest.digest()


def check(build: pathlib.Path, file: pathlib.Path, command: str, sources: list[str], shared: bytes):
    digest = hashlib.sha256(shared + command.encode())
    for name in sources:
        digest.update(pathlib.Path(name).read_bytes())
    mark = build / "tidy" / (digest.hexdigest() + ".passed")
    if mark.exists():
        return True, ""
    ran = subprocess.run(["clang-tidy-14", "-p", str(build), *EXTRA, str(file)], capture_output=True, text=True)
    if ran.returncode == 0:
        mark.parent.mkdir(exist_ok=True)
        mark.touch()
    else:
        ran.stdout += ran.stderr if not ran.stdout.strip() else ""
    return ran.returncode == 0, ran.stdout


def main() -> int:
    build = pathlib.Path(sys.argv[1]).resolve()
    jobs = int(sys.argv[2]) if len(sys.argv) > 2 else 2
    shared = our_headers()
    work = list(units(build))
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        for passed, text in pool.map(lambda unit: check(build, *unit, shared), work):
            failed += not passed
            if not passed:
                print(text)
    print(f"{len(work)} units read, {failed} with faults")
    return 1 if failed or not work else 0


if __name__ == "__main__":
    sys.exit(main())
