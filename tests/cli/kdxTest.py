#!/usr/bin/env python3
"""Runs the built kdx and compares what it prints: kdxTest.py KDX [TEST...]

Every case runs in an empty directory that holds the files it names.
"""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

KDX = ""

SAMPLE = """Sample: s1
  Rate = 10
  Channel: A
    Gain = 2
  END
END
"""

SAMPLE_MAP = """{
  "/Sample:s1": {
    "Rate": "10"
  },
  "/Sample:s1/Channel:A": {
    "Gain": "2"
  }
}
"""


class KdxTest(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.folder.chmod(0o777)

    def write(self, **files):
        for name, text in files.items():
            path = self.folder / name.replace("__", "/")
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(text if isinstance(text, bytes) else text.encode())

    def run_kdx(self, arguments, text="", **options):
        """Returns the exit status, the standard output and the standard error stream."""
        done = subprocess.run(
            [KDX, *arguments.split()], input=text if isinstance(text, bytes) else text.encode(),
            stdout=options.pop("stdout", subprocess.PIPE), stderr=subprocess.PIPE,
            cwd=self.folder, timeout=60, **options)
        return done.returncode, (done.stdout or b"").decode(errors="replace"), done.stderr.decode(
            errors="replace")

    def expect(self, arguments, text, status, output="", errors=""):
        with self.subTest(arguments=arguments, text=text):
            self.assertEqual(self.run_kdx(arguments, text), (status, output, errors))


class Check(KdxTest):
    def test_problems(self):
        """Each line: text, status, and for each problem its place, kind and words of its text."""
        for text, status, *problems in [
            (SAMPLE, 0),
            ("", 0),
            ("A:\n a -> 3\nEND\n", 1, "2:4: error: unknown syntax: '-'"),
            ("A:\n lone # x\nEND\n", 1, "2:6: error: unknown syntax: ':' or '=' is missing"),
            ("A:\nend\nEND", 1, "2:1: error: unknown syntax: END is written in capitals"),
            ("A:\n b\tc = 1\nEND\n", 1, "2:3: error: unknown syntax: a tab"),
            ("A:\n x\\\n  y\\\n   z-\nEND\n", 1, "4:5: error: unknown syntax: '-'"),
            ("A:\n x\\  \n -\nEND\n", 1, "3:2: error: unknown syntax: '-'"),
            ("END\nx = 1\n", 1, "1:1: error: END closes nothing", "2:1: error: parameter 'x'"),
            ("A:\n B: b\n", 0, "1:1: warning: object is never closed",
             "2:2: warning: object is never closed"),
            ("A:\n x=1\n x=2\nEND\n", 0, "3:2: warning: parameter 'x' again: its first value, of "
             "line 2"),
            ("A:\n x=1\nEND\nA: A\n x=2\nEND\n", 0, "4:1: warning: object 'A: A' again: its "
             "parameters merge into those of line 1", "5:2: warning: parameter 'x'"),
            ("A:\n B:\n END\nEND\nB:\nEND\n", 0),
            ("A:\n x = 1 # c \\\n 2\nEND\n", 0, "2:8: warning: the comment swallows"),
            ("A:\n x = 1 \\\n 2 # c\nEND\n", 0),
            ("A:\n x = 1 # c \\\n\nEND\n", 0),
            ("A:\n x = \\#1 \\\n 2\nEND\n", 0),
            ("A:\n x = 1 \\\r\n\nEND\n", 0, "2:8: warning: a backslash in front of a carriage"),
            (b"\xef\xbb\xbfA:\n-\nEND\n", 1, "1:1: warning: byte order mark", "2:1: error"),
            ("A:\n x = \0\0\nEND\n", 0, "2:6: warning: NUL byte"),
            ("A:\r\nEND\r\n", 0),
        ]:
            with self.subTest(text=text):
                got, output, errors = self.run_kdx("check", text)
                shown = [line for line in errors.splitlines() if line.startswith("<stdin>:")]
                self.assertEqual((got, output, len(shown)), (status, "", len(problems)), errors)
                for line, problem in zip(shown, problems):
                    self.assertTrue(line.startswith("<stdin>:" + problem), line)

    def test_layout(self):
        text = "A:\n\tpré = 1 -\n\tgain -> 3\nEND\n"
        line = "<stdin>:2:4: error: unknown syntax: the byte 0xC3 cannot stand here; a name " \
            "consists of letters, digits, blanks, '&', '.' and '_'\n pré = 1 -\n   ^\n"
        self.expect("check --max-errors 1", text, 1, "",
                    line + "<stdin>: note: 1 more problem not shown (--max-errors)\n")
        self.expect("check --json --strict", "A:\n", 1, "",
                    '{"file":"<stdin>","line":1,"column":1,"severity":"warning",'
                    '"rule":"never-closed","message":"object is never closed: its END is '
                    'missing"}\n')
        _, _, errors = self.run_kdx("check --color always", "A:\n" + 999 * "a" + "-\nEND\n")
        self.assertIn("\033[1;31merror:\033[0m unknown", errors)
        self.assertLess(len(errors), 500)

    def test_nesting_limit(self):
        for depth, status in [(1000, 0), (1001, 1), (100000, 1)]:
            with self.subTest(depth=depth):
                text = depth * "A:\n" + depth * "END\n"
                got, _, errors = self.run_kdx("check", text)
                self.assertEqual((got, errors.count("1001:1: error: objects are nested deeper")),
                                 (status, status))
                self.assertEqual(self.run_kdx("map", text)[0], 2 * status)

    def test_files(self):
        self.write(good=SAMPLE, bad="-\n", dir__b__x_kdx="-\n", dir__a="-\n")
        (self.folder / "dir/b/x_kdx").rename(self.folder / "dir/b/x.kdx")
        (self.folder / "empty").mkdir()
        place = ":1:1: error: unknown syntax: '-' cannot stand here; a name consists of letters, " \
            "digits, blanks, '&', '.' and '_'\n-\n^\n"
        for arguments, status, errors in [
            ("good", 0, ""),
            ("-j 1 bad missing good bad", 2, "bad" + place + "missing: error: cannot be read: No "
             "such file or directory\nbad" + place),
            ("dir good", 1, "dir/b/x.kdx" + place),
            ("empty", 2, "empty: error: is a directory without *.kdx files\n"),
            ("- -", 2, "kdx: the standard input (-) can be read only once\n"),
        ]:
            self.expect("check " + arguments, "", status, "", errors)


class Map(KdxTest):
    def test_map(self):
        for arguments, text, output in [
            ("map", SAMPLE, SAMPLE_MAP),
            ("map -", b"\xef\xbb\xbf" + SAMPLE.replace("\n", "\r\n").encode(), SAMPLE_MAP),
            ("map", "", "{}\n"),
            ("map", "A:\nEND\n", '{\n  "/A": {}\n}\n'),
            ("map --flat", SAMPLE, "/Sample:s1\tRate\t10\n/Sample:s1/Channel:A\tGain\t2\n"),
            ("map --flat --without A", "A:\nx=1\nEND\nB:\nx=2\nEND\n", "/B\tx\t2\n"),
            ("map --flat --only A --only C", "A:\nx=1\nEND\nB:\nx=2\nEND\nC:\nx=3\nEND\n",
             "/A\tx\t1\n/C\tx\t3\n"),
            ("map", 'A:\nx = "\\é\nEND\n', '{\n  "/A": {\n    "x": "\\"\\\\é"\n  }\n}\n'),
        ]:
            self.expect(arguments, text, 0, output)

    def test_several_files(self):
        self.write(a="A:\nx=1\nEND\n", b="A:\nx=2\ny=2\nEND\nB:\nz=3\nEND\n", bad="END\n")
        self.expect("map --flat a b", "", 0, "/A\tx\t1\n/A\ty\t2\n/B\tz\t3\n")
        self.expect("map --flat b a", "", 0, "/A\tx\t2\n/A\ty\t2\n/B\tz\t3\n")
        self.expect("map --flat bad a", "", 2, "/A\tx\t1\n",
                    "bad:1:1: error: END closes nothing: no object is open\nEND\n^\n")

    def test_refusals(self):
        self.expect("map", b"A:\nx = \xb0C\nEND\n", 2, "",
                    "kdx: holds text that is no UTF-8, which JSON cannot hold: '\ufffdC'; convert "
                    "the file, for example with iconv -f LATIN1 -t UTF-8\n")


class Write(KdxTest):
    def test_write(self):
        for arguments, text, output in [
            ("", SAMPLE_MAP, "Sample: s1\n  Rate = 10\n  Channel: A\n    Gain = 2\n"
             "  END # Channel:A\nEND # Sample:s1\n"),
            ("--indent 1 --compact --no-end-comments", SAMPLE_MAP,
             "Sample:s1\n Rate=10\n Channel:A\n  Gain=2\n END\nEND\n"),
            ("--replace /Sample:s1/Channel:A --no-end-comments --indent 0", SAMPLE_MAP,
             "Sample: s1\nRate = 10\n&replace Channel: A\nGain = 2\nEND\nEND\n"),
            ("--no-end-comments", '{"/A": {"a": 1.50, "b": true, "c": -2, "d": "x\\\\#y"}}',
             "A: \n  a = 1.50\n  b = true\n  c = -2\n  d = x\\#y\nEND\n"),
            ("", "{}", ""),
        ]:
            self.expect("write " + arguments, text, 0, output)

    def test_refusals(self):
        for text, reason in [
            ('{"/A": {"x": "a\\nb"}}', '/A, x: the value holds a line feed'),
            ('{"/A": {"x": "a\\\\"}}', '/A, x: the value ends in a backslash'),
            ('{"/A": {"x": "a#b"}}', "/A, x: the value holds a '#', which begins a comment"),
            ('{"/A": {"x": " a"}}', "/A, x: the value begins or ends in a blank"),
            ('{"/A": {"x-y": "a"}}', "/A, x-y: the name of the parameter holds a character other "
             "than letters, digits, blanks, '&', '.' and '_'"),
            ('{"/A-B:c": {}}', "/A-B:c: the type 'A-B' holds a character other than letters, "
             "digits, blanks, '&', '.' and '_'"),
            ('{"/A:c\\\\": {}}', "/A:c\\: the name 'c\\' ends in a backslash"),
            ('{"A": {}}', 'A: this path would read back as "/A"'),
            ('{"/A:A": {}}', '/A:A: this path would read back as "/A"'),
            ('{"": {}}', ': the empty path names no object'),
            ('{"/A": {"x": ["a"]}}', 'is no map at "/A", "x": an array is no part of a map'),
            ('{"/A": {}, "/A": {}}', 'is no map at "/A": the object stands here twice'),
            ('[]', 'is no map: an array is no part of a map'),
            ('"x"', 'is no map: not an object of objects'),
            ('{"/A": {', "is no JSON: parse error at line 1, column 9: syntax error while parsing "
             "object key - unexpected end of input; expected string literal"),
        ]:
            self.expect("write", text, 2, "", "<stdin>: error: " + reason + "\n")
        for text in [SAMPLE_MAP, '{"/BC/D": {"x": "a &replace mark"}, "/B C": {}}']:
            self.expect("write --replace /B", text, 2, "",
                        "<stdin>: error: has no object /B to replace\n")


class Program(KdxTest):
    def test_usage(self):
        for arguments, status, words in [
            ("--help", 0, "Example:"), ("check --help", 0, "Example:"), ("map --help", 0, "jq"),
            ("write --help", 0, "Example:"), ("--version", 0, "kdx 1."), ("", 2, "subcommand"),
            ("frob", 2, "kdx: "), ("check --frob", 2, "--frob"), ("check -j 0", 2, "--jobs"),
            ("map --only A --without B", 2, "--without"), ("write --indent -1", 2, "--indent"),
            ("check --max-errors -1", 2, "--max-errors"), ("check --max-depth -1", 2, "--max-dep"),
        ]:
            with self.subTest(arguments=arguments):
                got, output, errors = self.run_kdx(arguments)
                self.assertEqual(got, status)
                self.assertIn(words, errors if status else output)

    def test_output_that_fails(self):
        with open("/dev/full", "wb") as full:
            self.assertEqual(self.run_kdx("map", SAMPLE, stdout=full), (
                2, "", "kdx: standard output: cannot be written: No space left on device\n"))
        reading, writing = os.pipe()
        os.close(reading)
        self.assertEqual(self.run_kdx("map", SAMPLE, stdout=writing), (
            2, "", "kdx: standard output: cannot be written: Broken pipe\n"))
        os.close(writing)


if __name__ == "__main__":
    KDX = os.path.abspath(sys.argv.pop(1))
    unittest.main()
