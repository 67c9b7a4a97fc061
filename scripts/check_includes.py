#!/usr/bin/env python3
"""Checks every #include of the project against the arrows of cmake/layers.txt.

    check_includes.py [ROOT]

A row of the table has the form `path -> path path ...`: files at or below the first path may include
files at or below the others; `*` stands for every path. If several rows match a file, the one with
the longest path counts. A folder may always include its own files. A single file can have a row of
its own: then only that row counts for what it includes, and another row may allow either the file or
its folder. Each breach is printed with the file, the line and the missing arrow, and the exit status
is then 1.
"""

import os
import re
import sys
from pathlib import Path

TABLE = "cmake/layers.txt"
SOURCES = {".h", ".cpp", ".rc"}
INCLUDE = re.compile(r'\s*#\s*include\s*(["<])([^">]+)[">]')


def read_table(root):
    rows = {}
    for line in (root / TABLE).read_text(encoding="utf-8").splitlines():
        path, arrow, visible = line.partition("->")
        if arrow and not line.startswith("#"):
            rows[path.strip()] = visible.split()
    return rows


def source_files(root):
    """Yields the sources below `root` as paths relative to it. Skips build trees and hidden folders."""
    for folder, subfolders, files in os.walk(root):
        at_root = Path(folder) == root
        subfolders[:] = sorted(
            name for name in subfolders if name[0] != "." and not (at_root and name == "build")
        )
        for name in sorted(files):
            if Path(name).suffix in SOURCES:
                yield (Path(folder) / name).relative_to(root).as_posix()


def longest_match(paths, file):
    return max((p for p in paths if file == p or file.startswith(p + "/")), key=len, default=None)


class Checker:
    def __init__(self, root):
        self.root = root
        self.rows = read_table(root)
        self.folders = [path for path in self.rows if not (root / path).is_file()]
        self.include_count = 0
        self.breaches = [
            f"{TABLE}: {path} -> {name}, which has no row"
            for path, visible in self.rows.items()
            for name in visible
            if name not in self.rows and name != "*"
        ]

    def check_file(self, file):
        row = longest_match(self.rows, file)
        if longest_match(self.folders, file) is None:
            self.breaches.append(f"{file}:1: its folder has no row in {TABLE}")
            return
        text = (self.root / file).read_text(encoding="utf-8")
        for number, line in enumerate(text.splitlines(), 1):
            include = INCLUDE.match(line)
            if include:
                self.include_count += 1
                breach = self.breach(file, row, quoted=include[1] == '"', target=include[2])
                if breach:
                    self.breaches.append(f"{file}:{number}: {breach}")

    def breach(self, file, row, quoted, target):
        """Says what is wrong with an include of `target`. None if it is allowed."""
        # For a generated header, the tree has a template whose name ends in `.in`.
        in_tree = any((self.root / (target + ending)).is_file() for ending in ("", ".in"))
        if not in_tree or ".." in Path(target).parts:
            if not quoted:
                return None  # a header of the system or of an installed library
            return f"may not include {target} (no such file from the project's root)"

        target_folder = longest_match(self.folders, target)
        if target_folder is None:
            return f"may not include {target} (its folder has no row in {TABLE})"
        allowed = self.rows[row] + [row]
        if any(name in allowed for name in ("*", target, target_folder)):
            return None
        return f"may not include {target} ({row} -> {target_folder} is missing in {TABLE})"


def main():
    root = Path(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).parent.parent).resolve()
    checker = Checker(root)
    for file in source_files(root):
        checker.check_file(file)

    for breach in checker.breaches:
        print(breach)
    print(f"{checker.include_count} includes checked, {len(checker.breaches)} breaches")
    return 1 if checker.breaches else 0


if __name__ == "__main__":
    sys.exit(main())
