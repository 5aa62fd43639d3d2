#!/usr/bin/env python3
"""Runs the built kdx and compares what it prints: kdxTest.py KDX [TEST...]

Every case runs in an empty directory that holds the files it names. A program for Windows runs
under Wine.
"""

import os
import pathlib
import random
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

KDX = []

COMMANDS = "check completion diff find fmt get manual map split strip tree write".split()

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

    def run_kdx(self, arguments, text="", prefix=(), **options):
        """Returns the exit status, the standard output and the standard error stream."""
        done = subprocess.run(
            [*prefix, *KDX, *arguments.split()], input=text if isinstance(text, bytes) else text.encode(),
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
            ("A:\n B: b\n  x=1\n END\nEND\nC:\nEND\nA:\n B: b\n  x=2\n END\nEND\n", 0,
             "8:1: warning: object 'A' again: its parameters merge into those of line 1",
             "9:2: warning: object 'B: b' again", "10:3: warning: parameter 'x' again: its first "
             "value, of line 3"),
            ("A:\n" + "".join(f"x{i} = 1\n" for i in range(50)) + "x9 = 1\nx49 = 1\nEND\nB:\n"
             "x49 = 1\nEND\n", 0, "52:1: warning: parameter 'x9' again: its first value, of line "
             "11", "53:1: warning: parameter 'x49' again: its first value, of line 51"),
            ("A:\n x = 1 # c \\\n 2\nEND\n", 0, "2:8: warning: the comment swallows"),
            ("A:\n x = 1 \\\n 2 # c\nEND\n", 0),
            ("A:\n x = 1 # c \\\n\nEND\n", 0),
            ("A:\n x = \\#1 \\\n 2\nEND\n", 0),
            ("A:\n x = 1 \\\r\n\nEND\n", 0, "2:8: warning: a backslash in front of a carriage"),
            (b"\xef\xbb\xbfA:\n-\nEND\n", 1, "1:1: warning: byte order mark", "2:1: error"),
            ("A:\n x = \0\0\nEND\n", 0, "2:6: warning: NUL byte"),
            ("A:\n-\0\nEND\n", 1, "2:1: error: unknown", "2:2: warning: NUL byte"),
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
                    line + "<stdin>: note: 1 more problem not shown (--max-errors 0 shows "
                    "all)\n")
        self.expect("check --max-errors 1", text.replace("\n", "\r\n"), 1, "",
                    line + "<stdin>: note: 1 more problem not shown (--max-errors 0 shows "
                    "all)\n")
        self.expect("check --json --strict", "A:\n", 1, "",
                    '{"file":"<stdin>","line":1,"column":1,"severity":"warning",'
                    '"rule":"never-closed","message":"object is never closed: its END is '
                    'missing"}\n')
        _, _, errors = self.run_kdx("check --color always", "A:\n" + 999 * "a" + "-\nEND\n")
        _, _, many = self.run_kdx("fmt", 101 * "-\n")
        self.assertTrue(many.endswith("1 more problem not shown (kdx check --max-errors 0 shows "
                                      "all)\n"), many)
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
        (self.folder / "dir/loop").symlink_to("loop")
        (self.folder / "dir/gone.kdx").symlink_to("nothing")
        place = ":1:1: error: unknown syntax: '-' cannot stand here; a name consists of letters, " \
            "digits, blanks, '&', '.' and '_'\n-\n^\n"
        for arguments, status, errors in [
            ("good", 0, ""),
            ("-j 1 bad missing good bad", 2, "bad" + place + "missing: error: cannot be read: No "
             "such file or directory\nbad" + place),
            ("dir good", 1, "dir/b/x.kdx" + place),
            ("empty", 2, "empty: error: is a directory without *.kdx files\n"),
            ("/dev/null", 0, ""),
            ("/dev/full", 2, "/dev/full: error: is a device that seems never to end: copy what is "
             "wanted of it to a file\n"),
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
        bad = "bad:1:1: error: END closes nothing: no object is open\nEND\n^\n"
        self.expect("map --flat bad a", "", 2, "/A\tx\t1\n", bad)
        self.expect("map bad", "", 2, "", bad)

    def test_what_is_no_utf8(self):
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
            with self.subTest(text=text):
                got, output, errors = self.run_kdx("map", text)
                shown = [line for line in errors.splitlines() if line.startswith("<stdin>:")]
                self.assertEqual((got, output == "", shown), (
                    2 if problems else 0, bool(problems), ["<stdin>:" + line for line in problems]))
                self.assertEqual(self.run_kdx("map --flat", text)[0], 0)
        self.write(a=SAMPLE, latin=b"B:\nx = \xb0\nEND\n")
        self.assertEqual(self.run_kdx("map latin a")[:2], (2, SAMPLE_MAP))
        self.assertEqual(self.run_kdx("map --only Sample latin a"), (0, SAMPLE_MAP, ""))
        for arguments in ["get latin /B", "diff a latin", "find latin --type B"]:
            got, output, errors = self.run_kdx(arguments + " --json")
            self.assertEqual((got, output), (2, ""))
            self.assertIn("no UTF-8 cannot be put into JSON", errors)


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
            ('{"/A:c  d": {}}', "/A:c  d: the name 'c  d' has a tab, or several blanks in a row, "
             "inside"),
            ('{"A": {}}', 'A: this path would read back as "/A"'),
            ('{"/A:A": {}}', '/A:A: this path would read back as "/A"'),
            ('{"": {}}', '"": the empty path names no object'),
            ('{"/A": {"": "#"}}', '/A, "": the value holds a \'#\', which begins a comment'),
            ('{"/A": {"x": ["a"]}}', 'is no map at "/A", "x": an array is no part of a map'),
            ('{"/A": {}, "/A": {}}', 'is no map at "/A": the object stands here twice'),
            ('[]', 'is no map: an array is no part of a map'),
            ('"x"', 'is no map: not an object of objects'),
            ('{"/A": {', "is no JSON: parse error at line 1, column 9: syntax error while parsing "
             "object key - unexpected end of input; expected string literal"),
        ]:
            self.expect("write", text, 2, "", "<stdin>: error: " + reason + "\n")
        many = "{" + ", ".join(f'"/A:{i}\\\\": {{"x": "#"}}' for i in range(60)) + "}"
        got, output, errors = self.run_kdx("write", many)
        self.assertEqual((got, output, errors.count(" error: ")), (2, "", 100))
        self.assertTrue(errors.endswith("<stdin>: note: 20 more problems not shown\n"), errors)
        for text in [SAMPLE_MAP, '{"/BC/D": {"x": "a &replace mark"}, "/B C": {}}']:
            self.expect("write --replace /B", text, 2, "",
                        "<stdin>: error: has no object /B to replace\n")


UGLY = """! head # x
Sample: s1  # first
gain = 10   # dB
   Channel: A
offset = 1, \\
   2, 3 # three

 END
#  note
    >run # now
   END
"""

FORMATTED = """! head # x
Sample: s1  # first
  gain = 10   # dB
  Channel: A
    offset = 1, \\
      2, 3 # three

  END
#  note
>run # now
END
"""


def random_text(source):
    """A text of lines that are KDX more often than not, with odd continuations and line ends."""
    words = ["A: b", "x = 1", "END", "> go", "! v", "$ w", "# c", "", "\\", "E", "ND", "y", "= 2",
             ":", "x = \\#1", "x = a\\ # c", "  ", "\t"]
    ends = ["\n"] * 6 + ["\\\n", " \\\n", "\\  \n", " # c\n", " # c \\\n", "\r\n", "\r\r\n",
                           "\\\r\n"]
    return "".join(source.choice(["", " ", "   "]) + source.choice(words) + source.choice(ends)
                   for _ in range(source.randrange(12)))


class Fmt(KdxTest):
    def test_fmt(self):
        for text, output in [
            (UGLY, FORMATTED), ("", ""), ("\n", "\n"), (" x = 1", "x = 1\n"),
            ("A:\r\nx = 1\r\n\r\nEND\r\n", "A:\r\n  x = 1\r\n\r\nEND\r\n"),
            ("A:\r\nx = 1\nEND\r\n", "A:\n  x = 1\nEND\n"),
            ("A:\nx = 1\r\r\nEND\n", "A:\n  x = 1\nEND\n"),
            ("\ufeffA:\nx = 1\nEND\n", "\ufeffA:\n  x = 1\nEND\n"),
            ("A:\nx = \\\r\ny = 1\nEND", "A:\n  x = \\\r\n    y = 1\nEND\n"),
        ]:
            with self.subTest(text=text):
                got = subprocess.run([*KDX, "fmt"], input=text.encode(), stdout=subprocess.PIPE)
                self.assertEqual((got.returncode, got.stdout.decode()), (0, output))

    def test_refusals(self):
        for text, problem in [
            ("A:\n-\nEND\n", "2:1: error: unknown syntax"),
            ("A:\n  \\\nx = 1\nEND\n", "2:3: error: this line would be left out"),
            ("A\\\n\\\n: x\nEND\n", "2:1: error: this line would be left out"),
            ("A:\nEN\\\n D\nx = 1\n", "2:1: error: END is continued by another line"),
            (1001 * "A:\n", "1001:1: error: objects are nested deeper"),
        ]:
            with self.subTest(text=text[:80]):
                self.write(file=text)
                got, output, errors = self.run_kdx("fmt -i file")
                self.assertEqual((got, output), (2, ""))
                self.assertTrue(errors.startswith("file:" + problem), errors)
                self.assertEqual((self.folder / "file").read_text(), text)

    def test_modes(self):
        longest = 255 * "n"
        self.write(ugly=UGLY, good=FORMATTED, **{longest: UGLY})
        for arguments, status, output, errors in [
            ("--check good", 0, "", ""), ("--check ugly good", 1, "ugly\n", ""),
            ("--diff good", 0, "", ""), ("good ugly", 0, FORMATTED + FORMATTED, ""),
            ("-i -", 2, "", "<stdin>: error: cannot be formatted in place: leave out -i, or name a "
             "file\n"),
            ("-i /dev/null", 0, "", ""), ("-i . missing", 2, "", ".: error: is a directory without "
             "*.kdx files\nmissing: error: cannot be read: No such file or directory\n"),
            ("-i ugly good", 0, "", ""), ("--check ugly good", 0, "", ""),
            (f"-i {longest}", 0, "", ""), (f"--check {longest}", 0, "", ""),
        ]:
            self.expect("fmt " + arguments, "", status, output, errors)

    @unittest.skipUnless(shutil.which("git"), "needs git to apply patches")
    def test_diff_is_a_patch(self):
        source = random.Random(7)
        for _ in range(20):
            text = "".join(source.choice(["x = 1\n", "  x = 1\n", "A:\n"]) for _ in range(40))
            text = text[:source.choice([len(text), -1])]
            self.write(file=text)
            _, patch, _ = self.run_kdx("fmt --diff file")
            _, formatted, _ = self.run_kdx("fmt file")
            done = subprocess.run(["git", "apply", "-p0"], input=patch.encode(), cwd=self.folder,
                                  stderr=subprocess.PIPE) if patch else None
            self.assertEqual((self.folder / "file").read_text(), formatted, (text, patch, done))
        (self.folder / "a b").write_text(UGLY)
        done = subprocess.run([*KDX, "fmt", "--diff", "a b"], stdout=subprocess.PIPE,
                              cwd=self.folder)
        self.assertIn(b"--- a b\t\n+++ a b\t\n@@", done.stdout)

    def test_what_it_writes_is_formatted_and_means_the_same(self):
        source = random.Random(11)
        texts = {f"f{i}": random_text(source) for i in range(150)}
        self.write(**texts)
        for command in ["fmt", "strip"]:
            written = 0
            for name, text in texts.items():
                status, output, errors = self.run_kdx(f"{command} {name}")
                if status != 0:
                    self.assertIn("error: ", errors)
                    self.assertNotIn("mean something else", errors, text)
                    continue
                written += 1
                self.write(after=output)
                with self.subTest(command=command, text=text):
                    self.assertEqual(self.run_kdx("diff --json after " + name)[:2],
                                     self.run_kdx(f"diff --json {name} {name}")[:2])
                    if command == "fmt":
                        self.assertEqual(self.run_kdx("fmt --check after")[0], 0)
            self.assertGreater(written, 50)

    def test_in_place(self):
        self.write(a=UGLY, b=b"\xef\xbb\xbfA:\r\nx=1\r\nEND\r\n")
        self.expect("fmt -i a b", "", 0)
        self.assertEqual((self.folder / "a").read_bytes(), FORMATTED.encode())
        self.assertEqual((self.folder / "b").read_bytes(), b"\xef\xbb\xbfA:\r\n  x=1\r\nEND\r\n")
        self.assertEqual(sorted(os.listdir(self.folder)), ["a", "b"])

    def test_in_place_without_error_stream(self):
        """No message gets into a file that takes the number of the stream."""
        names = [f"d/{i}.kdx" for i in range(200)]
        (self.folder / "d").mkdir()
        for i, name in enumerate(names):
            (self.folder / name).write_text("-\n" if i % 2 else 1000 * UGLY)
        done = subprocess.run(["sh", "-c", 'exec "$@" fmt -i -j 4 d 2>&-', "sh", *KDX],
                              cwd=self.folder)
        self.assertEqual(done.returncode, 2)
        self.assertEqual({(self.folder / name).read_text() for name in names},
                         {"-\n", 1000 * FORMATTED})

    def test_in_place_keeps_mode_owner_and_link(self):
        self.write(real__file=UGLY)
        real, link = self.folder / "real/file", self.folder / "link"
        link.symlink_to("real/file")
        real.chmod(0o640)
        if os.geteuid() == 0:
            os.chown(real, 1234, 4321)
        before = real.stat()
        self.expect("fmt -i link", "", 0)
        after = real.stat()
        self.assertTrue(link.is_symlink())
        self.assertEqual(real.read_text(), FORMATTED)
        self.assertEqual((after.st_mode, after.st_uid, after.st_gid),
                         (before.st_mode, before.st_uid, before.st_gid))
        self.assertEqual(os.listdir(real.parent), ["file"])

    def test_folders_and_files_without_permission(self):
        capabilities = "-dac_override,-dac_read_search"  # with which root passes permissions by
        prefix = ["setpriv", f"--bounding-set={capabilities}", f"--inh-caps={capabilities}"]
        self.write(closed__a_kdx=UGLY, secret=UGLY)
        (self.folder / "secret").chmod(0)
        (self.folder / "closed/a_kdx").chmod(0o666)
        (self.folder / "closed").chmod(0o555)
        self.addCleanup((self.folder / "closed").chmod, 0o777)
        for arguments, message in [
            ("fmt -i closed/a_kdx", "closed/a_kdx: error: cannot be replaced: a new file beside "
             "it: Permission denied\n"),
            ("map secret", "secret: error: cannot be read: Permission denied\n"),
            ("get closed /A", "closed: error: is a directory, not a file\n"),
        ]:
            got, output, errors = self.run_kdx(arguments, prefix=prefix if os.geteuid() == 0 else ())
            self.assertEqual((got, errors), (2, message), output)
        self.assertEqual((self.folder / "closed/a_kdx").read_text(), UGLY)

    def test_killed_at_any_moment(self):
        """Every file is whole whenever the process dies: as it was, or as it was to become."""
        old = UGLY + 300 * "A:\nx = 1\nEND\n"
        new = FORMATTED + 300 * "A:\n  x = 1\nEND\n"
        names = [f"d/{i}.kdx" for i in range(300)]
        (self.folder / "d").mkdir()
        source = random.Random(3)
        half_done = 0
        for _ in range(12):
            for name in names:
                (self.folder / name).write_text(old)
            running = subprocess.Popen([*KDX, "fmt", "-i", "d"], cwd=self.folder)
            time.sleep(source.uniform(0, 0.15))
            running.kill()
            running.wait()
            contents = {(self.folder / name).read_text() for name in names}
            self.assertLessEqual(contents, {old, new})
            half_done += len(contents) == 2
        self.assertGreater(half_done, 0)


class Look(KdxTest):
    NESTED = """Sample: s1
  Rate = 10
  Channel: A
    Gain = 2
    Filter: F
      Cut = 5
    END
  END
  Channel: B
  END
END
Sample: s2
  Channel: A
  END
END
"""

    def test_commands(self):
        self.write(f=self.NESTED, open="A:\nB: b\nx = 1\n",
                   acts=">a # c\n> b\\\n c\nA:\n x = 1\nEND\n>d\n")
        for arguments, status, output, errors in [
            ("get f /Sample:s1", 0, "Rate = 10\n", ""),
            ("get f Sample:s1/Channel:A Gain", 0, "2\n", ""),
            ("get --json f /Sample:s1", 0, '{\n  "Rate": "10"\n}\n', ""),
            ("get --json f /Sample:s1/Channel:B", 0, "{}\n", ""),
            ("get f /Sample:s3", 1, "", "f: error: has no object /Sample:s3\n"),
            ("get f /Sample:s1 rate", 1, "", "f: error: has no parameter rate in /Sample:s1\n"),
            ("find f --name A --depth 0", 0, "Channel:A\n  Gain = 2\nEND\nChannel:A\nEND\n", ""),
            ("find f --type Channel --group Sample", 0,
             "# s1\nChannel:B\nEND\n# s2\nChannel:A\nEND\n", ""),
            ("find f --type Filter --json", 0,
             '{"key":"Filter:F","lines":["Filter:F","  Cut = 5","END"]}\n', ""),
            ("find open --type B --json", 0, '{"key":"B:b","lines":["B:b","  x = 1"]}\n', ""),
            ("find f --name Channel", 1, "", "f: error: has no object with the name Channel\n"),
            ("find f --type A", 1, "", "f: error: has no object of type A\n"),
            ("split acts", 0, "# actions\n>a\n> bc\n# state\nA:\nx = 1\nEND\n# actions\n>d\n", ""),
            ("split --actions acts", 0, ">a\n> bc\n>d\n", ""),
            ("split --state --json acts", 0, '{"kind":"state","text":"A:\\nx = 1\\nEND"}\n', ""),
            ("tree f", 0, "Sample: s1 (1 parameter)\n├── Channel: A (1 parameter)\n"
             "│   └── Filter: F (1 parameter)\n└── Channel: B (0 parameters)\n"
             "Sample: s2 (0 parameters)\n└── Channel: A (0 parameters)\n", ""),
            ("tree --depth 1 f", 0, "Sample: s1 (1 parameter, 2 objects)\n"
             "Sample: s2 (0 parameters, 1 object)\n", ""),
        ]:
            self.expect(arguments, "", status, output, errors)

    def test_strip(self):
        for text, output in [
            ("A: # c\n# c\n\n  x = 1 \\\n  2 # c\n", "A:\n\n  x = 1 \\\n  2\n"),
            ("x = 1 \\\n# c\n", "x = 1\n"), ("x = 1 # c \\\ny = 2\nz = 3\n", "x = 1\nz = 3\n"),
            ("! v # c\n$ w # c\n> a # c\n", "! v # c\n$ w # c\n> a\n"),
            ("x = a\\ # c\n", "x = a\\ # c\n"), ("x = \\#1 # c\n", "x = \\#1 # c\n"),
        ]:
            self.expect("strip", text, 0, output)
        got = subprocess.run([*KDX, "strip"], input=b"x = 1 # c\r\n# c\r\n", stdout=subprocess.PIPE)
        self.assertEqual(got.stdout, b"x = 1\r\n")

    def test_diff(self):
        self.write(a=self.NESTED, same="# c\n" + self.NESTED.replace("  ", ""), bad="-\n",
                   b="Sample: s1\nRate = 11\nChannel: A\nGain = 2\nFilter: F\nEND\nEND\n"
                   "Channel: C\nNew = 1\nEND\nEND\nSample: s2\nChannel: A\nEND\nEND\n")
        text = ("  /Sample:s1\n-   Rate = 10\n+   Rate = 11\n"
                "  /Sample:s1/Channel:A/Filter:F\n-   Cut = 5\n"
                "- /Sample:s1/Channel:B\n+ /Sample:s1/Channel:C\n+   New = 1\n")
        lines = ('{"change":"changed","path":"/Sample:s1","name":"Rate","before":"10","after":"11"}'
                 '\n{"change":"removed","path":"/Sample:s1/Channel:A/Filter:F","name":"Cut",'
                 '"before":"5"}\n{"change":"removed","path":"/Sample:s1/Channel:B"}\n'
                 '{"change":"added","path":"/Sample:s1/Channel:C"}\n'
                 '{"change":"added","path":"/Sample:s1/Channel:C","name":"New","after":"1"}\n')
        self.expect("diff a same", "", 0)
        self.expect("diff a b", "", 1, text)
        self.expect("diff --json a b", "", 1, lines)
        self.assertEqual(self.run_kdx("diff a bad")[:2], (2, ""))
        self.assertEqual(self.run_kdx("diff - -")[:2], (2, ""))


class Program(KdxTest):
    def test_usage(self):
        for arguments, status, words in [
            ("--help", 0, "Example:"),
            ("--version", 0, "kdx 1."), ("", 2, "subcommand"),
            *((command + " --help", 0, "Example:") for command in COMMANDS),
            ("find x", 2, "--name"), ("fmt -i --check", 2, "--check"), ("manual x", 2, "x"),
            ("frob", 2, "kdx: unknown command or option: frob"), ("check --frob", 2, "--frob"),
            ("check -j 0", 2, "--jobs"),
            ("map --only A --without B", 2, "--without"), ("write --indent -1", 2, "--indent"),
            ("check --max-errors -1", 2, "--max-errors"), ("check --max-depth -1", 2, "--max-dep"),
            ("tree --depth 0", 2, "1 to 1000000000"),
        ]:
            with self.subTest(arguments=arguments):
                got, output, errors = self.run_kdx(arguments)
                self.assertEqual(got, status)
                self.assertIn(words, errors if status else output)

    def test_documents(self):
        """The completions and man pages are well formed and know every command and option."""
        for command in COMMANDS:
            _, page, _ = self.run_kdx("manual " + command)
            self.assertTrue(page.startswith(f".TH kdx\\-{command} 1 "), page)
        for shell in ["bash", "zsh", "fish"]:
            _, script, _ = self.run_kdx("completion " + shell)
            for word in [*COMMANDS, "strict", "max-depth"]:
                self.assertIn(word, script)
            if shutil.which(shell):
                done = subprocess.run([shell, "-n"], input=script.encode(), stderr=subprocess.PIPE)
                self.assertEqual((done.returncode, done.stderr), (0, b""))
        _, script, _ = self.run_kdx("completion bash")
        for words, expected in [("kdx", "check"), ("kdx check", "--strict"), ("kdx map", "--json")]:
            done = subprocess.run(
                ["bash", "-c", script + f"COMP_WORDS=({words} {expected[:3]}); "
                 "COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _kdx; echo ${COMPREPLY[0]}"],
                stdout=subprocess.PIPE)
            self.assertEqual(done.stdout.decode(), expected + "\n")

    def test_output_that_fails(self):
        with open("/dev/full", "wb") as full:
            for arguments in ["map", "--version"]:
                self.assertEqual(self.run_kdx(arguments, SAMPLE, stdout=full), (
                    2, "", "kdx: standard output: cannot be written: No space left on device\n"))
        reading, writing = os.pipe()
        os.close(reading)
        self.assertEqual(self.run_kdx("map", SAMPLE, stdout=writing), (
            2, "", "kdx: standard output: cannot be written: Broken pipe\n"))
        os.close(writing)


if __name__ == "__main__":
    KDX = [os.path.abspath(sys.argv.pop(1))]
    if KDX[0].endswith(".exe"):
        KDX.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts/wine-run"))
    unittest.main()
