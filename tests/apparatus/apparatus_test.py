#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs the test program with wrong functions (wrong.h) in place of the library's: the tests that are named beside a
fault must fail with it, and succeed without.

usage: apparatus_test.py PROGRAM WRONG_LIBRARY
"""
import os
import subprocess
import sys

SKIPPED = 77


def run(program, library, fault, *options):
    environment = dict(os.environ, LD_PRELOAD=library, KVRS_WRONG=fault)
    return subprocess.run([program, "--gtest_brief=1", *options], env=environment, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, errors="replace")


def main():
    program, library = sys.argv[1:]
    plain = run(program, library, "", "--gtest_list_tests")
    if plain.returncode == SKIPPED:
        sys.exit(SKIPPED)
    lines = run(program, library, "list").stdout.splitlines()
    faults = [line.split("\t") for line in lines if "\t" in line]
    if len(faults) < 30 or len({what for what, _ in faults}) != len(faults):
        sys.exit(f"{len(faults)} faults")
    bad = []
    right = run(program, library, "", "--gtest_filter=" + ":".join(sorted({tests for _, tests in faults})))
    if right.returncode != 0:
        sys.exit("fails with right functions:\n" + right.stdout[-2000:])
    for what, tests in faults:
        done = run(program, library, what, f"--gtest_filter={tests}", "--gtest_fail_fast")
        if done.returncode == 0:
            bad.append(f"{tests} does not see: {what}")
    print(f"{len(faults)} faults, {len(faults) - len(bad)} seen")
    if bad:
        sys.exit("\n".join(bad))


if __name__ == "__main__":
    main()
