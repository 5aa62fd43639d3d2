"""What is done with a text as a whole."""

from __future__ import annotations

import mmap
from collections.abc import Iterable
from typing import Any, Literal, NamedTuple, Union, overload

from . import _core

Buffer = Union[bytes, bytearray, memoryview, mmap.mmap]
Text = Union[str, Buffer]
Severity = Literal["error", "warning"]
Separators = Literal["spaced", "tight", "unchanged"]
EndComments = Literal["unchanged", "added", "removed"]


class Problem(NamedTuple):
    """What is wrong in a text, or looks like a mistake."""

    rule: str
    severity: Severity
    message: str
    lineno: int
    colno: int
    end_lineno: int
    end_colno: int
    fix: str | None  # what would make it go


class Rule(NamedTuple):
    """What `check` looks for."""

    name: str
    severity: Severity
    explanation: str


def check(
    text: Text,
    *,
    warnings: bool = True,
    rules: Iterable[str] = (),
    max_depth: int | None = None,
    max_problems: int | None = None,
) -> list[Problem]:
    """All that is wrong in a text, in its order; of the rules named, or of all.

    Of more errors than `max_problems`, and of more warnings, those are left out that stand last.

    >>> for problem in check("Sample: s1\\n  gain = 1\\n  gain = 2\\nEND"):
    ...     print(problem.lineno, problem.severity, problem.rule)
    3 warning repeated-parameter
    """
    found = _core.check(text, warnings, list(rules), max_depth, max_problems)
    return [Problem._make(fields) for fields in found]


def rules() -> list[Rule]:
    """All rules of `check`, the errors first.

    >>> sorted({rule.severity for rule in rules()})
    ['error', 'warning']
    """
    return [Rule._make(fields) for fields in _core.rules()]


@overload
def format(
    text: str,
    *,
    indent_width: int = ...,
    deepest_level: int = ...,
    blank_lines: int = ...,
    separators: Separators = ...,
    end_comments: EndComments = ...,
) -> str: ...
@overload
def format(
    text: Buffer,
    *,
    indent_width: int = ...,
    deepest_level: int = ...,
    blank_lines: int = ...,
    separators: Separators = ...,
    end_comments: EndComments = ...,
) -> bytes: ...
def format(
    text: Text,
    *,
    indent_width: int = 2,
    deepest_level: int = 64,
    blank_lines: int = 1,
    separators: Separators = "spaced",
    end_comments: EndComments = "unchanged",
) -> str | bytes:
    """The text laid out anew: it means what it meant, and comments stay.

    Raises KDXInvalidError when a line is no KDX.

    >>> print(format("Sample:s1\\ngain=10 # dB\\nEND"), end="")
    Sample: s1
      gain = 10 # dB
    END
    """
    return _core.format(
        text, indent_width, deepest_level, blank_lines, separators, end_comments
    )


@overload
def find(text: str, name: str, *, depth: int = ...) -> str: ...
@overload
def find(text: Buffer, name: str, *, depth: int = ...) -> bytes: ...
def find(text: Text, name: str, *, depth: int = -1) -> str | bytes:
    """The text of the objects of a name, wherever they stand; `depth` levels of what is in them.

    It is put together anew: comments, actions and final backslashes are not in it.

    >>> print(find("Sample: s1\\n  Channel: A\\n    gain = 2\\n  END\\nEND", "A"), end="")
    Channel:A
      gain = 2
    END
    """
    return _core.find(text, name, depth)


@overload
def find_by_type(
    text: str, type: str, *, depth: int = ..., group_type: str = ...
) -> dict[str, str]: ...
@overload
def find_by_type(
    text: Buffer, type: str, *, depth: int = ..., group_type: str = ...
) -> dict[str, bytes]: ...
def find_by_type(
    text: Text, type: str, *, depth: int = -1, group_type: str = ""
) -> dict[str, str] | dict[str, bytes]:
    """The texts of the objects of a type, as `find` gives them, under the line that opens each, or
    under the name of the object of `group_type` around it.

    >>> find_by_type("Sample: s1\\n  Channel: A\\n  END\\nEND", "Channel", group_type="Sample")
    {'s1': 'Channel:A\\nEND\\n'}
    """
    return _core.find_by_type(text, type, depth, group_type)


@overload
def split_actions(text: str) -> list[tuple[Literal["action", "state"], str]]: ...
@overload
def split_actions(text: Buffer) -> list[tuple[Literal["action", "state"], bytes]]: ...
def split_actions(text: Text) -> Any:
    """What is to be done and what is to be set: the runs of action lines and of all other lines.

    >>> split_actions(">reset\\n>start\\nSample: s1\\n  x = 1 # c\\nEND")
    [('action', '>reset\\n>start'), ('state', 'Sample: s1\\nx = 1\\nEND')]
    """
    return _core.split_actions(text)
