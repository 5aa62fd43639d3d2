#!/usr/bin/env python3
"""Runs the built kdx and compares what it prints: kdxTest.py KDX [TEST...]

Every case runs in an empty directory that holds the files it names. A program for Windows runs
under Wine.
"""

import json
import os
import pathlib
import random
import shlex
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

KDX = []

COMMANDS = "check completion diff find fmt get manual map split strip tree write".split()


def data(name):
    """The text of a worked example."""
    return (pathlib.Path(__file__).resolve().parents[1] / "data" / name).read_text()


NESTED = data("search.kdx")
SAMPLE = data("written.kdx")
SAMPLE_MAP = json.dumps(
    {"/Sample:s1": {"gain": "10", "mode": "fast"}, "/Sample:s1/Channel:A": {"offset": "0.5"},
     "/Sample:s1/Channel:A/Filter": {"order": "2"}}, indent=2) + "\n"

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
UGLY = "".join(i * " " + line.lstrip(" ") for i, line in enumerate(FORMATTED.splitlines(True)))

CANNOT_STAND = (" cannot stand here; a name consists of letters, digits, blanks, '&', '.' and '_' "
                "[unknown-syntax]\n")


class KdxTest(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.folder.chmod(0o777)

    def write(self, files):
        for name, text in files.items():
            path = self.folder / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(text if isinstance(text, bytes) else text.encode())

    def read(self, name):
        return (self.folder / name).read_bytes().decode()

    def run_kdx(self, arguments, text="", prefix=(), stdout=subprocess.PIPE):
        """Returns the exit status, the standard output and the standard error stream."""
        done = subprocess.run(
            [*prefix, *KDX, *shlex.split(arguments)], stdout=stdout, stderr=subprocess.PIPE,
            input=text if isinstance(text, bytes) else text.encode(), cwd=self.folder, timeout=60)
        return (done.returncode, (done.stdout or b"").decode(errors="replace"),
                done.stderr.decode(errors="replace"))

    def expect(self, arguments, text="", output="", status=0, errors=""):
        with self.subTest(arguments=arguments, text=text[:200]):
            self.assertEqual(self.run_kdx(arguments, text), (status, output, errors))

    def expect_problems(self, arguments, text, status, *problems):
        """What each problem begins with, behind the name of the file."""
        got, output, errors = self.run_kdx(arguments, text)
        with self.subTest(arguments=arguments, text=text[:200]):
            shown = [line.partition(":")[2] for line in errors.splitlines()
                     if ": error: " in line or ": warning: " in line]
            self.assertEqual((got, len(shown)), (status, len(problems)), errors)
            self.assertEqual(output, "" if problems else output)
            for line, problem in zip(shown, problems):
                self.assertTrue(line.startswith(problem), line)


class Check(KdxTest):
    def test_problems(self):
        for text, *problems in [
            (SAMPLE,), ("",), ("A:\r\nEND\r\n",),
            ("A:\n x\\\n  y\\\n   z-\nEND\n", "4:5: error: unknown syntax: '-'"),
            ("END\nx = 1\n", "1:1: error: END closes nothing", "2:1: error: parameter 'x'"),
            ("A:\n x = 1 # c \\\n 2\nEND\n", "2:8: warning: the comment swallows"),
            (b"\xef\xbb\xbfA:\n-\nEND\n", "1:1: warning: byte order mark", "2:1: error"),
            ("A:\n-\0\nEND\n", "2:1: error: unknown", "2:2: warning: NUL byte"),
        ]:
            self.expect_problems("check", text, int(" error" in "".join(problems)), *problems)

    def test_layout(self):
        text = "A:\n\tpré = 1 -\n\tgain -> 3\nEND\n"
        for lines in [text, text.replace("\n", "\r\n")]:
            self.expect(
                "check --max-errors 1", lines, "", 1, "<stdin>:2:4: error: unknown syntax: the "
                "byte 0xC3" + CANNOT_STAND + " pré = 1 -\n   ^\n<stdin>: note: 1 more problem not "
                "shown (--max-errors 0 shows all)\n")
        self.expect("check --json --strict", "A:\n", "", 1,
                    '{"file":"<stdin>","line":1,"column":1,"severity":"warning",'
                    '"rule":"never-closed","message":"object \'A\' is never closed: its END '
                    'is missing"}\n')
        _, _, errors = self.run_kdx("check --color always", "A:\n" + 999 * "a" + "-\nEND\n")
        self.assertIn("\033[1;31merror:\033[0m unknown", errors)
        self.assertLess(len(errors), 500)
        _, _, many = self.run_kdx("fmt", 101 * "-\n")
        self.assertTrue(many.endswith("1 more problem not shown (kdx check --max-errors 0 shows "
                                      "all)\n"), many)

    def test_nesting_limit(self):
        for depth in [1000, 1001, 100000]:
            text = depth * "A:\n" + depth * "END\n"
            problems = ["1001:1: error: objects are nested deeper"] * (depth > 1000)
            self.expect_problems("check", text, len(problems), *problems)
            self.assertEqual(self.run_kdx("map", text)[0], 2 * len(problems))

    def test_files(self):
        self.write({"good": SAMPLE, "bad": "-\n", "dir/b/x.kdx": "-\n", "dir/a": "-\n"})
        (self.folder / "empty").mkdir()
        (self.folder / "dir/loop").symlink_to("loop")
        (self.folder / "dir/gone.kdx").symlink_to("nothing")
        place = ":1:1: error: unknown syntax: '-'" + CANNOT_STAND + "-\n^\n"
        for arguments, status, errors in [
            ("good /dev/null", 0, ""), ("dir good", 1, "dir/b/x.kdx" + place),
            ("-j 1 bad missing good bad", 2, "bad" + place + "missing: error: cannot be read: No "
             "such file or directory\nbad" + place),
            ("empty", 2, "empty: error: is a directory without *.kdx files\n"),
            ("/dev/full", 2, "/dev/full: error: is a device that seems never to end: copy what is "
             "wanted of it to a file\n"),
            ("- -", 2, "kdx: the standard input (-) can be read only once\n"),
        ]:
            self.expect("check " + arguments, "", "", status, errors)


class Results(KdxTest):
    def test_of_files(self):
        self.write({"f": NESTED, "open": "A:\nB: b\nx = 1\n", "bad": "END\n",
                    "acts": ">a # c\n> b\\\n c\nA:\n x = 1\nEND\n>d\n",
                    "x1": "A:\nx=1\nEND\n", "x2": "A:\nx=2\ny=2\nEND\nB:\nz=3\nEND\n",
                    "same": "# c\n" + NESTED.replace("  ", ""),
                    "other": NESTED.replace("10", "11").replace("Cut = 5", "")
                    .replace(": B", ": C").replace("Gain = 4", "New = 1")})
        problem = ("bad:1:1: error: END closes nothing: no object is open [unexpected-end]\n"
                   "END\n^\n")
        for arguments, output, *failure in [
            ("get f /Sample:s1", "Rate = 10\n"), ("get f Sample:s1/Channel:A Gain", "2\n"),
            ("get --json f /Sample:s1", '{\n  "Rate": "10"\n}\n'),
            ("get --json f /Sample:s2", "{}\n"),
            ("get f /Sample:s3", "", 1, "f: error: has no object /Sample:s3\n"),
            ("get f /Sample:s1 rate", "", 1, "f: error: has no parameter rate in /Sample:s1\n"),
            ("find f --name A --depth 0",
             "Channel:A\n  Gain = 2\nEND\nChannel:A\n  Gain = 7\nEND\n"),
            ("find f --type Channel --group Sample",
             "# s1\nChannel:B\n  Gain = 4\nEND\n# s2\nChannel:A\n  Gain = 7\nEND\n"),
            ("find f --type Filter --json",
             '{"key":"Filter:F","lines":["Filter:F","  Cut = 5","END"]}\n'),
            ("find open --type B --json", '{"key":"B:b","lines":["B:b","  x = 1"]}\n'),
            ("find f --name Channel", "", 1, "f: error: has no object with the name Channel\n"),
            ("find f --type A", "", 1, "f: error: has no object of type A\n"),
            ("split acts", "# actions\n>a\n> bc\n# state\nA:\nx = 1\nEND\n# actions\n>d\n"),
            ("split --actions acts", ">a\n> bc\n>d\n"),
            ("split --state --json acts", '{"kind":"state","text":"A:\\nx = 1\\nEND"}\n'),
            ("tree f", "Sample: s1 (1 parameter)\n├── Channel: A (1 parameter)\n"
             "│   └── Filter: F (1 parameter)\n└── Channel: B (1 parameter)\n"
             "Sample: s2 (0 parameters)\n└── Channel: A (1 parameter)\n"),
            ("tree --depth 1 f", "Sample: s1 (1 parameter, 2 objects)\n"
             "Sample: s2 (0 parameters, 1 object)\n"),
            ("map --flat x1 x2", "/A\tx\t1\n/A\ty\t2\n/B\tz\t3\n"),
            ("map --flat x2 x1", "/A\tx\t2\n/A\ty\t2\n/B\tz\t3\n"),
            ("map --flat bad x1", "/A\tx\t1\n", 2, problem),
            ("map bad", "", 2, problem),
            ("diff f bad", "", 2, problem),
            ("diff - -", "", 2, "kdx: the standard input (-) can be read only once\n"),
            ("diff f same", ""),
            ("diff f other", "  /Sample:s1\n-   Rate = 10\n+   Rate = 11\n"
             "  /Sample:s1/Channel:A/Filter:F\n-   Cut = 5\n- /Sample:s1/Channel:B\n"
             "-   Gain = 4\n+ /Sample:s1/Channel:C\n+   New = 1\n", 1),
            ("diff --json f other",
             '{"change":"changed","path":"/Sample:s1","name":"Rate","before":"10","after":"11"}\n'
             '{"change":"removed","path":"/Sample:s1/Channel:A/Filter:F","name":"Cut","before":"5"}'
             '\n{"change":"removed","path":"/Sample:s1/Channel:B"}\n'
             '{"change":"removed","path":"/Sample:s1/Channel:B","name":"Gain","before":"4"}\n'
             '{"change":"added","path":"/Sample:s1/Channel:C"}\n'
             '{"change":"added","path":"/Sample:s1/Channel:C","name":"New","after":"1"}\n', 1),
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
            ("map", "", "{}\n"), ("write", "{}", ""),
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
        self.expect("diff --json a latin", "", "", 2,
                    '{"file":"latin","line":2,"column":5,"severity":"error","rule":"no-utf8",'
                    '"message":"/B, x: the byte 0xB0' + cure + '"}\n')
        self.write({"latin2": b"B:\nx = \xb0\ny = 1\nEND\n"})
        self.expect("diff --json latin latin2", "",
                    '{"change":"added","path":"/B","name":"y","after":"1"}\n', 1)
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
            ("[]", "is no map: an array is no part of a map"),
            ('"x"', "is no map: not an object of objects"),
            ('{"/A": {', "is no JSON: parse error at line 1, column 9: syntax error while parsing "
             "object key - unexpected end of input; expected string literal"),
        ]:
            self.expect("write", text, "", 2, "<stdin>: error: " + reason + "\n")
        for text in [SAMPLE_MAP, '{"/BC/D": {"x": "a &replace mark"}, "/B C": {}}']:
            self.expect("write --replace /B", text, "", 2,
                        "<stdin>: error: has no object /B to replace\n")
        many = "{" + ", ".join(f'"/A:{i}\\\\": {{"x": "#"}}' for i in range(60)) + "}"
        got, output, errors = self.run_kdx("write", many)
        self.assertEqual((got, output, errors.count(" error: ")), (2, "", 100))
        self.assertTrue(errors.endswith("<stdin>: note: 20 more problems not shown\n"), errors)


class Fmt(KdxTest):
    def test_refusals(self):
        text = "A:\n-\nEND\n"
        self.write({"file": text})
        self.expect_problems("fmt -i file", "", 2, "2:1: error: unknown syntax")
        self.assertEqual(self.read("file"), text)
        self.assertEqual(self.run_kdx("fmt", 1001 * "A:\n")[0], 0)

    def test_modes(self):
        longest = 255 * "n"
        self.write({"ugly": UGLY, "good": FORMATTED, longest: UGLY})
        for arguments, *result in [
            ("--check good",), ("--check ugly good", "ugly\n", 1), ("--diff good",),
            ("good ugly", FORMATTED + FORMATTED), ("-i /dev/null",),
            ("-i -", "", 2, "<stdin>: error: cannot be formatted in place: leave out -i, or name a "
             "file\n"),
            ("-i . missing", "", 2, ".: error: is a directory without *.kdx files\n"
             "missing: error: cannot be read: No such file or directory\n"),
            ("-i ugly good",), ("--check ugly good",),
            (f"-i {longest}",), (f"--check {longest}",),
        ]:
            self.expect("fmt " + arguments, "", *result)

    @unittest.skipUnless(shutil.which("git"), "needs git to apply patches")
    def test_diff_is_a_patch(self):
        source = random.Random(7)
        for _ in range(20):
            text = "".join(source.choice(["x = 1\n", "  x = 1\n", "A:\n"]) for _ in range(40))
            text = text[:source.choice([len(text), -1])]
            self.write({"file": text})
            _, patch, _ = self.run_kdx("fmt --diff file")
            _, formatted, _ = self.run_kdx("fmt file")
            done = subprocess.run(["git", "apply", "-p0"], input=patch.encode(), cwd=self.folder,
                                  stderr=subprocess.PIPE) if patch else None
            self.assertEqual(self.read("file"), formatted, (text, patch, done))
        self.write({"a b": UGLY})
        self.assertIn("--- a b\t\n+++ a b\t\n@@", self.run_kdx("fmt --diff 'a b'")[1])

    def test_in_place(self):
        self.write({"a": UGLY, "b": "\ufeffA:\r\nx=1\r\nEND\r\n"})
        self.expect("fmt -i a b")
        self.assertEqual(self.read("a"), FORMATTED)
        self.assertEqual(self.read("b"), "\ufeffA:\r\n  x = 1\r\nEND\r\n")
        self.assertEqual(sorted(os.listdir(self.folder)), ["a", "b"])

    def test_in_place_without_error_stream(self):
        """No message gets into a file that takes the number of the stream."""
        files = {f"d/{i}.kdx": "-\n" if i % 2 else 1000 * UGLY for i in range(200)}
        self.write(files)
        closed = ["sh", "-c", 'exec "$@" 2>&-', "sh"]
        self.assertEqual(self.run_kdx("fmt -i -j 4 d", prefix=closed)[0], 2)
        self.assertEqual({self.read(name) for name in files}, {"-\n", 1000 * FORMATTED})

    def test_in_place_keeps_mode_owner_and_link(self):
        self.write({"real/file": UGLY})
        real, link = self.folder / "real/file", self.folder / "link"
        link.symlink_to("real/file")
        real.chmod(0o640)
        if os.geteuid() == 0:
            os.chown(real, 1234, 4321)
        before = real.stat()
        self.expect("fmt -i link")
        self.assertEqual((link.is_symlink(), self.read("real/file")), (True, FORMATTED))
        for kept in ["st_mode", "st_uid", "st_gid"]:
            self.assertEqual(getattr(real.stat(), kept), getattr(before, kept), kept)
        self.assertEqual(os.listdir(real.parent), ["file"])

    def test_folders_and_files_without_permission(self):
        capabilities = "-dac_override,-dac_read_search"  # with which root passes permissions by
        prefix = ["setpriv", f"--bounding-set={capabilities}", f"--inh-caps={capabilities}"]
        self.write({"closed/a_kdx": UGLY, "secret": UGLY})
        for name, mode in [("secret", 0), ("closed/a_kdx", 0o666), ("closed", 0o555)]:
            (self.folder / name).chmod(mode)
        self.addCleanup((self.folder / "closed").chmod, 0o777)
        for arguments, message in [
            ("fmt -i closed/a_kdx", "closed/a_kdx: error: cannot be replaced: a new file beside "
             "it: Permission denied\n"),
            ("map secret", "secret: error: cannot be read: Permission denied\n"),
            ("get closed /A", "closed: error: is a directory, not a file\n"),
        ]:
            done = self.run_kdx(arguments, prefix=prefix if os.geteuid() == 0 else ())
            self.assertEqual(done, (2, "", message))
        self.assertEqual(self.read("closed/a_kdx"), UGLY)

    def test_killed_at_any_moment(self):
        """Every file is whole whenever the process dies: as it was, or as it was to become."""
        old = UGLY + 300 * "A:\nx = 1\nEND\n"
        new = FORMATTED + 300 * "A:\n  x = 1\nEND\n"
        files = {f"d/{i}.kdx": old for i in range(300)}
        source = random.Random(3)
        half_done = 0
        for _ in range(12):
            self.write(files)
            running = subprocess.Popen([*KDX, "fmt", "-i", "d"], cwd=self.folder)
            time.sleep(source.uniform(0, 0.15))
            running.kill()
            running.wait()
            contents = {self.read(name) for name in files}
            self.assertLessEqual(contents, {old, new})
            half_done += len(contents) == 2
        self.assertGreater(half_done, 0)


class Program(KdxTest):
    def test_usage(self):
        for arguments, status, words in [
            ("--help", 0, "Example:"), ("--version", 0, "kdx 1."), ("", 2, "subcommand"),
            *((command + " --help", 0, "Example:") for command in COMMANDS),
            ("find x", 2, "--name"), ("fmt -i --check", 2, "--check"), ("manual x", 2, "x"),
            ("frob", 2, "kdx: unknown command or option: frob"), ("check --frob", 2, "--frob"),
            ("check -j 0", 2, "--jobs"), ("map --only A --without B", 2, "--without"),
            ("write --indent -1", 2, "--indent"), ("check --max-errors -1", 2, "--max-errors"),
            ("check --max-depth -1", 2, "--max-dep"), ("tree --depth 0", 2, "1 to 1000000000"),
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
        message = "kdx: standard output: cannot be written: "
        with open("/dev/full", "wb") as full:
            for arguments in ["map", "--version"]:
                self.assertEqual(self.run_kdx(arguments, SAMPLE, stdout=full),
                                 (2, "", message + "No space left on device\n"))
        reading, writing = os.pipe()
        os.close(reading)
        self.assertEqual(self.run_kdx("map", SAMPLE, stdout=writing),
                         (2, "", message + "Broken pipe\n"))
        os.close(writing)


if __name__ == "__main__":
    KDX = [os.path.abspath(sys.argv.pop(1))]
    if KDX[0].endswith(".exe"):
        KDX.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts/wine-run"))
    unittest.main()
