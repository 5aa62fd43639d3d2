#!/usr/bin/env python3
"""Holds the commands of kdx to laws, on generated texts, against what the library says of them.

    commands.py KDX ORACLE COUNT SEED
"""

import json
import os
import pathlib
import random
import re
import subprocess
import sys
import tempfile

KDX, ORACLE = (os.path.abspath(program) for program in sys.argv[1:3])
COUNT, SEED = (int(number) for number in sys.argv[3:5])


class Told:
    """What the library says of a text."""

    def __init__(self, lines):
        fields = [line.split(b"\x1f")[:-1] for line in lines]
        self.events = [tuple(field[1:]) for field in fields if field[0] == b"event"]
        self.objects = [field[1] for field in fields if field[0] == b"object"]
        self.entries = [tuple(field[1:]) for field in fields if field[0] == b"entry"]
        self.failure = fields[-1][1]


def tell(files):
    output = subprocess.run([ORACLE, "tell", *files], stdout=subprocess.PIPE, check=True).stdout
    told, lines = [], []
    for line in output.split(b"\x1e")[:-1]:
        lines.append(line)
        if line.startswith(b"end\x1f"):
            told.append(Told(lines))
            lines = []
    return told


def run(*arguments, text=b""):
    done = subprocess.run([KDX, *arguments], input=text, stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, timeout=60)
    return done.returncode, done.stdout


def same_statements(events):
    """Events as diff compares them: without what a name or an END at the end of a text adds."""
    out = [("o", type_, b"" if name == type_ else name) if kind == b"o" else (kind, type_, name)
           for kind, type_, name in events]
    while out and out[-1][0] == b"e":
        out.pop()
    return out


def tree_of(events):
    """The objects as tree shows them: depth, title, number of parameters."""
    objects, open_ = [], []
    for kind, first, second in events:
        if kind == b"o":
            objects.append([len(open_), first + (b": " + second if second else b""), 0])
            open_.append(objects[-1])
        elif kind == b"p":
            open_[-1][2] += 1
        elif kind == b"e":
            open_.pop()
    return objects


def found(events, type_):
    """Those of the objects of a type, and of what is in them."""
    out, depth = [], 0
    for event in events:
        if depth == 0 and (event[0], event[1]) != (b"o", type_):
            continue
        out.append(event)
        depth += {b"o": 1, b"e": -1}.get(event[0], 0)
    return out


def sources(file):
    events = [json.loads(line) for line in run("events", file)[1].splitlines()]
    return [event.get("source", event.get("sourceHex")) for event in events]


def drawn(objects, output):
    """Whether a drawing shows these objects, each in its column."""
    lines = output.decode(errors="surrogateescape").split("\n")[:-1]
    return len(lines) == len(objects) and all(
        line[4 * depth:].encode(errors="surrogateescape").startswith(
            title + b" (%d parameter" % parameters)
        for (depth, title, parameters), line in zip(objects, lines))


class Laws:
    def __init__(self):
        self.random = random.Random(SEED)
        self.derived = []  # texts made by commands: file, its events, law, made of
        self.checked = 0
        self.failed = 0

    def require(self, holds, law, file):
        self.checked += 1
        self.failed += 0 if holds else 1
        if not holds:
            print(f"BROKEN LAW: {law}\n  {pathlib.Path(file).read_bytes()!r}")

    def derive(self, text, name, events, law, file):  # the library reads it later
        path = f"{file}.{name}"
        pathlib.Path(path).write_bytes(text)
        self.derived.append((path, events, law, file))
        return path

    def of_refused(self, file):
        for command in [["map"], ["tree"], ["get", file, "/A"], ["diff", file]]:
            self.require(run(*command, file)[0] == 2, f"{command[0]} refuses the text", file)

    def of_right(self, file, told):
        status, output = run("map", "--flat", file)
        entries = b"".join(b"\t".join(entry) + b"\n" for entry in told.entries)
        self.require((status, output) == (0, entries), "map is the library's map", file)
        self.require(drawn(tree_of(told.events), run("tree", file)[1]),
                     "tree shows the library's objects", file)
        for command in ["strip", "fmt"]:
            made = self.derive(run(command, file)[1], command, told.events,
                               f"{command} changes no event", file)
            self.require(run("diff", file, made) == (0, b""), f"diff finds {command} equal", file)
        status, output = run("write", "--events", text=run("events", file)[1])
        self.require((status, output) == (0, pathlib.Path(file).read_bytes()),
                     "write --events makes the text of its events", file)
        self.derive(run("split", file)[1], "split", told.events, "split changes no event", file)
        self.of_get_and_set(file, told)
        self.of_find(file, told)
        self.of_diff(file, told)

    def of_get_and_set(self, file, told):
        values = [entry for entry in told.entries if b"\0" not in b"".join(entry)]
        if not values or any(kind == b"o" and b"/" in name for kind, _, name in told.events):
            return
        path, name, value = self.random.choice(values)
        self.require(run("get", file, path, name) == (0, value + b"\n"), "get finds a value", file)
        status, text = run("set", file, path, name + b"=other")
        if status != 0:
            return  # it is refused where a comment that goes on in the next line stands behind it
        pathlib.Path(made := f"{file}.set").write_bytes(text)
        self.require(run("get", made, path, name) == (0, b"other\n"), "get finds what is set", file)
        pairs = zip(told.events, tell([made])[0].events)
        changed = [(old, new) for old, new in pairs if old != new]
        self.require(changed in ([], [((b"p", name, value), (b"p", name, b"other"))]),
                     "set changes one event", file)
        self.require(len(set(sources(file)) - set(sources(made))) <= 1,
                     "set keeps the bytes of every other statement", file)

    def of_find(self, file, told):
        for type_ in [first for kind, first, _ in told.events if kind == b"o"][-1:]:
            self.derive(run("find", "--type", type_, file)[1], "find", found(told.events, type_),
                        "find prints the events of what it finds", file)

    def of_diff(self, file, told):
        text = pathlib.Path(file).read_bytes()
        lines = text.split(b"\n")
        del lines[self.random.randrange(len(lines))]
        path = f"{file}.less"
        pathlib.Path(path).write_bytes(b"\n".join(lines))
        less, = tell([path])
        if less.failure:
            return
        status = run("diff", file, path)[0]
        same = same_statements(told.events) == same_statements(less.events)
        is_verbatim = same and re.search(b"[!$]", text)  # a line without an event
        self.require(is_verbatim or status == (0 if same else 1),
                     "diff differs where events do", file)
        status = run("diff", "--ignore-order", file, path)[0]
        self.require(status == 1 or (told.objects, told.entries) == (less.objects, less.entries),
                     "diff in any order differs where maps do", file)

    def of_derived(self):
        made = tell([path for path, _, _, _ in self.derived])
        for (_, events, law, file), told in zip(self.derived, made):
            self.require(told.events == events, law, file)


def main():
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([ORACLE, "generate", str(COUNT), str(SEED), folder], check=True)
        files = [f"{folder}/{i}.kdx" for i in range(COUNT)]
        laws = Laws()
        for file, told in zip(files, tell(files)):
            if told.failure:
                laws.of_refused(file)
            else:
                laws.of_right(file, told)
        laws.of_derived()
    print(f"{laws.checked} laws held, {laws.failed} did not")
    return 1 if laws.failed or laws.checked < COUNT else 0


if __name__ == "__main__":
    sys.exit(main())
