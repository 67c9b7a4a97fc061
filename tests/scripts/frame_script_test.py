#!/usr/bin/env python3
"""frame_script_test.py VSQEXPORT: runs the script that Export Animation writes, with a module `qor`
that takes down what it is asked to do."""

import contextlib
import io
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

VSQEXPORT = sys.argv.pop(1)

ANSWERS = {"oext": "png", "width": 640, "height": 480, "max_samples": 32, "max_time": 0, "cam": ""}


class RenderOptions:
    def __init__(self, calls):
        self.calls = calls

    def __getattr__(self, name):
        return lambda value: self.calls.append((name, value))


class Qor:
    """The renderer's module: `answers` is what the user gives the dialog, and `refused` a file that
    it neither imports nor renders."""

    DIALOG_TEXT, DIALOG_INTEGER = "text", "integer"

    def __init__(self, answers, refused=None):
        self.answers, self.refused = answers, refused
        self.calls, self.dialog, self.import_options = [], None, {"kept": 1}

    def getCamera(self):
        return "Camera01"

    def getInputDialog(self, **dialog):
        self.dialog = dialog
        return self.answers

    def getImportOptions(self):
        return self.import_options

    def getRenderOptions(self):
        return RenderOptions(self.calls)

    def importFile(self, path, *options):
        self.calls.append(("import", path, *options))
        return path != self.refused

    def setCamera(self, name):
        self.calls.append(("camera", name))

    def setAnimationFrame(self, number):
        self.calls.append(("frame", number))

    def renderImage(self, path, *options):
        self.calls.append(("render", path, *options))
        return path != self.refused


class FrameScript(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.base = str(Path(self.folder.name, "T\u00f6n 1"))

    def tearDown(self):
        self.folder.cleanup()

    def script(self, frames):
        command = [VSQEXPORT, "animation", "demo:hierarchy", self.base + ".vsq", "--frames", frames]
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
        return Path(self.base + ".py").read_text(encoding="utf-8")

    def run_script(self, script, qor):
        """Gives what the script printed, and the text of what it raised."""
        printed, raised = io.StringIO(), None
        with contextlib.redirect_stdout(printed):
            try:
                exec(compile(script, "script", "exec"), {"qor": qor})
            except Exception as error:
                raised = str(error)
        return printed.getvalue(), raised

    def test_it_asks_for_what_the_rendering_needs(self):
        qor = Qor(None)
        self.assertEqual(self.run_script(self.script("0:2"), qor), ("", None))
        self.assertEqual(qor.calls, [], "the user has cancelled")
        self.assertEqual(qor.dialog, {
            "title": "Render 3ds max frames",
            "desc": "",
            "values": [
                ("oext", "text", "Output image format:", "png"),
                ("width", "integer", "Render width:", 500, (1, 10000)),
                ("height", "integer", "Render height:", 500, (1, 10000)),
                ("max_samples", "integer", "Max Render Samples:", 32, (0, 10000)),
                ("max_time", "integer", "Max Render Time (Seconds):", 0, (0, 100000)),
                ("cam", "text", "Use camera. Leave blank for current:", "Camera01"),
            ],
        })

    def test_it_imports_and_renders_each_frame_behind_the_first(self):
        options = {"kept": 1, "adjust_camera_look_at": False, "adjust_environment": False,
                   "import_type": 1, "merge": True, "camera_import": True, "new_import": False}
        cases = [
            # what is special about it, answers, limit, ending, calls between import and frame
            ("samples", {}, ("setMaxSamplesRendering", 32), "png", []),
            ("time, dots, a camera", {"max_samples": 0, "max_time": 9, "oext": "..exr", "cam": "C"},
             ("setMaxTimeRendering", 9), "exr", [("camera", "C")]),
        ]
        script = self.script("5:7")
        for name, answers, limit, ending, camera in cases:
            with self.subTest(name):
                qor = Qor({**ANSWERS, **answers})
                printed, raised = self.run_script(script, qor)
                self.assertIsNone(raised)
                expected, lines = [("setAddToQueue", True), limit], ""
                for i in (1, 2):
                    scene, image = f"{self.base}000{i}.vsq", f"{self.base}0000{i}.{ending}"
                    self.assertTrue(Path(scene).exists())
                    expected += [("import", scene, False, True, options), *camera, ("frame", i)]
                    render = qor.calls[len(expected)]
                    self.assertEqual(render[:-1], ("render", image, 640, 480))
                    self.assertIsInstance(render[-1], RenderOptions)
                    expected.append(render)
                    lines += f"Importing {scene}\nRendering {image}\n"
                self.assertEqual(qor.calls, expected)
                self.assertEqual(printed, lines)

    def test_it_renders_nothing_where_no_frame_follows(self):
        qor = Qor(ANSWERS)
        self.assertEqual(self.run_script(self.script("3:3"), qor), ("", None))
        self.assertEqual(len(qor.calls), 2)

    def test_it_raises_where_it_cant_go_on(self):
        script = self.script("0:2")
        limits = "Use either max samples or max time!"
        cases = [
            ({"oext": ""}, None, "Output extension cannot be empty!"),
            ({"max_samples": 0}, None, limits),
            ({"max_time": 1}, None, limits),
            ({}, "0002.vsq", "Error in import! User cancelled?"),
            ({}, "00001.png", "Error in Render! User cancelled?"),
        ]
        for answers, refused, text in cases:
            with self.subTest(text):
                qor = Qor({**ANSWERS, **answers}, refused and self.base + refused)
                self.assertEqual(self.run_script(script, qor)[1], text)
                if refused:
                    self.assertEqual(qor.calls[-1][1], self.base + refused)


if __name__ == "__main__":
    unittest.main()
