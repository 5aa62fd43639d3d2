"""What goes wrong, as classes."""

from __future__ import annotations

from typing import Any


class KDXError(Exception):
    """The root of what this package raises."""


class KDXDecodeError(KDXError, ValueError):
    """A text is no KDX.

    >>> import kdx
    >>> try:
    ...     kdx.loads("Sample: s1\\n  gain -> 10\\nEND")
    ... except kdx.KDXDecodeError as error:
    ...     print(error.lineno, error.colno, error.doc[error.pos :].split()[0])
    2 8 ->

    msg: what is wrong
    doc: the text that was read, as it was given; pickled and copied as bytes where it is neither
        str nor bytes, empty when it has been closed meanwhile
    pos: where in `doc` the failure is: an index of it
    lineno, colno: the same as line and column, from 1; a byte order mark counts 0
    """

    def __init__(self, msg: str, doc: Any, pos: int, lineno: int, colno: int) -> None:
        super().__init__(f"{msg}: line {lineno} column {colno} (char {pos})")
        self.msg = msg
        self.doc = doc
        self.pos = pos
        self.lineno = lineno
        self.colno = colno

    def __reduce__(self) -> tuple[Any, ...]:
        return type(self), (self.msg, self._kept_doc(), self.pos, self.lineno, self.colno)

    def _kept_doc(self) -> Any:
        if isinstance(self.doc, (str, bytes)):
            return self.doc
        try:
            return bytes(self.doc)
        except ValueError:  # an mmap that was closed, a memoryview that was released
            return b""


class KDXEncodeError(KDXError, ValueError):
    """No text can carry what was to be written.

    >>> import kdx
    >>> kdx.dumps({"/Sample:s1": {"gain": "1\\n2"}})
    Traceback (most recent call last):
        ...
    kdx.KDXEncodeError: /Sample:s1, gain: KDX cannot carry this: a line feed would end the line.
    """


class KDXInvalidError(KDXError, ValueError):
    """An edit was refused, because KDX cannot carry it; or a text, because a line is no KDX.

    >>> import kdx
    >>> kdx.format("Sample: s1\\n  gain -> 10")
    Traceback (most recent call last):
        ...
    kdx.KDXInvalidError: Unknown KDX syntax in line 2, column 8, where ':' or '=' is awaited:
    gain -> 10.
    """


class KDXUsageError(KDXError):
    """A call makes no sense where it stands.

    >>> import kdx
    >>> kdx.Builder().pop_object()
    Traceback (most recent call last):
        ...
    kdx.KDXUsageError: Internal error in specifying object nesting.
    """
