"""Writes the pages of the site that doxygen cannot take as they are.

    pages.py FOLDER KDX     writes them into FOLDER; KDX is the built tool

The documents get the anchors that their links name, and links from one to the other lead to where
the pages lie. The manual is what `kdx --help` prints, the examples are the programs themselves.
"""

import os
import re
import subprocess
import sys
from pathlib import Path

from python_page import code, python_page

DOCUMENTS = ["SECURITY.md", "CHANGELOG.md", *sorted(map(str, Path("docs").glob("*.md"))),
             "packaging/wasm/npm/README.md"]
MADE = ["manual.md", "examples.md", "python.md"]


def anchor(heading):
    """What a link calls a heading, as the places where the documents are read otherwise do it."""
    return re.sub(r"[^\w -]", "", heading.lower()).replace(" ", "-")


def page_of(name):
    """The name of a document's page, which no other page or heading has."""
    return re.sub(r"\W", "-", name.removeprefix("docs/").removesuffix(".md").lower())


def link_from(name):
    """Turns a link of a document into one to the page, or into its text where there is no page."""
    def replaced(link):
        path, _, place = link[2].partition("#")
        if "://" in path or path.endswith(".svg"):
            return link[0]
        file = os.path.normpath(Path(name).parent / path) if path else name
        if file not in DOCUMENTS + MADE:
            return link[1]
        return f"[{link[1]}](@ref {page_of(file)}{'-' + place if place else ''})"

    return replaced


def headed(name):
    """Gives a heading the anchor that links name, and the title of a page no marks of code."""
    def replaced(heading):
        marks, text = heading[1], heading[2]
        if marks == "#":
            return f"# {text.replace('`', '')} {{#{page_of(name)}}}"
        return f"{marks} {text} {{#{page_of(name)}-{anchor(text)}}}"

    return replaced


def converted(name, text):
    """A document as a page. What stands in fences stays as it is."""
    parts = re.split(r"(^```.*?^```$)", text, flags=re.M | re.S)
    for i in range(0, len(parts), 2):
        parts[i] = re.sub(r"^(#+) (.*)$", headed(name), parts[i], flags=re.M)
        parts[i] = re.sub(r"\[([^\]]*)\]\(([^)]+)\)", link_from(name), parts[i])
    return "".join(parts)


def manual(kdx):
    """The help of the tool and of each of its commands."""
    def help_of(*command):
        return subprocess.run([kdx, *command, "--help"], check=True, capture_output=True,
                              encoding="utf-8").stdout

    overview = help_of()
    commands = re.findall(r"^  (\w+) ", overview.partition("Subcommands:\n")[2].partition("\n\n")[0],
                          re.M)
    return "# The manual of kdx {#manual}\n\n" + code(overview, "none") + "".join(
        f"## kdx {command} {{#manual-{command}}}\n\n" + code(help_of(command), "none")
        for command in commands)


def examples():
    """The programs, and what each prints."""
    page = "# Examples {#examples}\n\nEach is built and run by the tests, and prints what follows it.\n\n"
    for program in sorted(Path("examples").glob("*.cpp")):
        page += f"## {program.stem} {{#examples-{program.stem}}}\n\n"
        page += code(program.read_text("utf-8"), "cpp")
        page += code(Path(f"examples/expected/{program.stem}.txt").read_text("utf-8"), "none")
    return page


def main(folder, kdx):
    """Writes all pages."""
    pages = {page_of(name): converted(name, Path(name).read_text("utf-8")) for name in DOCUMENTS}
    pages["start"] = converted("start.md", Path("site/start.md").read_text("utf-8"))
    pages["manual"] = manual(kdx)
    pages["examples"] = examples()
    pages["python"] = python_page()
    for name, text in pages.items():
        Path(folder, name + ".md").write_text(text, "utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
