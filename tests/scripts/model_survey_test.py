#!/usr/bin/env python3
"""Surveys files with programs that behave as the file's content says."""
import pathlib
import subprocess
import sys
import tempfile

EXPORT = """#!/bin/sh
file=$2 report=$6
. "$file"
echo "{\\"notes\\":[$notes]}" >"$report"
"""
NOTES = 'notes=\'{"code":"c","severity":"%s","count":2}\'\n'
CASES = {  # by the file's name: what the export does, the outcome, and details
    "a": ("", "whole", ""),
    "b": (NOTES % "lost", "lossy", "c 2"),
    "c": (NOTES % "chosen", "whole", ""),
    "d": ('echo "vsqexport: $file: no nodes" >&2; exit 1\n', "refused", "no nodes"),
    "e": ('echo "vsqexport: $file: its format is not known" >&2; exit 1\n', "other", None),
    "f": ("kill -SEGV $$\n", "crashed", "exit status -11"),
    "g": ("exit 139\n", "crashed", "exit status 139"),
    "h": ("echo 'x.cpp:1: runtime error: y' >&2; exit 1\n", "crashed", "x.cpp:1: runtime error: y"),
    "i": ("sleep 60\n", "hung", "no end in 2 seconds"),
    "j": ("touch $(dirname $0)/bad\n", "faulty", "bad"),
}

with tempfile.TemporaryDirectory() as name:
    folder = pathlib.Path(name)
    info = '#!/bin/sh\nif rm $(dirname $0)/bad 2>/dev/null; then echo bad; exit 1; fi\n'
    for program, text in (("vsqexport", EXPORT), ("vsqinfo", info)):
        (folder / program).write_text(text)
        (folder / program).chmod(0o755)
    (folder / "models").mkdir()
    for file, (script, _, _) in CASES.items():
        (folder / "models" / file).write_text(script)
    command = [sys.argv[1], folder, folder / "models", "--jobs", "1", "--seconds", "2"]
    done = subprocess.run(command, capture_output=True, text=True, check=False)
    wanted = [
        f"{outcome:8}{folder}/models/{file}" + (f": {details}" if details else "")
        for file, (_, outcome, details) in CASES.items()
        if details is not None
    ]
    wanted.append("3 crashed, 1 faulty, 1 hung, 1 lossy, 1 other, 1 refused, 2 whole")
    if (done.stdout.splitlines(), done.returncode) != (wanted, 1):
        sys.exit(f"{done.stdout}{done.stderr}exit status {done.returncode}, wanted:\n{wanted}")
    good = subprocess.run([*command[:2], folder / "models" / "a"], capture_output=True, check=False)
    if good.returncode != 0:
        sys.exit("a file that is whole is no failure")
