"""Does what the pages show: their commands give the answers beside them, their code compiles.

usage: session_test.py ROOT PROGRAMS COMPILER FLAG... -- CASE...

PROGRAMS is the directory of ormaagent and ormasim, the flags are those that find the headers.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

ROOT, PROGRAMS, COMPILER = (sys.argv.pop(1) for _ in range(3))
FLAGS = sys.argv[1:sys.argv.index("--")]
del sys.argv[1:sys.argv.index("--") + 1]
from pages import all_pages  # noqa: E402

PAGES = all_pages(ROOT)
REST = "…"  # stands for the lines that are left out


def session(page):
    """The commands that a page shows, each with the lines below it."""
    steps = []
    for block in page.blocks:
        if not block.lines or not block.lines[0].startswith("$ "):
            continue
        for line in block.lines:
            if line.startswith("$ "):
                steps.append((line[2:], []))
            else:
                steps[-1][1].append(line)
    return steps


def plain(line):
    """A line without what is another one each time."""
    return re.sub(r'(Port": )\d+', r"\1N", line).rstrip()


class Commands(unittest.TestCase):
    """The other pages ask about the network that the first one makes and serves."""

    def run_session(self, steps):
        directory = self.enterContext(tempfile.TemporaryDirectory())
        environment = {**os.environ, "PATH": f"{PROGRAMS}:{os.environ['PATH']}"}
        for command, answer in steps:
            if command.endswith(" &"):
                server = self.enterContext(subprocess.Popen(
                    command.removesuffix(" &").split(), cwd=directory, env=environment,
                    stdout=subprocess.PIPE, text=True))
                self.addCleanup(server.terminate)
                lines = [server.stdout.readline()]
            else:
                outcome = subprocess.run(
                    ["bash", "-c", command], cwd=directory, env=environment, timeout=100,
                    capture_output=True, text=True, check=False)
                self.assertEqual(outcome.returncode, 0, outcome.stderr)
                lines = outcome.stdout.splitlines()
            if answer and answer[-1] == REST:
                answer = answer[:-1]
                lines = lines[:len(answer)]
            with self.subTest(command=command):
                self.assertEqual([plain(line) for line in lines], [plain(line) for line in answer])

    def test_answers_are_those_that_the_pages_show(self):
        first = session(PAGES["README.md"])
        self.run_session(first)
        others = [steps for path, page in PAGES.items()
                  if path != "README.md" and (steps := session(page))]
        self.assertGreater(len(others), 1)
        for steps in others:
            self.run_session(first[:2] + steps)


class Code(unittest.TestCase):
    def test_of_the_first_page_compiles(self):
        code = next(block.lines for block in PAGES["README.md"].blocks if block.language == "cpp")
        with tempfile.TemporaryDirectory() as directory:
            source = pathlib.Path(directory, "example.cpp")
            source.write_text("\n".join(code) + "\n", encoding="utf-8")
            outcome = subprocess.run(
                [COMPILER, "-std=c++14", "-Wall", "-Wextra", "-Werror", "-fsyntax-only", *FLAGS,
                 source], capture_output=True, text=True, check=False)
            self.assertEqual(outcome.returncode, 0, outcome.stderr)


if __name__ == "__main__":
    unittest.main()
