#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks frame/exports.def and what a built module exports and needs.

The list: 2,072 names in C order, ordinals from 1 without a gap. A module: exports names of the list only, each under
the version node, defines every name that the headers declare, second names share the address of their first; is called
libkvrs.so.6 (SONAME), needs no library but the C library's, OpenMP's and kvrscore, has its table of addresses made
read-only at the start (full RELRO) and no relocation in its code.
"""
import argparse
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
import declarations  # noqa: E402

COUNT = 2072
NEEDED = {"libc.so.6", "libm.so.6", "libgomp.so.1", "libomp.so.5", "libkvrscore.so.6",
          "ld-linux.so.2", "ld-linux-x86-64.so.2",
          "libasan.so.8", "libubsan.so.1"}  # the last two in a build with sanitizers
SONAME = "libkvrs.so.6"
NODE = "KVRS_6"


def lines(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout.splitlines()


def check_list(names):
    bad = []
    if len(names) != COUNT:
        bad.append(f"{len(names)} names instead of {COUNT}")
    if [name for name, _ in names] != sorted({name for name, _ in names}):
        bad.append("names are not in C order, or one stands twice")
    if [ordinal for _, ordinal in names] != list(range(1, len(names) + 1)):
        bad.append("ordinals do not run from 1 without a gap")
    return bad


def check_module(path, names, declared, aliases):
    symbols, unversioned = {}, []
    for line in lines("nm", "-D", "--defined-only", path):
        address, kind, name = line.split()
        name, _, node = name.partition("@@")
        if name == NODE and kind == "A":
            continue
        if node != NODE:
            unversioned.append(name)
        symbols[name] = address
    bad = [f"{name} is not of version {NODE}" for name in unversioned]
    bad += [f"exports {name}, which is not in the list" for name in sorted(symbols.keys() - names)]
    bad += [f"does not define {name}, which a header declares" for name in sorted(declared - symbols.keys())]
    bad += [f"exports {name}, which no header declares" for name in sorted((symbols.keys() & names) - declared)]
    bad += [f"{second} does not share the code of {first}" for second, first in aliases.items()
            if symbols.get(second) != symbols.get(first)]
    dynamic = lines("readelf", "-dW", path)
    for line in dynamic:
        if "(NEEDED)" in line:
            library = line.split("[")[1].rstrip("]")
            if library not in NEEDED:
                bad.append(f"needs {library}")
        if "(TEXTREL)" in line or ("(FLAGS)" in line and "TEXTREL" in line):
            bad.append("has relocations in its code")
    if not any("(SONAME)" in line and f"[{SONAME}]" in line for line in dynamic):
        bad.append(f"is not called {SONAME}")
    if not any("BIND_NOW" in line or ("(FLAGS_1)" in line and "NOW" in line) for line in dynamic):
        bad.append("binds names late")
    if not any(" GNU_RELRO " in line for line in lines("readelf", "-lW", path)):
        bad.append("leaves its table of addresses writable")
    return bad, len(symbols.keys() & names)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("modules", nargs="*", help="built modules (libkvrs.so.6)")
    parser.add_argument("--source", default=Path(__file__).parent.parent, type=Path, help="source tree")
    options = parser.parse_args()

    listed = declarations.export_list(options.source / "frame/exports.def")
    bad = [f"frame/exports.def: {what}" for what in check_list(listed)]
    names = {name for name, _ in listed}
    declared = {f.name for f in declarations.functions(options.source / "include")}
    bad += [f"include: {name} is not in frame/exports.def" for name in sorted(declared - names)]
    aliases = declarations.aliases(options.source / "frame/aliases.def")
    for module in options.modules:
        found, count = check_module(module, names, declared, aliases)
        bad += [f"{module}: {what}" for what in found]
        print(f"{module}: {count} of {COUNT} functions")
    if bad:
        sys.exit("\n".join(bad))


if __name__ == "__main__":
    main()
