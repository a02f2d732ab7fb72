"""Does what the first page shows: its commands give the answers beside them, its code compiles.

usage: first_page_test.py ROOT PROGRAMS COMPILER FLAG... -- CASE...

PROGRAMS is the directory of ormaagent and ormasim, the flags are those that find the headers.
"""

import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile
import unittest

ROOT, PROGRAMS, COMPILER = (sys.argv.pop(1) for _ in range(3))
FLAGS = sys.argv[1:sys.argv.index("--")]
del sys.argv[1:sys.argv.index("--") + 1]
from pages import Page  # noqa: E402

PAGE = Page(ROOT, "README.md")


def shown():
    """The commands of the page's session, each with the lines below it."""
    block = next(block for block in PAGE.blocks if block.lines[0].startswith("$ ormasim"))
    steps = []
    for line in block.lines:
        if line.startswith("$ "):
            steps.append((line[2:], []))
        else:
            steps[-1][1].append(line)
    return steps


class Commands(unittest.TestCase):
    def test_answers_are_those_that_the_page_shows(self):
        directory = self.enterContext(tempfile.TemporaryDirectory())
        environment = {**os.environ, "PATH": f"{PROGRAMS}:{os.environ['PATH']}"}
        for command, answer in shown():
            words = shlex.split(command.removesuffix("&"))
            if command.endswith("&"):
                server = self.enterContext(subprocess.Popen(
                    words, cwd=directory, env=environment, stdout=subprocess.PIPE, text=True))
                self.addCleanup(server.terminate)
                lines = [server.stdout.readline()]
            else:
                outcome = subprocess.run(words, cwd=directory, env=environment, timeout=60,
                                         capture_output=True, text=True, check=False)
                self.assertEqual(outcome.returncode, 0, outcome.stderr)
                lines = outcome.stdout.splitlines()
            with self.subTest(command=command):
                self.assertEqual([without_ports(line) for line in lines],
                                 [without_ports(line) for line in answer])


def without_ports(line):
    return re.sub(r'(Port": )\d+', r"\1N", line).rstrip()


class Code(unittest.TestCase):
    def test_compiles(self):
        code = next(block.lines for block in PAGE.blocks if block.language == "cpp")
        with tempfile.TemporaryDirectory() as directory:
            source = pathlib.Path(directory, "example.cpp")
            source.write_text("\n".join(code) + "\n", encoding="utf-8")
            outcome = subprocess.run(
                [COMPILER, "-std=c++14", "-Wall", "-Wextra", "-Werror", "-fsyntax-only", *FLAGS,
                 source], capture_output=True, text=True, check=False)
            self.assertEqual(outcome.returncode, 0, outcome.stderr)


if __name__ == "__main__":
    unittest.main()
