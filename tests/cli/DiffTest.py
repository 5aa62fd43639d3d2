#!/usr/bin/env python3
"""What two texts say differently, between files, between folders, and in git."""

import subprocess
import time

import kdx_test
from kdx_test import NESTED, KdxTest

BEFORE = "! v\nS: s # c\n  x = 1\n  y = 1\n  > go # c\nEND\nT: T\nEND\n"
AFTER = "\n# c\n! v\nS: s\ny=\\\n1\n> go\n> stop\nx=2\nEND\nT:\nEND\n"


class Diff(KdxTest):
    def test_of_files(self):
        self.write({"a": BEFORE, "b": AFTER, "f": NESTED,
                    "same": "# c\n" + NESTED.replace("  ", ""),
                    "g": NESTED.replace("10", "11").replace(": B", ": C"), "bad": "END\n",
                    "twice": "A:\nx=1\nx=2\nEND\nA:\n> b\n> a\n> b\nEND\n",
                    "once": "A:\n> a\n> b\n> b\nx=1\nEND\n", "less": "A:\n> a\n> b\nx=1\nEND\n",
                    "slash": "A: b/C\nx=1\nEND\n", "none": "",
                    "latin": b"B:\nx = \xb0\nEND\n", "latin2": b"B:\nx = \xb0\ny = 1\nEND\n"})
        bad = "bad:1:1: error: END closes nothing: no object is open [unexpected-end]\nEND\n^\n"
        for arguments, output, *failure in [
            ("f bad", "", 2, bad), ("f same", ""), ("--ignore-order once twice", ""),
            ("- -", "", 2, "kdx: the standard input (-) can be read only once\n"),
            ("f", "", 2, "kdx: diff takes two files, or two folders\n"),
            ("f .", "", 2, "kdx: a file cannot be compared with a folder\n"),
            ("f/missing .", "", 2, "kdx: there is no file or folder f/missing\n"),
            ("--git f g", "", 2,
             "kdx: --git is for git: it takes the arguments of a diff driver\n"),
            ("a b", "     /S:s\n-  3   x = 1\n+  8   > stop\n+  9   x = 2\n", 1),
            ("--ignore-order a b", "     /S:s\n-  3   x = 1\n+  9   x = 2\n+  8   > stop\n", 1),
            ("--ignore-order once less", "    /A\n- 4   > b\n", 1),
            ("f g", "     /Sample:s1\n-  2   Rate = 10\n+  2   Rate = 11\n"
             "-  9 /Sample:s1/Channel:B\n- 10   Gain = 4\n"
             "+  9 /Sample:s1/Channel:C\n+ 10   Gain = 4\n", 1),
            ("--json f g", '{"change":"changed","path":"/Sample:s1","name":"Rate","before":"10",'
             '"after":"11","beforeLine":2,"afterLine":2}\n'
             '{"change":"removed","path":"/Sample:s1/Channel:B","beforeLine":9}\n'
             '{"change":"removed","path":"/Sample:s1/Channel:B","name":"Gain","before":"4",'
             '"beforeLine":10}\n'
             '{"change":"added","path":"/Sample:s1/Channel:C","afterLine":9}\n'
             '{"change":"added","path":"/Sample:s1/Channel:C","name":"Gain","after":"4",'
             '"afterLine":10}\n', 1),
            ("--json once less",
             '{"change":"removed","path":"/A","action":"> b","beforeLine":4}\n', 1),
            ("none slash", "+ 1 /A:b/C\n+ 2   x = 1\n", 1,
             "slash: note: in /A:b/C a '/' belongs to a name: other objects may have the same "
             "path\n"),
            ("--json latin latin2", '{"change":"added","path":"/B","name":"y","after":"1",'
             '"afterLine":3}\n', 1),
            ("--json none latin", "", 2,
             '{"file":"latin","line":2,"column":5,"severity":"error","rule":"no-utf8","message":'
             '"/B, x: the byte 0xB0 is no UTF-8, as JSON must be; convert the file first, as with '
             'iconv -f LATIN1 -t UTF-8"}\n'),
        ]:
            self.expect("diff " + arguments, "", output, *failure)

    def test_of_folders(self):
        self.write({"a/x.kdx": BEFORE, "a/s/y.kdx": BEFORE, "a/z.kdx": BEFORE, "a/same.kdx": BEFORE,
                    "b/x.kdx": BEFORE.replace("1", "2", 1), "b/s/y.kdx": "! v\n", "b/0.kdx": "",
                    "b/same.kdx": BEFORE.replace("  ", " ")})
        self.expect("diff a b", "", "only in b: 0.kdx\n--- a/s/y.kdx\n+++ b/s/y.kdx\n- 2 /S:s\n"
                    "- 3   x = 1\n- 4   y = 1\n- 5   > go\n- 7 /T\n--- a/x.kdx\n+++ b/x.kdx\n"
                    "    /S:s\n- 3   x = 1\n+ 3   x = 2\nonly in a: z.kdx\n", 1)
        self.expect("diff --exclude [xz].kdx --exclude s/ a b", "", "only in b: 0.kdx\n", 1)
        _, output, _ = self.run_kdx("diff --json a b")
        self.assertIn('{"file":"0.kdx","change":"added"}\n{"file":"s/y.kdx","change":"removed",'
                      '"path":"/S:s","beforeLine":2}\n', output)

    def test_takes_time_in_proportion(self):
        """Of statements that repeat, change places, or have nothing in common."""
        count = 20000
        numbered = [f"x = {i}\n" for i in range(count)]
        for before, after in [("x = 1\n" * count, "y = 1\nx = 1\n" * count),
                              ("x = 1\ny = 1\n" * count, "y = 1\ny = 1\nx = 1\n" * count),
                              ("".join(numbered), "".join(reversed(numbered))),
                              ("".join(numbered), "z = 1\n" * count)]:
            self.write({"a": "A:\n" + before, "b": "A:\n" + after})
            begin = time.monotonic()
            self.assertEqual(self.run_kdx("diff a b")[0], 1)
            self.assertLess(time.monotonic() - begin, 20)

    def git(self, arguments):
        return subprocess.run(["git", "-c", "user.name=n", "-c", "user.email=e",
                               *arguments.split()], cwd=self.folder, check=True, capture_output=True, text=True).stdout

    def test_in_git(self):
        self.git("init -q")
        subprocess.run(["git", "config", "diff.kdx.command", f"'{kdx_test.KDX[-1]}' diff --git --"],
                       cwd=self.folder, check=True)
        self.write({".gitattributes": "*.kdx diff=kdx\n", "a.kdx": BEFORE, "gone.kdx": "! w\n",
                    "sub/moved.kdx": NESTED, "same.kdx": NESTED * 2})
        self.git("add .")
        self.git("commit -qm one")
        self.write({"a.kdx": BEFORE.replace("# c", "# d")})
        self.assertEqual(self.git("diff"), "--- a/a.kdx\n+++ b/a.kdx\n  only comments or layout\n")
        self.write({"a.kdx": BEFORE.replace("x = 1", "x = 2"), "new.kdx": "no KDX\nEND\n",
                    "-i.kdx": "A:\n" * 1001,
                    "sub/moved.kdx": NESTED.replace("10", "11")})
        (self.folder / "a.kdx").chmod(0o755)
        self.git("rm -q gone.kdx")
        self.git("mv same.kdx renamed.kdx")
        self.git("mv sub/moved.kdx moved.kdx")
        self.git("add .")
        changes = ("--- /dev/null\n+++ b/-i.kdx\n  objects are nested deeper than 1000 levels; "
                   "--max-depth allows more\n", "old mode 100644\nnew mode 100755\n--- a/a.kdx\n+++ b/a.kdx\n    /S:s\n- 3   x = 1\n+ 3   x = 2\n"
                   "--- a/gone.kdx\n+++ /dev/null\n- 1 ! w\n", "+++ b/moved.kdx\n     /Sample:s1\n",
                   "--- /dev/null\n+++ b/new.kdx\n+ 1 no KDX\n+ 2 END\n",
                   "similarity index 100%\nrename from same.kdx\nrename to renamed.kdx\n")
        shown = [self.git("diff --cached")]
        self.git("commit -qm two")
        shown += [self.git(command) for command in ["log -p -1 --ext-diff", "show --ext-diff"]]
        for output in shown:
            for change in changes:
                self.assertIn(change, output)
        self.git("checkout -qb other HEAD~1")
        self.write({"a.kdx": BEFORE.replace("x = 1", "x = 3")})
        self.git("commit -qam three")
        with self.assertRaises(subprocess.CalledProcessError):
            self.git("merge -q -")
        self.assertIn("* unmerged: a.kdx\n", self.git("diff --cached"))


if __name__ == "__main__":
    kdx_test.main()
