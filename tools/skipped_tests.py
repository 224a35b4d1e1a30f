#!/usr/bin/env python3
"""Tells of the tests that were skipped why. Usage: tools/skipped_tests.py RESULTS     (what ctest --output-junit wrote)

A test says its reason itself: a script in a line that begins with "skipped: ", unittest and GoogleTest in their own way.
"""

import collections
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
    skipped = collections.defaultdict(list)
    for case in cases:
        if case.find("skipped") is not None:
            skipped[reasons(case.findtext("system-out", ""))].append(case.get("name"))
    if skipped:
        print("\nSkipped:")
    for reason, names in skipped.items():
        more = f" and {len(names) - 1} more" if len(names) > 1 else ""
        print(f"  {names[0]}{more}: {reason}")


if __name__ == "__main__":
    main(sys.argv[1])
