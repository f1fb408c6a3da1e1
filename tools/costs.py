#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints what a build and its tests cost: seconds per target and per source, from the build's own log, and with --run
seconds per test suite of a module.

A compiler cache or other programs on the machine change what the log holds: for figures to keep, build into a new
directory with -DCMAKE_CXX_COMPILER_LAUNCHER= on an idle machine.
"""
import argparse
import json
import os
import re
import resource
import subprocess
import sys
import tempfile
from collections import defaultdict
from pathlib import Path


def sources(build):
    """(target, source, seconds) of every object file that is there, by the last time it was made."""
    last = {}
    for line in (build / ".ninja_log").read_text().splitlines():
        fields = line.split("\t")
        if len(fields) == 5 and fields[3].endswith(".o"):
            last[fields[3]] = (int(fields[1]) - int(fields[0])) / 1000
    for output, seconds in last.items():
        match = re.search(r"CMakeFiles/([^/]+)\.dir/(.+)\.o$", output)
        if match and (build / output).exists():
            yield match.group(1), match.group(2), seconds


def table(rows, headings):
    widths = [max(len(str(row[i])) for row in [headings, *rows]) for i in range(len(headings))]
    for row in [headings, ["-" * w for w in widths], *rows]:
        print("| " + " | ".join(str(cell).ljust(w) for cell, w in zip(row, widths)) + " |")
    print()


def print_build(build, most):
    rows = list(sources(build))
    targets = defaultdict(list)
    for target, _, seconds in rows:
        targets[target].append(seconds)
    totals = sorted(targets.items(), key=lambda item: -sum(item[1]))
    table([(target, len(all_), f"{sum(all_):.0f}", f"{max(all_):.1f}") for target, all_ in totals],
          ("target", "sources", "seconds", "longest"))
    rows.sort(key=lambda row: -row[2])
    table([(source, target, f"{seconds:.1f}") for target, source, seconds in rows[:most]],
          ("source", "target", "seconds"))
    print(f"{len(rows)} sources, {sum(row[2] for row in rows):.0f} seconds\n")


def print_run(build, module, most):
    program = build / "tests" / f"kvrs_tests_{32 if module == 's8' else 64}"
    with tempfile.NamedTemporaryFile(suffix=".json") as report:
        environment = dict(os.environ, LD_LIBRARY_PATH=str(build / "modules" / module), KVRS_TEST_MODULE=module)
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        done = subprocess.run([program, "--gtest_brief=1", f"--gtest_output=json:{report.name}"], env=environment,
                              stdout=subprocess.PIPE, text=True)
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        if done.returncode:
            sys.exit(f"{module}: the tests fail\n{done.stdout[-2000:]}")
        suites = json.load(open(report.name))["testsuites"]
    by_suite = defaultdict(lambda: [0, 0.0])
    for suite in suites:
        counted = by_suite[suite["name"].split("/")[0]]
        counted[0] += len(suite["testsuite"])
        counted[1] += float(suite["time"].rstrip("s"))
    rows = sorted(by_suite.items(), key=lambda item: -item[1][1])
    table([(name, count, f"{seconds:.1f}") for name, (count, seconds) in rows[:most]], ("suite", "tests", "seconds"))
    cpu = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
    print(f"{module}: {sum(n for n, _ in by_suite.values())} tests, {cpu:.0f} seconds of processor time\n")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", default="build/release", type=Path, help="build directory")
    parser.add_argument("--run", nargs="*", default=[], metavar="MODULE", help="run the tests on these modules")
    parser.add_argument("--most", default=25, type=int, help="rows of a table")
    options = parser.parse_args()
    print_build(options.build, options.most)
    for module in options.run:
        print_run(options.build, module, options.most)


if __name__ == "__main__":
    main()
