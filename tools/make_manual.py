#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes what Doxygen makes the manual of: make_manual.py DIRECTORY.

From the headers comes a page for each family, with its contract and a table of its functions (types down, forms
across), and one for each function; from docs/ the other pages, with their links turned to those of the manual. A name
or a link that leads nowhere is an error."""
import html
import re
import sys
from pathlib import Path
from typing import NamedTuple

sys.path.insert(0, str(Path(__file__).parent))
import declarations  # noqa: E402
import families  # noqa: E402
import lint  # noqa: E402

TOP = Path(__file__).resolve().parent.parent
INCLUDE = TOP / "include"
SNIPPETS = TOP / "examples/snippets"

# Room -> title and what it holds, in the order of the manual.
ROOMS = {
    "frame": ("Version and memory", "Which module is loaded; vectors from the allocator."),
    "vector": ("Element by element",
               "Arithmetic, conversion, elementary functions, thresholds, logic: one result for each element."),
    "stats": ("Statistics and order", "Vectors made into a few numbers, or into another order."),
    "synth": ("Signals and windows", "Signals made from parameters; windows."),
    "transforms": ("Transforms", "Fourier transforms and their relatives, packed spectra."),
    "filters": ("Filters", "Filters with states, filters without, their design; convolution and correlation."),
    "comms": ("Communications", "Support for decoders, modulation, running sums."),
}

# The pages of docs/, in the order of the manual; others follow.
GUIDES = ["first-steps", "states", "transforms", "fixed-point", "numerics", "accuracy", "threads", "performance",
          "migration", "platforms", "changelog"]
DEVELOPERS = ["architecture", "adding-a-function", "dependencies", "costs"]

# Family or page of docs/ -> its figures, drawn by docs/manual/figures.gp.
FIGURES = {
    "arctan": [("arctan", "The largest error of kvrsArctan_32f among the arguments around")],
    "exponential": [("exponential", "The largest error of kvrsExp_32f among the arguments around")],
    "fft": [("fft", "The error of the forward transform of noise, over the order")],
    "fir_gen": [("fir", "Low-pass filters of 65 taps at a tenth of the sampling rate")],
    "iir_gen": [("iir", "Low-pass filters at a tenth of the sampling rate; ripples of 1 dB")],
    "logarithm": [("logarithm", "The largest error of kvrsLn_32f among the arguments around")],
    "roots": [("sqrt", "The largest error of kvrsSqrt_32f among the arguments around"),
              ("cubrt", "That of kvrsCubrt_32f")],
    "performance": [("ratios_loops", "The compiler's loops, with -O3 -ffast-math"),
                    ("ratios_libraries", "Other libraries")],
    "window": [("windows", "Windows of 65 samples"), ("spectra", "and their spectra")],
}

FLAGS = {"I", "Sfs", "ISfs", "P", "IP", "PSfs", "IPSfs", "D2L"}
TYPE_CODES = re.compile(r"(?:\d+(?:sc|fc|u|s|f))+")
FLAG_WORDS = {"I": "in place", "Sfs": "scaled", "ISfs": "in place, scaled", "P": "of several channels",
              "IP": "of several channels, in place", "PSfs": "of several channels, scaled",
              "IPSfs": "of several channels, in place, scaled", "D2L": "channels in arrays of their own"}
NAME = re.compile(r"kvrs(?!StatusText)[A-Z0-9]\w+")


class Parts(NamedTuple):
    """kvrsFIR64f_Direct_32s_ISfs: operation FIR, infix 64f, variants Direct, types 32s, flags ISfs"""
    operation: str
    infix: str
    variants: str
    types: str
    flags: str

    @property
    def row(self):
        return "_".join(filter(None, [self.infix, self.types])) or "all"

    @property
    def form(self):
        return "".join("_" + word for word in [self.variants, self.flags] if word)


def parts_of(name):
    words = name.removeprefix("kvrs").split("_")
    flags = words.pop() if len(words) > 1 and words[-1] in FLAGS else ""
    types = words.pop() if len(words) > 1 and TYPE_CODES.fullmatch(words[-1]) else ""
    infix = re.search(r"(?<=\D)\d+(?:fc|sc|f|s|u)$|$", words[0]).group()
    return Parts(words[0].removesuffix(infix), infix, "_".join(words[1:]), types, flags)


class Group(NamedTuple):
    id: str
    title: str
    contract: str  # Markdown


class Family(NamedTuple):
    id: str  # the name of its header
    title: str
    brief: str
    layout: str  # what is said of complex elements
    header: str
    room: str
    groups: list
    functions: list
    group_of: dict  # function -> group id
    sources: list
    tests: list
    benches: list
    declarations: dict  # function -> its text


class Manual:
    def __init__(self, target):
        self.target = target
        self.problems = []
        self.functions = {f.name: f for f in declarations.functions(INCLUDE)}
        self.ordinals = dict(declarations.export_list(TOP / "frame/exports.def"))
        self.aliases = declarations.aliases(TOP / "frame/aliases.def")
        self.files = [path for path in lint.tracked_files() if path.suffix in (".cpp", ".h", ".c")]
        self.defined = {}
        for path in self.files:
            if lint.room_of(path) in ROOMS and path.suffix == ".cpp":
                for match in lint.DEFINITION.finditer(lint.without_comments(path.read_text())):
                    self.defined[match.group(1)] = path
        self.users = {kind: self._users(kind) for kind in ("tests", "bench")}
        self.families = [self._family(*row) for row in families.families()]
        self.family_of = {f.name: family for family in self.families for f in family.functions}
        self.titles = {family.id: family.title for family in self.families}
        for group in (group for family in self.families for group in family.groups):
            self.titles.setdefault(group.id, group.title)
        self.shown_files = set()
        self.examples = {}  # function -> the families whose snippets call it
        for family in self.families:
            snippet = self.snippet(family)
            for name in NAME.findall(snippet[2]) if snippet else ():
                self.examples.setdefault(name, {})[family.id] = family.title

    # --- what is there -------------------------------------------------------------------------------------------

    def _users(self, kind):
        """For the files of tests/ or bench/: how often they name each function."""
        found = {}
        for path in self.files:
            parts = path.relative_to(TOP).parts
            if parts[0] == kind and parts[1] in ROOMS and path.suffix == ".cpp":
                found[path] = [name for name in NAME.findall(path.read_text()) if name in self.functions]
        return found

    def _family(self, title, header, functions):
        text = (INCLUDE / header).read_text()
        groups, group_of, texts = [], {}, {}
        for block in re.split(r"(?=/\*\* @defgroup)", text)[1:]:
            comment, _, code = block.partition("*/")
            id_, name, contract = re.match(r"@defgroup (\w+) (.+)\n((?:.|\n)*)@\{", uncommented(comment)).groups()
            # What stands above functions within the group follows, under their name or its own.
            for more, function in re.findall(r"/\*\*((?:(?!\*/).)*)\*/\n+KVRS_API.*?\bkvrs(\w+)", code, re.S):
                more = uncommented(more).removesuffix("@{").strip()
                if more.startswith("@name "):
                    function, _, more = more.removeprefix("@name ").partition("\n")
                contract += f"\n### {function}\n\n{more}\n"
            groups.append(Group(id_, name, contract.strip()))
            for declaration, function in re.findall(r"^(KVRS_API[^;]*?\b(kvrs\w+)\s*\([^;]*;)", code, re.M):
                group_of[function] = id_
                texts[function] = re.sub(r"\s*KVRS_NOEXCEPT", "", declaration.removeprefix("KVRS_API ")).replace(
                    "\n         ", "\n")
        if not groups:
            sys.exit(f"{header}: no group")
        brief, _, layout = text[3:text.index("\n")].strip().partition(" Elements of ")
        names = {f.name for f in functions}
        sources = sorted({self.defined[name] for name in names if name in self.defined})
        room = lint.room_of(sources[0]) if sources else "frame"

        def mine(kind):
            return sorted(path for path, used in self.users[kind].items()
                          if used and sum(name in names for name in used) >= 0.3 * len(used))
        self._types(header, text)
        layout = f"Elements of {layout.replace('types.h', '@ref types')}" if layout else ""
        return Family(Path(header).stem, title, brief, layout, header, room, groups, functions, group_of, sources,
                      mine("tests"), mine("bench"), texts)

    def _types(self, header, text):
        """Modes that a family's header has besides its functions, for Doxygen to read."""
        comment, typedef = r"(?:/\*\*(?:(?!\*/).)*\*/\n)?", r"(?:typedef [^;(]+;\n)?"
        modes = re.findall(rf"^{comment}{typedef}enum \{{[^}}]*\}};\n", text, re.M | re.S)
        if modes:
            (self.target / header.removeprefix("kvrs/")).write_text(
                "/** @addtogroup types\n * @{ */\n" + "\n".join(modes) + "/** @} */\n")

    # --- text ----------------------------------------------------------------------------------------------------

    def _problem(self, where, what):
        self.problems.append(f"{where}: {what}")

    def linked(self, text, where, own=()):
        """Calls of functions in the text, outside of code, made links."""
        def link(match):
            name = match.group(1)
            if name in own:
                return match.group()
            if name not in self.functions:
                self._problem(where, f"there is no {name}")
                return match.group()
            return f'@ref {name} "{name}()"'

        text = re.sub(r"@ref (\w+)(?! *\")\b", lambda m: f'@ref {m[1]} "{self.titles[m[1]]}"' if m[1] in self.titles
                      else m.group(), text)
        out, code = [], False
        for line in text.splitlines():
            code ^= line.startswith("```")
            if code or line.startswith("    "):
                out.append(line)
                continue
            if line.startswith("|"):  # in code Doxygen would show the backslash
                line = re.sub(r"`([^`]*\\\|[^`]*)`", lambda m: f"<code>{escaped(m[1])}</code>", line)
            pieces = re.split(r"(`[^`]*`)", line)
            out.append("".join(piece if piece.startswith("`") else re.sub(
                r"\b(kvrs[A-Z0-9]\w+)\(\)", link, re.sub(r"<(from|to)>", r"\\<\1\\>", piece)) for piece in pieces))
        return "\n".join(out)

    def file_link(self, path):
        name = str(path.relative_to(TOP))
        self.shown_files.add(name)
        return f'<a href="source/{name}.txt">{name}</a>'

    def write(self, id_, title, lines, parents=()):
        """A page; parents are those above it, below the main one."""
        way = "".join(f' / @ref {parent} "{words}"' for parent, words in parents)
        path = [] if id_ == "mainpage" else [f'<div class="way">@ref index "kvrs"{way}</div>', ""]
        (self.target / f"{id_}.md").write_text("\n".join([f"# {title} {{#{id_}}}", "", *path, *lines, ""]))

    @staticmethod
    def room_of(family):
        return f"room_{family.room}", ROOMS[family.room][0]

    @staticmethod
    def contract_id(family, group):
        """The label of its section."""
        return f"{group.id}_contract" if group.id == family.id else group.id

    def contract(self, group, level):
        """The contract with its headings as Doxygen's sections of that level."""
        command = ["section", "subsection"][level]
        count = 0

        def heading(match):
            nonlocal count
            count += 1
            return f"@{command} {group.id}_{count} {match.group(1)}"
        text = re.sub(r"^### (.+)$", heading, group.contract, flags=re.M)
        return self.linked(text, group.id)

    # --- pages ---------------------------------------------------------------------------------------------------

    def forms(self, functions):
        """Tables of functions, one for each operation: types down, forms across."""
        operations = {}
        for f in sorted(functions, key=lambda f: self.ordinals.get(f.name, 0)):
            operations.setdefault(parts_of(f.name).operation, []).append(f)
        out = ['<div class="operations">']
        for operation, members in sorted(operations.items()):
            columns, rows, cells = [], [], {}
            for f in members:
                parts = parts_of(f.name)
                arguments = ", ".join(p.name for p in f.parameters)
                column, row = (parts.form, arguments), parts.row
                if column not in columns:
                    columns.append(column)
                if row not in rows:
                    rows.append(row)
                cells[row, column] = f.name
            columns.sort(key=lambda c: (len(c[0]), c[0], c[1]))
            out.append(f'<table class="forms"><tr><th>{operation}</th>')
            out += [f"<th>{form or '&nbsp;'}<br><span class=\"arguments\">({arguments})</span></th>"
                    for form, arguments in columns]
            out.append("</tr>")
            for row in sorted(rows, key=type_order):
                out.append(f"<tr><th>{row}</th>")
                for column in columns:
                    name = cells.get((row, column))
                    out.append(f'<td>@ref {name} "{name.removeprefix("kvrs")}"</td>' if name else "<td></td>")
                out.append("</tr>")
            out.append("</table>")
        return "\n".join(out + ["</div>"])

    def snippet(self, family):
        """Its snippet: where it is, what it shows, its code and what that prints."""
        path = SNIPPETS / f"{Path(family.header).stem}.c"
        if not path.exists():
            return None
        comment, _, code = path.read_text().partition("*/\n")
        return path, comment[2:comment.index("\n")].strip(), code, path.with_suffix(".out").read_text()

    def family_page(self, family):
        threads = any(re.search(r"^Threads: |among threads", g.contract, re.M) for g in family.groups)
        names = sorted((f.name for f in family.functions), key=lambda name: self.ordinals.get(name, 0))
        text = [family.brief, "", "@tableofcontents", "",
                f"`#include <{family.header}>` or `<kvrs.h>`: {len(names)} functions."]
        if not threads:
            text.append("Calls run on their caller's thread alone.")
        text.append(family.layout)
        text.append("")
        snippet = self.snippet(family)
        if snippet:
            path, what, code, printed = snippet
            text += [f"@section {family.id}_example Example", "", what, "", "```c", code.rstrip(), "```", "", "prints",
                     "", "```text", printed.rstrip(), "```", "", self.file_link(path), ""]
        text += self.figures(family.id)
        several = len(family.groups) > 1
        if not several:
            text += [f"@section {family.id}_functions Functions", "", self.forms(family.functions), "",
                     f"@section {self.contract_id(family, family.groups[0])} Contract", "",
                     self.contract(family.groups[0], 1), ""]
        for group in family.groups if several else ():
            id_ = self.contract_id(family, group)
            members = [f for f in family.functions if family.group_of.get(f.name) == group.id]
            text += [f"@section {id_} {group.title}", "", self.contract(group, 1), "", self.forms(members), ""]
        text += [f"@section {family.id}_files Files", "", "| | |", "|---|---|",
                 f"| Header | {self.file_link(INCLUDE / family.header)} |"]
        for what, paths in (("Source", family.sources), ("Test", family.tests), ("Bench", family.benches)):
            if paths:
                text.append(f"| {what} | {', '.join(self.file_link(path) for path in paths)} |")
        text += ["", '<div class="names">'] + [f"@subpage {name}" for name in names] + ["</div>"]
        self.write(family.id, family.title, text, [self.room_of(family)])

    def rows_about(self, family, group, name):
        """The rows of the contract's tables that begin with the function or its operation."""
        parts = parts_of(name)
        out = []
        for table in re.findall(r"(?:^\|.*\n?)+", group.contract, re.M):
            lines = table.strip().splitlines()
            if len(lines) < 3 or not re.match(r"\|[\s:|-]+\|$", lines[1]):
                continue
            words = {parts.operation, parts.operation + parts.infix, name, "kvrs" + parts.operation,
                     f"{parts.operation}_{parts.variants}", f"{parts.variants}"} - {""}
            step = re.search(r"(GetStateSize|GetBufSize|GetSize|InitAlloc|Init|Free)(?:Q15)?$", parts.operation)
            words |= {step.group(1)} if step else set()
            rows = [line for line in lines[2:]
                    if words & set(re.findall(r"\w+", re.match(r"\|((?:\\\||[^|])*)\|", line).group(1)))]
            if rows:
                out.append("\n".join(lines[:2] + rows))
        return "\n\n".join(out)

    def function_page(self, family, f):
        parts = parts_of(f.name)
        group = next((g for g in family.groups if g.id == family.group_of.get(f.name)), family.groups[0])
        what = [parts.operation, parts.variants and parts.variants.replace("_", ", "),
                parts.types and "of " + parts.row.replace("_", " with samples of " if parts.infix else "_"),
                FLAG_WORDS.get(parts.flags)]
        brief = "; ".join([group.title, " ".join(filter(None, what[:3])) + (f", {what[3]}" if what[3] else "")])
        text = [f"{brief}.", "", "```c", family.declarations[f.name], "```", ""]
        first, *more = group.contract.split("\n\n")
        if first and not first.startswith(("|", " ", "#")):
            text += [self.linked(first, f.name, own={f.name}), ""]
            if first.endswith(":") and more and more[0].startswith("    "):
                text += [more[0], ""]
        rows = self.rows_about(family, group, f.name)
        if rows:
            text += [self.linked(rows, f.name, own={f.name}), ""]
        if f.parameters:
            text += ["| Argument | Type | |", "|---|---|---|"]
            text += [f"| `{p.name}` | `{p.type}` | {role(p, f.name)} |" for p in f.parameters] + [""]
        section = self.contract_id(family, group)
        text += [f'**All that holds for it**, with special values and errors: @ref {section} "the contract" of '
                 f'@ref {family.id} "{family.title}".', ""]
        same = sorted({first for first in [self.aliases.get(f.name, f.name)]} |
                      {second for second, first in self.aliases.items()
                       if first == self.aliases.get(f.name, f.name)} - {f.name})
        same = [name for name in same if name != f.name and name in self.functions]
        related = [g.name for g in family.functions
                   if g.name != f.name and parts_of(g.name).operation == parts.operation]
        forms = [name for name in related if parts_of(name).row == parts.row]
        types = [name for name in related if parts_of(name).form == parts.form]
        for title, names in (("Other forms", forms), ("Other types", types), ("Shares its code with", same)):
            if names:
                text += [f"{title}: " + ", ".join(f"@ref {name}" for name in names) + ".", ""]
        examples = self.examples.get(f.name, {})
        if examples:
            links = (f'@ref {id_}_example "{title}"' for id_, title in examples.items())
            text += ["Example: " + ", ".join(links) + ".", ""]
        source = self.defined.get(self.aliases.get(f.name, f.name))
        files = [INCLUDE / family.header] + ([source] if source else []) + [
            path for kind in ("tests", "bench") for path, used in self.users[kind].items() if f.name in used]
        text += ["Files: " + ", ".join(self.file_link(path) for path in files) +
                 f". Number {self.ordinals.get(f.name, 0):,} in the list of exports."]
        self.write(f.name, f.name, text, [self.room_of(family), (family.id, family.title)])

    def room_page(self, room):
        title, what = ROOMS[room]
        members = [family for family in self.families if family.room == room]
        text = [what, "", "| Family | Functions | |", "|---|---:|---|"]
        text += [f"| @subpage {family.id} | {len(family.functions)} | {family.brief} |" for family in members]
        self.write(f"room_{room}", title, text)
        return members

    def index_page(self):
        rows = [f'@ref {name}' for name in sorted(self.functions, key=lambda name: self.ordinals.get(name, 0))]
        text = [f"{len(rows):,} functions. Words of a name, in any order, narrow the list.", "",
                "@htmlonly",
                '<input id="narrow" type="search" placeholder="fir 16s sfs" '
                'aria-label="words of a name" autocomplete="off">'
                '<p id="narrowed"></p>',
                "@endhtmlonly", '<div class="names" id="all">', *rows, "</div>", "@htmlonly",
                "<script>", INDEX_SCRIPT, "</script>", "@endhtmlonly"]
        self.write("functions", "All functions", text)

    def figures(self, id_):
        """The section of those figures that are drawn."""
        drawn = [(name, caption) for name, caption in FIGURES.get(id_, ()) if (self.target / f"{name}.svg").exists()]
        text = [f"@section {id_}_figures Figures", ""] if drawn else []
        for name, caption in drawn:
            text += [f"![{caption}]({name}.svg)", ""]
        return text

    def guide(self, path):
        """A page of docs/ with links as the manual has them."""
        def link(match):
            words, target = match.groups()
            if re.match(r"https?://", target) or target.startswith("images/"):
                return match.group()
            if target.startswith("#"):
                return f'@ref {anchor(target[1:])} "{words}"'
            file = (path.parent / target.split("#")[0]).resolve()
            if file.suffix == ".md" and file.parent == TOP / "docs":
                return f'@ref {guide_id(file.stem)} "{words}"'
            header = str(file.relative_to(INCLUDE)) if file.is_relative_to(INCLUDE) else ""
            family = next((family for family in self.families if family.header == header), None)
            if family:
                return f'@ref {family.id} "{words}"'
            if file.is_file():
                return self.file_link(file).replace(f">{file.relative_to(TOP)}<", f">{words}<")
            if file.is_dir():
                return words
            self._problem(path.name, f"there is no {target}")
            return words

        def name(match):
            word = match.group(1)
            if word in self.functions:
                return f'@ref {word} "{word}"'
            return f"::{word}" if re.match("kvr(Status|Fft|Round|Hint|Cmp|Win)[A-Z]", word) else match.group()

        def anchor(heading):
            return id_ + "_" + re.sub(r"\W+", "_", heading.lower())

        id_ = guide_id(path.stem)
        title, _, rest = path.read_text().partition("\n")
        out, code = [], False
        for line in rest.splitlines():
            code ^= line.startswith("```")
            if not code:
                line = re.sub(r"(?<!!)\[([^\]]+)\]\(([^)\s]+)\)", link, line)
                line = re.sub(r"`(kvr\w+)`", name, line)
                line = re.sub(r"(?<!`)`([^`]*'[^`]*)`(?!`)", r"``\1``", line)  # Doxygen ends code at a quote, too
                heading = re.match(r"(#{2,3}) (.+)", line)
                if heading:
                    command = "section" if heading[1] == "##" else "subsection"
                    line = f"@{command} {anchor(heading[2])} {heading[2]}"
            out.append(line)
        self.write(id_, title.removeprefix("# "), ["@tableofcontents", "", self.linked("\n".join(out), path.name), "",
                                                   *self.figures(path.stem)])
        return id_

    def main_page(self, guides, rooms):
        general = re.search(r"/\*\* @mainpage kvrs\n(.*?)\*/", (INCLUDE / "kvrs.h").read_text(), re.S).group(1)
        general = re.sub(r"^ \* ?", "", general, flags=re.M).strip()
        def listed(ids):
            return [f"- @subpage {id_}" for id_ in ids]
        users = [id_ for id_ in guides if id_ not in map(guide_id, DEVELOPERS)]
        text = ["One dynamic library of plain C functions on arrays of samples, for audio, speech, telephony, "
                "measurement and communications software.", "", *listed(users[:1]),
                "- @subpage functions (find one by parts of its name)", "", "@section main_families Families", ""]
        for room, members in rooms:
            links = ", ".join(f'@ref {family.id} "{family.title}"' for family in members)
            text.append(f"- **@subpage room_{room}**: {links}.")
        text += ["- **Types and core library**: @ref types, @ref status_text, @ref core.", "",
                 "@section main_guides Guides", "", *listed(users[1:]), "",
                 "@section main_general What holds for all functions", "", self.linked(general, "kvrs.h"), "",
                 "@section main_developers For developers of kvrs", "",
                 *listed(id_ for id_ in guides if id_ not in users)]
        self.write("mainpage", "kvrs", text)

    def make(self):
        rooms = [(room, self.room_page(room)) for room in ROOMS if any(f.room == room for f in self.families)]
        for family in self.families:
            self.family_page(family)
            for f in family.functions:
                self.function_page(family, f)
        self.index_page()
        order = {name: number for number, name in enumerate(GUIDES + DEVELOPERS)}
        pages = sorted((TOP / "docs").glob("*.md"), key=lambda page: (order.get(page.stem, 99), page.stem))
        guides = [self.guide(page) for page in pages]
        self.main_page(guides, rooms)
        (self.target / "shown.list").write_text("\n".join(sorted(self.shown_files)) + "\n")
        return self.problems


INDEX_SCRIPT = """
(function () {
  var box = document.getElementById("narrow"), told = document.getElementById("narrowed");
  var links = Array.prototype.slice.call(document.querySelectorAll("#all a"));
  function narrow() {
    var words = box.value.toLowerCase().split(/[ _]+/).filter(Boolean), shown = 0;
    links.forEach(function (link) {
      var name = link.textContent.toLowerCase();
      var fits = words.every(function (word) { return name.indexOf(word) >= 0; });
      link.style.display = fits ? "" : "none";
      if (fits) shown++;
    });
    told.textContent = words.length ? shown + " of " + links.length : "";
  }
  box.addEventListener("input", narrow);
  if (location.hash.length > 1) box.value = decodeURIComponent(location.hash.slice(1));
  narrow();
})();"""


def guide_id(stem):
    return "guide_" + stem.replace("-", "_")


def uncommented(comment):
    """The text of a comment; its parameters as a list."""
    text = re.sub(r"^ \* ?", "", comment.removeprefix("/**"), flags=re.M).strip()
    return re.sub(r"^@param +(\w+) +", r"- `\1`: ", text, flags=re.M)


def escaped(text):
    return html.escape(text.replace("\\|", "|")).replace("|", "&#124;")


def type_order(row):
    """Types by kind: integers, floats, complex, then by width."""
    codes = re.findall(r"(\d+)(sc|fc|u|s|f)", row)
    return [("usf".find(kind) if len(kind) == 1 else 3 + ("sc", "fc").index(kind), int(width)) for width, kind in codes]


MEMORY = {"buffer", "specMem", "initBuf", "workBuf"}


def role(parameter, function):
    """What a call does with an argument, as far as its type tells."""
    type_, name = parameter
    context = re.search(r"Kvrs\w*(Spec|State)", type_)
    if context and type_.count("*") == 2 and "* const" not in type_:
        return "gets the new context"
    if context and "Free" in function:
        return "the context, of no use afterwards"
    if context:
        return "the context" + ("" if type_.startswith("const") else ", which the call changes")
    if name in MEMORY:
        return "memory of the caller's"
    if "*" not in type_:
        return "number of elements" if name == "len" else "value"
    if type_.startswith("const"):
        return "read"
    return "read and written" if name == "srcDst" else "written"


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: make_manual.py DIRECTORY")
    target = Path(sys.argv[1])
    target.mkdir(parents=True, exist_ok=True)
    for old in target.iterdir():
        if old.suffix in (".md", ".h"):
            old.unlink()
    problems = Manual(target).make()
    if problems:
        sys.exit("\n".join(problems))


if __name__ == "__main__":
    main()
