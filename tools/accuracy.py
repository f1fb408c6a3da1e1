#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints a table of the largest errors of elementary functions, in units in the last place, for each module.

Functions of a single are compared at every argument with double precision, those of doubles at 10^8 arguments with
extended precision (bench/accuracy/). It takes some minutes a function.
"""
import argparse
import os
import shlex
import subprocess
import sys

ALL = str(1 << 40)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", default="build/release", help="build tree, with benchmarks (default: %(default)s)")
    parser.add_argument("--module", action="append", help="s8, v2, v3 or v4; may be repeated (default: s8 and v4)")
    parser.add_argument("--function", action="append", help="of those that are listed (default: all)")
    parser.add_argument("--count", default=ALL, help="arguments of each function (default: all)")
    options = parser.parse_args()

    modules = options.module or ["s8", "v4"]
    program = {bits: os.path.abspath(f"{options.build}/bench/kvrs_accuracy_{bits}") for bits in (32, 64)}
    known = subprocess.run([program[64]], capture_output=True, text=True, check=True).stdout.split()
    print("| Function | " + " | ".join(f"{module} | at" for module in modules) + " |")
    print("|---|" + "---|" * 2 * len(modules), flush=True)
    for function in options.function or known:
        commands = []
        for module in modules:
            directory = os.path.abspath(f"{options.build}/modules/{module}")
            worker = program[32 if module == "s8" else 64]
            commands.append(f"LD_LIBRARY_PATH={shlex.quote(directory)} exec {shlex.quote(worker)} {function} 0 "
                            f"{options.count}")
        done = subprocess.run([program[64], function, "0", options.count, *commands], stdout=subprocess.PIPE, text=True)
        if done.returncode:
            sys.exit(f"{function}: the comparison failed")
        cells = [" | ".join(line.split()) for line in done.stdout.splitlines()]
        print(f"| {function} | " + " | ".join(cells) + " |", flush=True)


if __name__ == "__main__":
    main()
