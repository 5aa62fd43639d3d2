#!/usr/bin/python3
"""How fast kdx.loads makes dicts, next to Python's other readers of the same content; what two
threads give; and the memory beyond the text and the result.

    PYTHONPATH=build/dev/python bench/python_loads.py FILE.kdx...

Every reader builds the same: a dict by path of dicts by name, all str, apart from configparser,
whose sections are objects of its own. Each form of the content is read back once and compared.
"""

import configparser
import gc
import json
import multiprocessing
import pathlib
import resource
import sys
import threading
import time
import tomllib

import kdx
import yaml

ROUNDS = 3


def as_toml(flat):
    quoted = lambda text: json.dumps(text, ensure_ascii=False).replace("\x7f", "\\u007f")
    return "\n".join(
        f"[{quoted(path)}]\n" + "".join(f"{quoted(n)} = {quoted(v)}\n" for n, v in inner.items())
        for path, inner in flat.items()
    )


def as_yaml(flat):
    quoted = lambda text: json.dumps(text, ensure_ascii=False)
    return "".join(
        f"{quoted(path)}:" + ("\n" if inner else " {}\n")
        + "".join(f"  {quoted(n)}: {quoted(v)}\n" for n, v in inner.items())
        for path, inner in flat.items()
    )


def as_ini(flat):
    return "".join(
        f"[{path}]\n" + "".join(f"{n} = {v}\n" for n, v in inner.items())
        for path, inner in flat.items()
    )


def read_ini(text):
    parser = configparser.RawConfigParser(default_section="\0", strict=False)
    parser.optionxform = str
    parser.read_string(text)
    return parser


def seconds(work, rounds=ROUNDS):
    best = float("inf")
    for _ in range(rounds):
        gc.collect()
        start = time.perf_counter()
        result = work()
        best = min(best, time.perf_counter() - start)
        del result
    return best


def in_two(kind, work):
    """Runs `work` in two threads or two processes at the same time."""
    workers = [kind(target=work) for _ in range(2)]
    for worker in workers:
        worker.start()
    for worker in workers:
        worker.join()


def print_speeds(text):
    flat = kdx.loads(text)
    parameters = sum(map(len, flat.values()))
    readers = {
        "kdx.loads": (kdx.loads, text),
        "kdx.loads nested": (lambda text: kdx.loads(text, nested=True), text),
        "json.loads": (json.loads, json.dumps(flat, indent=2)),
        "json.loads compact": (json.loads, json.dumps(flat, separators=(",", ":"))),
        "tomllib.loads": (tomllib.loads, as_toml(flat)),
        "configparser": (read_ini, as_ini(flat)),
        "yaml.CSafeLoader": (lambda text: yaml.load(text, yaml.CSafeLoader), as_yaml(flat)),
    }
    yardstick = seconds(lambda: json.loads(readers["json.loads"][1]))
    for name, (read, form) in readers.items():
        if name not in ("configparser", "kdx.loads nested"):
            assert read(form) == flat, name
        taken = seconds(lambda: read(form))
        print(f"{name:20} {taken / parameters * 1e9:8.0f} ns a parameter {taken / yardstick:6.2f}")


def print_threads(text):
    """What two processes give is what the machine has to give. Short rounds, and many: where there
    is other work, some have both cores to themselves."""
    short = text[: text.index("\n", min(len(text), 1_000_000) - 1) + 1]
    for call in (kdx.loads, kdx.check, kdx.format):
        work = lambda: [call(short) and None for _ in range(5)]
        one = 2 * seconds(work, 20)
        threads = seconds(lambda: in_two(threading.Thread, work), 20)
        processes = seconds(lambda: in_two(multiprocessing.Process, work), 20)
        print(f"kdx.{call.__name__:16} {one / threads:8.2f} times as fast in two threads, "
              f"{one / processes:.2f} in two processes")


def peak():
    return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss * 1024


def print_memory(text):
    """How far the peak rises during a call, result included. The calls come in the order of what
    they need, because a peak never falls."""
    large = b"".join([text.encode()] * 10)
    calls = {
        "check": lambda: kdx.check(large, warnings=False),
        "format": lambda: kdx.format(large),
        "Document": lambda: kdx.Document(large),
    }
    for name, call in calls.items():
        before = peak()
        result = call()
        print(f"kdx.{name:16} {(peak() - before) / len(large):8.2f} texts beyond the text")
        del result


for name in sys.argv[1:]:
    content = pathlib.Path(name).read_text()
    print(f"{name}, {len(content) / 1e6:.0f} MB")
    print_memory(content)
    print_threads(content)
    print_speeds(content)
