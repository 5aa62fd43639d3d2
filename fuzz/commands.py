#!/usr/bin/env python3
"""Holds the commands of kdx to laws, on generated texts, against what the library says of them.

    commands.py KDX ORACLE COUNT SEED
"""

import os
import pathlib
import random
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


def drawn(objects, output):
    """Whether a drawing shows these objects, each in its column."""
    lines = output.split(b"\n")[:-1]
    if len(lines) != len(objects):
        return False
    for (depth, title, parameters), line in zip(objects, lines):
        text = line.decode(errors="surrogateescape")[4 * depth:].encode(errors="surrogateescape")
        if not text.startswith(title + b" (%d parameter" % parameters):
            return False
    return True


class Laws:
    def __init__(self):
        self.random = random.Random(SEED)
        self.derived = []  # texts made by commands: file, what it has to say, law, made of
        self.checked = 0
        self.failed = 0

    def require(self, holds, law, file):
        self.checked += 1
        if holds:
            return
        self.failed += 1
        print(f"BROKEN LAW: {law}\n  {pathlib.Path(file).read_bytes()!r}")

    def derive(self, text, name, told, law, file):
        """Has the text read by the library, later."""
        path = f"{file}.{name}"
        pathlib.Path(path).write_bytes(text)
        self.derived.append((path, told, law, file))
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
            made = self.derive(run(command, file)[1], command, told,
                               f"{command} changes no event", file)
            self.require(run("diff", file, made) == (0, b""), f"diff finds {command} equal", file)
        self.of_get(file, told)
        self.of_diff(file, told)

    def of_get(self, file, told):
        values = [entry for entry in told.entries if b"\0" not in b"".join(entry)]
        ambiguous = any(kind == b"o" and b"/" in name for kind, _, name in told.events)
        if values and not ambiguous:
            path, name, value = self.random.choice(values)
            self.require(run("get", file, path, name) == (0, value + b"\n"),
                         f"get finds {path!r} {name!r}", file)

    def of_diff(self, file, told):
        """Against the text without one of its lines."""
        lines = pathlib.Path(file).read_bytes().split(b"\n")
        del lines[self.random.randrange(len(lines))]
        path = f"{file}.less"
        pathlib.Path(path).write_bytes(b"\n".join(lines))
        less, = tell([path])
        if less.failure:
            return
        same = same_statements(told.events) == same_statements(less.events)
        status = run("diff", file, path)[0]
        text = pathlib.Path(file).read_bytes()
        is_verbatim = same and (b"!" in text or b"$" in text)  # a line that has no event
        self.require(is_verbatim or status == (0 if same else 1),
                     "diff differs where events do", file)
        status = run("diff", "--ignore-order", file, path)[0]
        self.require(status == 1 or (told.objects, told.entries) == (less.objects, less.entries),
                     "diff in any order differs where maps do", file)

    def of_derived(self):
        for (_, told, law, file), made in zip(self.derived, tell([d[0] for d in self.derived])):
            self.require(made.events == told.events, law, file)


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
