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


def run(options):
    with open(options.script, encoding="utf-8", errors="surrogateescape") as script:
        last = re.search(r"^\s*end = (\d+)$", script.read(), re.MULTILINE)
    progress = Progress(int(last[1]) if last else 0)
    os.makedirs(options.folder, exist_ok=True)
    answers = {"width": options.size[0], "height": options.size[1], "max_samples": options.samples}
    if options.camera is not None:
        answers["cam"] = options.camera
    renderer = qor.Renderer(options.program, options.folder, answers, progress.show)
    try:
        # The script begins with frame 1; a person has opened frame 0 before.
        renderer.import_scene(os.path.splitext(options.script)[0] + "0000.vsq")
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
