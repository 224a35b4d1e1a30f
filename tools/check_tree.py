#!/usr/bin/env python3
"""Checks of the source tree that no compiler makes: which module may include which, what must not stand in a
committed file, and how long a file may grow. Prints one line a fault; the exit status is 1 when there is any.

Usage: tools/check_tree.py [FOLDER]      (default: the tree that this script belongs to)
"""

import pathlib
import re
import subprocess
import sys

# Who may include whom, beside itself. Arrows point downwards only: app, screens, rules, core, engine, jet. What is
# said of a name holds for the folder src/NAME without its folder screens/. The ledgers of src/accounts and src/members
# stand at the bottom of the rules, because stock documents post to them; the documents of accounts stand above master
# data.
RULES = {
    "ledgers": [],
    "stock": ["ledgers"],
    "masterdata": ["ledgers", "stock"],
    "accounts": ["ledgers", "stock", "masterdata"],
    "inventory": ["ledgers", "stock", "masterdata", "accounts"],
    "purchasing": ["ledgers", "stock", "masterdata", "accounts"],
    "members": ["ledgers", "stock", "masterdata", "accounts"],
    "sales": ["ledgers", "stock", "masterdata", "accounts", "members"],
    "pos": ["ledgers", "stock", "masterdata", "accounts", "members", "sales"],
    "statistics": ["ledgers", "stock", "masterdata", "accounts", "sales"],
    "output": ["ledgers", "stock", "masterdata", "accounts"],
    "messaging": ["members", "statistics", "output"],
    "maintenance": ["ledgers", "stock", "masterdata", "accounts", "output", "inventory", "purchasing", "sales"],
}
# Calls to servers of others know no database, and only rules make them.
NET = "platform/net/"
LEDGERS = re.compile(r"(?:accounts/(?:\w+_ledger|running_balance)|members/\w+_ledger)\.")
BELOW = ["core", "platform", "engine"]
# A screen reads with core/reading.h; these can change rows, and no header that a screen includes may bring them along.
WRITING = ["core/statements.h", "core/posting.h", "core/data_module.h", "engine/transaction.h", "engine/bulk.h"]
# Documents stand above the screens that they share: those never reach up to them.
DOCUMENTS = ["inventory", "purchasing", "sales", "pos"]
MAY_INCLUDE = {
    "jet": [],
    "engine": ["jet"],
    "net": [],
    "platform": ["engine", "jet"],
    "core": ["engine", "platform"],
    "ui": BELOW,
    **{name: others + BELOW + ["net"] for name, others in RULES.items()},
    "screens": ["ui", *RULES, *BELOW],
    "app": ["ui", "screens", *RULES, *BELOW],
}

# A comment must stand on its own: it gives the reason, it does not send the reader to a paper outside the tree. Paths
# of one machine and left-over marks have no place either, nor has a list of truths that nobody can read. (Written in
# pieces, so that this file passes its own check.)
UNWANTED = [
    (re.compile(r"\bPart" + r" \d+\.\d+|[Ss]pecif" + r"ication|\bthe sp" + r"ec\b|\bspec" + r"\.md|\.\./sh" + "ared"),
     "refers to a paper outside the tree"),
    (re.compile(r"(?<![\w.])/(?:home|root|Users)/[\w.-]+/"), "a path of one machine"),
    (re.compile(r"\bTO" + r"DO\b|\bFIX" + r"ME\b"), "a left-over mark"),
    (re.compile(r"^(?!.*\bfor \().*\b(?:true|false), *(?:true|false)\b"),
     "truths in a list say what they are: by name"),
]
LONGEST = 600  # lines; beyond that a file has more than one subject
TABLE_OF_DATA = re.compile(r"table of data", re.IGNORECASE)  # said in its first three lines, a file may be longer

INCLUDE = re.compile(r'^\s*#\s*include\s+(?:"([^"]+)"|<([^>]+)>)')


def module_of(path: pathlib.PurePosixPath) -> str:
    """The module of a path below src/: its first folder, "screens", "ledgers" or "net"."""
    if str(path).startswith(NET):
        return "net"
    if LEDGERS.match(str(path)):
        return "ledgers"
    return "screens" if "screens" in path.parts[:-1] else path.parts[0]


def include_faults(name: str, lines: list[str]):
    inside = pathlib.PurePosixPath(name).relative_to("src")
    if len(inside.parts) < 2:
        return
    module = module_of(inside)
    if module not in MAY_INCLUDE:
        yield 1, f"folder src/{module} stands in no line of the include matrix (tools/check_tree.py)"
        return
    for number, line in enumerate(lines, 1):
        found = INCLUDE.match(line)
        if not found:
            continue
        own, foreign = found.groups()
        if foreign:
            # That nothing below ui includes a widget header is seen by the compiler: those libraries do not get the
            # include path. This is the way around it, and the slow way to include them.
            if foreign.startswith("QtWidgets"):
                yield number, f"<{foreign}>: include the single widget header instead"
            elif module == "jet" and foreign.startswith("Q"):
                yield number, f"<{foreign}>: the dialect is standard C++ only"
            continue
        target = pathlib.PurePosixPath(own)
        if len(target.parts) < 2:
            continue  # a moc file, or a generated header
        other = module_of(target)
        if other != module and other not in MAY_INCLUDE[module]:
            yield number, f'"{own}": {module} must not include {other}'
        folder = inside.parts[0]
        if module == "screens" and target.parts[0] in DOCUMENTS and folder in RULES:
            if folder != target.parts[0] and target.parts[0] not in RULES[folder]:
                yield number, f'"{own}": {folder}/screens must not reach up to {target.parts[0]}'


def included(top: pathlib.Path, name: str) -> list[str]:
    """What a file below src/ includes of src/ itself."""
    try:
        lines = (top / "src" / name).read_text(encoding="utf-8").splitlines()
    except FileNotFoundError:
        return []  # a moc file, or a generated header
    return [found[1] for found in map(INCLUDE.match, lines) if found and found[1]]


def writing_faults(top: pathlib.Path, names: list[str]):
    """Screens that see a header that can write, with the way by which they see it."""
    known: dict[str, list[str]] = {}

    def way_to_writing(name: str) -> list[str]:
        if name not in known:
            known[name] = []  # also ends a circle
            for each in included(top, name):
                way = [each] if each in WRITING else way_to_writing(each)
                if way:
                    known[name] = [name, *way]
                    break
        return known[name]

    for name in names:
        inside = pathlib.PurePosixPath(name)
        if inside.parts[0] != "src" or module_of(inside.relative_to("src")) != "screens":
            continue
        if way := way_to_writing(str(inside.relative_to("src"))):
            yield name, "a screen only reads: " + " > ".join(way[1:])


def text_faults(name: str, lines: list[str], top: str):
    here = re.compile(r"(?<![\w.])" + re.escape(top) + r"(?![\w.-])")
    for number, line in enumerate(lines, 1):
        for pattern, what in UNWANTED:
            if pattern.search(line):
                yield number, what
        if here.search(line):
            yield number, "a path of one machine"
    if len(lines) > LONGEST and name.endswith((".cpp", ".h", ".py")):
        if not any(TABLE_OF_DATA.search(line) for line in lines[:3]):
            yield LONGEST, f"{len(lines)} lines: more than one subject? (a table of data says so in its first lines)"


def tree_files(top: pathlib.Path) -> list[str]:
    # The tree may belong to somebody else than who runs the check, as on a build machine.
    listed = subprocess.run(["git", "-c", "safe.directory=*", "-C", str(top), "ls-files", "-z",
                             "--cached", "--others", "--exclude-standard"], check=True, capture_output=True).stdout.decode()
    return sorted(name for name in listed.split("\0") if name and (top / name).is_file())


def main() -> int:
    top = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).parent.parent).resolve()
    faults = 0
    names = tree_files(top)
    for name in names:
        try:
            lines = (top / name).read_text(encoding="utf-8").splitlines()
        except UnicodeDecodeError:
            continue  # a picture and the like
        found = list(text_faults(name, lines, str(top)))
        if name.startswith("src/") and name.endswith((".cpp", ".h")):
            found += include_faults(name, lines)
        for number, what in sorted(found):
            print(f"{name}:{number}: {what}")
        faults += len(found)
    for name, what in writing_faults(top, names):
        print(f"{name}:1: {what}")
        faults += 1
    print(f"{len(names)} files looked at, {faults} faults")
    return 1 if faults or not names else 0


if __name__ == "__main__":
    sys.exit(main())
