# SPDX-License-Identifier: MIT
"""The public functions, read from the headers: what the generated tests and checks start from."""
import re
from pathlib import Path
from typing import NamedTuple


class Parameter(NamedTuple):
    type: str  # "const Kvr8u*", "int", "KvrsFIRState_32f**"
    name: str


class Function(NamedTuple):
    name: str
    result: str
    parameters: tuple
    header: str  # "kvrs/fill.h"


_DECLARATION = re.compile(r"^KVRS_API\s+(.+?)\b(kvrs\w+)\s*\(([^;]*?)\)\s*KVRS_NOEXCEPT\s*;", re.M | re.S)


def base(type_):
    """A parameter's type without const and stars."""
    return re.sub(r"\bconst\b|\*", "", type_).strip()


def structs(include):
    """Name of a record's type -> name of its struct, which several may share."""
    found = {}
    for header in Path(include).glob("kvrs/*.h"):
        typedefs = re.findall(r"^typedef struct (\w+) (\w+);", header.read_text(), re.M)
        found.update((name, struct) for struct, name in typedefs)
    return found


def functions(include):
    """All functions that the headers below `include` declare, in the order of their names."""
    found = []
    for header in sorted(Path(include).glob("kvrs/*.h")):
        text = re.sub(r"/\*.*?\*/", " ", header.read_text(), flags=re.S)
        text = re.sub(r"^static inline [^{]*", "", text, flags=re.M)
        declarations = _DECLARATION.findall(text)
        if len(declarations) != len(re.findall(r"\bkvrs\w+\s*\(", text)):
            raise ValueError(f"{header}: not all of its declarations can be read")
        for result, name, arguments in declarations:
            arguments = " ".join(arguments.split())
            parameters = []
            if arguments not in ("", "void"):
                for argument in arguments.split(","):
                    kind, word, array = re.match(r"\s*(.*?[\s*])(\w+)\s*(\[\w*\])?$", argument.rstrip()).groups()
                    parameters.append(Parameter(kind.strip() + ("*" if array else ""), word))
            found.append(Function(name, " ".join(result.split()), tuple(parameters), f"kvrs/{header.name}"))
    return sorted(found)


def export_list(path):
    """The (name, ordinal) pairs of frame/exports.def."""
    return [(name, int(ordinal)) for name, ordinal in re.findall(r"^ +(\w+) @(\d+)$", Path(path).read_text(), re.M)]


def aliases(path):
    """Second name -> the name that has the code, of frame/aliases.def."""
    return dict(re.findall(r"^(\w+) = (\w+)$", Path(path).read_text(), re.M))
