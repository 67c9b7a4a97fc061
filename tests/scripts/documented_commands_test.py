#!/usr/bin/env python3
"""documented_commands_test.py: scripts/documented_commands finds what is wrong in a document."""
import os
import subprocess
import sys
import tempfile

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.realpath(__file__))))
DOCUMENT = """# Commands

    true  # a comment
    false

Text

<!-- not run: all (why) -->
```sh
false
```

Text

<!-- not run: gone (why) -->
```console
$ printf '%s\\n' 'made 12 files in 0.5 s' 'made 12' 'made 12 more'
made ... files in 3 s
made 12 ...
$ cat
> typed
untyped
```

```json
false
```

    for i in 1 2; do
        ls -d samples "$i"
    done || test -e model.glb
    exit 3
    true
"""
WANTED = """ok       DOCUMENT:3: true  # a comment
FAILED   DOCUMENT:3: false
not run  DOCUMENT:9: false (why)
FAILED   DOCUMENT:16: not run, but not there: gone
ok       DOCUMENT:16: printf '%s\\n' 'made 12 files in 0.5 s' 'made 12' 'made 12 more'
FAILED   DOCUMENT:16: cat
not printed: untyped
ok       DOCUMENT:29: for i in 1 2; do
FAILED   DOCUMENT:29: exit 3
FAILED   DOCUMENT:29: true
""".splitlines()

with tempfile.NamedTemporaryFile("w", suffix=".md") as file:
    file.write(DOCUMENT)
    file.flush()
    run = subprocess.run([f"{ROOT}/scripts/documented_commands", file.name], text=True,
                         stdout=subprocess.PIPE, check=False)
lines = [line.replace(file.name, "DOCUMENT") for line in run.stdout.splitlines()]
told = [line for line in lines if line.startswith(("ok  ", "FAILED", "not "))]
for wanted, got in zip(WANTED + [""] * len(told), told + [""] * len(WANTED)):
    if wanted != got:
        print(f"FAILED: wanted '{wanted}', got '{got}'")
sys.exit(run.returncode != 1 or told != WANTED)
