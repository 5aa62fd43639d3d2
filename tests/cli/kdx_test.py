"""What the tests of the built kdx share: they compare what it prints.

Every case runs in an empty directory that holds the files it names. A program for Windows runs
under Wine.
"""

import json
import os
import pathlib
import shlex
import subprocess
import sys
import tempfile
import unittest

PROJECT = pathlib.Path(__file__).resolve().parents[2]
KDX = []


def data(name):
    """The text of a worked example."""
    return (PROJECT / "tests/data" / name).read_text()


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
        if arguments.startswith("check"):  # whose output the problems are
            output, errors = errors, output
        with self.subTest(arguments=arguments, text=text[:200]):
            shown = [line.partition(":")[2] for line in errors.splitlines()
                     if ": error: " in line or ": warning: " in line]
            self.assertEqual((got, len(shown)), (status, len(problems)), errors)
            self.assertEqual(output, "" if problems else output)
            for line, problem in zip(shown, problems):
                self.assertTrue(line.startswith(problem), line)


def main():
    """Runs a file of tests: FILE KDX [TEST...]."""
    program = os.path.abspath(sys.argv.pop(1))
    KDX.extend([str(PROJECT / "scripts/wine-run")] * program.endswith(".exe") + [program])
    unittest.main()
