#!/usr/bin/env python3
"""The commands that print what stands in files."""


import kdx_test
from kdx_test import CANNOT_STAND, FORMATTED, NESTED, SAMPLE, SAMPLE_MAP, UGLY, KdxTest, data


class Results(KdxTest):
    def test_of_files(self):
        acts = [
            '{"kind":"action","line":1,"column":1,"depth":0,"text":">a","comment":"# c",'
            '"source":">a # c\\n"}\n',
            '{"kind":"action","line":2,"column":1,"depth":0,"text":"> bc",'
            '"source":"> b\\\\\\n c\\n"}\n',
            '{"kind":"object","line":4,"column":1,"depth":0,"type":"A","name":"",'
            '"source":"A:\\n"}\n',
            '{"kind":"parameter","line":5,"column":2,"depth":1,"name":"x","value":"1",'
            '"source":" x = 1\\n"}\n',
            '{"kind":"end","line":6,"column":1,"depth":0,"source":"END\\n"}\n',
            '{"kind":"action","line":7,"column":1,"depth":0,"text":">d","source":">d\\n"}\n']
        self.write({"odd": "A: # c\nq = C:\\dir\\ # c\n p = 1\n # d\n B:\n > a \\ \n b\n END\n"
                    "END\n",
                    "back": "A: C:\\ #\nB: \\ #\nx = 1\nEND\nEND\n", "slash": "A: x/y\nz = 2\nC:\nw = 3\nEND\nEND\n", "f": NESTED, "open": "A:\nB: b\nx = 1\n", "bad": "END\n", "empty": "",
                    "none": "A:\nB:\nEND\nEND\nC:\nEND\n",
                    "acts": ">a # c\n> b\\\n c\nA:\n x = 1\nEND\n>d\n",
                    "x1": "A:\nx=1\nEND\n", "x2": "A:\nx=2\ny=2\nEND\nB:\nz=3\nEND\n"})
        slash = ("slash:1:5: warning: the '/' in the name makes the path /A:x/y read as that of an "
                 "object one level deeper [ambiguous-path]\nA: x/y\n    ^\n")
        conflict = ('x2:2:3: warning: /A, x is 2 here, and 1 at x1:2:3 [conflict]\nx=2\n  ^\n')
        problem = ("bad:1:1: error: END closes nothing: no object is open [unexpected-end]\n"
                   "END\n^\n")
        for arguments, output, *failure in [
            ("get f /Sample:s1", "Rate = 10\n"), ("get f Sample:s1/Channel:A Gain", "2\n"),
            ("get --json f /Sample:s1", '{\n  "Rate": "10"\n}\n'),
            ("get --json f /Sample:s2", "{}\n"),
            ("get f /Sample:s3", "", 1, "f: error: has no object /Sample:s3\n"),
            ("get f /Sample:s1 rate", "", 1, "f: error: has no parameter rate in /Sample:s1\n"),
            ("get f x2 /A y x", "2\n2\n", 1, "f: error: has no object /A\n"),
            ("get f x2 /A y x --default 0", "0\n0\n2\n2\n"), ("get f x2 /A y x -q", "", 1),
            ("get x1 x2 /A x -q", ""), ("get x1 bad /A -q", "", 2, problem),
            ("get f '/Sample:*/Channel:**' -z", "# /Sample:s1/Channel:A\0Gain = 2\0"
             "# /Sample:s1/Channel:A/Filter:F\0Cut = 5\0# /Sample:s1/Channel:B\0Gain = 4\0"
             "# /Sample:s2/Channel:A\0Gain = 7\0"),
            ("get f /**/Channel:A Gain Cut --with-place", "f:4:12: 2\nf:15:12: 7\n", 1,
             "f: error: has no parameter Cut in /**/Channel:A\n"),
            ("get f --json '/Sample:*' Rate --default no",
             '{"file":"f","line":2,"column":10,"path":"/Sample:s1","name":"Rate","value":"10"}\n'
             '{"file":"f","path":"/Sample:s2","name":"Rate","value":"no"}\n'),
            ("get slash /A:x/y z", "2\n", 0, slash), ("get slash /A:x/y/C", "w = 3\n", 0, slash),
            ("get slash '/A:x/*' z", "", 1, "slash: error: has no object /A:x/*\n"),
            ("get f", "", 2, "kdx: PATH is required: the path of an object, such as /Sample:s1\n"),
            ("get / x", "", 2, "kdx: / is a file; begin the PATH behind it with a '/', or put a '-' in "
             "front of it where it is the path of an object in the standard input\n"),
            ("find f --name A --depth 0",
             "Channel: A\n  Gain = 2\nEND\nChannel: A\n  Gain = 7\nEND\n"),
            ("find f --type Channel --group Sample --depth 0", "# s1\nChannel: A\n  Gain = 2\nEND\n"
             "# s1\nChannel: B\n  Gain = 4\nEND\n# s2\nChannel: A\n  Gain = 7\nEND\n"),
            ("find f --type Channel --group Sample --bare",
             "# s1\nChannel:B\n  Gain = 4\nEND\n# s2\nChannel:A\n  Gain = 7\nEND\n"),
            ("find back --type B --group A", "# C:\\ #\nB: \\ #\n  x = 1\nEND\n"),
            ("find f --type Filter --json",
             '{"key":"Filter:F","line":5,"lines":["Filter: F","  Cut = 5","END"]}\n'),
            ("find open --type B --json --bare", '{"key":"B:b","lines":["B:b","  x = 1"]}\n'),
            ("find odd --name A", "A: # c\n  q = C:\\dir\\ # c\n  p = 1\n  # d\n  B:\n    > a \\ \n"
             "      b\n  END\nEND\n"),
            ("find odd --name A --depth 0", "A: # c\n  q = C:\\dir\\ # c\n  p = 1\nEND\n"),
            ("split odd", "# state\nA:\nq = C:\\dir\\ #\n p = 1\n B:\n# actions\n > a \\ \n b\n"
             "# state\n END\nEND\n"),
            ("find f --name Channel", "", 1, "f: error: has no object with the name Channel\n"),
            ("find f --type A", "", 1, "f: error: has no object of type A\n"),
            ("split acts", "# actions\n>a\n> b\\\n c\n# state\nA:\n x = 1\nEND\n# actions\n>d\n"),
            ("split --actions --bare acts", ">a\n> bc\n>d\n"),
            ("split --state --json acts", '{"kind":"state","text":"A:\\n x = 1\\nEND"}\n'),
            ("events acts", "".join(acts)),
            ("tree f", "Sample: s1 (1 parameter)\n├── Channel: A (1 parameter)\n"
             "│   └── Filter: F (1 parameter)\n└── Channel: B (1 parameter)\n"
             "Sample: s2 (0 parameters)\n└── Channel: A (1 parameter)\n"),
            ("tree --depth 1 f", "Sample: s1 (1 parameter, 2 objects)\n"
             "Sample: s2 (0 parameters, 1 object)\n"),
            ("map --flat x1 x2", "/A\tx\t1\n/A\ty\t2\n/B\tz\t3\n", 0, conflict),
            ("map --flat x2 x1 --on-conflict first", "/A\tx\t2\n/A\ty\t2\n/B\tz\t3\n"),
            ("map --flat x1 x2 --on-conflict last", "/A\tx\t2\n/A\ty\t2\n/B\tz\t3\n"),
            ("map x1 x2 --on-conflict error", "", 2, conflict.replace("warning", "error")),
            ("map x1 x1 --flat --on-conflict error", "/A\tx\t1\n"),
            ("map --nested x1 x2 --without B --on-conflict last",
             '[\n{"type":"A","name":"","parameters":{"x":"2","y":"2"},"objects":[]}]\n'),
            ("map --nested slash", '[\n{"type":"A","name":"x/y","parameters":{"z":"2"},"objects":[\n'
             '{"type":"C","name":"","parameters":{"w":"3"},"objects":[]}]}]\n'),
            ("map --flat slash", "/A:x/y\tz\t2\n/A:x/y/C\tw\t3\n", 0, slash),
            ("map --flat bad x1", "/A\tx\t1\n", 2, problem),
            ("map bad", "", 2, problem),
            ("map --flat none", "", 0, "kdx: warning: flat lines leave out objects without a "
             "parameter: 2, the first is /A/B\n"),
            ("write empty", "", 2, "empty: error: is empty: not even a map without objects, which "
             "is {}\n"),
        ]:
            self.expect(arguments, "", output, *failure)

    def test_of_the_standard_input(self):
        abc = "A:\nx=1\nEND\nB:\nx=2\nEND\nC:\nx=3\nEND\n"
        for arguments, text, output in [
            ("map", SAMPLE, SAMPLE_MAP),
            ("map -", b"\xef\xbb\xbf" + SAMPLE.replace("\n", "\r\n").encode(), SAMPLE_MAP),
            ("map", 'A:\nx = "\\é\nEND\nB:\n', '{\n  "/A": {\n    "x": "\\"\\\\é"\n  },\n'
             '  "/B": {}\n}\n'),
            ("map --flat", SAMPLE, "/Sample:s1\tgain\t10\n/Sample:s1\tmode\tfast\n"
             "/Sample:s1/Channel:A\toffset\t0.5\n/Sample:s1/Channel:A/Filter\torder\t2\n"),
            ("map --flat --without A", abc, "/B\tx\t2\n/C\tx\t3\n"),
            ("map --flat --only A --only C", abc, "/A\tx\t1\n/C\tx\t3\n"),
            ("write", SAMPLE_MAP, SAMPLE),
            ("write --indent 4 --compact --no-end-comments", SAMPLE_MAP, data("compact.kdx")),
            ("write --replace /Sample:s1/Channel:A", SAMPLE_MAP, data("marked.kdx")),
            ("write --indent 0 --no-end-comments",
             '{"/A": {"a": 1.50, "b": true, "c": -2, "d": "x\\\\#y"}}',
             "A: \na = 1.50\nb = true\nc = -2\nd = x\\#y\nEND\n"),
            ("map", "", "{}\n"), ("write", "{}", ""), ("write", "[]", ""), ("map --nested", "", "[]\n"),
            ("write", "/A:b\tx\t1\t2\n/A:b\ty\t\n", "A: b\n  x = 1\t2\n  y = \nEND # A:b\n"),
            ("write --compact", '[{"type": "A", "parameters": {"p": 1, "q": "\\\\"}, "objects": [{'
             '"type": "B", "name": "x/y"}]}, {"type": "C", "name": "C"}]',
             "A:\n  p=1\n  q=\\ #\n  B:x/y\n  END # B:x/y\nEND # A:\nC:C\nEND # C:\n"),
            ("fmt", UGLY, FORMATTED), ("fmt", "\n", ""), ("fmt", " x = 1", "x = 1\n"),
            ("fmt", "A:\r\nx = 1\r\n\r\nEND\r\n", "A:\r\n  x = 1\r\n\r\nEND\r\n"),
            ("fmt", "A:\r\nx = 1\nEND\r\n", "A:\r\n  x = 1\nEND\r\n"),
            ("fmt", "A:\n  \\\nx = 1\nEND\n", "A:\n  \\\n    x = 1\nEND\n"),
            ("fmt", "A\\\n\\\n: x\nEND\n", "A\\\n  \\\n  : x\nEND\n"),
            ("fmt", "A:\nEN\\\n D\nx = 1\n", "A:\nEN\\\n  D\nx = 1\n"),
            ("fmt", "A:\nx = 1 #\\\nB:\nEND\n", "A:\n  x = 1 #\\\n    B:\nEND\n"),
            ("fmt", "\ufeffA:\nx = 1\nEND\n", "\ufeffA:\n  x = 1\nEND\n"),
            ("fmt", "A:\nx = \\\r\ny = 1\nEND", "A:\n  x = \\\r\n  y = 1\nEND\n"),
            ("strip", "A: # c\n# c\n\n  x = 1 \\\n  2 # c\n", "A:\n\n  x = 1 \\\n  2\n"),
            ("strip", "x = 1 # c \\\ny = 2\nz = 3\n", "x = 1\nz = 3\n"),
            ("strip", "! v # c\n$ w # c\n> a # c\n", "! v # c\n$ w # c\n> a\n"),
            ("strip", "x = a\\ # c\n", "x = a\\ #\n"), ("strip", "x = \\#1 # c\n", "x = \\#1 # c\n"),
            ("strip", "x = 1 \\\n# c\n", "x = 1\n"), ("strip", "x = 1 # c\r\n# c\r\n", "x = 1\r\n"),
        ]:
            self.expect(arguments, text, output)

    def test_events_are_the_text(self):
        for text in [b"", b"A", b"\xef\xbb\xbf\n x = \\\r\n \xb0 \\", b"\xef\xbb\xbf" * 2,
                     b"END\n\0 # \xc3\xa9 \xe2\x80\xae\r\n"]:
            events = self.run_kdx("events", text)[1]
            self.expect("write --events", events, text.decode(errors="replace"))
        self.expect("events", b"A\xb0", '{"kind":"unrecognised","line":1,"column":1,"depth":0,'
                    '"text":"A\ufffd","sourceHex":"41b0"}\n')
        for line in ["{}", "[]", "{", '{"sourceHex":"4"}', '{"sourceHex":"4x"}', '{"source":1}']:
            self.expect("write --events", "\n" + line, "", 2, '<stdin>: error: line 2 is no event '
                        'with a "source", as kdx events prints them: ' + line + "\n")

    def test_of_what_is_no_utf8(self):
        """Is named with its place, unless it stands in nothing that is printed."""
        cure = " is no UTF-8, as JSON must be; convert the file first, as with iconv -f LATIN1 " \
            "-t UTF-8"
        for text, *problems in [
            (b"A:\nB: b\nx = 1 \\\n  \xb0C\nEND\nEND\n",
             "4:3: error: /A/B:b, x: the byte 0xB0" + cure),
            (b"A: \xe9\nx=1\nEND\nB:\ny=\xff # \xff\nEND\n",
             "1:4: error: /A:\ufffd: the byte 0xE9" + cure,
             "5:3: error: /B, y: the byte 0xFF" + cure),
            (b"A: # \xe9\n! \xe9\nx=1\nx=\xe9\nEND\n",),
            ("A:\nx=é߿ࠀ퟿\U00010000\U0010FFFF\nEND\n".encode(),),
            *((b"A:\nx=" + value + b"\nEND\n", f"2:3: error: /A, x: the byte 0x{value[0]:X}" + cure)
              for value in [b"\x80", b"\xc1\xbf", b"\xc3", b"\xe0\x9f\xbf", b"\xed\xa0\x80",
                            b"\xf0\x8f\xbf\xbf", b"\xf4\x90\x80\x80", b"\xe2\x82x", b"\xf5\x80"]),
        ]:
            self.expect_problems("map", text, 2 if problems else 0, *problems)
            self.assertEqual(self.run_kdx("map --flat", text)[0], 0)
        self.write({"a": SAMPLE, "latin": b"B:\nx = \xb0\nEND\n"})
        self.assertEqual(self.run_kdx("map latin a")[:2], (2, SAMPLE_MAP))
        self.expect("map --only Sample latin a", "", SAMPLE_MAP)
        for arguments in ["get latin /B", "find latin --type B"]:
            got, output, errors = self.run_kdx(arguments + " --json")
            self.assertEqual((got, output), (2, ""))
            self.assertIn("no UTF-8 cannot be put into JSON", errors)

    def test_backslashes_at_ends_are_carried(self):
        text = '{"/A": {"q": "C:\\\\d\\\\", "r": "1"}}'
        written = "A: \n  q = C:\\d\\ #\n  r = 1\nEND # A:\n"
        self.expect("write", text, written, 0)
        self.expect("get - /A q", written, "C:\\d\\\n", 0)

    def test_that_cannot_be_written(self):
        cannot = "KDX cannot carry this: "
        characters = "a name consists of letters, digits, blanks, '&', '.' and '_'."
        for text, reason in [
            ('{"/A": {"x": "a\\nb"}}', f"/A, x: {cannot}a line feed would end the line."),
            ('{"/A": {"x": "a\\\\#b\\\\"}}', f"/A, x: {cannot}it would be read as something else."),
            ('{"/A": {"x-y": "a"}}', f"/A, x-y: {cannot}{characters}"),
            ('{"/A-B:c": {}}', f"/A-B:c: 'A-B: c': {cannot}{characters}"),
            ('{"/A:c\\\\": {}}', "/A:c\\: 'A: c\\': the backslash at the end would continue the line"),
            ('{"/A:c  d": {}}', f"/A:c  d: 'A: c  d': {cannot}a name has no outer blanks, and "
             "between words a single space."),
            ('{"A": {}}', 'A: this path would read back as "/A"'),
            ('{"/A:A": {}}', '/A:A: this path would read back as "/A"'),
            ('{"": {}}', '"": the empty path names no object'),
            ('{"/A": {"": "#"}}', f'/A, "": {cannot}a \'#\' would begin a comment.'),
            ('{"/A": {"x": ["a"]}}', 'is no map at "/A", "x": an array is no part of a map'),
            ('{"/A": {}, "/A": {}}', 'is no map at "/A": the object stands here twice'),
            ("[1]", "is no nested map: not an object with type, name, parameters and objects"),
            ('[{"type": "A-B"}]', f"/A-B: {cannot}{characters}"),
            ('[{"type": "A", "parameters": {"x": 1.5}}]',
             "is no nested map at /A: a value is a string, not 1.5"),
            ('[{"name": ' + "[" * 300000 + "]" * 300000 + "}]",
             "is no nested map: a value is a string, not an array"),
            ('[{"parameters": {"x": 1, "x": 2}}]', 'is no nested map: an object has "x" twice'),
            ("[{]", "is no JSON: parse error at line 1, column 3: syntax error while parsing object "
             "key - unex..."), ("/A\tx", "line 1 is not PATH<tab>NAME<tab>VALUE: /A x"),
            ("/A\tx\t1\n/A\tx\t2", "line 2: the parameter stands here twice: /A x 2"),
            ('"x"', "is no map: not an object of objects"),
            ('{"/A": {', "is no JSON: parse error at line 1, column 9: syntax error while parsing "
             "object key - unexpected end of input; expected string literal"),
        ]:
            self.expect("write", text, "", 2, "<stdin>: error: " + reason + "\n")
        for text in [SAMPLE_MAP, '{"/BC/D": {"x": "a &replace mark"}, "/B C": {}}']:
            self.expect("write --replace /B", text, "", 2,
                        "<stdin>: error: has no object /B to replace\n")
        self.expect("write", '{"/A:b/C": {}}', "A: b\n  C: \n  END # C:\nEND # A:b\n", 0,
                    "<stdin>: warning: /A:b/C: the map has no object /A:b; should the last '/' "
                    "belong to a name, this is written as another object\n")
        many = "{" + ", ".join(f'"/A:{i}\\\\": {{"x": "#"}}' for i in range(60)) + "}"
        got, output, errors = self.run_kdx("write", many)
        self.assertEqual((got, output, errors.count(" error: ")), (2, "", 100))
        self.assertTrue(errors.endswith("<stdin>: note: 20 more problems not shown\n"), errors)


if __name__ == "__main__":
    kdx_test.main()
