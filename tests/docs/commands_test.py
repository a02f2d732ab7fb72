"""Holds the pages of the programs to their command lines.

usage: commands_test.py ROOT ORMAAGENT ORMASIM
"""

import pathlib
import re
import subprocess
import sys
import unittest

ROOT, AGENT, SIMULATOR = (pathlib.Path(sys.argv.pop(1)) for _ in range(3))
from pages import CODE, Page  # noqa: E402

OPTION = re.compile(r"--[a-z][a-z-]*")
COMMON = {"--help", "--version"}


class Program:
    def __init__(self, path):
        self.path = path
        self.options = {}  # by command: the words of its own help
        self.groups = set()
        self.look([])

    def look(self, words):
        text = subprocess.run([self.path, *words, "--help"], check=True, capture_output=True,
                              text=True).stdout
        name = " ".join(words)
        own = re.findall(r"^ +(?:-[a-z],)?(--[a-z][a-z-]*)", text, re.M)
        self.options[name] = set(own) - COMMON
        below = text.partition("Subcommands:\n")[2].partition("\n\n")[0]
        for command in re.findall(r"^  ([a-z][a-z-]*)", below, re.M):
            self.groups.add(name)
            self.look([*words, command])

    def commands(self):
        return set(self.options) - self.groups


def options_in(texts):
    return {option for text in texts for option in OPTION.findall(text)} - COMMON


class Agent(unittest.TestCase):
    program = Program(AGENT)
    page = Page(ROOT, "docs/agent.md")

    def test_table_has_every_command_and_no_other(self):
        rows = self.page.table("command", "operation", "fields of a record")
        told = {" ".join(re.match(r"[a-z-]+(?: [a-z][a-z-]*)*", text)[0].split())
                for row in rows for text in CODE.findall(row[0])}
        self.assertEqual(told, self.program.commands())

    def test_options_are_those_of_the_program(self):
        own = [text for text in self.page.code() if not text.startswith("ormasim")]
        self.assertEqual(options_in(own), set().union(*self.program.options.values()))


class Simulator(unittest.TestCase):
    program = Program(SIMULATOR)
    page = Page(ROOT, "docs/simulator.md")

    def test_every_command_has_a_section_with_its_options(self):
        sections = re.split(r"^## ", "\n".join(self.page.prose), flags=re.M)
        texts = {section.split("\n", 1)[0]: section for section in sections}
        for command in self.program.commands():
            with self.subTest(command=command):
                self.assertIn(command, texts)
                self.assertEqual(self.program.options[command]
                                 - options_in(CODE.findall(texts[command])), set())

    def test_options_are_those_of_the_program(self):
        self.assertEqual(options_in(self.page.code()), set().union(*self.program.options.values()))


if __name__ == "__main__":
    unittest.main()
