#!/usr/bin/env python3
"""How kdx changes a file in its place: what stays, and what other programs and signals do to it.

Ends a run at few moments; where KIV_THOROUGH is set, at two hundred.
"""

import fcntl
import os
import random
import resource
import signal
import struct
import subprocess
import time
import unittest

import kdx_test
from kdx_test import FORMATTED, KDX, UGLY, KdxTest

ACCESS_LIST = struct.pack("<I" + 5 * "HHI", 2, 1, 6, 2**32 - 1, 2, 6, 1234, 4, 4, 2**32 - 1, 16, 6,
                          2**32 - 1, 32, 4, 2**32 - 1)  # user::rw user:1234:rw group::r mask::rw


class InPlace(KdxTest):
    def setUp(self):
        super().setUp()
        self.write({"file": UGLY})
        self.file = self.folder / "file"

    def expect_replaced(self, prefix=()):
        self.assertEqual(self.run_kdx("fmt -i file", prefix=prefix), (0, "", ""))
        self.assertEqual(self.read("file"), FORMATTED)
        self.assertEqual([n for n in os.listdir(self.folder) if n.startswith(".kdx")], [])

    def expect_left_alone(self, message):
        status, output, errors = self.run_kdx("fmt -i file")
        self.assertEqual((status, output, self.read("file")), (2, "", UGLY))
        self.assertTrue(errors.startswith("file: error: " + message), errors)

    def test_hard_link_stays(self):
        os.link(self.file, self.folder / "other")
        self.expect_replaced()
        self.assertEqual(self.file.stat().st_ino, (self.folder / "other").stat().st_ino)

    def test_attributes_stay(self):
        for name, value in [("user.note", b"kept"), ("system.posix_acl_access", ACCESS_LIST)]:
            with self.subTest(name=name):
                self.write({"file": UGLY})
                try:
                    os.setxattr(self.file, name, value)
                except OSError as error:
                    self.skipTest(f"no such attribute here: {error}")
                before = self.file.stat().st_mode
                self.expect_replaced()
                self.assertEqual(os.getxattr(self.file, name), value)
                self.assertEqual(self.file.stat().st_mode, before)

    @unittest.skipUnless(os.geteuid() == 0, "needs root to give a file away")
    def test_owner_stays_where_it_cannot_be_given(self):
        os.chown(self.file, 1234, 4321)
        number = self.file.stat().st_ino
        self.expect_replaced(prefix=["setpriv", "--bounding-set=-chown", "--inh-caps=-chown"])
        after = self.file.stat()
        self.assertEqual((after.st_uid, after.st_gid, after.st_ino), (1234, 4321, number))

    def test_what_killed_runs_left(self):
        """Temporary files go, but those of living processes; a safety copy is told of."""
        self.write({".kdx-Abc123": "half"})
        self.expect_replaced()
        self.write({"file": UGLY, ".kdx-living": "", ".kdx-other": "", ".kdx-a.kdx1": ""})
        with open(self.folder / ".kdx-living") as living:
            fcntl.flock(living, fcntl.LOCK_EX)
            self.assertEqual(self.run_kdx("fmt -i file")[0], 0)
        self.assertEqual(sorted(os.listdir(self.folder)),
                         [".kdx-a.kdx1", ".kdx-living", ".kdx-other", "file"])
        self.write({"file": UGLY})
        self.write({f".kdx-saved-{self.file.stat().st_ino}": UGLY})
        self.expect_left_alone("is left alone: another run is writing to it, or died meanwhile")

    def stopped_after_reading(self, size):
        """A run that has read the file and has not written it all; None when it was too quick."""
        running = subprocess.Popen([*KDX, "fmt", "-i", "file"], cwd=self.folder,
                                   stderr=subprocess.PIPE)

        def count(name):
            with open(f"/proc/{running.pid}/io") as lines:
                return next(int(line.split()[1]) for line in lines if line.startswith(name))

        while running.poll() is None and count("rchar:") < size:
            pass
        running.send_signal(signal.SIGSTOP)
        time.sleep(0.01)
        if running.poll() is None and count("wchar:") < size // 2:
            return running
        running.kill()
        running.communicate()
        return None

    @unittest.skipUnless(os.path.exists("/proc/self/io"), "needs to see what a process has read")
    def test_changed_after_it_was_read(self):
        old = 20000 * UGLY

        def change_a_byte():
            times = self.file.stat()
            with open(self.file, "r+b") as file:
                file.write(b"#")
            os.utime(self.file, ns=(times.st_atime_ns, times.st_mtime_ns))

        def replace():
            self.write({"new": old})
            os.replace(self.folder / "new", self.file)

        for change in [change_a_byte, replace, lambda: self.write({"file": old + "x = 1\n"})]:
            running = None
            while running is None:
                self.write({"file": old})
                running = self.stopped_after_reading(len(old))
            change()
            changed = self.read("file")
            running.send_signal(signal.SIGCONT)
            errors = running.communicate()[1].decode()
            self.assertEqual((running.returncode, errors), (
                2, "file: error: is left alone: another program changed it after it was read\n"))
            self.assertEqual((self.read("file"), os.listdir(self.folder)), (changed, ["file"]))

    def test_runs_take_turns(self):
        with open(self.file) as held:
            fcntl.flock(held, fcntl.LOCK_EX)
            running = subprocess.Popen([*KDX, "fmt", "-i", "file"], cwd=self.folder)
            with self.assertRaises(subprocess.TimeoutExpired):
                running.wait(0.5)
        self.assertEqual((running.wait(), self.read("file")), (0, FORMATTED))

    def test_named_twice(self):
        self.write({"file": 20000 * UGLY})
        self.expect("fmt -i -j 4 file file ./file file")

    def end_at_any_moment(self, arguments, number, old, new):
        """Every file is whole whenever the process ends: as it was, or as it was to become. What
        one run leaves, the next one sweeps."""
        files = {f"d/{i}.kdx": old for i in range(100, 200)}
        source = random.Random(3)
        ends = 200 if "KIV_THOROUGH" in os.environ else 6
        half_done = leaving = 0
        for _ in range(ends):
            self.write(files)
            late = self.folder / f"d/{source.randrange(100, 190)}.kdx"
            before = late.stat().st_ino
            running = subprocess.Popen([*KDX, *arguments], cwd=self.folder)
            while running.poll() is None and late.stat().st_ino == before:
                time.sleep(source.uniform(0, 0.002))
            running.send_signal(number)
            self.assertIn(running.wait(), [0, -number])
            contents = {self.read(name) for name in files}
            self.assertLessEqual(contents, {old, new})
            half_done += len(contents) == 2
            left = len(os.listdir(self.folder / "d")) - len(files)
            self.assertLessEqual(left, os.cpu_count() if number == signal.SIGKILL else 0)
            leaving += left > 0
        self.assertGreater(half_done, 0)
        print(f"{arguments[0]}, signal {number}: {ends} ends, {half_done} with some files changed, "
              f"{leaving} with a temporary file left", flush=True)

    def test_ended_at_any_moment(self):
        old = UGLY + 300 * "A:\nx = 1\nEND\n"
        formatted = FORMATTED + 300 * "A:\n  x = 1\nEND\n"
        changed = old.replace("x = 1", "x = 2", 1)
        for number in [signal.SIGKILL, signal.SIGTERM]:
            for arguments, new in [("fmt -i d", formatted), ("set -i d /A x=2", changed)]:
                with self.subTest(number=number, arguments=arguments):
                    self.end_at_any_moment(arguments.split(), number, old, new)
        self.write({"d/100.kdx": old})
        self.assertEqual(self.run_kdx("fmt -i d")[0], 0)
        self.assertEqual([n for n in os.listdir(self.folder / "d") if n.startswith(".")], [])

    def test_signal_of_a_limit(self):
        self.write({"file": 1000 * UGLY})
        done = subprocess.run([*KDX, "fmt", "-i", "file"], cwd=self.folder, capture_output=True,
                              preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE,
                                                                    (4096, 4096)))
        self.assertEqual(done.returncode, -signal.SIGXFSZ)
        self.assertEqual((os.listdir(self.folder), self.read("file")), (["file"], 1000 * UGLY))

    def test_ignored_signals_stay_ignored(self):
        self.write({f"d/{i}.kdx": UGLY for i in range(300)})
        running = subprocess.Popen([*KDX, "fmt", "-i", "d"], cwd=self.folder,
                                   preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN))
        while running.poll() is None:
            running.send_signal(signal.SIGHUP)
            time.sleep(0.01)
        self.assertEqual(self.run_kdx("fmt --check d"), (0, "", ""))


if __name__ == "__main__":
    kdx_test.main()
