"""Shows a header of the tree to Doxygen, as its input filter.

usage: doxygen_filter.py HEADER

The comments of the tree are plain: one above a declaration, or behind it, describes it, and the one
that a file begins with describes the file. Lines that are set in by two blanks or more are code.
"""

import re
import sys

COMMENT = re.compile(r"^(\s*)//(.*)$")
BEHIND = re.compile(r"^(\s*[^\s/#}].*?)(\s+)//( .*)$")
MARKED = re.compile(r"[\\@<>&#%]")


def escaped(text):
    return MARKED.sub(lambda sign: "\\" + sign[0], text)


def documented(texts, indent):
    """A block of comment texts as Doxygen's, examples as code."""
    lines = []
    code = False
    for text in texts:
        example = text.startswith("   ")
        if text.strip() and example != code:
            lines.append("@code{.cpp}" if example else "@endcode")
            code = example
        lines.append(text if code else escaped(text))
    if code:
        lines.append("@endcode")
    return [f"{indent}/// {line.strip() if not line.startswith('  ') else line}" for line in lines]


def quotes_open(text):
    return text.replace('\\"', "").count('"') % 2 == 1


class Filter:
    def __init__(self):
        self.out = []
        self.block = []  # the comment at hand: its texts
        self.indent = ""
        self.started = False  # whether anything but the first comment has come
        self.column = -1  # of the comment behind the line before, -1: there is none

    def close_block(self, describes):
        """Ends the comment at hand: it describes what follows, the file, or nothing."""
        if self.block and not self.started:
            self.out += [f"{self.indent}/// @file"] + documented(self.block, self.indent)
        elif self.block and describes:
            self.out += documented(self.block, self.indent)
        elif self.block:
            self.out += [f"{self.indent}//{text}" for text in self.block]
        self.block = []

    def take(self, line):
        comment = COMMENT.match(line)
        if comment and len(comment[1]) == self.column:
            self.out.append(f"{comment[1]}///<{escaped(comment[2])}")
            return
        self.column = -1
        if comment and not comment[2].startswith((" ---", " NOLINT")):
            self.block.append(comment[2])
            self.indent = comment[1]
            return
        self.close_block(bool(line.strip()) and not line.lstrip().startswith("#"))
        self.started = True
        behind = BEHIND.match(line)
        if behind and not quotes_open(behind[1]) and "NOLINT" not in behind[3]:
            self.column = len(behind[1] + behind[2])
            line = f"{behind[1]}{behind[2]}///<{escaped(behind[3])}"
        self.out.append(line)

    def text(self, lines):
        for line in lines:
            self.take(line.rstrip("\n"))
        self.close_block(False)
        return "\n".join(self.out) + "\n"


if __name__ == "__main__":
    with open(sys.argv[1], encoding="utf-8") as header:
        sys.stdout.write(Filter().text(header))
