#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes the table of all declared functions that the contract tests run over (tests/contract/contract.h): for each
function its parameters, a call with values from a list, and the function that releases what it makes."""
import re
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
import declarations  # noqa: E402

LENGTHS = {"len", "srcLen", "dstLen", "len1", "len2", "numIters"}
CONTEXT = re.compile(r"^Kvrs\w*(Spec|State)\w*$")


def kind(function, parameter):
    type_, name = parameter
    base = declarations.base(type_)
    stars = type_.count("*")
    is_array = "* const*" in type_
    # An Init that takes the record itself makes one in the caller's memory: it need not be one before.
    if stars == 1 and CONTEXT.match(base) and "Init" in function.name:
        return "output"
    if stars and CONTEXT.match(base):
        return "contexts" if is_array else "newContext" if stars == 2 else "context"
    if stars == 2:
        return "channels" if is_array else "address"
    if stars == 1:
        return "input" if type_.startswith("const ") else "output"
    return "length" if name in LENGTHS else "value"


def argument(parameter, index):
    type_ = parameter.type
    if "*" in type_:
        return f"v.pointer<{type_}>({index})"
    return f"v.number<{type_}>({index})"


def release(function, frees, structs):
    """The Free of the record that an InitAlloc makes: that of its type, or else of its struct."""
    made = next(declarations.base(p.type) for p in function.parameters if kind(function, p) == "newContext")
    free = frees.get(made) or frees.get(structs.get(made))
    if free is None:
        sys.exit(f"{function.name}: nothing releases a {made}")
    return free


def rows(function, frees, structs):
    parameters = ", ".join(f'{{Kind::{kind(function, p)}, "{declarations.base(p.type)}", "{p.name}"}}'
                           for p in function.parameters)
    call = f"{function.name}({', '.join(argument(p, i) for i, p in enumerate(function.parameters))})"
    free = "nullptr"
    if "InitAlloc" in function.name:
        name, context = release(function, frees, structs)
        free = f"[](void* p) {{ return {name}(static_cast<{context}*>(p)); }}"
    table = f"const Parameter parameters_{function.name}[] = {{{parameters}}};"
    entry = (f'{{"{function.name}", parameters_{function.name}, {len(function.parameters)}, '
             f"[](const Values& v) {{ return {call}; }}, {free}}},")
    return table, entry


def names(function, list_):
    array = ", ".join(f'"{name}"' for name in list_)
    return (f"std::span<const char* const> {function}() {{ static constexpr const char* all[] = {{{array}}}; "
            "return all; }")


def main():
    include, exports, target = sys.argv[1], sys.argv[2], Path(sys.argv[3])
    all_functions = declarations.functions(include)
    structs = declarations.structs(include)
    # Record type -> its Free and the type as this one calls it; under the name of the struct too.
    frees = {}
    for f in all_functions:
        if "Free" in f.name and f.result == "KvrStatus":
            context = declarations.base(f.parameters[0].type)
            frees[context] = (f.name, context)
            frees.setdefault(structs.get(context), (f.name, context))
    tables, entries = zip(*(rows(f, frees, structs) for f in all_functions if f.result == "KvrStatus"))
    text = "\n".join(["// Made by tools/make_contract_table.py.",
                      '#include "kvrs.h"', '#include "tests/contract/contract.h"', "",
                      "namespace kvrs::test {", "namespace {", *tables, "const Function table[] = {", *entries, "};",
                      "}  // namespace",
                      "std::span<const Function> functions() { return table; }",
                      names("otherFunctions", [f.name for f in all_functions if f.result != "KvrStatus"]),
                      names("exportNames", [name for name, _ in declarations.export_list(exports)]),
                      "}  // namespace kvrs::test", ""])
    target.write_text(text)


if __name__ == "__main__":
    main()
