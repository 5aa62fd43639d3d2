#!/usr/bin/env python3
"""kdx check, and what every command says of files that are not right."""

import fcntl
import json
import os
import pty
import re
import struct
import subprocess
import termios
import time

import kdx_test
from kdx_test import CANNOT_STAND, KDX, SAMPLE, KdxTest


class Check(KdxTest):
    def test_problems(self):
        for text, *problems in [
            (SAMPLE,), ("",), ("A:\r\nEND\r\n",),
            ("A:\n x\\\n  y\\\n   z-\nEND\n", "4:5: error: unknown syntax: '-'"),
            ("END\nx = 1\n", "1:1: error: END closes nothing", "2:1: error: parameter 'x'"),
            ("A:\n x = 1 # c \\\n 2\nEND\n", "2:8: warning: the comment swallows"),
            (b"\xef\xbb\xbfA:\n-\nEND\n", "1:1: warning: byte order mark", "2:1: error"),
            *((start + "- x\n", "1:1: error: unknown syntax: " + shown + " cannot stand here")
              for start, shown in [("日", "'日'"), ("\u202e", "the character U+202E"), ("\1",
                                   "the byte 0x01"), ("\x85", "the character U+0085")]),
            ("A:\nEND of it\nEND\n", "2:5: error: unknown syntax: nothing but a comment may stand"),
            ("A:\n-\0\nEND\n", "2:1: error: unknown", "2:2: warning: NUL byte"),
        ]:
            self.expect_problems("check", text, int(" error" in "".join(problems)), *problems)

    def test_layout(self):
        text = "A:\n\tpré = 1 -\n\tgain -> 3\nEND\n"
        for lines in [text, text.replace("\n", "\r\n")]:
            self.expect(
                "check --max-errors 1", lines, "<stdin>:2:4: error: unknown syntax: 'é'" +
                CANNOT_STAND + " pré = 1 -\n   ^\n<stdin>: note: 1 more problem not "
                "shown (--max-errors 0 shows all)\n", 1)
        self.expect("check --json --strict", "A:\n",
                    '{"file":"<stdin>","line":1,"column":1,"severity":"warning",'
                    '"rule":"never-closed","message":"object \'A\' is never closed: its END '
                    'is missing"}\n', 1)
        _, errors, _ = self.run_kdx("check --color always", "A:\n" + 999 * "a" + "-\nEND\n")
        self.assertIn("\033[1;31merror:\033[0m unknown", errors)
        self.assertLess(len(errors), 500)
        _, _, many = self.run_kdx("fmt", 101 * "-\n")
        self.assertTrue(many.endswith("1 more problem not shown (kdx check --max-errors 0 shows "
                                      "all)\n"), many)

    def test_rules_and_formats(self):
        self.write({"a,%:b": "A:\nx=1\nx=#2\nEND\nEND\n"})
        of_file = "a,%:b:3:1: warning: parameter 'x' again: its first value, of line 2, is kept"
        parameter = (of_file + " [repeated-parameter]\nx=#2\n^\na,%:b:2:1: note: see here\nx=1\n^\n")
        for arguments, *expected in [
            ("--select repeated-parameter", parameter),
            ("--ignore hash-in-value,nul-byte --ignore unexpected-end", parameter),
            ("--select nul-byte --select unexpected-end --format github", "::error file=a%2C%25%3Ab,"
             "line=5,col=1,title=unexpected-end::END closes nothing: no object is open\n", 1),
            ("--select repeated-parameter --format json", '{"file":"a,%:b","line":3,"column":1,'
             '"severity":"warning","rule":"repeated-parameter","message":"parameter \'x\' again: its '
             'first value, of line 2, is kept","relatedLine":2,"relatedColumn":1}\n'),
            ("--select cutend", "", 2, "kdx: there is no rule cutend; did you mean 'cut-end'?\n"),
            ("--select nul-byte --ignore nul-byte", "", 2, "kdx: no rule is left to check\n"),
        ]:
            self.expect(f"check {arguments} 'a,%:b'", "", *expected)
        rules = (kdx_test.PROJECT / "docs/rules.md").read_text()
        for rule in re.findall("^### `(.*)`$", rules, re.MULTILINE):
            _, output, _ = self.run_kdx("check --explain " + rule)
            self.assertTrue(output.startswith(f"### `{rule}`\n") and output in rules, output)

    def test_fixes(self):
        self.write({"a": "\ufeffA:\nx = 1#2\ny = #3\nEND\nEND\n", "good": SAMPLE})
        self.expect("check --fix --diff a good", "", "--- a\n+++ a\n@@ -1,5 +1,4 @@\n-\ufeffA:\n-x = 1#2\n"
                    "+A:\n+x = 1 #2\n y = #3\n END\n-END\n", 1)
        self.assertEqual(self.run_kdx("check --fix --select unexpected-end a good"), (0, "", ""))
        self.assertEqual(self.read("a"), "\ufeffA:\nx = 1#2\ny = #3\nEND\n")
        self.expect_problems("check --fix --strict a", "", 1, "3:5: warning: this '#'")
        self.assertEqual(self.read("a"), "A:\nx = 1 #2\ny = #3\nEND\n")
        self.assertEqual(self.run_kdx("check --fix")[0], 2)

    def test_nesting_limit(self):
        for depth in [1000, 1001, 100000]:
            text = depth * "A:\n" + depth * "END\n"
            problems = ["1001:1: error: objects are nested deeper"] * (depth > 1000)
            self.expect_problems("check", text, len(problems), *problems)
            self.assertEqual(self.run_kdx("map", text)[0], 2 * len(problems))

    def test_files(self):
        self.write({"good": SAMPLE, "bad": "-\n", "dir/b/x.kdx": "-\n", "dir/a": "-\n", ".git/.x.kdx": ""})
        (self.folder / "empty").mkdir()
        (self.folder / "dir/loop").symlink_to("loop")
        (self.folder / "dir/gone.kdx").symlink_to("nothing")
        place = ":1:1: error: unknown syntax: '-'" + CANNOT_STAND + "-\n^\n"
        total = "1 error, 0 warnings in 1 of 2 files\n"
        for arguments, status, output, errors in [
            ("good /dev/null", 0, "", ""), ("dir good", 1, "dir/b/x.kdx" + place + total, ""),
            ("-j 1 bad missing good bad", 2, 2 * ("bad" + place) + "2 errors, 0 warnings in 2 of 4 "
             "files\n", "missing: error: cannot be read: "
             "No such file or directory\n"),
            ("empty .git dir", 2, "dir/b/x.kdx" + place, "".join(
                name + ": error: is a directory without *.kdx files\n" for name in ["empty", ".git"])),
            ("/dev/full", 2, "", "/dev/full: error: is a device that seems never to end: copy what is "
             "wanted of it to a file\n"),
            ("- -", 2, "", "kdx: the standard input (-) can be read only once\n"),
        ]:
            self.expect("check " + arguments, "", output, status, errors)

    def test_folders(self):
        names = ["a.kdx", "b/a.kdx", "b/c/é.kdx", ".h/a.kdx", ".h/.h.kdx", "b/.h/a.kdx", "b/x[1].kdx"]
        self.write({"d/" + name: "\ufeff" for name in names})
        (self.folder / "d/file.kdx").symlink_to("a.kdx")
        (self.folder / "d/folder").symlink_to("b")
        (self.folder / "link").symlink_to("d")
        for arguments, *expected in [
            ("d", "a.kdx", "b/a.kdx", "b/c/é.kdx", "b/x[1].kdx"), ("d/.h", ".h/a.kdx"),
            ("d/folder", "folder/a.kdx", "folder/c/é.kdx", "folder/x[1].kdx"),
            ("d/file.kdx --exclude '*'", "file.kdx"), ("d/.h/.h.kdx", ".h/.h.kdx"),
            ("d --exclude b/", "a.kdx"), ("d --exclude '?.kdx'", "b/x[1].kdx"),
            ("d --exclude 'b/*.kdx' --exclude 'x*'", "a.kdx", "b/c/é.kdx"),
            ("d --exclude '**/[!b-z].k*x'", "a.kdx", "b/x[1].kdx"),
            ("d/ --exclude 'b/**'", "a.kdx"), ("d --exclude 'b/*/?.kdx' --exclude a.kdx",
                                              "b/x[1].kdx"),
            ("d --exclude 'b/x[[]1]*' --exclude '[a]*'", "b/c/é.kdx"),
        ]:
            with self.subTest(arguments=arguments):
                status, output, _ = self.run_kdx("check --json --strict " + arguments)
                self.assertEqual((status, [json.loads(line)["file"] for line in output.splitlines()]),
                                 (1, ["d/" + name for name in expected]))

    def test_progress(self):
        """Stays within the terminal's width, and away from one that does not follow it."""
        os.mkfifo(self.folder / "slow")
        for terminal, expected in [("xterm", {"\r\033[Kkdx: 0 of 1 file, at sl", "\r\033[K"}),
                                   ("dumb", {""})]:
            ours, its = pty.openpty()
            fcntl.ioctl(its, termios.TIOCSWINSZ, struct.pack("HHHH", 9, 24, 0, 0))
            running = subprocess.Popen([*KDX, "check", "slow"], cwd=self.folder, stderr=its,
                                       env={**os.environ, "TERM": terminal})
            with open(self.folder / "slow", "wb"):
                time.sleep(1.3)
            running.wait()
            os.write(its, b"$")
            got = "".join(iter(lambda: os.read(ours, 1).decode(), "$"))
            self.assertEqual(set(re.findall("\r[^\r]*|^$", got)), expected, got)

    def test_without_room_for_threads(self):
        self.write({f"d/{i}.kdx": "END\n" for i in range(20)})
        prefix = ["sh", "-c", 'ulimit -v 40000; exec "$@"', "sh"]
        if self.run_kdx("--version", prefix=prefix)[0] == 0:  # a sanitizer takes more
            self.assertEqual(self.run_kdx("-j16 check d", prefix=prefix),
                             self.run_kdx("-j1 check d"))


if __name__ == "__main__":
    kdx_test.main()
