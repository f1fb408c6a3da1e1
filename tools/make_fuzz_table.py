#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes what the fuzzer knows of each function besides the table of the contract tests (tests/fuzz/table.h), in the
same order: which arguments are const, the statuses that its contract names, the struct of the record that it makes,
takes or releases, and whether its results are the same bytes in every module."""
import re
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
sys.path.insert(0, str(Path(__file__).parent.parent / "tests/differential"))
import compare_modules  # noqa: E402
import declarations  # noqa: E402
import make_contract_table  # noqa: E402

# Sums of open order besides those of compare_modules.py, whose data do not show it: random taps and samples lie close
# enough to a half between two integers now and then.
OPEN_ORDER = (r"kvrs(FIR|IIR)Sparse_32f|kvrsIIR(One)?(32|64)[fs]c?_.*|kvrsIIR_(BiQuad)?Direct_16s(_I)?"
              r"|kvrsFIR(MR|One)?(32|64)fc?_.*|kvrsFIR(One)?_32s_.*")
GROUP = re.compile(r"@defgroup (\w+)")


def comments(header):
    return [(m.start(), m.group()) for m in re.finditer(r"/\*\*.*?\*/", header, re.S)]


def groups(include):
    """Name of a group -> (header, begin, end, statuses that its comments name, other groups that they refer to)."""
    found = {}
    for path in sorted(Path(include).glob("kvrs/*.h")):
        text = path.read_text()
        starts = [m.start() for m in GROUP.finditer(text)]
        for begin, end in zip(starts, starts[1:] + [len(text)]):
            name = GROUP.match(text, begin).group(1)
            body = text[begin:text.find("*/", begin)]
            body += "".join(comment for at, comment in comments(text) if begin < at < end)
            references = set(re.findall(r"@ref (\w+)", body)) | set(re.findall(r"\b(\w+)\.h\)", body))
            found[name] = (f"kvrs/{path.name}", begin, end, set(re.findall(r"::(kvrStatus\w+)", body)), references)
    return found


def statuses(function, include, groups_):
    """The statuses of the group that declares a function, and of the groups that this one refers to."""
    text = (Path(include) / function.header).read_text()
    at = re.search(rf"^KVRS_API\s[^;(]*?\b{function.name}\s*\(", text, re.M).start()
    group = next(g for g in groups_.values() if g[0] == function.header and g[1] < at < g[2])
    named = set(group[3])
    for reference in group[4]:
        if reference in groups_:
            named |= groups_[reference][3]
    if not named:
        sys.exit(f"{function.name}: its contract names no status")
    return sorted(named | {"kvrStatusOk"})


def is_exact(name):
    patterns = [pattern for pattern, _ in compare_modules.ORDER_FREE] + [compare_modules.ROUNDED, OPEN_ORDER]
    return not any(re.fullmatch(pattern, name) for pattern in patterns)


def record(function, structs):
    for p in function.parameters:
        base = declarations.base(p.type)
        if "*" in p.type and make_contract_table.CONTEXT.match(base):
            return structs.get(base, base)
    return ""


def main():
    include, target = sys.argv[1], Path(sys.argv[2])
    structs, groups_ = declarations.structs(include), groups(include)
    lists, rows, blocks = {}, [], []
    for f in declarations.functions(include):
        if f.result != "KvrStatus":
            base = declarations.base(f.result)
            if f.name.startswith("kvrsMalloc_"):
                blocks.append(f'{{"{f.name}", [](int n) -> void* {{ return {f.name}(n); }}, sizeof({base})}},')
            continue
        named = ", ".join(statuses(f, include, groups_))
        list_ = lists.setdefault(named, f"statuses_{len(lists)}")
        const = sum(1 << i for i, p in enumerate(f.parameters) if p.type.startswith("const "))
        rows.append(f'{{"{f.name}", {const}, {list_}, "{record(f, structs)}", {str(is_exact(f.name)).lower()}}},')
    tables = [f"constexpr KvrStatus {name}[] = {{{named}}};" for named, name in lists.items()]
    target.write_text("\n".join([
        "// Made by tools/make_fuzz_table.py.", '#include "kvrs.h"', '#include "tests/fuzz/table.h"', "",
        "namespace kvrs::test {", "namespace {", *tables, "const Facts table[] = {", *rows, "};",
        "const Allocation blocks[] = {", *blocks, "};", "}  // namespace",
        "std::span<const Facts> facts() { return table; }",
        "std::span<const Allocation> allocations() { return blocks; }", "}  // namespace kvrs::test", ""]))


if __name__ == "__main__":
    main()
