#!/usr/bin/env python3
"""kdx fmt, and how a file is changed in its place."""

import os
import random
import shutil
import subprocess
import unittest

import kdx_test
from kdx_test import FORMATTED, UGLY, KdxTest


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

    def test_editor_config(self):
        text = "A:\nx = 1\nEND\n"
        wide = "root = true\n[*]\nindent_size = 9\n[{a,b}*.kdx]\nindent_size = 3\n"
        self.write({".editorconfig": wide, "d/.editorconfig": "[x[1-3].k?x]\nindent_size=unset\n"
                    "[t.*]\nindent_size = tab\ntab_width = 5\n[{4..6}.kdx]\nindent_size = 65\n",
                    "bad/.editorconfig": "what\n"})
        for name, width in [("a.kdx", 3), ("c.kdx", 9), ("d/b.kdx", 3), ("d/x2.kdx", 2),
                            ("d/t.kdx", 5), ("d/5.kdx", 2), ("d/gone/../5.kdx", 2), ("d/7.kdx", 9)]:
            self.expect("fmt --stdin-filename " + name, text, f"A:\n{width * ' '}x = 1\nEND\n")
        self.write({"d/b.kdx": text})
        self.expect("fmt d", "", "A:\n   x = 1\nEND\n")
        self.expect("fmt", text, "A:\n  x = 1\nEND\n")
        self.expect_problems("fmt --stdin-filename d/b.kdx", "-\n", 2, "1:1: error: unknown")
        self.expect("fmt --stdin-filename bad/x.kdx", text, "", 2, "<stdin>: error: cannot be laid out: "
                    f"line 1 of {self.folder.resolve()}/bad/.editorconfig is no setting\n")

    @unittest.skipUnless(shutil.which("git"), "needs git to apply patches")
    def test_diff_is_a_patch(self):
        source = random.Random(7)
        for _ in range(20):
            text = "".join(source.choice(["x = 1\n", "  x = 1\n", "A:\n", "\n", " \n"])
                           for _ in range(40))
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

    def test_names_in_other_scripts(self):
        """In arguments, in folders, in messages, and in place: beyond the code page on Windows."""
        path = os.path.join("größe", "Ж-日本.kdx")
        self.write({path: UGLY, "größe/Я.kdx": "-\n", "日本/Ж-日本.kdx": FORMATTED})
        for arguments in [f"fmt -i '{path}'", "diff größe 日本 --exclude Я*",
                          f"set -i '{path}' /Sample:s1 gain=11"]:
            self.expect(arguments)
        self.assertEqual(self.read(path), FORMATTED.replace("= 10", "= 11"))
        errors = self.run_kdx("fmt --check größe 日本/Я.kdx")[2].replace("\\", "/")
        for place in ["größe/Я.kdx:1:1: error: ", "日本/Я.kdx: error: cannot be read: No such file"]:
            self.assertIn(place, errors)

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
            ("find closed --name A", "closed: error: is a directory, not a file\n"),
        ]:
            done = self.run_kdx(arguments, prefix=prefix if os.geteuid() == 0 else ())
            self.assertEqual(done, (2, "", message))
        self.assertEqual(self.read("closed/a_kdx"), UGLY)


if __name__ == "__main__":
    kdx_test.main()
