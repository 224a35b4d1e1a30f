#!/usr/bin/env python3
"""A sale is read out from start to end: what a screen reader hears on the accessibility bus while a salesperson, who sees
nothing, rings it up by keys alone. On a display and buses of its own.

Usage: tests/journeys/read_aloud_test.py PROGRAM JXCCTL      (prints what was heard at each step)
Needs xvfb, openbox, xdotool, at-spi2-core, dbus, gir1.2-atspi-2.0, python3-gi; skipped with status 77 where one is missing.
"""

import os
import pathlib
import subprocess
import sys
import tempfile
import time

from desk import Desk, Failure, begin, missing_tools
from shop_day import make_shop, open_document

SYSTEM_PYTHON = "/usr/bin/python3"  # python3-gi belongs to it
LAUNCHER = "/usr/libexec/at-spi-bus-launcher"
ASK_FOR_BUS = ["dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus.GetAddress"]


class Reader:
    """Hears what programs tell assistive technology, and keeps what it would say."""

    def __init__(self, atspi, context):
        self.atspi, self.context, self.said = atspi, context, []
        atspi.init()
        atspi.set_timeout(2000, 5000)
        self.listener = atspi.EventListener.new(self.hear)
        for kind in ("window:activate", "object:state-changed:focused", "object:state-changed:showing"):
            self.listener.register(kind)

    def hear(self, event):
        try:
            if event.type == "object:state-changed:showing":
                if event.detail1 and event.source.get_role_name() == "notification":
                    self.said.append(event.source.get_name())
            elif event.type == "window:activate":
                self.said.append(self.window(event.source))
            elif event.detail1:
                self.said.append(self.focused(event.source))
        except Exception as gone:  # pylint: disable=broad-except
            if type(gone).__name__ != "Error":  # the window has closed meanwhile
                raise

    def has(self, what, relation):
        return any(each.get_relation_type() == relation for each in what.get_relation_set())

    def window(self, window):
        """Its title, and the texts in it that are no labels of inputs."""
        texts = [window.get_name()]

        def walk(what):
            if not what.get_state_set().contains(self.atspi.StateType.SHOWING):
                return
            if what.get_role_name() == "label" and not self.has(what, self.atspi.RelationType.LABEL_FOR):
                texts.append(what.get_name())
            if what.get_role_name() not in ("table", "tree", "list"):
                for number in range(what.get_child_count()):
                    walk(what.get_child_at_index(number))

        for number in range(window.get_child_count()):
            walk(window.get_child_at_index(number))
        return "｜".join(filter(None, texts))

    def focused(self, what):
        """Name, kind and content; of a cell the whole row, as readers do by default."""
        role = what.get_role_name()
        if role == "table cell":
            table = what.get_parent()
            columns = self.atspi.Table.get_n_columns(table)
            row = self.atspi.Table.get_row_at_index(table, what.get_index_in_parent())
            cells = [self.atspi.Table.get_accessible_at(table, row, column) for column in range(columns)]
            return f"{table.get_name()}：" + " ".join(filter(None, (cell.get_name() for cell in cells if cell)))
        content = ""
        if "Text" in what.get_interfaces():
            content = self.atspi.Text.get_text(what, 0, self.atspi.Text.get_character_count(what))
        return f"{what.get_name()} {role} {content}".strip()

    def listen(self, words, seconds=5):
        """What was said until each of these words was among it."""
        end = time.monotonic() + seconds
        while time.monotonic() < end and not all(any(word in each for each in self.said) for word in words):
            if not self.context.iteration(False):
                time.sleep(0.01)
        said, self.said = self.said, []
        return said


# Keys, and what has to be heard after them.
SALE = [
    (["F2"], ["商品销售 - 选择商品", "查找"]),
    ([*"10000005"], ["商品列表：10000005 镜架4"]),
    (["Return"], ["销售商品明细｜10000005　镜架4　库存 20 付", "数量"]),
    (["2", "Return"], ["单价： text 33"]),
    (["F5"], ["商品销售 - 选择商品"]),
    (["F5"], ["10000005 镜架4"]),
    (["Return"], ["实收金额： text 66"]),
    (["F5"], ["单据保存后将直接审核，是否确认保存？", "是(Y)"]),
    (["y"], ["商品销售", "已保存并审核 XS"]),  # the quiet line
]


def journey(desk, reader):
    begin(desk)
    open_document(desk, "sale")
    said = reader.listen(["商品条码"])
    print("，".join(said[-2:]))
    for keys, words in SALE:
        desk.keys(*keys)
        said = reader.listen(words)
        print(f"{' '.join(keys)} → " + "，".join(said))
        if silent := [word for word in words if not any(word in each for each in said)]:
            raise Failure(f"after {' '.join(keys)} nothing said {silent}")


def main(program, console):
    missing = missing_tools() or ", ".join(
        file for file in (LAUNCHER, "/usr/bin/dbus-daemon", "/usr/lib/python3/dist-packages/gi") if not os.path.exists(file))
    if missing:
        print("skipped: not installed: " + missing)
        return 77
    if sys.executable != SYSTEM_PYTHON:
        os.execv(SYSTEM_PYTHON, [SYSTEM_PYTHON, *sys.argv])
    import gi  # pylint: disable=import-outside-toplevel
    try:
        gi.require_version("Atspi", "2.0")
    except ValueError:
        print("skipped: not installed: gir1.2-atspi-2.0")
        return 77
    from gi.repository import Atspi, GLib  # pylint: disable=import-outside-toplevel

    children = []
    desk = None
    with tempfile.TemporaryDirectory(prefix="jxc-reader-") as folder:
        os.environ.update(XDG_RUNTIME_DIR=folder, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", GSETTINGS_BACKEND="memory")
        os.environ.pop("AT_SPI_BUS_ADDRESS", None)
        try:
            bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address=1"], stdin=subprocess.DEVNULL,
                                   stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, encoding="utf-8")
            children.append(bus)
            os.environ["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()
            children.append(subprocess.Popen([LAUNCHER, "--launch-immediately"], stdin=subprocess.DEVNULL,
                                             stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))
            for _ in range(200):
                if subprocess.run(ASK_FOR_BUS, capture_output=True, check=False).returncode == 0:
                    break
                time.sleep(0.05)
            reader = Reader(Atspi, GLib.MainContext.default())
            desk = Desk(program, make_shop(console, 60, 20))
            journey(desk, reader)
        except Failure as failure:
            print(f"FAILED: {failure}", file=sys.stderr)
            return 1
        finally:
            if desk:
                desk.close()
            for child in reversed(children):
                child.terminate()
                child.wait()
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:3]))
