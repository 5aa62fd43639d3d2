#!/usr/bin/env python3
"""Types into a text of 1 MB and tells what the language server takes, as ratios to one kdx check.

    scripts/lsp-speed.py [KDX]
"""

import pathlib
import subprocess
import sys
import tempfile
import time

PROJECT = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(PROJECT / "tests/lsp"))
from client import Client  # noqa: E402

KDX = sys.argv[1] if len(sys.argv) > 1 else str(PROJECT / "build/release/cli/kdx")
ROUNDS = 20


def best(run):
    """The least of some times in milliseconds: other programs only add to it."""
    times = []
    for _ in range(ROUNDS):
        begin = time.perf_counter()
        run()
        times.append(1000 * (time.perf_counter() - begin))
    return min(times)


class Typist:
    def __init__(self, text):
        self.client = Client([KDX, "lsp"])
        self.client.request("initialize", {"capabilities": {}})
        self.version = 1
        self.client.notify("textDocument/didOpen", {
            "textDocument": {"uri": "a", "version": 1, "languageId": "kdx", "text": text}})
        self.wait()

    def wait(self):
        self.client.wait(lambda message: message.get("params", {}).get("version") == self.version)

    def press(self, keys):
        for _ in range(keys):
            self.version += 1
            place = {"line": 10000, "character": 0}
            self.client.notify("textDocument/didChange", {
                "textDocument": {"uri": "a", "version": self.version},
                "contentChanges": [{"range": {"start": place, "end": place}, "text": " "}]})
        self.wait()

    def memory(self):
        status = pathlib.Path(f"/proc/{self.client.server.pid}/status").read_text()
        return int(status.partition("VmRSS:")[2].split()[0]) / 1024


def main():
    piece = (PROJECT / "examples/instrument.kdx").read_text()
    text = "".join(piece.replace("bench 2", f"bench {i}").replace("daily", f"daily {i}")
                   for i in range(1000000 // len(piece)))
    with tempfile.NamedTemporaryFile("w", suffix=".kdx") as file:
        file.write(text)
        file.flush()
        check = best(lambda: subprocess.run([KDX, "check", file.name], check=False,
                                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))
    typist = Typist(text)
    kept = len(typist.client.kept)
    figures = [("one key", best(lambda: typist.press(1))),
               ("100 keys in a burst", best(lambda: typist.press(100)))]
    reports = len(typist.client.kept) - kept + 2 * ROUNDS
    print(f"kdx check of {len(text)} bytes: {check:.1f} ms")
    for name, figure in figures:
        print(f"{name}: {figure:.1f} ms, {figure / check:.2f} of a check")
    print(f"checks of {ROUNDS} bursts and {ROUNDS} keys: {reports}")
    print(f"memory: {typist.memory():.0f} MB")
    typist.client.end()


main()
