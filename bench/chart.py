#!/usr/bin/env python3
"""Draws what kdx_bench measured: chart.py RESULTS CHART.svg

One row for each contestant, a dot for each corpus, on a logarithmic scale of ns per parameter.
"""

import math
import pathlib
import sys
from xml.sax.saxutils import escape

from table import LIBRARY, TASKS, Times, corpora

WIDTH, LEFT, RIGHT, ROW, TOP = 760, 190, 30, 18, 40
COLOURS = ("#0b6e99", "#d9730d")


class Scale:
    def __init__(self, values):
        self.low = math.floor(math.log10(min(values)))
        self.high = math.ceil(math.log10(max(values)))

    def x(self, value):
        share = (math.log10(value) - self.low) / (self.high - self.low)
        return LEFT + share * (WIDTH - LEFT - RIGHT)

    def ticks(self):
        return [10 ** power for power in range(self.low, self.high + 1)]


def text(x, y, content, **style):
    attributes = "".join(f' {name.replace("_", "-")}="{value}"' for name, value in style.items())
    return f'<text x="{x:.1f}" y="{y}"{attributes}>{escape(content)}</text>'


def rows(times, names):
    """Task headings, as strings, and (contestant, times by corpus), the fastest first."""
    for task in TASKS:
        yield task
        contestants = {c for t, c, _ in times.keys() if t == task}
        own = {c: [times.of(task, c, name) if (task, c, name) in times else None for name in names]
               for c in contestants}
        yield from sorted(own.items(), key=lambda item: max(filter(None, item[1])))


def draw(times):
    names, scale = corpora(times), Scale([times.of(*key) for key in times.keys() if key[0] in TASKS])
    out, y = [], TOP
    for line in rows(times, names):
        y += ROW
        if isinstance(line, str):
            y += ROW // 2
            out.append(text(10, y, line, font_weight="bold"))
            continue
        contestant, values = line
        weight = "bold" if contestant == LIBRARY else "normal"
        out.append(text(LEFT - 12, y, contestant, text_anchor="end", font_weight=weight))
        out += [f'<circle cx="{scale.x(value):.1f}" cy="{y - 4}" r="4.5" fill="{colour}"/>'
                for value, colour in zip(values, COLOURS) if value]
    return grid(scale, y) + legend(names) + out, y + ROW


def grid(scale, bottom):
    return [f'<path d="M{scale.x(tick):.1f} {TOP}V{bottom}" stroke="#ccc"/>'
            + text(scale.x(tick), TOP - 6, f"{tick:,} ns", text_anchor="middle")
            for tick in scale.ticks()]


def legend(names):
    return [f'<circle cx="{LEFT + 150 * i}" cy="12" r="4.5" fill="{colour}"/>'
            + text(LEFT + 150 * i + 10, 16, name)
            for i, (name, colour) in enumerate(zip(names, COLOURS))]


def main():
    if len(sys.argv) != 3:
        raise SystemExit(__doc__)
    shapes, height = draw(Times(pathlib.Path(sys.argv[1]), "median"))
    pathlib.Path(sys.argv[2]).write_text(
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{height}" '
        f'font-family="sans-serif" font-size="12"><rect width="100%" height="100%" fill="#fff"/>\n'
        + "\n".join(shapes) + "\n</svg>\n", "utf-8")


if __name__ == "__main__":
    main()
