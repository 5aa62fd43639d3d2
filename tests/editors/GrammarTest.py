"""Compares the colours of an editor with what the language server says.

    GrammarTest.py KDX PROBE TEXT...

A TEXT that is a folder stands for all texts below it.

A probe is a program that is given files: a text, and places in it as "LINE BYTE", both from 0. It
prints a name for what it shows at each.
"""

import pathlib
import re
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "lsp"))
from client import Client  # noqa: E402

# For each type of token, in the order of the legend: what Vim, Emacs and TextMate call it.
NAMES = [
    ["kdxType", "font-lock-type-face", "entity.name.type.kdx"],
    ["kdxName", "font-lock-variable-name-face", "variable.other.object.kdx"],
    ["kdxParameter", "font-lock-constant-face", "variable.other.property.kdx"],
    ["kdxValue", "font-lock-string-face", "string.unquoted.value.kdx"],
    ["kdxComment", "font-lock-comment-face", "comment.line.number-sign.kdx"],
    ["kdxEnd", "font-lock-keyword-face", "keyword.control.end.kdx"],
    ["kdxAction", "font-lock-function-name-face", "entity.name.function.action.kdx"],
    ["kdxVerbatim", "font-lock-preprocessor-face", "meta.preprocessor.verbatim.kdx"],
    ["kdxUnknown", "font-lock-warning-face", "invalid.illegal.kdx"],
]
UNKNOWN = len(NAMES) - 1

# Texts that are left out: those in which an editor sees other lines than the library, and those of
# which a grammar that sees one line at a time cannot tell what they are.
LEFT_OUT = re.compile(
    r"\0|\r(?!\n)|\\\r\n"  # a CR is a line's end, or a part of it, to editors alone
    r"|(?<!\\\n)^\s*[\w &.]*\\[ ]*$"  # the next line says what kind of statement this is
    r"|\\[^\S\n]*\n.*\\[^\S\n]+$",  # behind a backslash and blanks, only a first line goes on
    re.ASCII | re.MULTILINE)


def merged(folder):
    """All files below a folder as one text: bytes as characters, a blank line to end a statement."""
    texts = {file.read_bytes().decode("latin-1") for file in folder.rglob("*") if file.is_file()}
    return "\n\n".join(text for text in sorted(texts) if not LEFT_OUT.search(text))


def tokens(client, name, text):
    """Line, byte and type of each end of a token, and of the begin of what the server does not know."""
    lines = text.split("\n")
    document = {"uri": name, "version": 1, "text": text}
    client.notify("textDocument/didOpen", {"textDocument": document})
    answer = client.request("textDocument/semanticTokens/full", {"textDocument": {"uri": name}})
    data, line, unit = answer["result"]["data"], 0, 0
    found = (re.match(r"\s*([^\s:=])", line, re.ASCII) for line in lines)
    unknown = {n: begin.start(1) for n, begin in enumerate(found)
               if begin and not lines[n - 1].endswith("\\")}
    for down, right, length, kind, _ in zip(*[iter(data)] * 5):
        line, unit = line + down, right + (0 if down else unit)
        unknown.pop(line, None)
        for end in (unit, unit + length - 1):
            before = lines[line].encode("utf-16-le")[:2 * end].decode("utf-16-le", "ignore")
            yield line, len(before.encode()), kind
    for line, begin in unknown.items():
        yield line, begin, UNKNOWN


def main():
    kdx, probe, *names = sys.argv[1:]
    client = Client([kdx, "lsp"])
    client.request("initialize", {"capabilities": {}})
    failed = 0
    with tempfile.TemporaryDirectory() as folder:
        shown_file, places = pathlib.Path(folder, "shown.kdx"), pathlib.Path(folder, "places")
        for name in map(pathlib.Path, names):
            text = merged(name) if name.is_dir() else name.read_bytes().decode()
            expected = list(tokens(client, str(name), text))
            shown_file.write_bytes(text.encode())
            places.write_text("".join(f"{line} {byte}\n" for line, byte, _ in expected))
            shown = subprocess.check_output([probe, shown_file, places], text=True).splitlines()
            for (line, byte, kind), group in zip(expected, shown, strict=True):
                if group not in NAMES[kind]:
                    failed += 1
                    source = text.split("\n")[line]
                    print(f"{name}:{line + 1}:{byte + 1}: {group} is not {NAMES[kind]}: {source!r}")
            print(f"{name}: {len(expected)} places")
    sys.exit(failed != 0)


main()
