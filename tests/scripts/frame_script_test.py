#!/usr/bin/env python3
"""frame_script_test.py VSQEXPORT: runs the script that Export Animation writes, with a module `qor`
that records its calls."""

import contextlib
import io
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from unittest.mock import Mock, call

VSQEXPORT = sys.argv.pop(1)

ANSWERS = {"oext": "png", "width": 640, "height": 480, "max_samples": 32, "max_time": 0, "cam": ""}


def renderers_module(answers, refused=None):
    """`answers` is the user's input in the dialog. The module fails to import or render the file
    `refused`."""
    qor = Mock(spec=["DIALOG_TEXT", "DIALOG_INTEGER", "getCamera", "getInputDialog", "importFile",
                     "getImportOptions", "getRenderOptions", "setCamera", "setAnimationFrame",
                     "renderImage"])
    qor.DIALOG_TEXT, qor.DIALOG_INTEGER = "text", "integer"
    qor.getCamera.return_value = "Camera01"
    qor.getInputDialog.return_value = answers
    qor.getImportOptions.return_value = {"kept": 1}
    qor.importFile.side_effect = qor.renderImage.side_effect = lambda path, *_: path != refused
    return qor


def actions(qor):
    """The module's calls, except for those that only get something."""
    return [done for done in qor.mock_calls if not done[0].split(".")[-1].startswith("get")]


class FrameScript(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.base = str(Path(folder.name, "T\u00f6n 1"))

    def script(self, frames):
        command = [VSQEXPORT, "animation", "demo:hierarchy", self.base + ".vsq", "--frames", frames]
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
        return Path(self.base + ".py").read_text(encoding="utf-8")

    def run_script(self, script, qor):
        """Returns the script's output, and the text of its exception or None."""
        printed, raised = io.StringIO(), None
        with contextlib.redirect_stdout(printed):
            try:
                exec(compile(script, "script", "exec"), {"qor": qor})
            except Exception as error:
                raised = str(error)
        return printed.getvalue(), raised

    def test_it_asks_for_the_options_of_the_rendering(self):
        qor = renderers_module(None)
        self.assertEqual(self.run_script(self.script("0:2"), qor), ("", None))
        # The user cancels the dialog here, so no other calls follow.
        values = [
            ("oext", "text", "Output image format:", "png"),
            ("width", "integer", "Render width:", 500, (1, 10000)),
            ("height", "integer", "Render height:", 500, (1, 10000)),
            ("max_samples", "integer", "Max Render Samples:", 32, (0, 10000)),
            ("max_time", "integer", "Max Render Time (Seconds):", 0, (0, 100000)),
            ("cam", "text", "Use camera. Leave blank for current:", "Camera01"),
        ]
        self.assertEqual(qor.mock_calls, [
            call.getCamera(),
            call.getInputDialog(title="Render 3ds max frames", desc="", values=values),
        ])

    def test_it_imports_and_renders_each_frame_after_the_first(self):
        options = {"kept": 1, "adjust_camera_look_at": False, "adjust_environment": False,
                   "import_type": 1, "merge": True, "camera_import": True, "new_import": False}
        render_options = call.getRenderOptions()
        cases = [
            # name, answers, limit, extension, calls between import and frame
            ("samples", {}, render_options.setMaxSamplesRendering(32), "png", []),
            ("time, dots, a camera", {"max_samples": 0, "max_time": 9, "oext": "..exr", "cam": "C"},
             render_options.setMaxTimeRendering(9), "exr", [call.setCamera("C")]),
        ]
        script = self.script("5:7")
        for name, answers, limit, ending, camera in cases:
            with self.subTest(name):
                qor = renderers_module({**ANSWERS, **answers})
                printed, raised = self.run_script(script, qor)
                self.assertIsNone(raised)
                expected, lines = [render_options.setAddToQueue(True), limit], ""
                for i in (1, 2):
                    scene, image = f"{self.base}000{i}.vsq", f"{self.base}0000{i}.{ending}"
                    self.assertTrue(Path(scene).exists())
                    expected += [call.importFile(scene, False, True, options), *camera,
                                 call.setAnimationFrame(i),
                                 call.renderImage(image, 640, 480, qor.getRenderOptions())]
                    lines += f"Importing {scene}\nRendering {image}\n"
                self.assertEqual(actions(qor), expected)
                self.assertEqual(printed, lines)

    def test_it_renders_nothing_if_no_frame_follows_the_first(self):
        qor = renderers_module(ANSWERS)
        self.assertEqual(self.run_script(self.script("3:3"), qor), ("", None))
        self.assertEqual(len(actions(qor)), 2)

    def test_it_raises_if_it_cannot_go_on(self):
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
                qor = renderers_module({**ANSWERS, **answers}, refused and self.base + refused)
                self.assertEqual(self.run_script(script, qor)[1], text)
                if refused:
                    self.assertEqual(actions(qor)[-1][1][0], self.base + refused)


if __name__ == "__main__":
    unittest.main()
