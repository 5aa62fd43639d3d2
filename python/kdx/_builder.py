"""Texts written call by call."""

from __future__ import annotations

from collections.abc import Iterator, Sequence
from contextlib import contextmanager
from typing import Union

from . import _core


class ActionBuilder:
    """Writes one action line.

    >>> ActionBuilder("start").add_param("speed", "10").add_param("fast").text
    '>start speed=10, fast'
    """

    def __init__(self, action: str) -> None:
        self._core = _core.ActionBuilder(action)

    def add_param(self, *name_and_value: str) -> ActionBuilder:
        """Appends a parameter: its name and value, or the value alone. Commas are marked."""
        self._core.add_param(*name_and_value)
        return self

    @property
    def text(self) -> str:
        """The line so far, without a line feed."""
        return self._core.text()


class Builder:
    """Writes a document, call by call.

    Types, names and values are written as they are: what KDX cannot carry, such as a line feed in a
    value, is not guarded against. `dumps` and `Document` do that.

    >>> builder = Builder()
    >>> builder.add_action("Reset")
    >>> with builder.object("Sample", "s1"):
    ...     builder.add_param("Volume", 2.5, "ml")
    >>> print(builder.text, end="")
    >Reset 
    Sample: s1
      Volume = 2.5 [ml]
    END
    """

    def __init__(self, root_path: str = "") -> None:
        self._core = _core.Builder()
        self._core.push_root(root_path)

    def push_object(self, type: str, name: str = "", *, replace: bool = False) -> None:
        """Opens an object; `replace` marks it as one that takes the place of another."""
        push = self._core.push_replaced_object if replace else self._core.push_object
        push(type, name) if name else push(type)

    def push_root(self, path: str) -> None:
        """Opens an object for each component of a path."""
        self._core.push_root(path)

    def pop_object(self) -> None:
        """Closes the innermost open object; KDXUsageError when none is open."""
        self._core.pop_object()

    def pop_all(self) -> None:
        """Closes every open object."""
        self._core.pop_all()

    @contextmanager
    def object(self, type: str, name: str = "", *, replace: bool = False) -> Iterator[Builder]:
        """An object that is open as long as the block lasts."""
        self.push_object(type, name, replace=replace)
        try:
            yield self
        finally:
            self.pop_object()

    def add_param(
        self, name: str, value: Union[str, int, float, Sequence[str]], unit: str = ""
    ) -> None:
        """Adds a parameter. Several values are separated by commas. A float, and a number with a
        unit, is written in six significant digits at most."""
        if isinstance(value, str):
            self._core.add_text(name, value)
        elif isinstance(value, int) and not unit:
            self._core.add_text(name, str(int(value)))
        elif isinstance(value, (int, float)):
            self._core.add_number(name, value, unit)
        else:
            self._core.add_texts(name, value)

    def add_action(self, action: Union[str, ActionBuilder], params: Sequence[str] = ()) -> None:
        """Adds an action line; KDXUsageError when an object is open."""
        if isinstance(action, ActionBuilder):
            self._core.add_action(action._core)
        else:
            self._core.add_action(action, params)

    @property
    def text(self) -> str:
        """The document so far; KDXUsageError when an object is open."""
        return self._core.text()


def clean_value(value: str) -> str:
    """A value without the backslashes at its end, which would continue its line.

    >>> print(clean_value("C:\\\\data\\\\"))
    C:\\data
    """
    return _core.clean_value(value)
