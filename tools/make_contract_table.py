#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes the table of all declared functions that the contract tests run over (tests/contract/contract.h): for each
function its parameters, a call with values from a list, and the function that releases what it makes."""
import re
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
import declarations  # noqa: E402

CONTEXT = re.compile(r"^(const )?Kvrs\w*(Spec|State)\w*$")


def kind(parameter):
    type_, name = parameter
    base = type_.replace("*", "").strip()
    stars = type_.count("*")
    if stars and CONTEXT.match(base):
        return "newContext" if stars == 2 else "context"
    if stars == 2:
        return "channels"
    if stars == 1:
        return "input" if base.startswith("const ") else "output"
    return "length" if name == "len" else "value"


def argument(parameter, index):
    type_ = parameter.type
    if "*" in type_:
        return f"v.pointer<{type_}>({index})"
    return f"v.number<{type_}>({index})"


def rows(function, names):
    parameters = ", ".join(f'{{Kind::{kind(p)}, "{p.type.replace("const ", "").replace("*", "").strip()}", "{p.name}"}}'
                           for p in function.parameters)
    call = f"{function.name}({', '.join(argument(p, i) for i, p in enumerate(function.parameters))})"
    free = "nullptr"
    if "InitAlloc" in function.name:
        release = function.name.replace("InitAlloc", "Free")
        # A form whose taps are converted shares the release of the record that it makes.
        while release not in names and re.search(r"(32fc|32f)$", release):
            release = re.sub(r"(32fc|32f)$", "", release)
        context = function.parameters[0].type.rstrip("*")
        free = f"[](void* p) {{ return {release}(static_cast<{context}*>(p)); }}"
    table = f"const Parameter parameters_{function.name}[] = {{{parameters}}};"
    entry = (f'{{"{function.name}", parameters_{function.name}, {len(function.parameters)}, '
             f"[](const Values& v) {{ return {call}; }}, {free}}},")
    return table, entry


def main():
    include, target = sys.argv[1], Path(sys.argv[2])
    all_functions = declarations.functions(include)
    names = {f.name for f in all_functions}
    tables, entries = zip(*(rows(f, names) for f in all_functions if f.result == "KvrStatus"))
    text = "\n".join(["// Made by tools/make_contract_table.py.",
                      '#include "kvrs.h"', '#include "tests/contract/contract.h"', "",
                      "namespace kvrs::test {", "namespace {", *tables, "const Function table[] = {", *entries, "};",
                      "}  // namespace", "std::span<const Function> functions() { return table; }",
                      "}  // namespace kvrs::test", ""])
    target.write_text(text)


if __name__ == "__main__":
    main()
