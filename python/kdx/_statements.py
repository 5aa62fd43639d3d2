"""A text statement by statement."""

from __future__ import annotations

import mmap
from collections.abc import Iterator
from typing import IO, Any, Literal, NamedTuple, Union

from . import _core
from ._texts import Text

Kind = Literal["object", "parameter", "end", "action", "verbatim", "blank", "unrecognised"]


class Statement(NamedTuple):
    """A logical line with all that belongs to it: the lines that continue it, and its comment.

    first, second: type and name of an object, name and value of a parameter; else empty
    comment: from its '#' on
    text: what stands in front of the comment
    lineno, colno: where it begins, from 1
    depth: how many objects are around it
    source: all of it, line end included; those of all statements, joined, are the text
    """

    kind: Kind
    first: str
    second: str
    comment: str
    text: str
    lineno: int
    colno: int
    depth: int
    source: str


def iter_events(text_or_fp: Union[Text, IO[str], IO[bytes]]) -> Iterator[Statement]:
    """Goes through the statements of a text or of a file that is open. Nothing is an error: a line
    that is no KDX is a statement of kind "unrecognised".

    >>> for statement in iter_events("Sample: s1\\n  gain = 10 # dB\\nEND"):
    ...     print(statement.lineno, statement.kind, statement.text)
    1 object Sample: s1
    2 parameter gain = 10
    3 end END
    """
    text: Any = text_or_fp
    if hasattr(text, "read") and not isinstance(text, mmap.mmap):
        text = text.read()
    return map(Statement._make, _core.StatementIterator(text))
