"""Values that are numbers."""

from __future__ import annotations

import re
from typing import NamedTuple, Union

_INTEGER = r"[+-]?[0-9]+"
_NUMBER = r"[+-]?(?:[0-9]+\.?[0-9]*|\.[0-9]+)(?:[eE][+-]?[0-9]+)?"
_WITH_UNIT = re.compile(rf"({_NUMBER})(?:[ \t]*\[([^\[\]]*)\])?")


class Number(NamedTuple):
    """A number and its unit, which is empty where none is written."""

    value: Union[int, float]
    unit: str


def number(value: str) -> Number | None:
    """The number that a value is, with its unit in brackets; None when it is no number.

    >>> number("2.5 [ml]")
    Number(value=2.5, unit='ml')
    >>> number("10")
    Number(value=10, unit='')
    >>> number("fast")
    """
    match = _WITH_UNIT.fullmatch(value)
    if match is None:
        return None
    text, unit = match.group(1), (match.group(2) or "").strip()
    # Past some thousand digits Python makes no int of a text.
    isInteger = len(text) < 1000 and re.fullmatch(_INTEGER, text) is not None
    return Number(int(text) if isInteger else float(text), unit)
