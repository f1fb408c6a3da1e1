#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs the benchmarks and prints each peer's time over ours: above 1, kvrs is ahead.

All contestants of a case take turns in short bursts, and the ratio is the median of those of the turns: what disturbs
the machine disturbs all of them alike.
"""
import argparse
import datetime
import math
import os
import re
import subprocess
import sys
from collections import defaultdict


def run(program, pattern, rounds):
    """Yields the module and the compiler, then (case, {who: (time in ns, ratio to ours)}) as they are measured."""
    process = subprocess.Popen([program, pattern, str(rounds)], stdout=subprocess.PIPE, text=True)
    case, by = None, {}
    for line in process.stdout:
        fields = line.rstrip("\n").split("\t")
        if fields[0] == "module":
            yield fields[1:]
            continue
        if fields[0] != case:
            if by:
                yield case, by
            case, by = fields[0], {}
        by[fields[1]] = float(fields[2]), float(fields[3])
    if by:
        yield case, by
    if process.wait() != 0:
        sys.exit(f"{program} failed")


def geometric_mean(values):
    return math.exp(sum(map(math.log, values)) / len(values))


def write_record(path, module, compiler, rows):
    processor = re.search(r"^model name\s*: (.*)$", open("/proc/cpuinfo").read(), re.M).group(1)
    threads = len(os.sched_getaffinity(0))
    with open(path, "w") as file:
        print("# The time of a peer over the time of kvrs, of which docs/manual/figures.gp draws curves: function, "
              "peer, length, ratio.\n# SPDX-License-Identifier: MIT", file=file)
        print(f"# Measured on {datetime.date.today()}: {processor}, module {module}, {compiler}, "
              + ("one thread." if threads == 1 else f"at most {threads} threads."), file=file)
        for case, by in rows:
            _, function, length = case.split("/")
            for who, (_, ratio) in by.items():
                print(function, who, length, f"{ratio:.3f}", file=file)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", default="build/release", help="build tree (default: %(default)s)")
    parser.add_argument("--module", action="append", help="s8, v2, v3 or v4; may be repeated (default: s8 and the best "
                        "64-bit module of this processor)")
    parser.add_argument("--filter", default=".", help="regular expression on family/case")
    parser.add_argument("--rounds", type=int, default=101, help="turns of each contestant (default: %(default)s)")
    parser.add_argument("--below", type=float, help="print only the cases with a ratio below this")
    parser.add_argument("--record", metavar="FILE", help="write the ratios to a file too, those of one module and of "
                        "cases that are called family/function/length")
    parser.add_argument("--times", action="store_true", help="print our median time in nanoseconds too")
    parser.add_argument("--targets", action="store_true", help="print what has to be built for this, and end")
    options = parser.parse_args()

    modules = options.module
    if not modules:
        flags = open("/proc/cpuinfo").read()
        best = "v4" if "avx512vl" in flags and "avx512bw" in flags else "v3" if "avx2" in flags else "v2"
        modules = ["s8", best]
    if options.targets:
        print(*(f"kvrs_bench_{module}" for module in modules))
        return
    for module in modules:
        program = os.path.join(options.build, "bench", f"kvrs_bench_{module}")
        print(f"\nmodule {module}: time of the peer / time of kvrs")
        means = defaultdict(list)
        results = run(program, options.filter, options.rounds)
        measured, compiler = next(results)
        rows = []
        for case, by in results:
            ours = by.pop("kvrs", None)
            if ours is None or not by:
                continue
            rows.append((case, by))
            for who, (_, ratio) in by.items():
                means[case.split("/")[0], who].append(ratio)
            if options.below is not None and all(ratio >= options.below for _, ratio in by.values()):
                continue
            cells = [f"{who} {ratio:.2f}" for who, (_, ratio) in by.items()]
            print(f"  {case:<40} {'  '.join(cells)}" + (f"  ({ours[0]:.1f} ns)" if options.times else ""),
                  flush=True)
        if options.record:
            write_record(options.record, measured, compiler, rows)
        for (family, who), ratios in means.items():
            print(f"  {family} against {who}: geometric mean {geometric_mean(ratios):.2f}, "
                  f"lowest {min(ratios):.2f} of {len(ratios)}")


if __name__ == "__main__":
    main()
