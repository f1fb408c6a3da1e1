#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs the fuzzer on modules and compares their results.

usage: fuzz.py [--seconds T] [--inputs N] [--seed S] [--call N] [--only MODULE] [--against MODULE]
               MODULE=PROGRAM=DIRECTORY ...

Inputs of a seed are run in batches, on a module and then the same ones on the module that it is compared with, which is
the first other one that this processor runs. Statuses must be the same, and results where compare_modules.py lets no
function's differ. With --call one input is run, and its calls are printed. --only names the module to be fuzzed, and
--against none the module not to be compared with. --inputs bounds the inputs of a module, so that a quick machine runs
no others than a slow one does."""
import argparse
import os
import subprocess
import sys
import tempfile
import time
from collections import Counter, defaultdict
from itertools import zip_longest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent.parent / "differential"))
from compare_modules import SKIPPED, is_runnable  # noqa: E402

BATCH = 1000  # inputs
STATUS_OK = 0


class Module:
    def __init__(self, word):
        self.name, self.program, self.directory = word.split("=")

    def run(self, *arguments):
        environment = dict(os.environ, LD_LIBRARY_PATH=self.directory, OMP_WAIT_POLICY="passive")
        return subprocess.run([self.program, *map(str, arguments)], env=environment, stdout=subprocess.PIPE, text=True,
                              errors="replace", check=False)


def by_input(results):
    """{input: its calls} of lines that begin with the number of an input."""
    calls = defaultdict(list)
    for line in results:
        calls[line.split()[0]].append(line)
    return calls


class Campaign:
    """What has been found on a module."""

    def __init__(self, module, seed):
        self.module, self.seed = module, seed
        self.seen = defaultdict(Counter)  # function -> status -> calls
        self.findings = {}  # what, without addresses -> all that was said of it
        self.inputs = 0

    def add(self, what, reproduction):
        key = what.split(" at 0x")[0]
        if key not in self.findings:
            self.findings[key] = f"{what}\n{reproduction}"
            print(self.findings[key], flush=True)

    def batch(self, first, count, results):
        """Runs inputs, going on behind those that crash. The number of each that does."""
        crashes, end = [], first + count
        while first < end:
            done = self.module.run("--seed", self.seed, "--first", first, "--count", end - first, "--results", results)
            lines = done.stdout.splitlines()
            for line, following in zip(lines, lines[1:] + [""]):
                if line.startswith("seen "):
                    _, name, *statuses = line.split()
                    self.seen[name].update()
                    for status in statuses:
                        number, calls = status.split(":")
                        self.seen[name][int(number)] += int(calls)
                elif following.startswith("  ./kvrs"):
                    self.add(line, following)
            if done.returncode in (0, 1):
                break
            if not lines or " --call " not in lines[-1]:
                sys.exit(f"{self.module.name}: the fuzzer ended with {done.returncode}, after:\n{done.stdout[-2000:]}")
            crashes.append(int(lines[-1].split()[-1]))
            first = crashes[-1] + 1
        self.inputs += count
        return crashes

    def compare(self, mine, other, name):
        """The first difference of each input: what follows in it may come from that."""
        theirs = by_input(other)
        for number, calls in by_input(mine).items():
            for a, b in zip_longest(calls, theirs[number], fillvalue=""):
                if a == b:
                    continue
                _, function, status, *_ = (a or b).split()
                what = f"{function}: other results than on {name}"
                if a.split()[:2] != b.split()[:2]:
                    what = f"{function}: other calls than on {name}"
                elif b.split()[2] != status:
                    what = f"{function}: status {status}, and {b.split()[2]} on {name}"
                self.add(what, f"  ./kvrs fuzz --module {self.module.name} --seed {self.seed} --call {number}")
                break

    def report(self, seconds):
        calls = sum(sum(statuses.values()) for statuses in self.seen.values())
        statuses = sorted(set().union(*self.seen.values()))
        never = sorted(name for name, found in self.seen.items() if STATUS_OK not in found)
        called = sum(map(bool, self.seen.values()))
        print(f"{self.module.name}: {seconds:.0f} s, {self.inputs} inputs, {calls} calls of {called} functions, "
              f"{len(self.findings)} findings")
        print(f"  {len(statuses)} statuses: {' '.join(map(str, statuses))}")
        if never:
            print(f"  never kvrStatusOk: {' '.join(never)}")


def fuzz(module, reference, seconds, inputs, seed):
    campaign = Campaign(module, seed)
    other = Campaign(reference, seed) if reference else None
    begin, first = time.monotonic(), 0
    with tempfile.TemporaryDirectory() as directory:
        files = [Path(directory) / "mine", Path(directory) / "other"]
        while time.monotonic() < begin + seconds and first < inputs:
            crashes = campaign.batch(first, BATCH, files[0])
            if other and not crashes and not other.batch(first, BATCH, files[1]):
                campaign.compare(*(file.read_text().splitlines() for file in files), reference.name)
            first += BATCH
    campaign.report(time.monotonic() - begin)
    return len(campaign.findings) + (len(other.findings) if other else 0)


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("--seconds", type=float, default=60)
    parser.add_argument("--inputs", type=int, default=sys.maxsize)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--call", type=int)
    parser.add_argument("--only")
    parser.add_argument("--against")
    parser.add_argument("modules", nargs="+", type=Module)
    arguments = parser.parse_args()
    runnable = [m for m in arguments.modules if is_runnable(m.name)]
    chosen = [m for m in runnable if arguments.only in (None, m.name)]
    if not chosen:
        print("skipped: this processor cannot run the module")
        sys.exit(SKIPPED)
    if arguments.call is not None:
        for module in chosen:
            done = module.run("--seed", arguments.seed, "--first", arguments.call, "--count", 1, "--verbose", 1)
            print(done.stdout, end="")
        sys.exit(done.returncode)
    found = 0
    for module in chosen:
        others = [m for m in runnable if m is not module and arguments.against in (None, m.name)]
        found += fuzz(module, others[0] if others else None, arguments.seconds, arguments.inputs, arguments.seed)
    sys.exit(found != 0)


if __name__ == "__main__":
    main()
