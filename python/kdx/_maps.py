"""Texts as dicts, and back."""

from __future__ import annotations

from collections.abc import Iterator, Mapping
from typing import IO, Any, Literal, Union, overload

from . import _core
from ._errors import KDXEncodeError
from ._statements import iter_events
from ._texts import Text, check, format

FlatMap = dict[str, dict[str, str]]


class Object(dict[str, Union[str, "Object"]]):
    """An object with what is in it: parameters under their names, objects under their step of the
    path, such as "/Channel:A". The whole of a text is one, too, without type and name.

    >>> tree = Object()
    >>> tree.add("Sample", "s1")["gain"] = "10"
    >>> tree["/Sample:s1"].type, tree["/Sample:s1"].name, tree
    ('Sample', 's1', {'/Sample:s1': {'gain': '10'}})
    """

    __slots__ = ("type", "name")

    def __init__(self, type: str = "", name: str = "") -> None:
        super().__init__()
        self.type = type
        self.name = name

    def add(self, type: str, name: str = "") -> Object:
        """The object of this type and name in this one, which is made when it is missing."""
        made = self.setdefault(_core.join_path("", type, name), Object(type, name))
        assert isinstance(made, Object)
        return made

    @property
    def parameters(self) -> dict[str, str]:
        """The parameters alone."""
        return {key: value for key, value in self.items() if isinstance(value, str)}

    @property
    def objects(self) -> dict[str, Object]:
        """The objects alone."""
        return {key: value for key, value in self.items() if isinstance(value, Object)}


@overload
def loads(text: Text, *, nested: Literal[False] = False) -> FlatMap: ...
@overload
def loads(text: Text, *, nested: Literal[True]) -> Object: ...
def loads(text: Text, *, nested: bool = False) -> FlatMap | Object:
    """The objects and parameters of a text, by path; or, nested, one inside the other.

    Of what stands twice, the first is taken. Objects that are never closed are no error.

    Raises KDXDecodeError when the text is no KDX.

    >>> loads("Sample: s1\\n  Channel: A\\n    gain = 10\\n  END\\nEND")
    {'/Sample:s1': {}, '/Sample:s1/Channel:A': {'gain': '10'}}
    >>> loads("Sample: s1\\n  Channel: A\\n    gain = 10\\n  END\\nEND", nested=True)
    {'/Sample:s1': {'/Channel:A': {'gain': '10'}}}
    """
    return _core.load_nested(text) if nested else _core.load_flat(text)


@overload
def load(fp: IO[str] | IO[bytes], *, nested: Literal[False] = False) -> FlatMap: ...
@overload
def load(fp: IO[str] | IO[bytes], *, nested: Literal[True]) -> Object: ...
def load(fp: IO[str] | IO[bytes], *, nested: bool = False) -> FlatMap | Object:
    """What `loads` gives of a file that is open, in text or binary mode.

    >>> import io
    >>> load(io.StringIO("Sample: s1\\n  gain = 10\\nEND"))
    {'/Sample:s1': {'gain': '10'}}
    """
    return loads(fp.read(), nested=True) if nested else loads(fp.read())


def _statements(tree: Object) -> Iterator[tuple[str, str, str]]:
    """What must be written of a tree: kind and halves."""
    open_objects, open_ids = [(tree, iter(tree.items()))], {id(tree)}
    while open_objects:
        around, rest = open_objects[-1]
        for key, value in rest:
            if isinstance(value, Object):
                _check_place(key, value, open_ids)
                yield "object", value.type, value.name
                open_objects.append((value, iter(value.items())))
                open_ids.add(id(value))
                break
            if not isinstance(value, str):
                raise TypeError(f"{key!r} is no str and no Object; it is a {type(value).__name__}")
            yield "parameter", key, value
        else:
            open_objects.pop()
            open_ids.remove(id(around))
            if open_objects:
                yield "end", "", ""


def _check_place(key: str, value: Object, open_ids: set[int]) -> None:
    if id(value) in open_ids:
        raise KDXEncodeError(f"{key!r} is in itself")
    step = _core.join_path("", value.type, value.name)
    if key != step:
        raise KDXEncodeError(f"{key!r} would read back as {step!r}")


def _line(kind: str, first: str, second: str) -> str:
    if kind == "object":
        return f"{first}: {second}\n"
    if kind == "parameter":
        return f"{first} = {_core.written_value(first, second)}\n"
    return "END\n"


def _text_of(tree: Object) -> str:
    """The text without indentation, which would grow with the square of the depth."""
    statements = list(_statements(tree))
    text = "".join(_line(*statement) for statement in statements)
    for wanted, read in zip(statements, iter_events(text)):
        if wanted != (read.kind, read.first, read.second):
            raise KDXEncodeError(f"{' '.join(wanted)!r} would read back as {read.source!r}")
    for problem in check(text, warnings=False, max_problems=1):
        raise KDXEncodeError(problem.message)
    return text


def dumps(
    obj: Mapping[str, Mapping[str, str]] | Object,
    *,
    indent: int = 2,
    spaced: bool = True,
    end_comments: bool = True,
) -> str:
    """The text of objects by path, which come in the order of their paths; or of an Object.

    What `loads` makes of the text is `obj` again, and the objects on the way to those in it.

    Raises KDXEncodeError for what no text can carry.

    >>> print(dumps({"/Sample:s1": {"gain": "10"}}), end="")
    Sample: s1
      gain = 10
    END # Sample:s1
    """
    if not isinstance(obj, Object):
        return _core.dump_flat(obj, indent, spaced, end_comments)
    return format(
        _text_of(obj),
        indent_width=indent,
        separators="spaced" if spaced else "tight",
        end_comments="added" if end_comments else "unchanged",
    )


def dump(
    obj: Mapping[str, Mapping[str, str]] | Object, fp: IO[str] | IO[bytes], **layout: Any
) -> None:
    """Writes what `dumps` gives to a file that is open, in text or binary mode.

    >>> import io
    >>> file = io.StringIO()
    >>> dump({"/Sample:s1": {}}, file, end_comments=False)
    >>> file.getvalue()
    'Sample: s1\\nEND\\n'
    """
    text = dumps(obj, **layout)
    file: Any = fp
    try:
        file.write(text)
    except TypeError:
        file.write(text.encode("utf-8", "surrogateescape"))
