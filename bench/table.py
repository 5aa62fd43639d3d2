#!/usr/bin/env python3
"""Prints what kdx_bench measured as a table, and the ratios that the library has to reach."""

import argparse
import collections
import json
import pathlib
import statistics

# task, what the library is compared with, at most this ratio
TARGETS = [
    ("events", "RapidJSON", 1.0),
    ("text-to-map", "floor", 1.4),
    ("text-to-map", "RapidJSON", 1.0),
    ("lines-to-map", "floor", 1.5),
    ("map-to-text", "floor", 2.0),
    ("map-to-text", "RapidJSON", 1.0),
    ("re-indent", "floor", 2.5),
    ("re-indent", "RapidJSON", 0.6),
]
TASKS = ["events", "text-to-map", "lines-to-map", "map-to-text", "re-indent"]
LIBRARY = "KDX"
STATISTICS = {"median": statistics.median, "best": min}


def load(path, statistic):
    """Nanoseconds per parameter of (task, contestant, corpus): of the rounds, one figure."""
    rounds = collections.defaultdict(list)
    for run in json.loads(path.read_text())["benchmarks"]:
        if run["run_type"] != "iteration":
            continue
        task, contestant, corpus = run["run_name"].split("/")[:3]
        if run.get("error_occurred"):
            raise SystemExit(f"{run['run_name']}: {run['error_message']}")
        rounds[task, contestant, corpus].append(run["cpu_time"] * 1e6 / run["parameters"])
    # The floor of reading lines is that of reading a text.
    for (task, contestant, corpus), values in list(rounds.items()):
        if (task, contestant) == ("text-to-map", "floor"):
            rounds["lines-to-map", contestant, corpus] = values
    return {key: STATISTICS[statistic](values) for key, values in rounds.items()}


def corpora(times):
    return sorted({corpus for _, _, corpus in times}, reverse=True)


def row(cells, widths):
    return "| " + " | ".join(cell.ljust(width) if i == 0 else cell.rjust(width)
                             for i, (cell, width) in enumerate(zip(cells, widths))) + " |"


def table(cells):
    widths = [max(len(line[i]) for line in cells) for i in range(len(cells[0]))]
    rule = ["-" * width if i == 0 else "-" * (width - 1) + ":" for i, width in enumerate(widths)]
    return [row(cells[0], widths), row(rule, widths)] + [row(line, widths) for line in cells[1:]]


def times_table(times):
    names = corpora(times)
    cells = [["ns per parameter"] + [text for name in names for text in (name, "to KDX")]]
    for task in TASKS:
        contestants = {c for t, c, _ in times if t == task}
        order = [LIBRARY, "floor"] + sorted(contestants - {LIBRARY, "floor"})
        for contestant in (c for c in order if c in contestants):
            line = [f"{task}, {contestant}"]
            for name in names:
                time, own = times.get((task, contestant, name)), times.get((task, LIBRARY, name))
                line += [f"{time:.1f}" if time else "-",
                         f"{time / own:.2f}" if time and own else "-"]
            cells.append(line)
    return table(cells)


def targets_table(times):
    cells = [["ratio", "at most"] + corpora(times) + [""]]
    for task, other, limit in TARGETS:
        ratios = [times[task, LIBRARY, name] / times[task, other, name] for name in corpora(times)
                  if (task, LIBRARY, name) in times]
        if ratios:
            verdict = "met" if max(ratios) <= limit else "NOT MET"
            cells.append([f"{task}, {LIBRARY} / {other}", f"{limit:.1f}"]
                         + [f"{ratio:.2f}" for ratio in ratios] + [verdict])
    return table(cells)


def growth_table(times, limit=1.3):
    """How much more a parameter costs in a large text, beyond what its floor grows by."""
    cells = [["growth from 1 to 100 MB", "at most", "corpus", LIBRARY, "floor", "ratio", ""]]
    for task in TASKS:
        for corpus in ("packages", "codes"):
            own, floor = (times[task, contestant, f"{corpus}-100"]
                          / times[task, contestant, f"{corpus}-1"]
                          for contestant in (LIBRARY, "floor"))
            ratio = own / max(floor, 1.0)
            cells.append([task, f"{limit}", corpus, f"{own:.2f}", f"{floor:.2f}", f"{ratio:.2f}",
                          "met" if ratio <= limit else "NOT MET"])
    return table(cells)


def levels_table(times, limit=1.3):
    flat, deep = (times["events", LIBRARY, f"levels-{levels}"] for levels in (1, 1000))
    return table([["events, ns per parameter", "1 level", "1,000 levels", "ratio", "at most", ""],
                  ["", f"{flat:.1f}", f"{deep:.1f}", f"{deep / flat:.2f}", f"{limit}",
                   "met" if deep <= limit * flat else "NOT MET"]])


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("results", type=pathlib.Path, nargs="?", help="from --benchmark_out")
    parser.add_argument("--growth", type=pathlib.Path, help="the same, of corpora of two sizes")
    parser.add_argument("--levels", type=pathlib.Path, help="the same, of the flat and deep text")
    parser.add_argument("--statistic", choices=STATISTICS, default="median", help="of the rounds")
    options = parser.parse_args()
    if options.results:
        times = load(options.results, options.statistic)
        print("\n".join(times_table(times) + [""] + targets_table(times)))
    if options.growth:
        print("\n".join(growth_table(load(options.growth, options.statistic))))
    if options.levels:
        print("\n" + "\n".join(levels_table(load(options.levels, options.statistic))))


if __name__ == "__main__":
    main()
