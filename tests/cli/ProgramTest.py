#!/usr/bin/env python3
"""kdx as a whole: its arguments, its documents, its output."""

import os
import re
import shutil
import subprocess

import kdx_test
from kdx_test import SAMPLE, KdxTest, PROJECT


class Program(KdxTest):
    def commands(self):
        """The names that the help lists."""
        _, text, _ = self.run_kdx("--help")
        names = re.findall(r"^  ([a-z]+) ", text.partition("ubcommands:\n")[2].partition("\n\n")[0],
                           re.MULTILINE)
        self.assertIn("check", names)
        return names

    def test_every_command_is_known(self):
        """The README names it, and runs of it are compared."""
        readme = (PROJECT / "README.md").read_text()
        tests = "".join(path.read_text() for path in (PROJECT / "tests/cli").glob("*Test.py"))
        for command in self.commands():
            self.assertIn(f"`{command}`", readme)
            self.assertRegex(tests, rf"\"{command}[ \"]")

    def test_usage(self):
        for arguments, status, words in [
            ("--help", 0, "Example:"), ("--version", 0, "kdx 1."), ("", 2, "subcommand"),
            *((command + " --help", 0, "Example:") for command in self.commands()),
            ("find x", 2, "--name"), ("fmt -i --check", 2, "--check"), ("manual x", 2, "x"),
            ("frobnicate", 2, "kdx: unknown command: frobnicate\n"), ("help", 0, "kdx check configs"),
            ("''", 2, "unknown command: \"\"\n"), ("chekc", 2, "kdx: unknown command: chekc; did you mean 'check'?\n"),
            ("check --strcit", 2, "kdx: unknown option: --strcit; did you mean '--strict'?\n"),
            ("check --max-error=1", 2, "--max-error; did you mean '--max-errors'?\n"),
            ("--jsn check", 2, "--jsn; did you mean '--json'?\n"), ("find --type", 2, "--type"),
            ("help ftm", 2, "kdx: there is no command ftm; did you mean 'fmt'?\n"),
            ("lsp x", 2, "x"),
            ("check -j 0", 2, "--jobs"), ("map --only A --without B", 2, "--without"),
            ("write --indent -1", 2, "--indent"), ("check --max-errors -1", 2, "--max-errors"),
            ("check --max-depth -1", 2, "--max-dep"), ("tree --depth 0", 2, "1 to 1000000000"),
        ]:
            with self.subTest(arguments=arguments):
                got, output, errors = self.run_kdx(arguments)
                self.assertEqual(got, status)
                self.assertIn(words, errors if status else output)
        for command in ["", *self.commands()]:
            self.assertEqual(self.run_kdx("help " + command), self.run_kdx(command + " --help"))

    def test_documents(self):
        """The completions and man pages are well formed and know every command and option."""
        for command in self.commands():
            _, page, _ = self.run_kdx("manual " + command)
            self.assertTrue(page.startswith(f".TH kdx\\-{command} 1 "), page)
        for shell in ["bash", "zsh", "fish"]:
            _, script, _ = self.run_kdx("completion " + shell)
            for word in [*self.commands(), "strict", "max-depth"]:
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
        self.assertEqual(self.run_kdx("map", SAMPLE, stdout=writing), (141, "", ""))
        os.close(writing)


if __name__ == "__main__":
    kdx_test.main()
