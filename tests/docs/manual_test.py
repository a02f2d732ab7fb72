"""Holds the manual to the tree.

usage: manual_test.py ROOT STRUCTURE CASE...

STRUCTURE is what CMake wrote of the libraries' links (cmake/EmfStructure.cmake).
"""

import json
import pathlib
import re
import sys
import unittest
from xml.etree import ElementTree

ROOT, STRUCTURE = pathlib.Path(sys.argv.pop(1)), sys.argv.pop(1)
sys.path.insert(0, str(ROOT / "scripts/lib"))
import architecture  # noqa: E402
from pages import all_pages  # noqa: E402

PAGES = all_pages(ROOT)
DIRECTORIES = ("abi", "agent", "bench", "cmake", "docs", "fuzz", "include", "packaging", "platform",
               "scripts", "simulator", "src", "tests", "usage")
INSTALLED = {"include/ii_ormaiac_emf/"}  # below a prefix
# Stands for a name of the reader's choice.
PLACEHOLDER = re.compile(r"[A-Z]{3,}|<|\$|…")


def read(path):
    return (ROOT / path).read_text(encoding="utf-8")


def words_in_code(text):
    return set(re.findall(r"`([^`]+)`", text))


class Links(unittest.TestCase):
    def test_every_link_leads_to_a_file_and_a_heading(self):
        for path, page in PAGES.items():
            for target in page.links():
                with self.subTest(page=path, link=target):
                    file, _, anchor = target.partition("#")
                    place = (ROOT / path).parent / file if file else ROOT / path
                    self.assertTrue(place.exists(), "there is no such file")
                    if anchor:
                        other = PAGES[str(place.resolve().relative_to(ROOT.resolve()))]
                        self.assertIn(anchor, other.anchors())

    def test_every_page_is_two_clicks_from_the_first_at_most(self):
        near = {"README.md"}
        for _ in range(2):
            near |= {file for path in near if path in PAGES for file in PAGES[path].linked_files()}
        described = {str(path.relative_to(ROOT)) for suffix in ("md", "sql", "asn1")
                     for path in (ROOT / "docs").rglob(f"*.{suffix}")}
        self.assertEqual((described | set(PAGES)) - near, set())


class Names(unittest.TestCase):
    def test_every_path_that_a_page_names_is_there(self):
        path_form = re.compile(r"(?<![\w./-])((?:%s)/[\w./*-]*)" % "|".join(DIRECTORIES))
        for path, page in PAGES.items():
            words = [word for text in page.code() for word in text.split()
                     if not PLACEHOLDER.search(word)]
            for name in set(path_form.findall("\n".join(words))) - INSTALLED:
                with self.subTest(page=path, name=name):
                    self.assertTrue(list(ROOT.glob(name.rstrip("/."))), "there is no such path")

    def test_the_scripts_that_pages_name_are_those_of_the_tree(self):
        told = {name for page in PAGES.values() for text in page.everything()
                for name in re.findall(r"scripts/[\w-]+\.sh", text)}
        self.assertEqual(told, {str(path.relative_to(ROOT))
                                for path in (ROOT / "scripts").glob("*.sh")})

    def test_ctest_is_told_names_that_tests_have(self):
        lists = [*(ROOT / "tests").rglob("CMakeLists.txt"), *(ROOT / "cmake").glob("*.cmake")]
        text = "\n".join(path.read_text() for path in lists)
        names = re.findall(r"_test\((?!NAME)(\w+)|program\((\w+)|NAME ([\w.]+)", text)
        known = [next(filter(None, name)) + "." for name in names]
        patterns = [pattern for page in PAGES.values() for line in page.everything()
                    for pattern in re.findall(r"ctest [^`]*-R '([^']+)'", line)]
        self.assertGreater(len(patterns), 1)
        for pattern in patterns:
            with self.subTest(pattern=pattern):
                self.assertTrue(any(re.search(pattern, name) for name in known))

    def test_every_directory_is_in_the_first_page(self):
        there = {path.name for path in ROOT.iterdir()
                 if path.is_dir() and not path.name.startswith(".") and path.name != "build"}
        named = words_in_code("\n".join(row[0] for row in PAGES["README.md"].table("place", "what")))
        self.assertEqual({name.rstrip("/") for name in named}, there)


class Excerpts(unittest.TestCase):
    """A block of extending.md is an excerpt of the file named last above it."""

    def test_every_line_stands_in_its_file_in_this_order(self):
        file = None
        for block in PAGES["docs/extending.md"].blocks:
            if match := re.fullmatch(r"`([\w./]+)`", block.above):
                file = match[1]
            elif not block.language:
                continue
            lines = iter(line.strip() for line in read(file).splitlines())
            for line in block.lines:
                if line.strip() in ("", "…"):
                    continue
                with self.subTest(file=file, line=line):
                    self.assertIn(line.strip(), lines)


class Builds(unittest.TestCase):
    def test_every_preset_is_in_the_table(self):
        presets = {preset["name"] for preset in json.loads(read("CMakePresets.json"))
                   ["configurePresets"] if not preset.get("hidden")}
        rows = PAGES["docs/building.md"].table("preset", "what")
        self.assertEqual({row[0].strip("`") for row in rows}, presets)

    def test_every_option_is_in_the_table(self):
        options = set(re.findall(r"^(?:option|set)\((EMF_\w+) ", read("CMakeLists.txt"), re.M))
        rows = PAGES["docs/building.md"].table("option", "default", "meaning")
        self.assertEqual({row[0].strip("`") for row in rows}, options)

    def test_every_label_is_in_both_tables(self):
        labels = set()
        for file in [*(ROOT / "tests").rglob("CMakeLists.txt"), *(ROOT / "cmake").glob("*.cmake")]:
            for words in re.findall(r'LABELS "?([a-z][a-z; ]*)', file.read_text()):
                labels.update(re.split("[; ]+", words.strip()))
        for path, titles in (("docs/testing.md", ("label", "what", "where")),
                             ("CONTRIBUTING.md", ("label", "runs"))):
            rows = PAGES[path].table(*titles)
            self.assertEqual(words_in_code("\n".join(row[0] for row in rows)), labels, path)

    def test_every_fuzz_target_is_in_the_table(self):
        targets = set(re.findall(r"^emf_add_fuzz_target\((\w+)", read("fuzz/CMakeLists.txt"), re.M))
        rows = PAGES["fuzz/README.md"].table("Target", "Reads")
        self.assertEqual({row[0].strip("`") for row in rows}, targets)

    def test_every_benchmark_is_in_the_table(self):
        programs = {path.name[:-len("_bench.cpp")] for path in
                    (ROOT / "bench").glob("*_bench.cpp")}
        rows = PAGES["docs/performance.md"].table("benchmark", "measures")
        self.assertEqual(words_in_code("\n".join(row[0] for row in rows)), programs)

    def test_reference_lists_every_header_of_the_interface(self):
        rows = PAGES["docs/api.md"].table("header in `include/`", "what")
        self.assertEqual(words_in_code("\n".join(row[0] for row in rows)),
                         {path.name for path in (ROOT / "include").glob("*.h")})

    def test_platform_of_a_site_has_what_the_plug_in_includes(self):
        headers = {}
        for path in (ROOT / "src").rglob("*"):
            if path.suffix in (".h", ".cpp"):
                for module, header in re.findall(r'#include ["<]orma/(\w+)/([\w.]+)',
                                                 path.read_text()):
                    headers.setdefault(f"orma::{module}", set()).add(header)
        rows = PAGES["docs/building.md"].table("target", "headers")
        told = {row[0].strip("`"): {name.split("/")[-1] for name in words_in_code(row[1])}
                for row in rows}
        self.assertEqual(told, headers)


class Structure(unittest.TestCase):
    """The architecture as told, and the libraries' real links."""

    linked = architecture.links(STRUCTURE)
    modules = architecture.modules(ROOT)

    def test_picture_has_the_modules_and_arrows_of_the_tree(self):
        svg = ElementTree.parse(ROOT / "docs/architecture.svg")
        space = {"s": "http://www.w3.org/2000/svg"}

        def drawn(kind, dashed=False):
            groups = svg.iterfind(f".//s:g[@class='{kind}']", space)
            return {group.find("s:title", space).text for group in groups
                    if ("stroke-dasharray" in ElementTree.tostring(group, "unicode")) == dashed}

        def arrows(pairs):
            return {f"{start}->{end}" for start, end in pairs}

        self.assertEqual(drawn("node"), self.modules | set(architecture.SHOWN.values()))
        self.assertEqual(drawn("edge"), arrows(architecture.reduced(self.linked)))
        self.assertEqual(drawn("edge", dashed=True),
                         arrows(architecture.loaded(ROOT, self.linked)))

    def test_arrows_point_one_way(self):
        left = set(self.linked)
        while leaves := {end for _, end in left} - {start for start, _ in left}:
            left = {pair for pair in left if pair[1] not in leaves}
        self.assertEqual(left, set())

    def test_table_of_modules_tells_what_each_stands_on(self):
        rows = PAGES["docs/architecture.md"].table("module", "gives", "stands on")
        told = {re.search(r"`(\w+)`", row[0])[1]: words_in_code(row[2]) for row in rows}
        self.assertEqual(told, {module: {end for start, end in self.linked if start == module}
                                for module in self.modules})

    def test_table_of_subsystems_tells_what_each_calls(self):
        rows = PAGES["docs/architecture.md"].table("folder", "what", "calls")
        told = {row[0].strip("`"): words_in_code(row[2]) for row in rows}
        folders = {f"src/{path.name}" for path in (ROOT / "src").iterdir() if path.is_dir()}
        self.assertEqual(told, {folder: architecture.included(ROOT / folder)
                                for folder in folders})

    def test_sketches_name_every_module(self):
        for path in ("README.md", "docs/architecture.md"):
            sketch = next("\n".join(block.lines) for block in PAGES[path].blocks
                          if any("platform/" in line for line in block.lines))
            inside = sketch[sketch.index("platform/"):]
            self.assertEqual(set(re.findall(r"[a-z]\w+", inside)) - {"platform"}, self.modules,
                             path)

    def test_page_of_each_module_names_its_public_headers(self):
        for module in self.modules:
            page = read(f"docs/{module}.md")
            for header in (ROOT / f"platform/{module}/include/orma/{module}").glob("*.h"):
                with self.subTest(module=module, header=header.name):
                    self.assertTrue(header.name in page)

    def test_index_has_every_module(self):
        rows = PAGES["docs/README.md"].table("page", "what")
        self.assertEqual({re.search(r"\[(\w+)\]", row[0])[1] for row in rows}, self.modules)


if __name__ == "__main__":
    unittest.main()
