"""Processes that present frames through the client library: each is a client_frames.exe under Wine."""

import array
import os
import pathlib
import signal
import socket
import subprocess
import sys
import time

BIN = pathlib.Path(os.environ["TESSLO_BIN"])
RUN_WINE = os.environ["TESSLO_RUN_WINE"]
LONG = 30  # seconds; reached only by a failing test


def free_port():
    """A port that nobody has. Sockets of this test alone will be asked for it."""
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def pixel(x, y, seed):
    """Of client_frames.cpp: red, green, blue as a number."""
    return ((x ^ y) * 2654435761 + seed * 40503) & 0xFFFFFF


def canvas(rgb):
    """The word of a canvas for red, green, blue as a number."""
    return 0xFF000000 | rgb >> 16 & 0xFF | rgb & 0xFF00 | (rgb & 0xFF) << 16


def ramp(width, height, blue):
    """A smooth frame as a canvas holds it."""
    return array.array("I", (canvas((x & 0xFF) << 16 | (y & 0xFF) << 8 | blue & 0xFF)
                             for y in range(height) for x in range(width)))


def frame(width, height, seed, patches=()):
    """A frame as a canvas holds it. patches: (seed, x, y) of single pixels."""
    pixels = array.array("I", (canvas(pixel(x, y, seed)) for y in range(height) for x in range(width)))
    for other, x, y in patches:
        pixels[y * width + x] = canvas(pixel(x, y, other))
    return pixels


def wait_until(condition, what="what was waited for"):
    end = time.monotonic() + LONG
    while not condition():
        if time.monotonic() > end:
            raise TimeoutError(what + " did not come true")
        time.sleep(0.01)


def end_session(process):
    """Ends a process that leads a session, with all that it started."""
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass  # all of them ended by themselves
    process.wait(LONG)


def is_listening(port, host="127.0.0.1"):
    with socket.socket() as probe:
        return probe.connect_ex((host, port)) == 0


class Presenter:
    """A process with the library in it."""

    def __init__(self, port, **settings):
        environment = dict(os.environ, TESSLO_BROWSER_PORT=str(port), **settings)
        self.process = subprocess.Popen([RUN_WINE, "client_frames.exe"], cwd=BIN, env=environment, text=True,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def ask(self, *words):
        """One command. @return milliseconds that it took, or None if it was refused."""
        self.process.stdin.write(" ".join(map(str, words)) + "\n")
        self.process.stdin.flush()
        answer = self.process.stdout.readline().split()
        if not answer:
            raise EOFError("client_frames ended")
        return float(answer[1]) if answer[0] == "ok" else None

    def do(self, *words):
        time_taken = self.ask(*words)
        assert time_taken is not None, f"refused: {words}"
        return time_taken

    def end(self):
        """Ends the process without a word to the library."""
        if self.process.poll() is None:
            self.process.stdin.close()
            self.process.wait(LONG)
        self.process.stdout.close()


def main_of_tests():
    """Runs one case: PROGRAM CLASS.CASE"""
    import unittest
    unittest.main(argv=sys.argv)
