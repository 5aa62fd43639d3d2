#!/usr/bin/env python3
"""Prints what kdx_bench measured as a table, and the ratios that the library has to reach."""

import argparse
import collections
import json
import pathlib
import statistics

# task, what the library is compared with, at most this ratio; of several, with the best of them
TARGETS = [
    ("events", "RapidJSON", 1.0),
    ("text-to-map", "floor", 1.4),
    ("text-to-map", "RapidJSON", 1.0),
    ("lines-to-map", "floor", 1.5),
    ("map-to-text", "floor", 1.5),
    ("map-to-text", "RapidJSON", 1.0),
    ("re-indent", "floor", 2.5),
    ("re-indent", "RapidJSON", 0.6),
    ("read", "simdjson, simdjson compact", 1.3),
    ("document", "simdjson", 1.5),
    ("document", "pugixml, pugixml elements", 0.4),
    ("first-document", "pugixml elements", 0.4),
    ("write", "floor", 1.5),
    ("format", "indentKDX", 0.8),
]
TASKS = ["events", "read", "document", "first-document", "text-to-map", "lines-to-map", "map-to-text", "re-indent",
         "format", "write"]
LIBRARY = "KDX"
STATISTICS = {"median": statistics.median, "best": min}


class Times:
    """Nanoseconds per parameter of (task, contestant, corpus) in every round."""

    def __init__(self, prefix, statistic):
        self.statistic = STATISTICS[statistic]
        self.rounds = collections.defaultdict(list)
        self.parameters = {}
        for path in sorted(prefix.parent.glob(f"{prefix.name}-*.json")):
            self.add(json.loads(path.read_text())["benchmarks"])

    def add(self, runs):
        for run in runs:
            if run.get("error_occurred"):
                raise SystemExit(f"{run['run_name']}: {run['error_message']}")
            key = tuple(run["run_name"].split("/")[:3])
            self.rounds[key].append(run["cpu_time"] * 1e6 / run["parameters"])
            self.parameters[key] = run["parameters"]

    def __contains__(self, key):
        return key in self.rounds

    def keys(self):
        return self.rounds.keys()

    def total(self, key):
        """Nanoseconds of a whole run."""
        return self.of(*key) * self.parameters[key]

    def of(self, *key):
        return self.statistic(self.rounds[key])

    def ratio(self, one, other):
        """Of the ratios in each round, in which the two ran close to each other."""
        if self.statistic is min:
            return self.of(*one) / self.of(*other)
        return self.statistic([a / b for a, b in zip(self.rounds[one], self.rounds[other])])

    def best(self, task, contestants, corpus):
        """The key of the fastest of those that took part; None when none did."""
        keys = [(task, contestant, corpus) for contestant in contestants.split(", ")]
        return min((key for key in keys if key in self), key=lambda key: self.of(*key), default=None)


def corpora(times):
    return sorted({corpus for _, _, corpus in times.keys()}, reverse=True)


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
        contestants = {c for t, c, _ in times.keys() if t == task}
        order = [LIBRARY, "floor"] + sorted(contestants - {LIBRARY, "floor"})
        for contestant in (c for c in order if c in contestants):
            line = [f"{task}, {contestant}"]
            for name in names:
                key, own = (task, contestant, name), (task, LIBRARY, name)
                line += ([f"{times.of(*key):.1f}", f"{times.ratio(key, own):.2f}"]
                         if key in times and own in times else ["-", "-"])
            cells.append(line)
    return table(cells)


def targets_table(times):
    cells = [["ratio", "at most"] + corpora(times) + [""]]
    for task, other, limit in TARGETS:
        pairs = [((task, LIBRARY, name), times.best(task, other, name)) for name in corpora(times)]
        ratios = [times.ratio(own, best) for own, best in pairs if own in times and best]
        if ratios:
            verdict = "met" if max(ratios) <= limit else "NOT MET"
            cells.append([f"{task}, {LIBRARY} / {other}", f"{limit:.1f}"]
                         + [f"{ratio:.2f}" for ratio in ratios] + [verdict])
    return table(cells)


def growth_table(times, limit=1.3):
    """How much more a parameter costs in a large text, beyond what its floor grows by."""
    cells = [["growth from 1 to 100 MB", "at most", "corpus", LIBRARY, "floor", "ratio", ""]]
    for task in (task for task in TASKS if (task, "floor", "codes-1") in times):
        for corpus in ("packages", "codes"):
            own, floor = (times.ratio((task, contestant, f"{corpus}-100"),
                                      (task, contestant, f"{corpus}-1"))
                          for contestant in (LIBRARY, "floor"))
            ratio = own / max(floor, 1.0)
            cells.append([task, f"{limit}", corpus, f"{own:.2f}", f"{floor:.2f}", f"{ratio:.2f}",
                          "met" if ratio <= limit else "NOT MET"])
    return table(cells)


def levels_table(times, limit=1.3):
    flat, deep = (("events", LIBRARY, f"levels-{levels}") for levels in (1, 1000))
    ratio = times.ratio(deep, flat)
    return table([["events, ns per parameter", "1 level", "1,000 levels", "ratio", "at most", ""],
                  ["", f"{times.of(*flat):.1f}", f"{times.of(*deep):.1f}", f"{ratio:.2f}",
                   f"{limit}", "met" if ratio <= limit else "NOT MET"]])


def edit_table(times, limit=0.001):
    """What one change of a value costs next to loading and writing the document."""
    cells = [["one edit", "at most", "corpus", "microseconds", "ratio", ""]]
    for corpus in corpora(times):
        edit, rest = (("edit", contestant, corpus) for contestant in (LIBRARY, "load and write"))
        ratio = times.ratio(edit, rest)
        cells.append(["to loading and writing", f"{limit}", corpus,
                      f"{times.total(edit) / 1e3:.0f}", f"{ratio:.6f}",
                      "met" if ratio <= limit else "NOT MET"])
    return table(cells)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("results", type=pathlib.Path, nargs="?", help="where the files of the rounds are, up to their number")
    parser.add_argument("--growth", type=pathlib.Path, help="the same, of corpora of two sizes")
    parser.add_argument("--levels", type=pathlib.Path, help="the same, of the flat and deep text")
    parser.add_argument("--edit", type=pathlib.Path, help="the same, of one edit in a large text")
    parser.add_argument("--statistic", choices=STATISTICS, default="median", help="of the rounds")
    options = parser.parse_args()
    if options.results:
        times = Times(options.results, options.statistic)
        print("\n".join(times_table(times) + [""] + targets_table(times)))
    if options.growth:
        print("\n".join(growth_table(Times(options.growth, options.statistic))))
    if options.edit:
        print("\n" + "\n".join(edit_table(Times(options.edit, options.statistic))))
    if options.levels:
        print("\n" + "\n".join(levels_table(Times(options.levels, options.statistic))))


if __name__ == "__main__":
    main()
