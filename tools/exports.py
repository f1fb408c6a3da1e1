#!/usr/bin/env python3
"""Compares what built modules export with frame/exports.def.

    tools/exports.py [--strict] LIBRARY...

Prints how many of the names each library has. Fails when a library exports a name that is not in the list and, with
--strict, when it lacks one that is.

SPDX-License-Identifier: MIT
"""
import argparse
import pathlib
import re
import subprocess
import sys

EXPORTS_DEF = pathlib.Path(__file__).resolve().parent.parent / "frame" / "exports.def"


def listed_names():
    return re.findall(r"^ +(kvrs\w+) @\d+$", EXPORTS_DEF.read_text(), re.MULTILINE)


def exported_names(library):
    nm = subprocess.run(["nm", "-D", "--defined-only", "--format=posix", library],
                        capture_output=True, text=True, check=True)
    # A name may carry a version: name@@VERSION.
    return {line.split()[0].split("@")[0] for line in nm.stdout.splitlines()}


def some_of(names, most=5):
    names = sorted(names)
    rest = len(names) - most
    return ", ".join(names[:most]) + (f" and {rest} more" if rest > 0 else "")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--strict", action="store_true", help="fail when a name is missing")
    parser.add_argument("library", nargs="+")
    args = parser.parse_args()

    listed = set(listed_names())
    failed = False
    for library in args.library:
        exported = exported_names(library)
        missing, extra = listed - exported, exported - listed
        print(f"{library}: {len(listed & exported):,} of {len(listed):,} names")
        if missing and args.strict:
            print(f"  missing: {some_of(missing)}")
        if extra:
            print(f"  not in {EXPORTS_DEF.name}: {some_of(extra)}")
        failed |= bool(extra) or (args.strict and bool(missing))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
