#!/usr/bin/env python3
"""What kdx leaves behind when a system call fails or is its last: every call of every kind in turn.

Runs one command, behind its start; where KIV_THOROUGH is set, all that write, from their first call.
"""

import functools
import itertools
import os
import shutil
import subprocess
import unittest

import kdx_test
from kdx_test import UGLY, KdxTest

OLD = UGLY.replace("END\n", "END # Wrong:\n", 1)
CALLS = {  # and how each one fails
    "write": "ENOSPC", "openat": "EIO", "mmap": "ENOMEM", "clone,clone3": "EAGAIN",
    "rename": "EIO", "fsync": "EIO", "fchmod": "EPERM", "fsetxattr": "ENOSPC",
    "flistxattr": "EIO", "link": "EMLINK", "read": "EIO", "ftruncate": "EIO", "lseek": "EIO",
    "newfstatat": "EIO", "flock": "ENOLCK", "getdents64": "EIO"}
KILL = "signal=KILL:when={}"
FIRST = {"mmap": 2}  # without the first one, the loader crashes
COMMANDS = {  # and their input
    "fmt -i d": "", "set -i d /Sample:s1 gain=20": "", "unset -i d /Sample:s1 gain": "",
    "rename -i d /Sample:s1 s2": "", "move -i d /Sample:s1/Channel:A --into ''": "",
    "edit -i d": '{"unset": "/Sample:s1", "name": "gain"}\n', "check --fix d": "",
    "-j 2 fmt -i d": "", "map d/a.kdx": "", "fmt d": "", "events d/a.kdx": "",
    "write": '{"/Sample:s1": {"gain": "10"}}\n'}
THOROUGH = "KIV_THOROUGH" in os.environ


def succeeds(*command):
    return shutil.which(command[0]) is not None and subprocess.run(
        command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0


class Fault(KdxTest):
    """One file that is replaced, and one that is written to, as it has another name."""

    def setUp(self):
        super().setUp()
        self.old = OLD
        self.runs = 0

    def begin(self):
        shutil.rmtree(self.folder / "d", ignore_errors=True)
        (self.folder / "other").unlink(missing_ok=True)
        self.write({"d/a.kdx": self.old, "d/b.kdx": self.old})
        os.link(self.folder / "d/b.kdx", self.folder / "other")

    def contents(self):
        return [self.read("d/a.kdx"), self.read("d/b.kdx")]

    def left_behind(self):
        return sorted(set(os.listdir(self.folder / "d")) - {"a.kdx", "b.kdx"})

    def kept(self, wanted):
        """The safety copies. Without one, a file is as it was or as it was to become."""
        copies = [name for name in self.left_behind() if name.startswith(".kdx-saved-")]
        self.assertEqual([self.read("d/" + name) for name in copies], len(copies) * [self.old])
        self.assertLessEqual(set(self.contents()[:1 if copies else 2]), {self.old, wanted})
        return copies

    def expect_told(self, done, output, wanted, silent=False):
        """Either all is done, or it is told what is not, and which safety copy was left behind."""
        status, shown, errors = done
        copies = self.kept(wanted)
        self.assertIn(status, [0, 2, 127], errors)
        if status == 0:
            self.assertEqual((shown, self.contents()), (output, 2 * [wanted]))
        elif not silent:
            self.assertTrue(errors)
            self.assertEqual([name for name in copies if name not in errors], [])
        self.assertEqual(self.left_behind(), copies)

    def expect_swept(self, wanted):
        """The next run in the folder removes what was left, but a safety copy."""
        copies = self.kept(wanted)
        self.write({"d/c.kdx": self.old})
        self.assertEqual(self.run_kdx("fmt -i d/c.kdx"), (0, "", ""))
        self.assertEqual(self.left_behind(), copies + ["c.kdx"])

    def trace(self, arguments, *options):
        log = self.folder / "log"
        log.unlink(missing_ok=True)
        done = self.run_kdx(arguments if "-j" in arguments else "-j 1 " + arguments,
                            COMMANDS.get(arguments, ""),
                            prefix=["strace", "-f", "-qq", "-o", str(log), *options])
        return done, log.read_text(errors="replace")

    def numbers(self, call):
        """Those of the calls that are to meet a fault."""
        if THOROUGH:
            return itertools.count(FIRST.get(call, 1))
        return itertools.count(max(1, self.trace("--version", "-e", call)[1].count("(")))

    def sweep(self, arguments, call, fault, then):
        for number in self.numbers(call):
            inject = f"inject={call}:{fault.format(number)}"
            self.begin()
            if call == "fsetxattr":
                os.setxattr(self.folder / "d/a.kdx", "user.note", b"kept")
            done, log = self.trace(arguments, "-e", call, "-e", inject)
            if "INJECTED" not in log and "killed by SIGKILL" not in log:
                return
            self.runs += 1
            with self.subTest(arguments=arguments, inject=inject):
                then(done)

    def sweep_all(self, arguments):
        self.begin()
        status, output, errors = self.run_kdx(arguments, COMMANDS[arguments])
        wanted = self.contents()[0]
        self.assertEqual((status, errors, self.contents()), (0, "", 2 * [wanted]))
        for call, error in CALLS.items():
            fails = f"error={error}:when={{}}"
            expect_told = functools.partial(self.expect_told, output=output, wanted=wanted)
            self.sweep(arguments, call, KILL, lambda _: self.expect_swept(wanted))
            self.sweep(arguments, call, fails, expect_told)
            if THOROUGH:  # from the n-th on, none succeeds, nor is a message written
                self.sweep(arguments, call, fails + "+",
                           functools.partial(expect_told, silent=call == "write"))
        self.sweep(arguments, "unlink", KILL, lambda _: self.expect_swept(wanted))
        self.sweep(arguments, "unlink", "error=EIO:when={}", lambda _: self.kept(wanted))

    @unittest.skipUnless(succeeds("strace", "true"), "needs strace, and leave to trace")
    def test_of_calls(self):
        for arguments in COMMANDS if THOROUGH else ["fmt -i d"]:
            before = self.runs
            self.sweep_all(arguments)
            print(f"{arguments}: {self.runs - before} faults", flush=True)

    @unittest.skipUnless(os.geteuid() == 0, "needs root to mount")
    def test_full_file_system(self):
        """With room for no page, for one, and so on until there is enough."""
        self.folder = self.folder / "small"
        self.folder.mkdir()
        if not succeeds("mount", "-t", "tmpfs", "-o", "size=1M", "small", str(self.folder)):
            self.skipTest("no leave to mount")
        self.addCleanup(subprocess.run, ["umount", self.folder], check=True)
        self.old = OLD + 3000 * "A:\nx=1\nEND\n"
        self.begin()
        self.assertEqual(self.run_kdx("fmt -i d"), (0, "", ""))
        wanted = self.read("d/a.kdx")
        statuses = []
        while 0 not in statuses:
            self.begin()
            room = os.statvfs(self.folder)
            self.write({"filler": bytes((room.f_bavail - len(statuses)) * room.f_bsize)})
            with self.subTest(pages=len(statuses)):
                done = self.run_kdx("fmt -i d")
                statuses.append(done[0])
                self.expect_told(done, "", wanted)
            (self.folder / "filler").unlink()
        self.assertGreater(len(statuses), 10)


if __name__ == "__main__":
    kdx_test.main()
