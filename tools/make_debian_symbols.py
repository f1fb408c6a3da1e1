#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints the symbols file of the Debian package libkvrs6, from frame/exports.def and include/kvrscore.h."""
import re
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
import declarations  # noqa: E402

TOP = Path(__file__).parent.parent

# All names came with the first version, and stay as they are for as long as the library is called libkvrs.so.6.
SINCE = "6.1.137"


def main():
    core = re.findall(r"^KVRSCORE_API .*?\b(\w+)\(", (TOP / "include/kvrscore.h").read_text(), re.M)
    print("libkvrs.so.6 libkvrs6 #MINVER#\n* Build-Depends-Package: libkvrs-dev")
    print(f" KVRS_6@KVRS_6 {SINCE}")
    for name, _ in declarations.export_list(TOP / "frame/exports.def"):
        print(f" {name}@KVRS_6 {SINCE}")
    print("libkvrscore.so.6 libkvrs6 #MINVER#\n* Build-Depends-Package: libkvrs-dev")
    for name in sorted(core):
        print(f" {name}@Base {SINCE}")


if __name__ == "__main__":
    main()
