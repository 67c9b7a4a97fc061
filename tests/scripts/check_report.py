#!/usr/bin/env python3
"""check_report.py FILE.json: checks that a report of vsqexport or vsqinfo has the members that
docs/report.md and docs/checks.md describe."""
import json
import sys

from jsonschema import validate

TEXT = {"type": "string"}
COUNT = {"type": "integer", "minimum": 1}


def exactly(optional=(), **members):
    return {"type": "object", "properties": members, "additionalProperties": False,
            "required": [name for name in members if name not in optional]}


NOTE = exactly(("path",), code={"pattern": "^[a-z]+(-[a-z]+)+$"}, node=TEXT, path=TEXT, reason=TEXT,
               severity={"enum": ["failed", "lost", "changed", "chosen"]}, count=COUNT)
REPORT = exactly(report={"const": "vsqexport"}, version={"const": 1}, notes={"items": NOTE},
                 command={"enum": ["export", "animation", "render", "update"]})
FINDING = exactly(code={"pattern": "^[a-z]+(-[a-z]+)*$"}, severity={"enum": ["error", "warning", "hint"]},
                  offset={"type": "integer", "minimum": 0}, line={"type": ["integer", "null"]}, text=TEXT)
CHECKED = exactly(("failure",), file=TEXT, kind={"enum": ["scene", "mesh"]}, summary={"type": ["object", "null"]},
                  counts={"additionalProperties": COUNT}, findings={"items": FINDING}, failure=TEXT)
CHECKS = exactly(report={"const": "vsqinfo"}, version={"const": 1}, files={"items": CHECKED})
SUMMARY = {"type": ["object", "null"], "required": ["file", "bytes", "seconds", "contents", "mesh_files"]}
ALL = exactly(("error",), summary=SUMMARY, report=REPORT, error=TEXT)
NUMBER = {"type": "number", "minimum": 0}
ENDED = exactly(("error", "seconds", "summary", "report"), source=TEXT, target=TEXT, seconds=NUMBER, error=TEXT,
                outcome={"enum": ["whole", "lossy", "failed", "cancelled"]}, summary=SUMMARY, report=REPORT)
BATCH = exactly(report={"const": "vsqexport-batch"}, version={"const": 1}, seconds=NUMBER, jobs=COUNT,
                counts={"additionalProperties": COUNT}, files={"items": ENDED, "minItems": 1})
KINDS = {"vsqexport": REPORT, "vsqinfo": CHECKS, "vsqexport-batch": BATCH}
RANKS = NOTE["properties"]["severity"]["enum"]

with open(sys.argv[1], encoding="utf-8") as file:
    document = json.load(file)
validate(document, ALL if "summary" in document else KINDS[document["report"]])
report = document["report"] if "summary" in document else document
ranks = [RANKS.index(note["severity"]) for note in report.get("notes", [])]
assert ranks == sorted(ranks), "the worst notes come first"
