#!/usr/bin/env python3
"""The house rules that no compiler sees: which folder may include which, where Qt may stand, that a
layer links what it includes and nothing else, and that CMake knows every source and test."""
import pathlib
import re
import sys
import tempfile
import unittest

ROOT = pathlib.Path(sys.argv.pop(1) if len(sys.argv) > 1 else ".").resolve()

# From above to below: a folder may include itself and the rows below its own; folders of one row do
# not know each other.
ROWS = [
    ["cli", "app/qt"],
    ["editors/qt"],
    ["app"],
    ["editors"],
    ["convert", "reference"],
    ["services"],
    ["adif", "hamlog", "zlog"],
    ["log"],
    ["callsign"],
    ["rules"],
    ["text"],
]
ROW_OF = {folder: number for number, row in enumerate(ROWS) for folder in row}

INCLUDE = re.compile(r'^\s*#\s*include\s+(?:"([^"]+)"|<([^>]+)>)', re.MULTILINE)


def sources(root):
    return sorted(p for p in (root / "src").rglob("*") if p.suffix in (".cpp", ".h", ".inc"))


def folder_of(root, path):
    return path.parent.relative_to(root / "src").as_posix()


def includes(path):
    """(project header or None, system header or None) of a file, in order."""
    return [(m[1], m[2]) for m in INCLUDE.finditer(path.read_text(encoding="utf-8"))]


def wrong_arrows(root):
    """One line for every include that goes up, sideways or to Qt where it may not."""
    found = []
    for path in sources(root):
        folder = folder_of(root, path)
        where = path.relative_to(root).as_posix()
        if folder not in ROW_OF:
            found.append(f"{where}: the folder {folder} has no place in the house")
            continue
        for own, system in includes(path):
            if system and re.match(r"(Q[A-Z]|Qt)", system) and not folder.endswith("qt"):
                found.append(f"{where}: Qt outside a qt/ folder: {system}")
            if not own:
                continue
            target = str(pathlib.PurePosixPath(own).parent)
            if target == folder:
                continue
            if target not in ROW_OF:
                found.append(f"{where}: {own} stands in no folder of the house")
            elif ROW_OF[target] <= ROW_OF[folder]:
                found.append(f"{where}: {folder} must not know {own}")
    return found


def layer_name(folder):
    return {"cli": "tobarine-cli"}.get(folder, folder.replace("/", "_"))


def links(cmake):
    """Layer -> the layers that CMake links to it directly."""
    found = {}
    for target, rest in re.findall(r"target_link_libraries\((\S+)\s+([^)]*)\)", cmake):
        found.setdefault(target, set()).update(rest.split())
    return found


def reached(target, direct):
    todo, seen = [target], set()
    while todo:
        for layer in direct.get(todo.pop(), ()):
            if layer not in seen:
                seen.add(layer)
                todo.append(layer)
    return seen


def untrue_links(root):
    """One line for every layer that links what it does not include, or lacks what it includes."""
    direct = links((root / "CMakeLists.txt").read_text(encoding="utf-8"))
    layers = {layer_name(folder) for folder in ROW_OF}
    needed = {}
    for path in sources(root):
        folder = folder_of(root, path)
        for own, _ in includes(path):
            target = str(pathlib.PurePosixPath(own).parent) if own else folder
            if target != folder:
                needed.setdefault(layer_name(folder), set()).add(layer_name(target))
    found = []
    for layer in sorted(layers):
        linked = direct.get(layer, set()) & layers
        for extra in sorted(linked - needed.get(layer, set())):
            found.append(f"{layer} links {extra} and includes nothing of it")
        for missing in sorted(needed.get(layer, set()) - reached(layer, direct)):
            found.append(f"{layer} includes {missing} and does not link it")
    return found


def unknown_to_cmake(root):
    """Sources and tests that no CMakeLists.txt names."""
    main = (root / "CMakeLists.txt").read_text(encoding="utf-8")
    tests = (root / "tests" / "CMakeLists.txt").read_text(encoding="utf-8")
    found = [p.relative_to(root).as_posix() for p in sources(root)
             if p.suffix == ".cpp" and p.relative_to(root).as_posix() not in main]
    for path in sorted((root / "tests").rglob("*")):
        is_test = path.name.endswith(("_test.cpp", "_test.py", "_test.sh"))
        if is_test and path.relative_to(root / "tests").as_posix() not in tests:
            found.append(path.relative_to(root).as_posix())
    return found


class House(unittest.TestCase):
    maxDiff = None

    def test_arrows_go_down(self):
        self.assertEqual(wrong_arrows(ROOT), [])

    def test_layers_link_what_they_include(self):
        self.assertEqual(untrue_links(ROOT), [])

    def test_cmake_knows_every_source_and_test(self):
        self.assertEqual(unknown_to_cmake(ROOT), [])

    def test_planted_faults_are_seen(self):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            for name, text in {
                "src/text/lines.cpp": '#include "rules/band.h"\n',
                "src/hamlog/csv.h": '#include "zlog/entry.h"\n#include "text/lines.h"\n',
                "src/app/window.cpp": '#include <QWidget>\n#include "convert/run.h"\n',
                "src/cellar/box.h": "",
                "tests/text/lines_test.cpp": "",
                "tests/CMakeLists.txt": "",
                "CMakeLists.txt": "add_library(app STATIC src/app/window.cpp)\n"
                                  "target_link_libraries(app PUBLIC reference)\n"
                                  "target_link_libraries(hamlog PUBLIC text zlog)\n",
            }.items():
                path = root / name
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text(text, encoding="utf-8")
            self.assertEqual(wrong_arrows(root), [
                "src/app/window.cpp: Qt outside a qt/ folder: QWidget",
                "src/cellar/box.h: the folder cellar has no place in the house",
                "src/hamlog/csv.h: hamlog must not know zlog/entry.h",
                "src/text/lines.cpp: text must not know rules/band.h",
            ])
            self.assertEqual(untrue_links(root), [
                "app links reference and includes nothing of it",
                "app includes convert and does not link it",
                "text includes rules and does not link it",
            ])
            self.assertEqual(unknown_to_cmake(root),
                             ["src/text/lines.cpp", "tests/text/lines_test.cpp"])


if __name__ == "__main__":
    unittest.main()
