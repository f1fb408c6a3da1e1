#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints what a build and its tests cost: seconds and bytes of each room, module, source and test suite.

Seconds are processor time where the build's compiler launcher was `costs.py --launch FILE` with FILE costs.tsv in the
build directory, as `./kvrs costs` has it, which makes docs/costs.md of a new build. Of other builds they are those of
the build's own log: clock time, which a compiler cache and other programs on the machine change. Bytes are those of
code and data.
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

MEASURED = "costs.tsv"
ROOMS = ("frame", "vector", "stats", "synth", "transforms", "filters", "comms")

PAGE = """# What a build costs

`./kvrs costs` writes this page, from a build of everything without a compiler cache{tests}.
Seconds are processor time of {compiler}
on {processor}; on two cores a build takes about half of them. Bytes are those of code and data. All in all:
{sources:,} sources, {seconds:,.0f} seconds.
"""


def processor_seconds(who=resource.RUSAGE_CHILDREN):
    usage = resource.getrusage(who)
    return usage.ru_utime + usage.ru_stime


def launch(log, command):
    """Runs a compiler and adds a line to the log: output, seconds."""
    status = subprocess.run(command).returncode
    if "-o" in command:
        with open(log, "a") as file:
            file.write(f"{command[command.index('-o') + 1]}\t{processor_seconds():.2f}\n")
    sys.exit(status)


def seconds_of_outputs(build):
    """{output: seconds} by the last time each was made."""
    if (build / MEASURED).exists():
        rows = (line.split("\t") for line in (build / MEASURED).read_text().splitlines())
        return {output: float(seconds) for output, seconds in rows}
    made = {}
    for line in (build / ".ninja_log").read_text().splitlines():
        fields = line.split("\t")
        if len(fields) == 5:
            made[fields[3]] = (int(fields[1]) - int(fields[0])) / 1000
    return made


def bytes_of(paths):
    """Code and data of binary files."""
    listed = subprocess.run(["size", *map(str, paths)], check=True, stdout=subprocess.PIPE, text=True)
    return [int(line.split()[3]) for line in listed.stdout.splitlines()[1:]]


class Source:
    def __init__(self, target, name, seconds):
        self.target, self.name, self.seconds, self.bytes = target, name, seconds, 0


def sources(build):
    """What every object file and precompiled header that is there took."""
    found, paths = [], []
    for output, seconds in seconds_of_outputs(build).items():
        match = re.search(r"^(.*?)CMakeFiles/([^/]+)\.dir/(.+)\.(o|gch)$", output)
        path = build / output
        if match and path.exists():
            room, target, name, kind = match.groups()
            found.append(Source(target, room + name if kind == "o" else "headers, compiled beforehand", seconds))
            if kind == "o":
                paths.append((found[-1], path))
    for (source, _), count in zip(paths, bytes_of([path for _, path in paths])):
        source.bytes = count
    return found


def table(headings, rows):
    rows = [[f"{cell:,.1f}" if isinstance(cell, float) else f"{cell:,}" if isinstance(cell, int) else cell
             for cell in row] for row in rows]
    print("| " + " | ".join(headings) + " |")
    print("|" + "|".join("---" if i == 0 else "---:" for i in range(len(headings))) + "|")
    for row in rows:
        print("| " + " | ".join(row) + " |")
    print()


def grouped(items, key):
    """{key: items}, the dearest first."""
    groups = defaultdict(list)
    for item in items:
        groups[key(item)].append(item)
    return dict(sorted(groups.items(), key=lambda group: -sum(item.seconds for item in group[1])))


def sums(items):
    return len(items), sum(item.seconds for item in items), sum(item.bytes for item in items)


def dearest(items, most, targets):
    """The names of the dearest sources, with the seconds in each target and the bytes in the last one."""
    for name, group in list(grouped(items, lambda item: item.name).items())[:most]:
        by_target = {item.target: item for item in group}
        yield (f"`{name}`" if "/" in name else name, sum(item.seconds for item in group),
               *(by_target[target].seconds if target in by_target else "" for target in targets),
               by_target[targets[-1]].bytes if targets[-1] in by_target else "")


def print_build(found, modules, most):
    library = [item for item in found if item.target.removeprefix("kvrs_") in modules]
    rest = [item for item in found if item not in library]
    names = [f"kvrs_{module}" for module in modules]

    print("## Targets\n")
    table(("target", "sources", "seconds", "bytes"),
          [(target, *sums(items)) for target, items in grouped(found, lambda item: item.target).items()])
    print("## Rooms\n\nOf all modules together.\n")
    rooms = grouped([item for item in library if item.name.split("/")[0] in ROOMS],
                    lambda item: item.name.split("/")[0])
    table(("room", "sources", "seconds", "bytes"), [(f"`{room}/`", *sums(items)) for room, items in rooms.items()])
    print(f"## The {most} dearest sources\n")
    table(("source", "seconds", *modules, f"bytes in {modules[-1]}"), dearest(library, most, names))
    programs = [f"kvrs_tests_{bits}" for bits in (32, 64)]
    print(f"## The {most} dearest tests to compile\n")
    table(("source", "seconds", "32 bits", "64 bits", "bytes in 64 bits"),
          dearest([item for item in rest if item.target in programs], most, programs))


def run(build, module, is_short):
    """{suite: (tests, seconds)} of the function tests on a module. Processor time is shared out as the suites' clock
    time is."""
    program = build / "tests" / f"kvrs_tests_{32 if module == 's8' else 64}"
    with tempfile.NamedTemporaryFile(suffix=".json") as report:
        environment = dict(os.environ, LD_LIBRARY_PATH=str(build / "modules" / module), KVRS_TEST_MODULE=module,
                           KVRS_TEST_SWEEP="short" if is_short else "", OMP_WAIT_POLICY="passive")
        before = processor_seconds()
        done = subprocess.run([program, "--gtest_brief=1", f"--gtest_output=json:{report.name}"], env=environment,
                              stdout=subprocess.PIPE, text=True)
        if done.returncode:
            sys.exit(f"{module}: the tests fail or do not run\n{done.stdout[-2000:]}")
        spent = processor_seconds() - before
        suites = json.load(open(report.name))["testsuites"]
    clock = {suite["name"]: float(suite["time"].rstrip("s")) for suite in suites}
    share = spent / max(sum(clock.values()), 1e-9)
    by_suite = defaultdict(lambda: (0, 0.0))
    for suite in suites:
        count, seconds = by_suite[suite["name"].split("/")[0]]
        by_suite[suite["name"].split("/")[0]] = count + len(suite["testsuite"]), seconds + share * clock[suite["name"]]
    return by_suite


def print_runs(runs, most):
    modules = list(runs)
    print("## Running the tests\n\nSweeps of the modules between the first and the last one are short.\n")
    table(("module", "tests", "seconds"),
          [(module, *(sum(column) for column in zip(*suites.values()))) for module, suites in runs.items()])
    total = {suite: sum(runs[module].get(suite, (0, 0.0))[1] for module in modules)
             for suite in {suite for suites in runs.values() for suite in suites}}
    print(f"## The {most} dearest suites to run\n")
    table(("suite", "seconds", *modules),
          [(suite, total[suite], *(runs[module].get(suite, (0, 0.0))[1] for module in modules))
           for suite in sorted(total, key=lambda name: -total[name])[:most]])


def first_line(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout.splitlines()[0]


def processor():
    match = re.search(r"^model name\s*: (.+)", Path("/proc/cpuinfo").read_text(), re.M)
    return match.group(1) if match else "an unnamed processor"


def main():
    if sys.argv[1:2] == ["--launch"]:
        launch(sys.argv[2], sys.argv[3:])
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", default="build/release", type=Path, help="build directory")
    parser.add_argument("--run", nargs="*", default=[], metavar="MODULE", help="run the tests on these modules")
    parser.add_argument("--most", default=20, type=int, help="rows of the tables of the dearest")
    parser.add_argument("--page", action="store_true", help="the whole page docs/costs.md")
    options = parser.parse_args()
    found = sources(options.build)
    modules = [module for module in ("s8", "v2", "v3", "v4") if (options.build / "modules" / module).is_dir()]
    if options.page:
        print(PAGE.format(tests=", and the function tests of each module" if options.run else "",
                          compiler=first_line("c++", "--version"), processor=processor(), sources=len(found),
                          seconds=sum(item.seconds for item in found)))
        print("## Modules\n")
        files = [options.build / "modules" / module / "libkvrs.so.6" for module in modules]
        table(("module", "bytes", "bytes of the file"),
              [(module, count, path.resolve().stat().st_size)
               for module, path, count in zip(modules, files, bytes_of(files))])
    print_build(found, modules, options.most)
    if options.run:
        print_runs({module: run(options.build, module, module not in (modules[0], modules[-1]))
                    for module in options.run}, options.most)


if __name__ == "__main__":
    main()
