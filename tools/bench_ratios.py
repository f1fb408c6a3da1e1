#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs the benchmarks and prints each peer's time over ours: above 1, kvrs is ahead.

All contestants of a case run in one process, their repetitions shuffled among each other, and the ratio is that of
the medians: what disturbs the machine disturbs all of them alike.
"""
import argparse
import json
import math
import os
import statistics
import subprocess
import sys
from collections import defaultdict


def run(program, pattern, repetitions, min_time):
    """Maps case -> who -> median time."""
    command = [program, "--benchmark_format=json", f"--benchmark_filter={pattern}",
               "--benchmark_enable_random_interleaving=true", f"--benchmark_repetitions={repetitions}",
               f"--benchmark_min_time={min_time}"]
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    if done.returncode != 0:
        sys.exit(f"{program} failed:\n{done.stderr}")
    if not done.stdout.strip():
        return {}
    times = defaultdict(lambda: defaultdict(list))
    for entry in json.loads(done.stdout)["benchmarks"]:
        if entry.get("run_type") == "iteration":
            case, who = entry["name"].split("/repeats:")[0].rsplit("/", 1)
            # A thread's own time does not count what other programs take; work on several threads needs the clock.
            # A thread's own time leaves out what other programs take; work on several threads needs the clock.
            times[case][who].append(entry["real_time" if "/threads/" in case else "cpu_time"])
    return {case: {who: statistics.median(t) for who, t in by.items()} for case, by in times.items()}


def geometric_mean(values):
    return math.exp(sum(map(math.log, values)) / len(values))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", default="build/release", help="build tree (default: %(default)s)")
    parser.add_argument("--module", action="append", help="s8, v2, v3 or v4; may be repeated (default: s8 and the best "
                        "64-bit module of this processor)")
    parser.add_argument("--filter", default=".", help="regular expression on family/case/who")
    parser.add_argument("--repetitions", type=int, default=9)
    parser.add_argument("--min-time", type=float, default=0.01, help="seconds of each repetition")
    parser.add_argument("--times", action="store_true", help="print our median time in nanoseconds too")
    options = parser.parse_args()

    modules = options.module
    if not modules:
        flags = open("/proc/cpuinfo").read()
        best = "v4" if "avx512vl" in flags and "avx512bw" in flags else "v3" if "avx2" in flags else "v2"
        modules = ["s8", best]
    for module in modules:
        results = run(os.path.join(options.build, "bench", f"kvrs_bench_{module}"), options.filter,
                      options.repetitions, options.min_time)
        print(f"\nmodule {module}: time of the peer / time of kvrs")
        means = defaultdict(list)
        for case, by in results.items():
            ours = by.pop("kvrs", None)
            if ours is None or not by:
                continue
            cells = [f"{who} {t / ours:.2f}" for who, t in by.items()]
            for who, t in by.items():
                means[case.split("/")[0], who].append(t / ours)
            print(f"  {case:<40} {'  '.join(cells)}" + (f"  ({ours:.1f} ns)" if options.times else ""))
        for (family, who), ratios in means.items():
            print(f"  {family} against {who}: geometric mean {geometric_mean(ratios):.2f}, "
                  f"lowest {min(ratios):.2f} of {len(ratios)}")


if __name__ == "__main__":
    main()
