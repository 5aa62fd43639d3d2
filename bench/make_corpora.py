#!/usr/bin/env python3
"""Makes the benchmark's texts from data that is on the machine: the package index and iso-codes.

Each corpus is one tree of objects, written as KDX and, with the same content, in the formats of the
other parsers. NAME-SIZE.counts tells what every reader of it must see: objects, parameters, bytes
of values, and how many of the objects have parameters. The same machine makes the same files.
"""

import argparse
import itertools
import json
import pathlib
import re
import subprocess
from xml.sax.saxutils import escape, quoteattr

ISO_CODES = pathlib.Path("/usr/share/iso-codes/json")
DPKG_STATUS = pathlib.Path("/var/lib/dpkg/status")
LEVELS = 1000


class Node:
    """An object. A parameter's value is a list of pieces, the lines on which it stands."""

    def __init__(self, kind, name, parameters=()):
        self.kind, self.name = kind, name
        self.parameters = list(parameters)
        self.children = []

    @property
    def key(self):
        return f"{self.kind}:{self.name}"

    def values(self):
        return [(name, "".join(pieces)) for name, pieces in self.parameters]

    def child(self, kind, name):
        for node in reversed(self.children):
            if (node.kind, node.name) == (kind, name):
                return node
        return self.add(Node(kind, name))

    def add(self, node):
        self.children.append(node)
        return node


# ---- The two sources -------------------------------------------------------------------------


def index_stanzas():
    try:
        index = subprocess.Popen(["apt-cache", "dumpavail"], stdout=subprocess.PIPE, text=True,
                                 encoding="utf-8")
        lines = iter(index.stdout)
        first = next(lines, None)
    except FileNotFoundError:
        first = None
    if first is None:
        lines = DPKG_STATUS.open(encoding="utf-8")
        first = next(lines)
    stanza = []
    for line in itertools.chain([first], lines):
        if line.strip():
            stanza.append(line.rstrip())
        elif stanza:
            yield stanza
            stanza = []


def fields_of(stanza):
    fields = []
    for line in stanza:
        if line[0].isspace():
            fields[-1][1].append(line.strip())
        else:
            name, _, value = line.partition(":")
            fields.append((name.replace("-", "_"), [value.strip()]))
    for _, pieces in fields:
        pieces[:-1] = [piece + " " for piece in pieces[:-1]]
    return fields


def packages():
    """One object for each package: long values, some of them continued over several lines."""
    seen = set()
    for stanza in index_stanzas():
        fields = fields_of(stanza)
        (_, (name,)), *parameters = fields
        carried = not any("#" in piece or "\\" in piece for _, v in fields for piece in v)
        if name not in seen and carried:
            seen.add(name)
            yield Node("Package", name, [(n, v) for n, v in parameters if any(v)])


def iso_entries(standard):
    entries = json.loads((ISO_CODES / f"iso_{standard}.json").read_text("utf-8"))[standard]
    for entry in entries:
        yield entry, [(name, [value]) for name, value in entry.items() if "#" not in value]


def add_subdivisions(edition):
    """Country, category, subdivision, and the subdivision inside another one."""
    standard = edition.child("Standard", "ISO 3166")
    countries = {entry["alpha_2"]: standard.add(Node("Country", entry["alpha_2"], parameters))
                 for entry, parameters in iso_entries("3166-1")}
    nodes, inner = {}, []
    for entry, parameters in iso_entries("3166-2"):
        country = countries[entry["code"][:2]]
        node = nodes[entry["code"]] = Node("Subdivision", entry["code"], parameters)
        if "parent" in entry:
            inner.append((node, country, entry))
        else:
            country.child("Category", entry["type"]).add(node)
    for node, country, entry in inner:
        parent = entry["parent"]
        outer = nodes.get(parent) or nodes.get(f"{country.name}-{parent}")
        (outer or country.child("Category", entry["type"])).add(node)


def iso_edition(number):
    edition = Node("Edition", f"{number:04}")
    add_subdivisions(edition)
    for standard, kind in (("15924", "Script"), ("4217", "Currency"), ("639-2", "Language"),
                           ("639-5", "Family")):
        group = edition.child("Standard", f"ISO {standard}")
        for entry, parameters in iso_entries(standard):
            code = entry.get("alpha_4") or entry["alpha_3"]
            group.child("Initial", code[0]).add(Node(kind, code, parameters))
    languages = edition.child("Standard", "ISO 639-3")
    for entry, parameters in iso_entries("639-3"):
        scope = languages.child("Scope", entry["scope"])
        scope.child("Type", entry["type"]).add(Node("Language", entry["alpha_3"], parameters))
    return edition


def iso_codes():
    """Short lines, four to six levels deep; a new edition of the same codes after the last one."""
    for number in itertools.count(1):
        edition = iso_edition(number)
        for standard in edition.children:
            for group in standard.children:
                branch = Node(edition.kind, edition.name)
                branch.child(standard.kind, standard.name).add(group)
                yield branch


def repeated_packages():
    for round_number in itertools.count(1):
        for node in packages():
            if round_number > 1:
                node.name += f".{round_number}"
            yield node


# ---- The formats -----------------------------------------------------------------------------


def write_kdx(node, out, depth=0, indent_width=2):
    indent = " " * (indent_width * depth)
    inner = " " * (indent_width * (depth + 1))
    out.append(f"{indent}{node.kind}: {node.name}\n")
    for name, pieces in node.parameters:
        value = ("\\\n  " + inner).join(pieces)
        out.append(f"{inner}{name} = {value}\n")
    for child in node.children:
        write_kdx(child, out, depth + 1, indent_width)
    out.append(f"{indent}END # {node.key}\n")


def as_dictionary(node):
    return {**dict(node.values()), **{child.key: as_dictionary(child) for child in node.children}}


def write_json(roots, out):
    document = {node.key: as_dictionary(node) for node in roots}
    out.append(json.dumps(document, ensure_ascii=False, indent=2))


def write_compact_json(roots, out):
    document = {node.key: as_dictionary(node) for node in roots}
    out.append(json.dumps(document, ensure_ascii=False, separators=(",", ":")))


def xml_element(node, out, depth):
    attributes = "".join(f" {name}={quoteattr(value)}" for name, value in node.values())
    indent = "  " * depth
    out.append(f"{indent}<{node.kind} id={quoteattr(node.name)}{attributes}")
    if not node.children:
        out.append("/>\n")
        return
    out.append(">\n")
    for child in node.children:
        xml_element(child, out, depth + 1)
    out.append(f"{indent}</{node.kind}>\n")


def xml_elements(node, out, depth):
    """An element for each statement, as a document has a node for it."""
    indent = "  " * depth
    out.append(f"{indent}<{node.kind} id={quoteattr(node.name)}>\n")
    out.extend(f"{indent}  <{name}>{escape(value)}</{name}>\n" for name, value in node.values())
    for child in node.children:
        xml_elements(child, out, depth + 1)
    out.append(f"{indent}</{node.kind}>\n")


def write_xml(roots, out, element=xml_element):
    out.append("<index>\n")
    for node in roots:
        element(node, out, 1)
    out.append("</index>\n")


def write_elements_xml(roots, out):
    write_xml(roots, out, xml_elements)


def quoted(text):
    return json.dumps(text, ensure_ascii=False)


def toml_table(node, path, out):
    path = path + [quoted(node.key)]
    out.append(f"[{'.'.join(path)}]\n")
    out.extend(f"{name} = {quoted(value)}\n" for name, value in node.values())
    for child in node.children:
        toml_table(child, path, out)


def write_toml(roots, out):
    for node in roots:
        toml_table(node, [], out)


def yaml_mapping(node, out, depth):
    indent = "  " * depth
    empty = not node.parameters and not node.children
    out.append(f"{indent}{quoted(node.key)}:{' {}' if empty else ''}\n")
    out.extend(f"{indent}  {name}: {quoted(value)}\n" for name, value in node.values())
    for child in node.children:
        yaml_mapping(child, out, depth + 1)


def write_yaml(roots, out):
    for node in roots:
        yaml_mapping(node, out, 0)


def ini_section(node, out):
    """There is no nesting: a section has the name of its innermost object."""
    if node.parameters:
        out.append(f"[{node.key}]\n")
    out.extend(f"{name}={value}\n" for name, value in node.values())
    for child in node.children:
        ini_section(child, out)


def write_ini(roots, out):
    for node in roots:
        ini_section(node, out)


FORMATS = {"json": write_json, "compact.json": write_compact_json, "xml": write_xml,
           "elements.xml": write_elements_xml, "toml": write_toml, "yaml": write_yaml, "ini": write_ini}


def carries(format_name, corpus):
    """inih as Debian builds it cuts lines at 200 bytes: the package index does not fit."""
    return format_name != "ini" or corpus == "codes"


# ---- The files -------------------------------------------------------------------------------


def merge(target, node):
    """Adds a branch: what two branches have in common at their heads is one object."""
    last = target.children[-1] if target.children else None
    if last is None or (last.kind, last.name) != (node.kind, node.name):
        target.add(node)
        return
    for child in node.children:
        merge(last, child)


def take(branches, size):
    """As many branches as make `size` bytes of KDX."""
    root, taken = Node("", ""), 0
    for branch in branches:
        text = []
        write_kdx(branch, text)
        taken += sum(len(piece.encode()) for piece in text)
        merge(root, branch)
        if taken >= size:
            return root.children


def walk(nodes):
    stack = list(reversed(nodes))
    while stack:
        node = stack.pop()
        yield node
        stack.extend(reversed(node.children))


def counts(roots):
    nodes = list(walk(roots))
    values = [value for node in nodes for _, value in node.values()]
    size = sum(len(value.encode()) for value in values)
    return f"{len(nodes)} {len(values)} {size} {sum(bool(n.parameters) for n in nodes)}\n"


def save(directory, stem, roots, formats):
    text = []
    for node in roots:
        write_kdx(node, text)
    (directory / f"{stem}.kdx").write_text("".join(text), "utf-8")
    for format_name in formats:
        if carries(format_name, stem.split("-")[0]):
            text = []
            FORMATS[format_name](roots, text)
            (directory / f"{stem}.{format_name}").write_text("".join(text), "utf-8")
    (directory / f"{stem}.counts").write_text(counts(roots))


def save_levels(directory):
    """The same objects once side by side and once a thousand levels deep, without indentation."""
    objects = [node for node in walk([iso_edition(1)]) if node.parameters]
    objects = objects[:len(objects) // LEVELS * LEVELS]
    for stem, depth in (("levels-1", 1), (f"levels-{LEVELS}", LEVELS)):
        text = []
        for first in range(0, len(objects), depth):
            nested = objects[first:first + depth]
            for node in nested:
                text.append(f"{node.kind}: {node.name}\n")
                text += [f"{name} = {value}\n" for name, value in node.values()]
            text.append("END\n" * len(nested))
        (directory / f"{stem}.kdx").write_text("".join(text), "utf-8")
        flat = [Node(node.kind, node.name, node.parameters) for node in objects]
        (directory / f"{stem}.counts").write_text(counts(flat))


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("directory", type=pathlib.Path)
    parser.add_argument("--size", type=int, default=10, help="of each corpus as KDX, in MB")
    parser.add_argument("--formats", nargs="*", default=list(FORMATS), choices=list(FORMATS))
    parser.add_argument("--levels", action="store_true", help="also the flat and the deep text")
    options = parser.parse_args()
    options.directory.mkdir(parents=True, exist_ok=True)
    for corpus, branches in (("packages", repeated_packages()), ("codes", iso_codes())):
        roots = take(branches, options.size * 1_000_000)
        save(options.directory, f"{corpus}-{options.size}", roots, options.formats)
    if options.levels:
        save_levels(options.directory)


if __name__ == "__main__":
    main()
