#!/usr/bin/env python3
"""session_terminal_test.py VSQEXPORT SAMPLES: types the lines of a session at a terminal."""
import os
import pty
import select
import signal
import subprocess
import sys
import tempfile
import termios
import time

program, samples = sys.argv[1:]
UP = "\x1b[A"
failures = 0


def check(what, is_so):
    global failures
    if not is_so:
        print("FAILED:", what)
        failures += 1


def session(locale, home, rows):
    """Types keys and waits for the answer, row by row. Returns the exit status."""
    process, terminal = pty.fork()
    if process == 0:
        os.environ.update(HOME=home, XDG_STATE_HOME=f"{home}/state", LC_ALL=locale, TERM="xterm")
        os.execv(program, [program, "session", f"{samples}/awkward-names.gltf"])
    modes = termios.tcgetattr(terminal)
    for keys, answer in [("", "> "), *rows]:
        # The editor shows its prompt before it takes the keys over from the terminal, which would
        # swallow some.
        until = time.monotonic() + 20
        while keys and termios.tcgetattr(terminal)[3] & termios.ICANON and time.monotonic() < until:
            time.sleep(0.01)
        os.write(terminal, keys.encode())
        shown = b""
        end = b"> " if keys.endswith("\r") and keys != "quit\r" else b""
        while (answer.encode() not in shown or not shown.endswith(end)) and \
                select.select([terminal], [], [], 20)[0]:
            try:
                shown += os.read(terminal, 65536)
            except OSError:  # the program has ended
                break
        check(f"{locale}, {keys!r}: {answer!r} isn't in {shown!r}", answer.encode() in shown)
    status = os.waitpid(process, 0)[1]
    check("the terminal's modes are left changed", termios.tcgetattr(terminal) == modes)
    os.close(terminal)
    return status


def history(home):
    with open(f"{home}/state/quoria/session-history", encoding="utf-8") as file:
        return file.read().splitlines()


for locale in "C", "C.UTF-8":
    with tempfile.TemporaryDirectory() as home:
        status = session(locale, home, [
            ("hi\tTü\t\r", "'Tür und Fenster' is hidden"),
            ('hide "T\t', "Twin  Tür und Fenster  "),
            ("w\t\r", "'Twin' is hidden"),
            ('rename sa\ty\r', "'say \"hello\"' is now 'y'"),
            ("hide 椅x\b\t\r", "'椅子 🪑' is hidden"),
            ("hide ö\x02ä\x05\r", "no node is named 'äö'"),
            ("del\tö\t\x15" + UP + UP + UP + UP + "\r", "'Twin' is hidden"),
            ("  \r", "> "),
            (UP + "\r", "'Twin' is hidden"),
            ("quit\r", "quit")])
        check(f"{locale}: exit status {status}", status == 0)
        lines = history(home)
        check(f"{locale}: the history {lines}", lines == [
            'hide "Tür und Fenster" ', 'hide "Twin" ', 'rename "say ""hello""" y', 'hide "椅子 🪑" ',
            "hide äö", 'hide "Twin"', "quit"])
        status = session(locale, home, [(UP + UP + "\r", "'Twin' is hidden"), ("\x03", "")])
        check(f"{locale}: Ctrl-C ended it with {status}", os.WTERMSIG(status) == signal.SIGINT)
        subprocess.run([program, "session", "demo:motion"], input="nodes\n", text=True, check=True,
                       env={**os.environ, "XDG_STATE_HOME": f"{home}/state"}, capture_output=True)
        lines.append('hide "Twin"')
        check(f"{locale}: the history after two sessions {history(home)}", history(home) == lines)
        with open(f"{home}/state/quoria/session-history", "a", encoding="utf-8") as file:
            file.writelines(f"frame {n}\n" for n in range(3000))
        session(locale, home, [("quit\r", "quit")])
        check("a long history", history(home) == [f"frame {n}" for n in range(2000, 3000)] + ["quit"])
session("C.UTF-8", "/dev/null", [("hide Twin\r", "is hidden"), ("\x04", "\n")])
sys.exit(failures > 0)
