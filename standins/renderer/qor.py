"""The module that the renderer gives to the scripts it runs, as far as the script of an exported
animation needs it. Pictures are drawn by the program vsqpicture."""
import json
import os
import subprocess

DIALOG_TEXT = "text"
DIALOG_INTEGER = "integer"


class Failure(Exception):
    """One line for the user."""


class RenderOptions:
    def __init__(self):
        self.samples = 0
        self.seconds = 0
        self.is_queued = False

    def setAddToQueue(self, queued):
        self.is_queued = bool(queued)

    def setMaxSamplesRendering(self, samples):
        self.samples = int(samples)

    def setMaxTimeRendering(self, seconds):
        self.seconds = int(seconds)


class Renderer:
    """A scene, the camera and frame that are set, and the pictures drawn so far."""

    def __init__(self, program, folder, answers, drawn):
        """`answers` are values of the dialog by their names; `drawn` is called after each frame."""
        self.folder = folder
        self.answers = answers
        self.drawn = drawn
        self.cameras = []
        self.frame = 0
        self.pictures = []
        self.notes = []
        # Ctrl-C ends this process only, which then ends the other.
        self.process = subprocess.Popen([program, "--commands"], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, text=True, encoding="utf-8",
                                        start_new_session=True)

    def ask(self, **command):
        try:
            self.process.stdin.write(json.dumps(command) + "\n")
            self.process.stdin.flush()
            answer = json.loads(self.process.stdout.readline())
        except (OSError, ValueError) as error:
            raise Failure("vsqpicture has ended") from error
        if not answer["ok"]:
            raise Failure(answer["error"])
        return answer

    def close(self):
        self.process.kill()
        self.process.wait()

    def import_scene(self, path):
        self.cameras = self.ask(**{"import": path})["cameras"]

    # What scripts call, by the names of the module.

    def getCamera(self):
        return self.cameras[0] if self.cameras else ""

    def setCamera(self, name):
        if name not in self.cameras:
            raise Failure(f"the scene has no camera '{name}' (it has: {', '.join(self.cameras)})")
        self.ask(camera=name)

    def setAnimationFrame(self, frame):
        self.frame = frame

    def getInputDialog(self, title, desc, values):
        """The answers of a dialog; each value is a name, a kind, a label, what it is at first, and
        for integers the least and the largest."""
        answers = {}
        for name, kind, _label, first, *limits in values:
            answers[name] = self.answers.get(name, first)
            if kind == DIALOG_INTEGER and limits:
                least, largest = limits[0]
                if not least <= answers[name] <= largest:
                    raise Failure(f"{name} is {answers[name]}, not from {least} to {largest}")
        return answers

    def getImportOptions(self):
        return {"adjust_camera_look_at": True, "adjust_environment": True, "import_type": 0,
                "merge": False, "camera_import": True, "new_import": True}

    def getRenderOptions(self):
        return RenderOptions()

    def importFile(self, path, _ask, _quiet, options):
        if options.get("merge") and not options.get("new_import"):
            self.cameras = self.ask(merge=path)["cameras"]
        else:
            self.import_scene(path)
        return True

    def renderImage(self, path, width, height, options):
        picture = os.path.join(self.folder, os.path.basename(path))
        answer = self.ask(picture=picture, width=width, height=height, frame=self.frame,
                          samples=options.samples or 32)
        self.notes += [note for note in answer["notes"] if note not in self.notes]
        self.pictures.append(picture)
        self.drawn(len(self.pictures))
        return True

    def contact_sheet(self, path):
        self.ask(sheet=path, pictures=self.pictures)


def as_module(renderer):
    """The module that a script sees."""
    class Module:
        pass

    module = Module()
    module.DIALOG_TEXT = DIALOG_TEXT
    module.DIALOG_INTEGER = DIALOG_INTEGER
    for name in ("getCamera", "setCamera", "setAnimationFrame", "getInputDialog",
                 "getImportOptions", "getRenderOptions", "importFile", "renderImage"):
        setattr(module, name, getattr(renderer, name))
    return module
