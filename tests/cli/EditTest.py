#!/usr/bin/env python3
"""The commands that change values and objects: kdx set, unset, rename, move and edit."""

import json
import unittest

import kdx_test
from kdx_test import KdxTest

TEXT = """# licence

# the sample
Sample: s1  # first
  gain = 10   # dB
  Channel: A
    offset = 1, \\
      2, 3 # three
  END
END
Sample: s2
  x = C:\\d\\ # c
END
"""

LEVELS = """A: b
  C: d
    E: e
    END
  END
END
"""

# What is asked of TEXT, and the lines that the diff takes out and puts in.
CHANGES = [
    ("set f /Sample:s1 gain=20", "-  gain = 10   # dB", "+  gain = 20   # dB"),
    ("set f /Sample:s1/Channel:A 'offset=a=b'", "-    offset = 1, \\", "-      2, 3 # three",
     "+    offset = a=b # three"),
    ("set f /Sample:s1 b=1 c=", "+  b = 1", "+  c ="),
    ("set f /Sample:s3/A x=1", "+Sample: s3", "+  A:", "+    x = 1", "+  END", "+END"),
    ("set f /Sample:s1 a=1 b=2 --first", "+  a = 1", "+  b = 2"),
    ("set f /Sample:s1 gain=1 --first", "-  gain = 10   # dB", "+  gain = 1   # dB"),
    ("set f /Sample:s1 a=1 b=2 --after Channel:A", "+  a = 1", "+  b = 2"),
    ("set f /Sample:s1 a=1 b=2 --before gain", "+  a = 1", "+  b = 2"),
    ("set slash /A:b x=1 --before B:c/D:e", "+  x = 1"),
    ("set f /Sample:s1 gain=10",),
    ("unset f '/Sample:*' gain x", "-  gain = 10   # dB", "-  x = C:\\d\\ # c"),
    ("unset f '/**/Channel:*'", "-  Channel: A", "-    offset = 1, \\", "-      2, 3 # three",
     "-  END"),
    ("unset f /Sample:s2", "-Sample: s2", "-  x = C:\\d\\ # c", "-END"),
    ("rename f /Sample:s2 s3", "-Sample: s2", "+Sample: s3"),
    ("rename f --type /Sample:s2 Probe", "-Sample: s2", "+Probe: s2"),
    ("rename f /Sample:s2 x y", "-  x = C:\\d\\ # c", "+  y = C:\\d\\ # c"),
    ("rename f /Sample:s2 s2",),
    ("move f /Sample:s2 --before /Sample:s1", "+Sample: s2", "+  x = C:\\d\\ # c", "+END",
     "-Sample: s2", "-  x = C:\\d\\ # c", "-END"),
    ("move f /Sample:s2 --after /Sample:s1",),
    ("move f /Sample:s1 gain --first-into /Sample:s2", "-  gain = 10   # dB",
     "+  gain = 10   # dB"),
    ("move f /Sample:s2 --into /Sample:s1/Channel:A", "+    Sample: s2",
     "+      x = C:\\d\\ # c", "+    END", "-Sample: s2", "-  x = C:\\d\\ # c", "-END"),
]

REFUSED = [
    ("set f /Sample:s1 x=1 --after y", 1, "f: error: has no parameter y in /Sample:s1\n"),
    ("set f /B x=1 --after y", 1, "f: error: has no object /B\n"),
    *((f"set levels /A:b x=1 --before {other}", 1, f"levels: error: has no parameter {other} in /A")
      for other in ["C:d/E:e", "**"]),
    ("set f '/Sample:*' x=1", 2, "f:12:3: error: a pattern names no single object: /Sample:* "),
    ("set f /Sample:s1 'gain= 1'", 2, "f:5:3: error: KDX cannot carry this: a value has no outer"),
    ("set f /Sample:s1 gain", 2, "kdx: NAME=VALUE is required in place of gain\n"),
    ("set f /Sample:s1 x=1 x=2", 2, "kdx: x is to be set twice\n"),
    ("set f /Sample:s1", 2, "kdx: NAME=VALUE is required\n"),
    ("set f '' x=1", 2, "kdx: the empty path names no object\n"),
    ("set f slash x=1", 2, "kdx: slash is a file; begin the PATH behind it with a '/'"),
    ("set -i - /A x=1", 2, "<stdin>: error: cannot be changed in place: leave out -i, or name a "),
    ("unset f /Sample:s1 x", 1, "f: error: has no parameter x in /Sample:s1\n"),
    *((f"{command} slash /A:a/b x{value}", 2, "slash: error: a path is that of an object with a '/'"
       " in a name, too; kdx edit takes a path as a list of types and names\n")
      for command, value in [("set", "=1"), ("unset", ""), ("rename", " y")]),
    *((arguments, 2, f"both:{line}: error: a path is that of an object with a '/' in a name, too; ")
      for arguments, line in [
          ("set both /A:b/C:d y=1", "5:3"), ("unset both /A:b/C:d", "5:3"),
          ("rename both /A:b/C:d q", "5:3"), ("move both /A:q --into /A:b/C:d", "10:1")]),
    ("unset f /Sample:*/B", 1, "f: error: has no object /Sample:*/B\n"),
    ("rename f /Sample:s1 s2", 2, "f:4:1: error: would be one with what has that name there alre"),
    ("rename f '/Sample:*' s3", 2, "f:4:1: error: would be one with what has that name there alr"),
    ("rename levels /A:q b/C:d", 2, "levels:7:1: error: would be one with what has that name ther"),
    ("move f /Sample:s2 --into '/*'", 2, "f:11:1: error: a pattern names no single object: /* "),
    ("rename f --type /Sample:s1 a:b", 2, "f:4:1: error: KDX cannot carry this: a name consists of "
     "letters, digits, blanks, '&', '.' and '_'"),
    ("rename f /Sample:s1 a b c", 2, "kdx: behind PATH stand a new name, or a parameter's name"),
    ("rename f --type /Sample:s1 a b", 2, "kdx: with --type, the new type alone stands behind"),
    ("move f /Sample:s1 --into /Sample:s1/Channel:A", 2, "f:4:1: error: A statement cannot be put"),
    ("move f /Sample:s2 x --into ''", 2, "f:12:3: error: a parameter stands in an object, not at"),
    ("move f /Sample:s2 x --before /Sample:s1", 2, "f:12:3: error: a parameter stands in an object"),
    ("move f /Sample:s1", 2, "kdx: Exactly 1 option from"),
    ("edit missing", 2, "missing: error: cannot be read: No such file"),
    ("edit -", 2, "kdx: the standard input has the edits: name a file, or --edits FILE\n"),
]

EDITS = [
    {"set": [["Sample", "a/b"]], "name": "x", "value": "1"},
    {"set": "/Sample:a//b", "name": "x", "value": "2"},
    {"unset": [["Sample", "a/b"]]},
    {"rename": "/Sample:s1", "to": "s4", "type": "Probe"},
    {"set": "/Probe:s4", "name": "n", "value": "1", "before": "gain"},
    {"set": "/Probe:s4", "name": "m", "value": "1", "first": True},
    {"rename": "/Probe:s4", "name": "n", "to": "o"},
    {"move": "/Probe:s4/Channel:A", "into": "", "first": True},
    {"move": "/Sample:s2", "before": "/Channel:A"},
    {"move": "/Probe:s4", "name": "gain", "into": "/Channel:A"},
    {"move": "/Channel:A", "after": "/Probe:s4"},
]

EDITED = """# licence

Sample: s2
  x = C:\\d\\ # c
END
# the sample
Probe: s4  # first
  m = 1
  o = 1
END
Channel: A
  offset = 1, \\
    2, 3 # three
  gain = 10   # dB
END
Sample: a
  :
    b:
      x = 2
    END
  END
END
"""

BAD_EDITS = [
    ('{"unset": "/Sample:s9"}', 1, "f: error: edit on line 3: has no object /Sample:s9\n"),
    ('{"rename": "/Sample:s2", "to": "a#"}', 2,
     "f:11:1: error: edit on line 3: KDX cannot carry this"),
    ('{"rename": "/Sample:s1", "to": "s2"}\n{"move": "/Sample:s2", "into": ""}', 2,
     "f:4:1: error: edit on line 3: would be one with what has that name there already"),
    *((line, 2, "kdx: line 3 of the edits: " + message) for line, message in [
        ("{", "is no JSON: column 2: syntax error while parsing object key"), ("1", "an edit is a JSON object"), ("{}", "an edit is one of"),
        ('{"set": "/A", "name": "x"}', 'the edit needs "value"'),
        ('{"set": "/A", "name": 1, "value": ""}', '"name" has to be a text'),
        ('{"set": "/A", "name": "x", "value": "", "first": 1}', '"first" has to be true or false'),
        ('{"set": "/A", "name": "x", "value": "", "before": "", "after": ""}', "the edit names mo"),
        ('{"move": "/A", "before": "/B", "first": true}', "the edit names more than one place"),
        ('{"unset": "/A", "unset": "/B"}', "the edit has unset twice"),
        ('{"unset": ""}', "the empty path names no object"),
        ('{"unset": [["A"]]}', "a step of a path is a pair of texts: [TYPE, NAME]"),
        ('{"unset": "/A", "nmae": "x"}', "the edit has no use for nmae"),
        ('{"rename": "/A"}', 'the edit needs "to"'),
        ('{"rename": "/A", "name": "x", "to": "y", "type": "T"}', "a parameter has no type"),
    ]),
]


class Edit(KdxTest):
    def setUp(self):
        super().setUp()
        self.write({"f": TEXT, "slash": "A: a/b\nx = 1\nEND\nA: b\n  B: c/D:e\n  END\nEND\n",
                    "levels": LEVELS + "A: q\nEND\n",
                    "both": "A: b/C:d\n  x = 1\nEND\n" + LEVELS + "A: q\nEND\n"})

    def test_changes(self):
        for arguments, *lines in CHANGES:
            with self.subTest(arguments=arguments):
                status, diff, errors = self.run_kdx(arguments + " --diff")
                changed = [line for line in diff.splitlines()[2:] if line[0] in "+-"]
                self.assertEqual((sorted(changed), status, errors), (sorted(lines), bool(lines), ""))

    def test_refusals(self):
        for arguments, status, message in REFUSED:
            with self.subTest(arguments=arguments):
                got, output, errors = self.run_kdx(arguments)
                self.assertEqual((got, output, errors[:len(message)]), (status, "", message))

    def test_files(self):
        self.write({"b": "\ufeffA:\r\nEND\r\n", "d/c.kdx": "A:\nEND"})
        self.expect("set -i b d /A x=1")
        self.assertEqual(self.read("b"), "\ufeffA:\r\n  x = 1\r\nEND\r\n")
        (self.folder / "link").symlink_to("b")
        (self.folder / "hard").hardlink_to(self.folder / "b")
        self.expect("rename -i b ./b link hard /A x y")  # each file once
        self.expect("set /A x=2", "", "A:\n  x = 2\nEND\n")
        self.expect(f"set {self.folder}/d/c.kdx - /A x=2", "A:\nEND", 2 * "A:\n  x = 2\nEND")

    def test_list_of_edits(self):
        self.expect("edit f", "\n".join(map(json.dumps, EDITS)), EDITED)
        edit = json.dumps({"unset": [["A", "b"], ["C", "d"]]})
        self.expect("edit both", edit, "A: b/C:d\n  x = 1\nEND\nA: b\nEND\nA: q\nEND\n")
        self.write({"edits": json.dumps(EDITS[3])})
        self.expect("edit -i --edits edits f")
        self.assertIn("Probe: s4", self.read("f"))

    def test_all_edits_or_none(self):
        for edit, status, message in BAD_EDITS:
            with self.subTest(edit=edit):
                edits = '{"unset": "/Sample:s1", "name": "gain"}\n\n' + edit
                got, output, errors = self.run_kdx("edit -i f", edits)
                self.assertEqual((got, output, errors[:len(message)]), (status, "", message))
                self.assertEqual(self.read("f"), TEXT)


if __name__ == "__main__":
    kdx_test.main()
