"""A text as a tree for a page."""

from __future__ import annotations

from collections.abc import Iterator
from html import escape
from itertools import islice

from ._statements import Statement

_STATEMENTS = 1000
_LEVELS = 64
_COLOURS = {
    "object": "#0550ae",
    "parameter": "#116329",
    "end": "#6e7781",
    "action": "#953800",
    "verbatim": "#8250df",
    "blank": "#6e7781",
    "unrecognised": "#cf222e",
}


def _span(colour: str, text: str) -> str:
    shown = text.encode("utf-8", "surrogateescape").decode("utf-8", "replace")
    return f'<span style="color: {colour}">{escape(shown)}</span>'


def _line(statement: Statement) -> str:
    colour = _COLOURS[statement.kind]
    parts = [_span(colour, statement.text)]
    if statement.kind == "object":
        parts = [_span(colour, statement.first + ":"), f"<b>{_span(colour, statement.second)}</b>"]
    if statement.kind == "parameter":
        parts = [_span(colour, statement.first), "=", _span("inherit", statement.second)]
    if statement.comment:
        parts.append(_span(_COLOURS["blank"], statement.comment))
    return "  " * min(statement.depth, _LEVELS) + " ".join(parts)


def page(statements: Iterator[Statement]) -> str:
    """The statements, coloured by kind and indented by nesting: a thousand at most."""
    lines = [_line(statement) for statement in islice(statements, _STATEMENTS)]
    if next(statements, None) is not None:
        lines.append("…")
    return "<pre>" + "\n".join(lines) + "</pre>"
