#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks that what README.md and docs/ name exists: links, paths, commands of ./kvrs and their options, presets, and
names of functions. Checks what is generated and kept besides: the table in README.md, the texts of statuses, the
version of the Debian packages."""
import json
import re
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
import declarations  # noqa: E402
import families  # noqa: E402

TOP = Path(__file__).resolve().parent.parent
ROOMS = {path.name for path in TOP.iterdir() if path.is_dir()}


def pages():
    return [TOP / "README.md", *sorted((TOP / "docs").glob("*.md"))]


def numbered(text):
    return enumerate(text.splitlines(), 1)


def check_links(page, text):
    for number, line in numbered(text):
        for target in re.findall(r"\]\(([^)#]+)(?:#[^)]*)?\)", line):
            if not re.match(r"https?://", target) and not (page.parent / target).exists():
                yield number, f"there is no {target}"


def code_spans(text):
    """The words of inline code and of code blocks, with their lines; blocks of C are left to the compiler."""
    block = None
    for number, line in numbered(text):
        fence = re.match(r"```(\w*)", line)
        if fence:
            block = fence.group(1) if block is None else None
        elif block is None:
            for span in re.findall(r"`([^`]+)`", line):
                yield number, span, False
        elif block == "sh":
            yield number, line.split("#")[0], True


def check_paths(text):
    for number, span, _ in code_spans(text):
        for word in span.split():
            path = word.rstrip(",:;.")
            if path.split("/")[0] in ROOMS - {"build"} and "/" in path and "$" not in path:
                if not any(TOP.glob(path.rstrip("/"))):
                    yield number, f"there is no {path}"


def check_commands(text, usage, presets):
    commands = re.findall(r"^  (\w+)", usage, re.M)
    bench_options = subprocess.run([sys.executable, TOP / "tools/bench_ratios.py", "--help"], capture_output=True,
                                   text=True, check=True).stdout
    for number, span, in_block in code_spans(text):
        match = re.match(r"(?:\S+=\S+ )*\./kvrs (\w+)(.*)", span.strip())
        if match:
            command, arguments = match.groups()
            if command not in commands:
                yield number, f"./kvrs has no command {command}"
            for option in re.findall(r"--\w[\w-]*", arguments):
                if option not in (usage + bench_options if command == "bench" else usage):
                    yield number, f"./kvrs {command} has no option {option}"
        elif in_block and span.strip().startswith("./") and not (TOP / span.split()[0]).exists():
            yield number, f"there is no {span.split()[0]}"
        for preset in re.findall(r"--preset (\w+)", span):
            if preset not in presets:
                yield number, f"there is no preset {preset}"


def check_names(text, names):
    for number, span, _ in code_spans(text):
        for name in re.findall(r"\b(?:kvrs[A-Z]\w*_\w+|kvrsGetLibVersion|kvr[MF]\w+|own[A-Z]\w+)\b", span):
            if name not in names:
                yield number, f"no header declares {name}"


def main():
    usage = subprocess.run([TOP / "kvrs", "help"], capture_output=True, text=True, check=True).stdout
    presets = {preset["name"] for preset in json.loads((TOP / "CMakePresets.json").read_text())["configurePresets"]}
    names = {f.name for f in declarations.functions(TOP / "include")}
    names |= set(re.findall(r"\b(?:kvr|own)[A-Z]\w*(?=\()", (TOP / "include/kvrscore.h").read_text()))
    for header in (TOP / "include/kvrs").glob("*.h"):
        names |= set(re.findall(r"\b(kvr[A-Z]\w*) = -?\d", header.read_text()))
    bad = []
    for page in pages():
        text = page.read_text()
        for number, what in [*check_links(page, text), *check_paths(text), *check_commands(text, usage, presets),
                             *check_names(text, names)]:
            bad.append(f"{page.relative_to(TOP)}:{number}: {what}")
    for _, header, _ in families.families():
        snippet = TOP / "examples/snippets" / f"{Path(header).stem}.c"
        for path in (snippet, snippet.with_suffix(".out")):
            if not path.exists():
                bad.append(f"include/{header}: its family has no {path.relative_to(TOP)}")
    version = re.search(r"project\(kvrs VERSION ([0-9.]+)", (TOP / "CMakeLists.txt").read_text()).group(1)
    if not (TOP / "debian/changelog").read_text().startswith(f"kvrs ({version}) "):
        bad.append(f"debian/changelog:1: the version is not {version}, that of CMakeLists.txt")
    for tool in ("families.py", "make_status_text.py"):
        done = subprocess.run([sys.executable, TOP / "tools" / tool, "--check"], capture_output=True, text=True)
        if done.returncode != 0:
            bad.append(done.stderr.strip())
    if bad:
        sys.exit("\n".join(bad))
    print(f"{len(pages())} pages, nothing missing")


if __name__ == "__main__":
    main()
