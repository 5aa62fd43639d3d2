"""A text that can be changed and keeps every byte that nobody changes."""

from __future__ import annotations

from collections.abc import Iterator, Mapping, MutableMapping
from functools import cached_property
from typing import Any

from . import _core, _html
from ._errors import KDXInvalidError
from ._statements import iter_events
from ._texts import Problem, Text, check


class Document(MutableMapping[str, "Section"]):
    """A text that can be changed: a mapping of its objects by path.

    What is changed keeps its blanks and its comment, what is added is laid out like its neighbours,
    all else keeps its bytes. What KDX cannot carry is refused with KDXInvalidError, before anything
    has changed. Any text can be loaded, right or wrong; see `problems`.

    >>> document = Document("Sample: s1\\n  gain=10   # dB\\nEND\\n")
    >>> document["/Sample:s1"]["gain"] = "11"
    >>> document["/Sample:s2"] = {"gain": "12"}
    >>> list(document)
    ['/Sample:s1', '/Sample:s2']
    >>> print(document.text, end="")
    Sample: s1
      gain=11   # dB
    END
    Sample: s2
      gain=12
    END
    """

    def __init__(self, text: Text = "") -> None:
        self._core = _core.Document(text)
        self._parameters: dict[str, tuple[list[int], dict[str, int]]] = {}  # see Section

    @property
    def text(self) -> str:
        """The text as it is now."""
        return bytes(self).decode("utf-8", "surrogateescape")

    @property
    def problems(self) -> list[Problem]:
        """All that is wrong with the text as it is now, as `check` finds it."""
        return check(self.text)

    def find(self, pattern: str) -> list[str]:
        """The paths of the objects that match: "*" stands for any type, name or object, "**" for
        any number of levels.

        >>> Document("Sample: s1\\n  Channel: A\\n  END\\nEND").find("/**/Channel:*")
        ['/Sample:s1/Channel:A']
        """
        found = set(self._core.find(pattern))
        return [path for path in self if not found.isdisjoint(self._nodes(path))]

    def __getitem__(self, path: str) -> Section:
        if not self._nodes(path):
            raise KeyError(path)
        return Section(self, path)

    def __setitem__(self, path: str, parameters: Mapping[str, str]) -> None:
        wanted = dict(parameters)
        self._try(path, wanted)
        section = self[path] if path in self else self._make(path)
        section.update(wanted)
        for name in [name for name in section if name not in wanted]:
            del section[name]

    def __delitem__(self, path: str) -> None:
        for node in self[path]._nodes:
            self._core.remove(node)

    def __iter__(self) -> Iterator[str]:
        return (path for path in list(self._objects) if self._nodes(path))

    def __len__(self) -> int:
        return sum(1 for _ in self)

    def __contains__(self, path: object) -> bool:
        return isinstance(path, str) and bool(self._nodes(path))

    def __bytes__(self) -> bytes:
        return self._core.text()

    def __str__(self) -> str:
        return self.text

    def __repr__(self) -> str:
        return f"<kdx.Document of {len(self)} objects>"

    def __eq__(self, other: object) -> bool:
        return isinstance(other, Document) and bytes(self) == bytes(other)

    __hash__ = None  # type: ignore[assignment]

    def __reduce__(self) -> tuple[Any, ...]:
        return Document, (bytes(self),)

    def _repr_html_(self) -> str:
        return _html.page(iter_events(bytes(self)))

    @cached_property
    def _objects(self) -> dict[str, list[int]]:
        """The nodes by path. It is kept up to date; nodes that were removed stay in it."""
        objects: dict[str, list[int]] = {}
        for path, node in self._core.objects():
            objects.setdefault(path, []).append(node)
        return objects

    def _nodes(self, path: str) -> list[int]:
        return [node for node in self._objects.get(path, ()) if self._core.contains(node)]

    def _try(self, path: str, parameters: dict[str, str]) -> None:
        """Raises what setting the parameters would raise, halfway; and changes nothing."""
        document = _core.Document("")
        node = document.root() if path in self else _made(document, path)
        for name, value in parameters.items():
            document.add_parameter(node, name, value)

    def _make(self, path: str) -> Section:
        """Makes an object, and those on the way to it."""
        parent, reached = self._core.root(), ""
        for type, name in _core.path_steps(path):
            reached = _core.join_path(reached, type, name)
            nodes = self._nodes(reached)
            if not nodes:
                nodes = [self._core.add_object(parent, type, name)]
                self._objects.setdefault(reached, []).extend(nodes)
            parent = nodes[0]
        return Section(self, reached)


def _made(document: _core.Document, path: str) -> int:
    """The node of an object that is made in an empty document."""
    node, reached = document.root(), ""
    for type, name in _core.path_steps(path):
        node = document.add_object(node, type, name)
        reached = _core.join_path(reached, type, name)
    if not path or reached != path:
        raise KDXInvalidError(f"{path}: no text has an object with this path.")
    return node


class Section(MutableMapping[str, str]):
    """The parameters of the objects of one path, as a mapping: what readers see of them.

    >>> section = Document("Sample: s1 # old\\n  gain = 10\\nEND")["/Sample:s1"]
    >>> section.comment = "new"
    >>> section["rate"] = "5"
    >>> section.comments["rate"] = "Hz"
    >>> dict(section), section.comment, dict(section.comments)
    ({'gain': '10', 'rate': '5'}, '# new', {'rate': '# Hz'})
    """

    def __init__(self, document: Document, path: str) -> None:
        self._document = document
        self.path = path

    @property
    def type(self) -> str:
        """The type of the object."""
        return self._document._core.first(self._nodes[0])

    @property
    def name(self) -> str:
        """The name of the object, as it is written."""
        return self._document._core.second(self._nodes[0])

    @property
    def comment(self) -> str:
        """The comment on the line that opens the object. An empty one is none."""
        return self._document._core.comment(self._nodes[0])

    @comment.setter
    def comment(self, text: str) -> None:
        self._document._core.set_comment(self._nodes[0], text)

    @property
    def comments(self) -> Comments:
        """The comments on the lines of the parameters, by name."""
        return Comments(self)

    def __getitem__(self, name: str) -> str:
        return self._document._core.second(self._parameters[name])

    def __setitem__(self, name: str, value: str) -> None:
        node = self._parameters.get(name)
        if node is not None:
            self._document._core.set_value(node, value)
            return
        self._parameters[name] = self._document._core.add_parameter(self._nodes[0], name, value)

    def __delitem__(self, name: str) -> None:
        self._parameters[name]
        for node in self._nodes:
            for other, parameter in self._document._core.parameters(node):
                if other == name:
                    self._document._core.remove(parameter)
        del self._parameters[name]

    def __iter__(self) -> Iterator[str]:
        return iter(list(self._parameters))

    def __len__(self) -> int:
        return len(self._parameters)

    def __repr__(self) -> str:
        return f"{dict(self)!r}"

    @property
    def _nodes(self) -> list[int]:
        nodes = self._document._nodes(self.path)
        if not nodes:
            raise KeyError(self.path)
        return nodes

    @property
    def _parameters(self) -> dict[str, int]:
        """The first parameter of each name. All sections of a path share this."""
        nodes = self._nodes
        known = self._document._parameters.get(self.path)
        if known is not None and known[0] == nodes:
            return known[1]
        parameters: dict[str, int] = {}
        for node in nodes:
            for name, parameter in self._document._core.parameters(node):
                parameters.setdefault(name, parameter)
        self._document._parameters[self.path] = nodes, parameters
        return parameters


class Comments(MutableMapping[str, str]):
    """The comments of parameters by name. Those that have none are left out."""

    def __init__(self, section: Section) -> None:
        self._section = section

    def __getitem__(self, name: str) -> str:
        core = self._section._document._core
        comment = core.comment(self._section._parameters[name])
        if not comment:
            raise KeyError(name)
        return comment

    def __setitem__(self, name: str, comment: str) -> None:
        core = self._section._document._core
        core.set_comment(self._section._parameters[name], comment)

    def __delitem__(self, name: str) -> None:
        self[name]
        self[name] = ""

    def __iter__(self) -> Iterator[str]:
        return (name for name in self._section if name in self)

    def __len__(self) -> int:
        return sum(1 for _ in self)
