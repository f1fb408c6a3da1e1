#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes the table of families in README.md, between its two markers, from the headers; --check only compares."""
import argparse
import re
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
import declarations  # noqa: E402

TOP = Path(__file__).resolve().parent.parent
README = TOP / "README.md"
BEGIN, END = "<!-- families -->\n", "<!-- /families -->\n"
MOST_OPERATIONS = 14

# Headers of several groups whose first one does not speak for all.
TITLES = {"kvrs/divide.h": "Division", "kvrs/polar.h": "Magnitude, phase, polar coordinates",
          "kvrs/unary.h": "Absolute values, squares, normalisation", "kvrs/count.h": "Counts and zero crossings"}


def operation(name):
    """kvrsFIR32f_16s_Sfs -> FIR"""
    word = name.removeprefix("kvrs").split("_")[0]
    return re.sub(r"(?<=\D)\d+(fc|sc|f|s|u)$", "", word)


def families():
    """(title, header, functions) of each header, in the order in which kvrs.h brings them in."""
    all_functions = declarations.functions(TOP / "include")
    for header in re.findall(r'^#include "(kvrs/\w+\.h)"', (TOP / "include/kvrs.h").read_text(), re.M):
        functions = [f for f in all_functions if f.header == header]
        if functions:
            title = re.search(r"@defgroup \w+ (.+)", (TOP / "include" / header).read_text())
            yield TITLES.get(header) or (title.group(1) if title else Path(header).stem), header, functions


def table():
    lines = ["| Family | Functions | Operations |", "|---|---:|---|"]
    total = 0
    for title, header, functions in families():
        total += len(functions)
        operations = list(dict.fromkeys(operation(f.name) for f in functions))
        shown = ", ".join(f"`{name}`" for name in operations[:MOST_OPERATIONS])
        rest = len(operations) - MOST_OPERATIONS
        more = f" and {rest} more" if rest > 0 else ""
        lines.append(f"| [{title}](include/{header}) | {len(functions)} | {shown}{more} |")
    listed = len(declarations.export_list(TOP / "frame/exports.def"))
    lines.append(f"| **together** | **{total:,} of {listed:,}** | |")
    return "\n".join(lines) + "\n"


def updated(text):
    head, _, rest = text.partition(BEGIN)
    _, _, tail = rest.partition(END)
    return head + BEGIN + table() + END + tail


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--check", action="store_true", help="fail if README.md is not up to date")
    options = parser.parse_args()
    before = README.read_text()
    after = updated(before)
    if before == after:
        return
    if options.check:
        sys.exit("README.md: the table of families is not up to date: call tools/families.py")
    README.write_text(after)


if __name__ == "__main__":
    main()
