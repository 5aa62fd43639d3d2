"""Compares the colours of an editor with what the language server says: GrammarTest.py KDX PROBE TEXT...

A probe is a program that is given files: a text, and places in it as "LINE BYTE", both from 0. It
prints a name for what it shows at each.
"""

import pathlib
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
    ["kdxValue", "font-lock-string-face", "string.unquoted.value.kdx", "kdxNoComment"],
    ["kdxComment", "font-lock-comment-face", "comment.line.number-sign.kdx"],
    ["kdxEnd", "font-lock-keyword-face", "keyword.control.end.kdx"],
    ["kdxAction", "font-lock-function-name-face", "entity.name.function.action.kdx"],
    ["kdxVerbatim", "font-lock-preprocessor-face", "meta.preprocessor.verbatim.kdx"],
]


def tokens(client, name, text):
    """Where each token begins, in bytes, and its type."""
    lines = text.split("\n")
    document = {"uri": name, "version": 1, "text": text}
    client.notify("textDocument/didOpen", {"textDocument": document})
    answer = client.request("textDocument/semanticTokens/full", {"textDocument": {"uri": name}})
    data, line, unit = answer["result"]["data"], 0, 0
    for down, right, _, kind, _ in zip(*[iter(data)] * 5):
        line, unit = line + down, right + (0 if down else unit)
        yield line, len(lines[line].encode("utf-16-le")[:2 * unit].decode("utf-16-le").encode()), kind


def main():
    kdx, probe, *names = sys.argv[1:]
    client = Client([kdx, "lsp"])
    client.request("initialize", {"capabilities": {}})
    places = tempfile.NamedTemporaryFile("w+", suffix=".places")
    failed = 0
    for name in names:
        text = pathlib.Path(name).read_text()
        expected = list(tokens(client, name, text))
        places.seek(0)
        places.truncate()
        places.write("".join(f"{line} {byte}\n" for line, byte, _ in expected))
        places.flush()
        shown = subprocess.check_output([probe, name, places.name], text=True).split()
        for (line, byte, kind), group in zip(expected, shown, strict=True):
            if group not in NAMES[kind]:
                failed += 1
                print(f"{name}:{line + 1}:{byte + 1}: {group} is not {NAMES[kind]}")
    sys.exit(failed != 0)


main()
