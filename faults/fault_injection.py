#!/usr/bin/env python3
"""fault_injection.py BIN: fails each system call that opens, writes or closes an output, one
after the other, and looks at what the user is told. Each call of the live link gets a renderer that
dies, hangs or answers nonsense. BIN is the folder of the programs."""

import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass, field
from pathlib import Path

BIN = Path(sys.argv[1]).resolve()
VSQEXPORT, VSQINFO = BIN / "vsqexport", BIN / "vsqinfo"
LIMIT = 5  # seconds that a fault may cost
KILL_IF_IT_HANGS = ["timeout", "--signal=KILL", "90"]  # with all that it has started

# What can fail with which error.
ERRORS = {"openat": "EACCES", "write": "ENOSPC", "writev": "EIO", "pwrite64": "ENOSPC",
          "fsync": "EIO", "close": "EIO", "rename": "EACCES", "renameat2": "EACCES",
          "ftruncate": "EIO"}


@dataclass
class Output:
    """A file that a command writes. If it can't be written, the command either fails and says so,
    or, for `is_optional`, does everything else as without the fault."""
    what: str
    command: list  # {out} is a new folder
    file: str      # below that folder, the settings folder {config} or the resource folder {data}
    told: str      # stands in the message
    others: list = field(default_factory=list)  # files that the fault must leave whole
    is_optional: bool = False
    kept: str = ""  # stands in the file before, and must still stand there after a fault


OUTPUTS = [
    Output("scene", ["export", "demo:materials", "{out}/s.vsq"], "{out}/s.vsq", "s.vsq"),
    Output("scene that isn't read back", ["export", "demo:materials", "/dev/null"], "/dev/null",
           "/dev/null"),
    Output("first frame", ["animation", "demo:motion", "{out}/s.vsq", "--frames", "0:3"],
           "{out}/s0000.vsq", "s0000.vsq"),
    Output("third frame", ["animation", "demo:motion", "{out}/s.vsq", "--frames", "0:3"],
           "{out}/s0002.vsq", "s0002.vsq", ["{out}/s0000.vsq", "{out}/s0001.vsq"]),
    Output("script", ["animation", "demo:motion", "{out}/s.vsq", "--frames", "0:3"], "{out}/s.py",
           "s.py"),
    Output("mesh library", ["export", "demo:deforming", "{out}/s.vsq"],
           "{data}/Animations/3ds max/Flag_Stripes.qorT", "Flag_Stripes.qorT"),
    Output("settings", ["settings", "Bones=0"], "{config}/quoria/plugcfg/velmoraexport7.ini",
           "velmoraexport7.ini", kept="[Curves]\nHairAndFur=0\n"),
    Output("drawn texture", ["export", "demo:materials", "{out}/s.vsq"],
           "{data}/textures/Tiles_diffuse.png", "Tiles_diffuse.png", ["{out}/s.vsq"]),
    Output("report", ["export", "demo:materials", "{out}/s.vsq", "--report", "{out}/r.json"],
           "{out}/r.json", "r.json", ["{out}/s.vsq"]),
    Output("log", ["export", "demo:lights", "{out}/s.vsq"], "{data}/sceneapi.log", "",
           ["{out}/s.vsq"], is_optional=True),
]


class Run:
    """A command in folders of its own, with a registered renderer."""

    def __init__(self, output):
        self.folder = Path(tempfile.mkdtemp(prefix="vsq_faults_"))
        self.places = {"out": self.folder / "out", "config": self.folder / "config",
                       "data": self.folder / "data"}
        for place in self.places.values():
            place.mkdir()
        (self.places["data"] / "textures").mkdir()
        (self.places["data"] / "Animations").mkdir()
        registry = self.places["config"] / "quoria" / "registry.reg"
        registry.parent.mkdir()
        registry.write_text("Windows Registry Editor Version 5.00\r\n\r\n"
                            "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Quoria\\Velmora 11]\r\n"
                            f'"ResourceFolder"="{self.places["data"]}"\r\n'
                            f'"BinName"="{BIN}/velmora-11/velmora"\r\n'
                            f'"BinFolder"="{BIN}/velmora-11"\r\n'
                            '"LiveLinkPort"=dword:00001ce8\r\n"LiveLinkMaxPort"=dword:00001ce8\r\n',
                            newline="")
        self.output = output
        self.target = self.filled(output.file) if output else ""
        if output and output.kept:
            Path(self.target).parent.mkdir(parents=True)
            Path(self.target).write_text(output.kept)

    def names_target(self, text):
        """Whether the text names the output, or the unfinished file that will replace it."""
        target = Path(self.target)
        name, frame = re.fullmatch("(.*?)([0-9]*)", target.stem).groups()
        unfinished = (re.escape(f"{target.parent}/.{name}.") + "[0-9]+" +
                      re.escape(f".part{frame}{target.suffix}"))
        return self.target in text or re.search(unfinished, text) is not None

    def filled(self, text):
        return text.format(**{name: str(path) for name, path in self.places.items()})

    def trace(self, inject=()):
        """Runs the command under strace; returns its calls. They are told by the path of their file,
        which may first be written beside its place under a name that differs each time."""
        log = self.folder / "trace"
        names = ",".join(ERRORS)
        command = [*KILL_IF_IT_HANGS, "strace", "-f", "-qq", "-y", "-o", str(log), "-e",
                   f"trace={names}", *inject, str(VSQEXPORT),
                   *(self.filled(word) for word in self.output.command)]
        environment = {**os.environ, "XDG_CONFIG_HOME": str(self.places["config"]),
                       "XDG_DATA_HOME": str(self.folder / "share")}
        start = time.monotonic()
        self.done = subprocess.run(command, env=environment, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                                   errors="replace")
        self.seconds = time.monotonic() - start
        return log.read_text(errors="replace")

    def close(self):
        shutil.rmtree(self.folder, ignore_errors=True)


def calls_of(output):
    """The system calls on the output without a fault, each with its number among those of its
    kind."""
    run = Run(output)
    try:
        trace = run.trace()
        if run.done.returncode != 0:
            raise RuntimeError(f"{output.what}: fails without a fault: {run.done.stderr}")
        counts, writable, found, written = {}, set(), False, False
        for line in trace.splitlines():
            name, arguments, result = re.match(r"\d+ +(\w+)\((.*)\) += (-?\d+)", line).groups()
            counts[name] = counts.get(name, 0) + 1
            by_path = name.startswith(("open", "rename"))
            if not run.names_target(arguments if by_path else arguments.split(">")[0]):
                continue
            # A file that is only read can fail without a loss, unless it is written back then.
            descriptor = result if by_path else arguments.split("<")[0]
            if name == "openat" and re.search("O_WRONLY|O_RDWR", arguments):
                writable.add(descriptor)
            is_read_first = name == "openat" and output.kept and not found
            if not (name.startswith("rename") or descriptor in writable or is_read_first):
                continue
            found = found or not is_read_first
            written = written or "write" in name
            yield name, counts[name]
            if name == "close":
                writable.discard(descriptor)
        if not written:
            raise RuntimeError(f"{output.what}: the command never writes {output.file}")
    finally:
        run.close()


def whole(path):
    return subprocess.run([VSQINFO, path], stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL).returncode == 0


def faults_of(output, name, number):
    """What is wrong with how the command took the fault."""
    run = Run(output)
    try:
        trace = run.trace(["-e", f"inject={name}:error={ERRORS[name]}:when={number}"])
        done, found = run.done, []
        if not any("(INJECTED)" in line and run.names_target(line) for line in trace.splitlines()):
            return ["the fault never came"]
        if run.seconds > LIMIT:
            found.append(f"took {run.seconds:.1f} s")
        if output.is_optional:
            if done.returncode != 0:
                found.append(f"exit code {done.returncode}: {done.stderr.strip()}")
        else:
            if done.returncode == 0:
                found.append("exit code 0")
            if done.returncode < 0 or done.returncode > 3:
                found.append(f"ended by {done.returncode}")
            if output.told not in done.stderr:
                found.append(f"told only: {done.stderr.strip()!r}")
        found += [f"{other} isn't whole" for other in output.others if not whole(run.filled(other))]
        if output.kept and output.kept not in Path(run.target).read_text():
            found.append("the file has lost what it held")
        return found
    finally:
        run.close()


# What a renderer does on a connection that has sent that many bytes, and for how many seconds the
# link itself goes on: if a renderer fails at once, the link looks for another one 30 times.
LINK_LIMIT = 0.5  # seconds for each answer
LOOKS = 30 * (1 + 2 * LINK_LIMIT)
LINK_FAULTS = [(f"{kind}-after={sent}", LOOKS if sent < 64 else 3 * LINK_LIMIT)
               for kind in ("die", "hang", "nonsense") for sent in (0, 64, 500, 5000, 15000)]


def end_renderers_of(run):
    """A command that finds no answer starts a renderer of its own, which outlives it."""
    for process in Path("/proc").glob("[0-9]*"):
        try:
            if str(run.folder).encode() in (process / "environ").read_bytes():
                os.kill(int(process.name), signal.SIGKILL)
        except OSError:
            continue  # it has ended, or belongs to somebody else


def link_faults_of(fault, limit):
    """What is wrong with how a render took a renderer with that fault. One that answers nonsense may
    have received the whole scene."""
    run, found = Run(None), []
    environment = {**os.environ, "XDG_CONFIG_HOME": str(run.places["config"]),
                   "XDG_DATA_HOME": str(run.folder / "share"), "VELMORA_FAULT": fault,
                   "VELMORA_LINK_TIMEOUT_MS": str(int(1000 * LINK_LIMIT))}
    renderer = subprocess.Popen([BIN / "velmora-11" / "velmora"], env=environment,
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        announced = run.folder / "share" / "quoria" / "running"
        while not (announced.is_dir() and any(announced.iterdir())):
            if renderer.poll() is not None:
                return [f"the renderer ends at once, exit code {renderer.returncode}"]
            time.sleep(0.02)
        start = time.monotonic()
        done = subprocess.run([*KILL_IF_IT_HANGS, VSQEXPORT, "render", "demo:materials"],
                              env=environment, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        seconds = time.monotonic() - start
        received = re.search(r"^(/.*\.vsq): ", done.stdout, re.M)
        if done.returncode == 0 and not (received and whole(received[1])):
            found.append("exit code 0 without a whole scene")
        if done.returncode not in (0, 1):
            found.append(f"ended by {done.returncode}")
        if done.returncode != 0 and not re.search("renderer|Velmora", done.stderr):
            found.append(f"told only: {done.stderr.strip()!r}")
        if seconds > limit + LIMIT:
            found.append(f"took {seconds:.1f} s")
    finally:
        end_renderers_of(run)
        renderer.wait()
        run.close()
    return found


def main():
    if shutil.which("strace") is None:
        sys.exit("strace is not installed")
    probe = subprocess.run(["strace", "-qq", "-e", "trace=none", "true"], stderr=subprocess.PIPE)
    if probe.returncode != 0:
        sys.exit("this system doesn't let strace trace: " + probe.stderr.decode(errors="replace"))

    jobs, failed = [], 0
    with ThreadPoolExecutor(max_workers=2) as pool:
        for output in OUTPUTS:
            for name, number in calls_of(output):
                what = f"{output.what}: {name} {number} fails with {ERRORS[name]}"
                jobs.append((what, pool.submit(faults_of, output, name, number)))
        for fault, limit in LINK_FAULTS:
            jobs.append((f"link: {fault}", pool.submit(link_faults_of, fault, limit)))
        for what, result in jobs:
            found = result.result()
            failed += bool(found)
            print(f"{'FAILED' if found else 'ok':7}{what}{': ' if found else ''}{'; '.join(found)}")
    print(f"{len(jobs)} faults, {failed} taken wrongly")
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
