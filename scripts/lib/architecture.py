"""Which libraries stand on which: the picture of docs/architecture.md, as Graphviz' input.

usage: architecture.py STRUCTURE ROOT > architecture.dot

STRUCTURE is what CMake writes (cmake/EmfStructure.cmake), ROOT the tree. An arrow that follows from
others is left out, so the picture says the same with fewer of them.
"""

import pathlib
import re
import sys

# Directories outside platform/ whose libraries are shown, by the name they have in the picture.
SHOWN = {
    "agent": "ormaagent",
    "simulator": "ormasim",
    "usage": "usage",
    "src": "plug-in",
    "src/rest/request": "request",
    "include": "include",
}
GROUPS = {
    "programs": ("ormaagent", "ormasim", "usage"),
    "plug-in": ("plug-in", "request", "include"),
}
COLOURS = {"programs": "#fdf1dc", "plug-in": "#e3eefb", "platform": "#e6f4e6"}


def name_of(directory):
    if directory.startswith("platform/"):
        return directory.split("/")[1]
    return SHOWN.get(directory)


def modules(root):
    """The platform's modules: the directories that have a list file."""
    return {path.parent.name for path in pathlib.Path(root, "platform").glob("*/CMakeLists.txt")}


def links(structure):
    """Pairs of names: the first one's libraries link the second one's."""
    pairs = (line.split() for line in pathlib.Path(structure).read_text().splitlines())
    named = ((name_of(start), name_of(end)) for start, end in pairs)
    return {(start, end) for start, end in named if start and end}


def included(directory):
    """The platform's modules whose headers the sources of a directory include."""
    found = set()
    for path in pathlib.Path(directory).rglob("*"):
        if path.suffix in (".h", ".cpp"):
            found.update(re.findall(r'#include ["<]orma/(\w+)/', path.read_text()))
    return found


def loaded(root, linked):
    """What the plug-in calls without linking it."""
    return {("plug-in", name) for name in included(pathlib.Path(root, "src"))} - linked


def reduced(pairs):
    """The pairs that follow from no others."""
    def reaches(start, end, without):
        return any(first == start and (first, second) != without
                   and (second == end or reaches(second, end, without))
                   for first, second in pairs)
    return {pair for pair in pairs if not reaches(*pair, without=pair)}


def picture(structure, root):
    linked = links(structure)
    lines = ["digraph architecture {",
             '  graph [bgcolor=white fontname="sans-serif" fontsize=12 nodesep=0.3 ranksep=0.45]',
             '  node [shape=box style="filled,rounded" fontname="sans-serif"'
             " fontsize=12 height=0.35]",
             '  edge [arrowsize=0.7 fontname="sans-serif" fontsize=10]']
    groups = {**GROUPS, "platform": tuple(sorted(modules(root)))}
    for group, names in groups.items():
        lines += [f'  "{name}" [fillcolor="{COLOURS[group]}"]' for name in names]
    lines += [f'  "{start}" -> "{end}"' for start, end in sorted(reduced(linked))]
    lines += [f'  "{start}" -> "{end}" [style=dashed label="loads"]'
              for start, end in sorted(loaded(root, linked))]
    return "\n".join(lines + ["}"])


if __name__ == "__main__":
    print(picture(*sys.argv[1:3]))
