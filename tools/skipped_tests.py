#!/usr/bin/env python3
"""Tells of each test that was skipped why. Usage: tools/skipped_tests.py RESULTS     (what ctest --output-junit wrote)

A test says its reason itself: a script in a line that begins with "skipped: ", unittest and GoogleTest in their own way.
"""

import re
import sys
import xml.etree.ElementTree

REASONS = re.compile(r"""^skipped:\ (.+)$ | \.\.\.\ skipped\ '(.+)' | ^.+:\ Skipped\n(.+)$""", re.MULTILINE | re.VERBOSE)


def reasons(output):
    found = [next(filter(None, each)).strip() for each in REASONS.findall(output)]
    return "; ".join(dict.fromkeys(found)) or "gave no reason"


def main(file):
    try:
        cases = xml.etree.ElementTree.parse(file).iter("testcase")
    except (OSError, xml.etree.ElementTree.ParseError):
        return
    skipped = [(case.get("name"), reasons(case.findtext("system-out", ""))) for case in cases if case.find("skipped") is not None]
    if skipped:
        print("\nSkipped:")
    for name, reason in skipped:
        print(f"  {name}: {reason}")


if __name__ == "__main__":
    main(sys.argv[1])
