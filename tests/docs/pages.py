"""The pages of the manual, as the tests read them."""

import pathlib
import re
from dataclasses import dataclass

# Where a page begins: what is below docs/, and the pages beside the code.
FIRST = "README.md"
OTHERS = ("CONTRIBUTING.md", "fuzz/README.md")

FENCE = re.compile(r"^```")
LINK = re.compile(r"!?\[(?:[^\[\]]|\[[^\]]*\])*\]\(([^()\s]+)\)")
CODE = re.compile(r"`([^`]+)`")


@dataclass
class Block:
    language: str
    above: str  # the last line before it that is not empty
    lines: list


class Page:
    """A page: its text without code blocks, and its code blocks."""

    def __init__(self, root, path):
        self.path = path
        self.prose = []
        self.blocks = []
        block = None
        for line in pathlib.Path(root, path).read_text(encoding="utf-8").splitlines():
            if FENCE.match(line) and block is None:
                above = next((text for text in reversed(self.prose) if text.strip()), "")
                block = Block(line[3:].strip(), above, [])
                self.blocks.append(block)
            elif FENCE.match(line):
                block = None
            elif block is not None:
                block.lines.append(line)
            else:
                self.prose.append(line)

    def links(self):
        """The targets of its links, those of the web left out."""
        text = re.sub(CODE, "", "\n".join(self.prose))
        return [target for target in LINK.findall(text) if "://" not in target]

    def linked_files(self):
        """The files that it links, as paths of the tree."""
        parent = pathlib.PurePosixPath(self.path).parent
        return {normal(parent / target.split("#")[0]) for target in self.links()
                if not target.startswith("#")}

    def anchors(self):
        found = set()
        for line in self.prose:
            if match := re.match(r"#+ +(.*)", line):
                anchor = anchor_of(match[1])
                number = 0
                while (numbered := f"{anchor}-{number}" if number else anchor) in found:
                    number += 1
                found.add(numbered)
        return found

    def code(self):
        """The words in code type, outside of blocks."""
        return CODE.findall("\n".join(self.prose))

    def everything(self):
        return self.prose + [line for block in self.blocks for line in block.lines]

    def table(self, *titles):
        """The rows of its table with these titles, as lists of cells."""
        rows = []
        inside = False
        for line in self.prose:
            cells = [cell.strip() for cell in re.split(r"(?<!\\)\|", line)[1:-1]]
            if inside and not cells:
                break
            if inside and not re.match(r"^[-: |]+$", line):
                rows.append(cells)
            inside = inside or cells == list(titles)
        if not inside:
            raise AssertionError(f"{self.path} has no table {titles}")
        return rows


def normal(path):
    parts = []
    for part in pathlib.PurePosixPath(path).parts:
        if part == "..":
            parts.pop()
        else:
            parts.append(part)
    return "/".join(parts)


def anchor_of(heading):
    """The anchor of a heading: small letters, blanks as hyphens, no other signs."""
    text = re.sub(r"\[([^\]]*)\]\([^)]*\)", r"\1", heading).strip().lower()
    return re.sub(r"[^\w\- ]", "", text).replace(" ", "-")


def all_pages(root):
    docs = sorted(pathlib.Path(root, "docs").rglob("*.md"))
    paths = [FIRST, *OTHERS, *(str(path.relative_to(root)) for path in docs)]
    return {path: Page(root, path) for path in paths}
