#!/usr/bin/env python3
"""The tests of the screens once more on a real display: other keys belong to inputs there than off-screen, and a window
manager has a say in who gets them.

Usage: tests/screens/on_display.py TEST_SCREENS [option of the test…]
Needs xvfb, openbox, xdotool; skipped with status 77 where they are missing.
"""

import pathlib
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "journeys"))
from desk import Display, missing_tools


def main():
    if missing := missing_tools():
        print("skipped: not installed: " + missing)
        return 77
    display = Display("1280x720")  # the smallest that every screen has to fit
    try:
        words = [sys.argv[1], "--gtest_brief=1", "--gtest_filter=-PrintServer*", *sys.argv[2:]]
        return subprocess.run(words, env=dict(display.env, QT_QPA_PLATFORM="xcb"), check=False).returncode
    finally:
        display.close()


if __name__ == "__main__":
    sys.exit(main())
