"""KDX: nested objects, their parameters, and actions.

    import kdx

    kdx.loads(text)["/Sample:s1"]["gain"]           # a value
    document = kdx.Document(text)                   # a text to be changed, comments and all
    document["/Sample:s1"]["gain"] = "11"
    kdx.check(text)                                 # what is wrong, and where

A text is a str or holds bytes: bytes, bytearray, memoryview, mmap. Bytes that are no UTF-8 stand in
a str as `surrogateescape` puts them, and come out as they were. Values are text; `number` reads
those that are numbers.

Work on a text releases the GIL: in threads, it takes place at the same time. A document is changed
by one thread at a time: threads that do not heed this meet errors, but no crash. While a call works
on an mmap or on a read-only view, nobody may change what is in it; what can be written to is copied
first.
"""

from ._builder import ActionBuilder, Builder, clean_value
from ._document import Comments, Document, Section
from ._errors import KDXDecodeError, KDXEncodeError, KDXError, KDXInvalidError, KDXUsageError
from ._maps import Object, dump, dumps, load, loads
from ._numbers import Number, number
from ._statements import Statement, iter_events
from ._texts import Problem, Rule, check, find, find_by_type, format, rules, split_actions

__all__ = [
    "ActionBuilder",
    "Builder",
    "Comments",
    "Document",
    "KDXDecodeError",
    "KDXEncodeError",
    "KDXError",
    "KDXInvalidError",
    "KDXUsageError",
    "Number",
    "Object",
    "Problem",
    "Rule",
    "Section",
    "Statement",
    "check",
    "clean_value",
    "dump",
    "dumps",
    "find",
    "find_by_type",
    "format",
    "iter_events",
    "load",
    "loads",
    "number",
    "rules",
    "split_actions",
]

# What people see is where they import it from.
for _name in __all__:
    globals()[_name].__module__ = __name__
