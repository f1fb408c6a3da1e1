#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks the format of the sources and the rules of the house.

- C and C++ is as clang-format leaves it; no text has tabs or trailing blanks, no script lines beyond 120 columns.
- Every file says its licence.
- A room includes lower rooms only, and the library nothing that needs the C++ run-time library.
- Instruction sets are named in frame/simd.h alone. Intrinsics are used in frame/ alone, assembler there and in the
  short paths of Copy and Fill.
- Every header of frame/ has its test in tests/frame/headers/.
- No two functors have the same text.
- An export that skips checks, by the rows of the contract tests, has a comment that says so.
- Every declared function stands in a group of the manual, below its contract. A header with complex elements says in
  its first line that C's and C++'s complex numbers may stand for them. Families whose sources run teams of threads have
  a paragraph in their contract that begins with "Threads:"; so have those of docs/threads.md, and no others.
- The full name of every declared function stands in one header and, unless it is a second name, is defined in one
  source; no macro pastes names.

What each rule of the second group says is explained in docs/architecture.md.
"""
import argparse
import re
import shutil
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
import declarations  # noqa: E402

TOP = Path(__file__).resolve().parent.parent

# From the lowest up; rooms on one line do not know each other.
FLOORS = [["include"], ["core", "frame"], ["vector"], ["stats", "synth", "transforms"], ["filters", "comms"]]
FLOOR_OF = {room: floor for floor, rooms in enumerate(FLOORS) for room in rooms}
LIBRARY = set(FLOOR_OF)

CXX = {".c", ".h", ".cpp"}
# Formats without comments, and what has its own way to say it.
NO_LICENCE_TAG = {".json", ".md", ".out", ".png", ".svg"}
NO_LICENCE_TAG_NAMES = {"LICENSE", ".gitignore", ".clang-format"}
# Formats of Debian's tools, some without comments; debian/copyright tells their licence.
NO_LICENCE_TAG_ROOMS = {"debian"}
MAKEFILES = {"rules"}
BINARY = {".png"}
MOST_COLUMNS = 120

# Headers of the C++ library that bring in code of its run-time library, or invite to.
RUNTIME_HEADERS = {"vector", "string", "map", "set", "unordered_map", "memory", "iostream", "sstream", "fstream",
                   "ostream", "istream", "stdexcept", "functional", "thread", "mutex", "new", "random", "deque", "list",
                   "any", "optional", "variant", "regex", "locale", "future", "exception", "typeinfo"}
INSTRUCTION_SET = re.compile(r"\b(__AVX\w*|__SSE\w*|__SSSE\w*|__FMA__|__F16C__|__BMI\w*|__x86_64__|__i386__|HWY_TARGET|"
                             r"HWY_ARCH_\w+|HWY_(AVX\w*|SSE\w*|SSSE\w*))\b")

INTRINSIC = re.compile(r"\b(_mm(256|512)?_\w+|__builtin_ia32_\w+)")
# Instructions: an empty text only keeps the compiler from something.
ASSEMBLER = re.compile(r'\basm( volatile)?\("(?!")')
MAY_ASSEMBLE = {TOP / "vector/copy.h", TOP / "vector/fill.h"}

DEFINITION = re.compile(r"^[\w:*<> ]*?\b(kvrs[A-Z0-9]\w*)\s*\([^;{}]*?\)\s*noexcept\s*\{", re.M)


TAG = "SPDX-License-Identifier: MIT"


def room_of(path):
    return path.relative_to(TOP).parts[0]


def tracked_files():
    if shutil.which("git"):
        listed = subprocess.run(["git", "ls-files", "--cached", "--others", "--exclude-standard"], cwd=TOP,
                                capture_output=True, text=True)
        if listed.returncode == 0:
            return [TOP / name for name in listed.stdout.splitlines() if (TOP / name).is_file()]
    # Not a clone, an unpacked archive for instance.
    return [path for path in TOP.rglob("*") if path.is_file() and room_of(path) not in ("build", ".git") and
            path.parent.name != "__pycache__"]


class Findings:
    def __init__(self):
        self.count = 0

    def add(self, path, line, what):
        self.count += 1
        print(f"{path.relative_to(TOP)}:{line}: {what}")


def without_comments(text):
    """C or C++ without comments, on the same lines."""
    def blank(match):
        return re.sub(r"[^\n]", " ", match.group())
    return re.sub(r"/\*.*?\*/|//[^\n]*", blank, text, flags=re.S)


def check_format(files, findings, fix):
    command = ["clang-format", "-i"] if fix else ["clang-format", "--dry-run", "--Werror"]
    done = subprocess.run([*command, *map(str, files)], capture_output=True, text=True)
    for line in done.stderr.splitlines():
        match = re.match(r"(.+?):(\d+):\d+: error: ", line)
        if match:
            findings.add(Path(match.group(1)), int(match.group(2)), "not as clang-format leaves it (./kvrs lint --fix)")
    if done.returncode != 0 and findings.count == 0:
        sys.exit(f"clang-format failed:\n{done.stderr}")


def fix_tag(path):
    """Gives the licence tag a line of its own where it follows other words of a comment."""
    text = path.read_text()
    path.write_text(re.sub(rf"^( ?\*|//) (.*\S) ({TAG}.*)$", r"\1 \2\n\1 \3", text, count=1, flags=re.M))


def check_text(path, text, findings):
    if text and not text.endswith("\n"):
        findings.add(path, text.count("\n") + 1, "no end of line at the end of the file")
    for number, line in enumerate(text.splitlines(), 1):
        if "\t" in line and path.name not in MAKEFILES:
            findings.add(path, number, "a tab")
        if line != line.rstrip():
            findings.add(path, number, "blanks at the end of the line")
        if len(line) > MOST_COLUMNS and path.suffix in (".py", ".sh"):
            findings.add(path, number, f"{len(line)} columns, {MOST_COLUMNS} at most")
    if (path.suffix not in NO_LICENCE_TAG and path.name not in NO_LICENCE_TAG_NAMES and
            room_of(path) not in NO_LICENCE_TAG_ROOMS):
        if not any(re.fullmatch(rf"\W*{TAG}\W*", line) for line in text.splitlines()[:30]):
            findings.add(path, 1, f"no line \"{TAG}\" of its own at the head of the file")


def check_public_header(path, text, findings):
    """Tables of contracts are whole, every declaration stands in a documented group, and users of complex types learn
    that theirs will do."""
    code = without_comments(text)
    complex_types = [f"{width}fc" for width in (32, 64) if f"Kvr{width}fc" in code]
    sentence = f"Elements of {' and '.join(complex_types)} may be C's and C++'s complex numbers (types.h)."
    if path.name != "types.h" and complex_types and sentence not in text.splitlines()[0]:
        findings.add(path, 1, f'the first line does not end in "{sentence}"')
    depth = 0
    for number, line in enumerate(text.splitlines(), 1):
        if re.match(r" \* \|", line) and not line.endswith("|"):
            findings.add(path, number, "a row of a table that does not end in this line")
        depth += line.count("@{") - line.count("@}")
        if line.startswith(("KVRS_API ", "KVRSCORE_API ")) and depth == 0:
            findings.add(path, number, "declared outside of a documented group (@defgroup)")


def check_library_source(path, text, findings):
    code = without_comments(text)
    floor = FLOOR_OF[room_of(path)]
    for number, line in enumerate(code.splitlines(), 1):
        include = re.match(r'\s*#\s*include\s*(["<])([^">]+)[">]', line)
        if include:
            quote, name = include.groups()
            room = name.split("/")[0]
            if quote == '"' and FLOOR_OF.get(room, 0) > floor:
                findings.add(path, number, f"{room_of(path)}/ includes {room}/, which stands above it")
            if quote == '"' and FLOOR_OF.get(room, -1) == floor and room != room_of(path) and floor > 0:
                findings.add(path, number, f"{room_of(path)}/ includes {room}/, which stands beside it")
            if quote == "<" and name in RUNTIME_HEADERS:
                findings.add(path, number, f"<{name}> belongs to the C++ run-time library")
        if path != TOP / "frame/simd.h":
            match = INSTRUCTION_SET.search(line)
            if match:
                findings.add(path, number, f"{match.group()}: instruction sets are the business of frame/simd.h alone")
        if room_of(path) != "frame":
            match = INTRINSIC.search(line) or (path not in MAY_ASSEMBLE and ASSEMBLER.search(line))
            if match:
                findings.add(path, number, f"{match.group()}: what Highway has no word for is the business of frame/")
        if re.match(r"\s*#\s*define\b", line) and "##" in line and "kvrs" in line:
            findings.add(path, number, "a macro that pastes names")


def check_frame_tests(findings):
    """Every header of frame/ has a test of its own, and every such test its header."""
    tests = TOP / "tests/frame/headers"
    tested = {path.name.removesuffix("_test.cpp"): path for path in tests.glob("*_test.cpp")}
    headers = {path.stem: path for path in (TOP / "frame").glob("*.h")}
    for name in sorted(headers.keys() - tested.keys()):
        findings.add(headers[name], 1, f"has no test {(tests / name).relative_to(TOP)}_test.cpp")
    for name in sorted(tested.keys() - headers.keys()):
        findings.add(tested[name], 1, f"tests no header of frame/: there is no frame/{name}.h")


CLASS = re.compile(r"^[ \t]*(?:template <[^\n]*>\s*)?(?:struct|class) (\w+)[^;{}()]*\{", re.M)


def braced(code, start):
    """What stands between the brace at `start` and its partner, these included."""
    depth = 0
    for brace in re.finditer(r"[{}]", code[start:]):
        depth += 1 if brace.group() == "{" else -1
        if depth == 0:
            return code[start:start + brace.end()]
    return ""


def check_functors(code_of, findings):
    """No two types with an operator() that differ in nothing but their names."""
    first = {}
    for path, code in code_of.items():
        for match in CLASS.finditer(code):
            body = braced(code, match.end() - 1)
            if "operator()" not in body:
                continue
            # A body that calls a word of Highway of the type's name is not the body of another that does.
            text = " ".join(re.sub(rf"(?<!hn::)\b{match.group(1)}\b", "Self", body).split())
            line = code[:match.start(1)].count("\n") + 1
            if text in first:
                findings.add(path, line, f"{match.group(1)} is the same as {first[text]}")
            else:
                first[text] = f"{match.group(1)} of {path.relative_to(TOP)}:{line}"


def skips_checks():
    """Pattern of the functions that the contract tests take to skip checks."""
    rows = []
    for path in (TOP / "tests/contract/families").glob("*.cpp"):
        for row in re.findall(r"\.(?:unchecked|wordless) = \{([^}]*)\}", path.read_text()):
            rows += re.findall(r'"([^"]+)"', row)
    return re.compile("|".join(f"(?:{row})" for row in rows))


def check_comments_on_skipped_checks(sources, findings):
    skipping = skips_checks()
    for path, text in sources:
        for match in DEFINITION.finditer(without_comments(text)):
            before = text[:match.start()].splitlines()
            if skipping.fullmatch(match.group(1)) and not (before and before[-1].startswith("//")):
                findings.add(path, len(before) + 1, f"{match.group(1)} skips checks and has no comment that says so")


RUNS_TEAMS = re.compile(r"\b(runSliced|slicedRoots|runTeam)\b[<(]")


def check_threads(sources, findings):
    """Families that run teams say so in their contracts, and those only."""
    header_of = {function.name: function.header for function in declarations.functions(TOP / "include")}
    shown = re.findall(r"kvrs[A-Z]\w+", (TOP / "docs/threads.md").read_text().partition("| Functions | from |")[2]
                       .partition("\n\n")[0])
    wanted = {header_of[name] for name in shown if name in header_of}
    for path, text in sources:
        if RUNS_TEAMS.search(text) and room_of(path) != "frame":
            wanted |= {header_of[name] for name in DEFINITION.findall(without_comments(text)) if name in header_of}
    for header in sorted(set(header_of.values())):
        path = TOP / "include" / header
        says = re.search(r"^ \* Threads: ", path.read_text(), re.M)
        if header in wanted and not says:
            findings.add(path, 1, 'no paragraph "Threads:" with the length from which calls may use several')
        if says and header not in wanted:
            findings.add(path, 1, 'says "Threads:", but docs/threads.md has none of its functions')


def check_names(sources, findings):
    """Each declared function once in the headers and once defined."""
    functions = declarations.functions(TOP / "include")
    listed = {name for name, _ in declarations.export_list(TOP / "frame/exports.def")}
    aliases = declarations.aliases(TOP / "frame/aliases.def")
    seen = {}
    for function in functions:
        header = TOP / "include" / function.header
        if function.name in seen:
            findings.add(header, 1, f"{function.name} is declared in {seen[function.name]} too")
        seen[function.name] = function.header
        if function.name not in listed:
            findings.add(header, 1, f"{function.name} does not stand in frame/exports.def")
    defined = {}
    for path, text in sources:
        for match in DEFINITION.finditer(without_comments(text)):
            name = match.group(1)
            line = text[:match.start()].count("\n") + 1
            if name in defined:
                findings.add(path, line, f"{name} is defined in {defined[name].relative_to(TOP)} too")
            defined[name] = path
            if name in aliases:
                findings.add(path, line, f"{name} is a second name in frame/aliases.def and defined here")
            if name not in seen:
                findings.add(path, line, f"{name} is declared in no header")
    for name in sorted(seen.keys() - defined.keys() - aliases.keys()):
        findings.add(TOP / "include" / seen[name], 1, f"the definition of {name} does not stand in any source in full")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--fix", action="store_true", help="mend what can be mended: format, licence tags")
    parser.add_argument("--rules-only", action="store_true", help="leave clang-format out")
    options = parser.parse_args()

    findings = Findings()
    files = [path for path in tracked_files() if path.suffix not in BINARY]
    if not options.rules_only:
        check_format([path for path in files if path.suffix in CXX], findings, options.fix)
    sources, code_of = [], {}
    for path in files:
        if options.fix and path.suffix in CXX:
            fix_tag(path)
        text = path.read_text()
        check_text(path, text, findings)
        if path.suffix in CXX and room_of(path) in LIBRARY:
            check_library_source(path, text, findings)
            if room_of(path) == "include":
                check_public_header(path, text, findings)
            code_of[path] = without_comments(text)
            if path.suffix != ".h" and room_of(path) != "core":
                sources.append((path, text))
    check_names(sources, findings)
    check_threads(sources, findings)
    check_comments_on_skipped_checks(sources, findings)
    check_frame_tests(findings)
    check_functors(code_of, findings)
    if findings.count:
        sys.exit(f"lint: {findings.count} findings")
    print(f"lint: {len(files)} files, no findings")


if __name__ == "__main__":
    main()
