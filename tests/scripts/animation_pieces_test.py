#!/usr/bin/env python3
"""animation_pieces_test.py PROGRAMS DRAW_FRAMES: exports animations whole and in pieces, and compares
the files and the pictures."""
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PROGRAMS, DRAW_FRAMES = Path(sys.argv[1]), sys.argv[2]
SMALL = ["--size", "48x27", "--samples", "2"]
DEMOS = ["hierarchy", "motion", "deforming", "changing", "cameras", "hair", "studio"]


class Pieces(unittest.TestCase):
    def setUp(self):
        self.holder = tempfile.TemporaryDirectory()
        self.addCleanup(self.holder.cleanup)
        self.folder = Path(self.holder.name)

    def export(self, demo, name, frames, *options, status=0):
        folder = self.folder / name
        folder.mkdir(exist_ok=True)
        command = [PROGRAMS / "vsqexport", "animation", f"demo:{demo}", folder / "s.vsq", "--quiet",
                   "--frames", frames, *options]
        done = subprocess.run(command, capture_output=True, text=True, check=False)
        self.assertEqual(done.returncode, status, done.stderr)
        return done.stderr if status else self.frames(folder)

    def frames(self, folder):
        """By number, without the time at which the program was built."""
        return {int(file.stem[1:]): re.sub(rb"\(built.*\)", b"", file.read_bytes())
                for file in sorted(folder.glob("s*.vsq"))}

    def still(self, demo, frame):
        return self.export(demo, f"still{frame}", f"{frame}:{frame}")[0]

    def rendered(self, script):
        text = (self.folder / script).read_text()
        start, end = (int(re.search(rf"{word} = (\d+)\n", text)[1]) for word in ("start", "end"))
        step = re.search(r"range \(start, end\+1, (\d+)\)", text)
        self.assertIn(f'path = "{(self.folder / script).parent}/s" + str(i)', text)
        return list(range(start, end + 1, int(step[1]) if step else 1))

    def test_pieces_are_the_whole(self):
        for demo in DEMOS:
            with self.subTest(demo), tempfile.TemporaryDirectory() as name:
                self.folder = Path(name)
                whole = self.export(demo, "whole", "3:13")
                for piece, first in enumerate((0, 3, 7)):
                    pieces = self.export(demo, "pieces", "3:13", "--chunk", f"{piece}/3")
                    self.assertEqual(pieces[first], self.still(demo, 3 + first))
                    pieces[first] = whole[first]
                    (self.folder / "pieces" / f"s{first:04}.vsq").unlink()
                    self.assertEqual({**whole, **pieces}, whole)
                self.assertEqual(self.rendered("pieces/s.0-of-3.py"), [1, 2])
                self.assertEqual(self.rendered("pieces/s.1-of-3.py"), [3, 4, 5, 6])
                self.assertEqual(self.rendered("pieces/s.2-of-3.py"), [7, 8, 9, 10])
                self.assertFalse((self.folder / "pieces" / "s.py").exists())
                # A script that a machine no longer wrote is made again as well.
                script = self.folder / "pieces" / "s.1-of-3.py"
                text = script.read_text()
                script.write_text(text[:-3])
                (self.folder / "pieces" / "s0007.vsq").write_bytes(b"")
                self.export(demo, "pieces", "3:13", "--chunk", "2/3", "--missing")
                self.export(demo, "pieces", "3:13", "--chunk", "1/3", "--missing")
                self.assertEqual(script.read_text(), text)
                # Frames that aren't there or are cut off are made again, and no others.
                file = self.folder / "whole" / "s0006.vsq"
                file.write_bytes(file.read_bytes()[:-20])
                for lost in (0, 2, 3, 10):
                    (self.folder / "whole" / f"s{lost:04}.vsq").unlink()
                kept = self.folder / "whole" / "s0005.vsq"
                before = kept.stat().st_mtime_ns
                self.assertEqual(self.export(demo, "whole", "3:13", "--missing"), whole)
                self.assertEqual(kept.stat().st_mtime_ns, before)
                self.assertEqual(self.rendered("whole/s.py"), list(range(1, 11)))
                self.assertEqual(list((self.folder / "whole").glob(".*")), [])

    def test_every_nth_frame_shows_its_still(self):
        for demo in ("cameras", "changing", "studio"):  # these have a camera
            with self.subTest(demo), tempfile.TemporaryDirectory() as name:
                self.folder = Path(name)
                steps = self.export(demo, "steps", "0:20", "--step", "5")
                self.assertEqual(list(steps), [0, 5, 10, 15, 20])
                self.assertEqual(self.rendered("steps/s.py"), [5, 10, 15, 20])
                self.draw("steps/s.py", self.folder / "out")
                for frame in (5, 10, 15, 20):
                    self.still(demo, frame)
                    still = self.folder / "still.png"
                    subprocess.run([PROGRAMS / "vsqpicture",
                                    self.folder / f"still{frame}" / "s0000.vsq", still, *SMALL],
                                   check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
                    self.assertEqual((self.folder / "out" / f"s{frame:05}.png").read_bytes(),
                                     still.read_bytes(), frame)

    def draw(self, script, pictures):
        subprocess.run([sys.executable, DRAW_FRAMES, PROGRAMS / "vsqpicture", self.folder / script,
                        pictures, *SMALL], check=True, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)

    def test_pictures_of_the_pieces_are_those_of_the_whole(self):
        self.export("changing", "whole", "0:11")
        self.draw("whole/s.py", self.folder / "whole.out")
        for piece in range(3):
            self.export("changing", "pieces", "0:11", "--chunk", f"{piece}/3")
            self.draw(f"pieces/s.{piece}-of-3.py", self.folder / "pieces.out")
        for frame in range(1, 12):
            picture = f"s{frame:05}.png"
            self.assertEqual((self.folder / "pieces.out" / picture).read_bytes(),
                             (self.folder / "whole.out" / picture).read_bytes(), picture)

    def test_refuses_what_makes_no_frames_or_replaces_other_files(self):
        (self.folder / "out").mkdir()
        for options, status, told in (
                (["--chunk", "3/3"], 2, "--chunk takes K/N with K from 0 to N - 1, not '3/3'"),
                (["--chunk", "0/9"], 2, "the piece 0/9 has no frames: there are 4"),
                (["--step", "0"], 2, "--step"),
                ([], 1, "it is not a script of an earlier export")):
            if status == 1:
                (self.folder / "out" / "s.py").write_text("print(1)")
            self.assertIn(told, self.export("hierarchy", "out", "0:3", *options, status=status))
        self.export("hierarchy", "out", "0:3", "--force")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
