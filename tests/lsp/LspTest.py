"""Plays dialogues with the language server and compares each answer: LspTest.py KDX FILE...

A dialogue is a text. A line is a step, lines "| " below it a text that it takes, lines "< " what
comes back, ranges as "LINE:CHARACTER-LINE:CHARACTER". With UPDATE=1 in the environment, the lines
"< " are written anew.
"""

import difflib
import json
import os
import re
import sys

from client import Client


def place(text):
    line, character = text.split(":")
    return {"line": int(line), "character": int(character)}


def span(text):
    start, _, end = text.partition("-")
    return {"start": place(start), "end": place(end or start)}


def short(value):
    """JSON with places as one text each."""
    if isinstance(value, list):
        return [short(item) for item in value]
    if not isinstance(value, dict):
        return value
    if value.keys() == {"line", "character"}:
        return f"{value['line']}:{value['character']}"
    value = {key: short(item) for key, item in value.items()}
    return f"{value['start']}-{value['end']}" if value.keys() == {"start", "end"} else value


def shown(message):
    value = short(message.get("result", message.get("params", message.get("error"))))
    if isinstance(value, dict) and "diagnostics" in value:
        value = value["diagnostics"]
    if isinstance(value, dict) and "serverInfo" in value:
        del value["serverInfo"]["version"]
    items = value if isinstance(value, list) and value else [value]
    return [json.dumps(item, ensure_ascii=False) for item in items]


class Dialogue:
    def __init__(self, kdx):
        self.client = Client([kdx, "lsp"])
        self.version = 0

    def play(self, step, text):
        """Returns what comes back, as lines."""
        word, _, rest = step.partition(" ")
        if word in self.STEPS:
            return self.STEPS[word](self, rest)
        uri, where, more = (re.match(r"(\S*) ?([\d:-]*) ?(.*)", rest)).groups()
        params = {"textDocument": {"uri": uri}, **(json.loads(more) if more else {})}
        if where:
            params["range" if "-" in where else "position"] = (span if "-" in where else place)(where)
        if word in ("textDocument/didOpen", "textDocument/didChange"):
            self.version += 1
            params["textDocument"].update(version=self.version, languageId="kdx", text=text)
            params["contentChanges"] = [{"text": text, **({"range": span(where)} if where else {})}]
        if word in ("initialized", "exit") or "/did" in word:
            return self.client.notify(word, params) or []
        return shown(self.client.request(word, params))

    def start(self, _):
        self.client.request("initialize", {"capabilities": {}})
        return []

    def write(self, rest):
        self.client.write(json.loads(rest).encode())
        return []

    def wait(self, rest):
        """For an answer by its id, or a notification; of the text as it is now, if of any."""
        return shown(self.client.wait(
            lambda message: rest in (str(message.get("id")), message.get("method")) and
            message.get("params", {}).get("version", self.version) == self.version))

    def end(self, _):
        return [str(self.client.end())]

    STEPS = {"start": start, "bytes": write, "await": wait, "end": end}


def played(kdx, script):
    """The script with the answers that came."""
    lines = []
    dialogue = Dialogue(kdx)
    steps = re.findall(r"^(?![<|])(.*)\n((?:\|.*\n)*)(?:<.*\n)*", script, re.M)
    for step, text in steps:
        lines += [step, *text.splitlines()]
        if step and not step.startswith("#"):
            given = "\n".join(line[2:] for line in text.splitlines())
            lines += ["< " + line for line in dialogue.play(step, given)]
    dialogue.client.server.kill()
    dialogue.client.end()
    return "\n".join(lines) + "\n"


def main():
    failed = False
    for name in sys.argv[2:]:
        with open(name, encoding="utf-8") as file:
            script = file.read()
        answers = played(sys.argv[1], script)
        if os.environ.get("UPDATE"):
            with open(name, "w", encoding="utf-8") as file:
                file.write(answers)
        failed |= answers != script
        sys.stdout.writelines(difflib.unified_diff(
            script.splitlines(True), answers.splitlines(True), name, "answered"))
    sys.exit(failed)


main()
