#!/usr/bin/env python3
"""Runs scripts/check_includes.py on small trees of sources."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SCRIPT = Path(__file__).parents[2] / "scripts" / "check_includes.py"

TABLE = """# low -> high in a comment is no row
low            ->
low/system     ->
high           -> low
high/border.h  -> low/system
high/keys.h    ->
tool           -> high/keys.h
tests          -> *
"""

# A tree without breaches. Each case below adds one file to it.
SOUND = {
    "cmake/layers.txt": TABLE,
    "low/base.h": "#include <string>\n",
    "low/version.h.in": "",
    "low/base.cpp": '#include "low/base.h"\n#include "low/version.h"\n',
    "low/system/api.h": "",
    "high/border.h": '#include "low/system/api.h"\n',
    "high/keys.h": "#include <array>\n",
    "tool/main.cpp": '#include "high/keys.h"\n',
    "high/top.cpp": '#include "high/border.h"\n#  include "low/base.h"\n',
    "tests/low/base_test.cpp": '#include "high/border.h"\n#include "low/system/api.h"\n',
    "build/linux/copy.cpp": '#include "nowhere.h"\n',
}


def check(files):
    with tempfile.TemporaryDirectory() as root:
        for name, text in files.items():
            path = Path(root, name)
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        done = subprocess.run(
            [sys.executable, SCRIPT, root], stdout=subprocess.PIPE, universal_newlines=True
        )
        return done.returncode, done.stdout.splitlines()


class CheckIncludes(unittest.TestCase):
    def test_a_sound_tree_passes(self):
        self.assertEqual(check(SOUND), (0, ["10 includes checked, 0 breaches"]))

    def test_each_breach_is_reported_with_file_line_and_arrow(self):
        missing = "is missing in cmake/layers.txt)"
        no_row = "has no row in cmake/layers.txt"
        no_file = "(no such file from the project's root)"
        cases = [
            # file, its text, report
            ("low/up.cpp", '\n\n#include "high/border.h"\n',
             f"low/up.cpp:3: may not include high/border.h (low -> high {missing}"),
            ("low/up.h", "#include <high/border.h>\n",
             f"low/up.h:1: may not include high/border.h (low -> high {missing}"),
            # A file with a row of its own has only the arrows of that row, not its folder's.
            ("high/b.cpp", '#include "low/system/api.h"\n',
             f"high/b.cpp:1: may not include low/system/api.h (high -> low/system {missing}"),
            ("high/border.h", '#include "low/base.h"\n',
             f"high/border.h:1: may not include low/base.h (high/border.h -> low {missing}"),
            ("high/keys.h", '#include "high/border.h"\n',
             f"high/keys.h:1: may not include high/border.h (high/keys.h -> high {missing}"),
            ("tool/a.h", '#include "high/border.h"\n',
             f"tool/a.h:1: may not include high/border.h (tool -> high {missing}"),
            ("low/a.rc", '#include "high/border.h"\n',
             f"low/a.rc:1: may not include high/border.h (low -> high {missing}"),
            ("low/a.cpp", '#include "base.h"\n', f"low/a.cpp:1: may not include base.h {no_file}"),
            ("low/a.cpp", '#include "low/../high/border.h"\n',
             f"low/a.cpp:1: may not include low/../high/border.h {no_file}"),
            ("cmake/layers.txt", TABLE + "new -> high/border.h low/base.h\n",
             "cmake/layers.txt: new -> low/base.h, which has no row"),
            ("new/a.cpp", "", f"new/a.cpp:1: its folder {no_row}"),
            ("tests/a.cpp", '#include "build/linux/copy.cpp"\n',
             f"tests/a.cpp:1: may not include build/linux/copy.cpp (its folder {no_row})"),
        ]
        for file, text, report in cases:
            with self.subTest(report):
                code, lines = check({**SOUND, file: text})
                self.assertEqual(code, 1)
                self.assertIn(report, lines)


if __name__ == "__main__":
    unittest.main()
