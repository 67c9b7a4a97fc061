#!/usr/bin/env python3
"""draw_frames.py VSQPICTURE SHOT.py OUT_FOLDER: runs the script of an exported animation, as the
renderer does, and draws its frames and a contact sheet of them into a folder."""
import argparse
import os
import re
import runpy
import sys

sys.dont_write_bytecode = True  # the folder of this program may be another user's
import qor

CANCELLED = 130


def size(text):
    match = re.fullmatch(r"([1-9]\d{0,4})x([1-9]\d{0,4})", text)
    if not match:
        raise argparse.ArgumentTypeError(f"'{text}' isn't like 640x360")
    return int(match[1]), int(match[2])


def arguments():
    parser = argparse.ArgumentParser(
        prog="frames", description="Runs the script of an exported animation and draws its frames.")
    parser.add_argument("program", help=argparse.SUPPRESS)
    parser.add_argument("script", metavar="SHOT.py", help="written beside the frames' files")
    parser.add_argument("folder", metavar="OUT_FOLDER", help="gets the pictures")
    parser.add_argument("--size", type=size, default=(320, 180), metavar="WxH")
    parser.add_argument("--samples", type=int, default=32, metavar="N")
    parser.add_argument("--camera", metavar="NAME", help="by default the scene's first one")
    return parser.parse_args()


class Progress:
    """A bar on a terminal."""

    def __init__(self, total):
        self.total = total
        self.is_shown = sys.stderr.isatty()

    def show(self, done):
        if self.is_shown:
            filled = 30 * done // max(self.total, done, 1)
            print(f"\r[{'#' * filled}{' ' * (30 - filled)}] {done} of {self.total} frames", end="",
                  file=sys.stderr, flush=True)

    def clear(self):
        if self.is_shown:
            print("\r" + " " * 60 + "\r", end="", file=sys.stderr, flush=True)


def first_scene(script):
    """The scene that a person opens before the script runs, or None: the script of a later piece of an
    animation begins with a whole scene itself."""
    base = os.path.splitext(script)[0]
    piece = re.search(r"\.(\d+)-of-\d+$", base)
    if piece and int(piece[1]) > 0:
        return None
    return (base[:piece.start()] if piece else base) + "0000.vsq"


def frames_in(script):
    """How many frames the script renders."""
    with open(script, encoding="utf-8", errors="surrogateescape") as file:
        text = file.read()
    start = re.search(r"^\s*start = (\d+)$", text, re.MULTILINE)
    last = re.search(r"^\s*end = (\d+)$", text, re.MULTILINE)
    step = re.search(r" range \(start, end\+1, (\d+)\):$", text, re.MULTILINE)
    if not start or not last:
        return 0
    return len(range(int(start[1]), int(last[1]) + 1, int(step[1]) if step else 1))


def run(options):
    progress = Progress(frames_in(options.script))
    os.makedirs(options.folder, exist_ok=True)
    answers = {"width": options.size[0], "height": options.size[1], "max_samples": options.samples}
    if options.camera is not None:
        answers["cam"] = options.camera
    renderer = qor.Renderer(options.program, options.folder, answers, progress.show)
    try:
        opened = first_scene(options.script)
        if opened:
            renderer.import_scene(opened)
        runpy.run_path(options.script, init_globals={"qor": qor.as_module(renderer)})
        if renderer.pictures:
            renderer.contact_sheet(os.path.join(options.folder, "contact-sheet.png"))
        progress.clear()
        for note in renderer.notes:
            print("frames: not drawn: " + note, file=sys.stderr)
        print(f"{len(renderer.pictures)} frames in {options.folder}")
        return 0
    except KeyboardInterrupt:
        progress.clear()
        print(f"frames: cancelled, {len(renderer.pictures)} of {progress.total} frames are drawn",
              file=sys.stderr)
        return CANCELLED
    finally:
        progress.clear()
        renderer.close()


def main():
    options = arguments()
    try:
        return run(options)
    except Exception as error:  # whatever the script raises
        print("frames: " + " ".join(str(error).split("\n")), file=sys.stderr)
        return 1


if __name__ == "__main__":
    sys.exit(main())
