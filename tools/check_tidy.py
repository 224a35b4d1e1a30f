#!/usr/bin/env python3
"""Runs clang-tidy over the sources below src/. Usage: tools/check_tidy.py BUILD_DIRECTORY [JOBS]

Most of the time goes into headers of others, not into our code. The sources of a library are therefore read together, some
thirty in one unit: our code is made for unity builds anyway. What passed is remembered in the build directory by a digest
of the sources, all our headers and the settings, and not read again.
"""

import concurrent.futures
import hashlib
import json
import pathlib
import re
import shlex
import subprocess
import sys

TOP = pathlib.Path(__file__).resolve().parent.parent
SOURCES_A_UNIT = 32
# clang reads flags that were written for gcc.
EXTRA = ["-Wno-unknown-warning-option", "-Wno-error"]
INCLUDED = re.compile(r'^#include "(.+)"$', re.MULTILINE)


def libraries(build: pathlib.Path) -> dict[tuple[str, ...], list[str]]:
    """Sources of ours by the flags that they are compiled with."""
    found: dict[tuple[str, ...], list[str]] = {}
    for entry in json.loads((build / "compile_commands.json").read_text()):
        file = pathlib.Path(entry["directory"], entry["file"])
        sources = INCLUDED.findall(file.read_text()) if "Unity" in file.parts else [str(file)]
        flags = tuple(word for word in shlex.split(entry["command"]) if re.match(r"-(I|D|std=|f(?!use-ld))", word))
        words = shlex.split(entry["command"])
        flags += tuple(f"-isystem{after}" for word, after in zip(words, words[1:]) if word == "-isystem")
        ours = [name for name in sources if name.startswith(f"{TOP}/src/")]
        if ours:
            found.setdefault(flags, []).extend(ours)
    return found


def units(build: pathlib.Path):
    for flags, sources in libraries(build).items():
        sources.sort()
        for begin in range(0, len(sources), SOURCES_A_UNIT):
            yield flags, sources[begin : begin + SOURCES_A_UNIT]


def shared_digest() -> bytes:
    digest = hashlib.sha256()
    for path in sorted([*(TOP / "src").rglob("*.h"), TOP / ".clang-tidy", pathlib.Path(__file__)]):
        digest.update(str(path).encode() + b"\0" + path.read_bytes())
    return digest.digest()


def check(build: pathlib.Path, flags: tuple[str, ...], sources: list[str], shared: bytes) -> str:
    """What clang-tidy has to say of one unit; empty when nothing."""
    digest = hashlib.sha256(shared + repr(flags).encode())
    for name in sources:
        digest.update(name.encode() + b"\0" + pathlib.Path(name).read_bytes())
    folder = build / "tidy"
    folder.mkdir(exist_ok=True)
    unit = folder / f"{digest.hexdigest()[:16]}.cxx"
    passed = unit.with_suffix(".passed")
    if passed.exists():
        return ""
    unit.write_text("".join(f'#include "{name}"\n' for name in sources))
    command = ["clang-tidy-14", f"--config-file={TOP}/.clang-tidy", "--quiet", str(unit), "--", *flags, *EXTRA]
    ran = subprocess.run(command, capture_output=True, text=True)
    if ran.returncode == 0:
        passed.touch()
        unit.unlink()
        return ""
    return ran.stdout if ran.stdout.strip() else ran.stderr


def main() -> int:
    build = pathlib.Path(sys.argv[1]).resolve()
    jobs = int(sys.argv[2]) if len(sys.argv) > 2 else 2
    shared = shared_digest()
    work = list(units(build))
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        for text in pool.map(lambda unit: check(build, *unit, shared), work):
            failed += bool(text)
            if text:
                print(text)
    print(f"{sum(len(sources) for _, sources in work)} sources in {len(work)} units, {failed} units with faults")
    return 1 if failed or not work else 0


if __name__ == "__main__":
    sys.exit(main())
