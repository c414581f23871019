"""A program that knows nothing of the driver, run as ./run --live does it: a browser shows what it draws."""

import array
import os
import subprocess
import unittest

import browser_frames
from browser_frames import BIN, RUN_WINE, canvas, end_session, wait_until
from browser_page import Page

WIDTH, HEIGHT = 160, 120


def drawn():
    """Of the scene ShowsForEver."""
    return array.array("I", (canvas(0xFF8000 if 10 <= x < 90 and 10 <= y < 100 else 0x203050)
                             for y in range(HEIGHT) for x in range(WIDTH)))


class ProgramLive(unittest.TestCase):
    def test_its_frames_are_in_the_page(self):
        port = browser_frames.free_port()
        process = subprocess.Popen(
            [RUN_WINE, "tesslo_run.exe", "--client", f"Z:{BIN}/TessloClientDllBrowser.dll",
             f"Z:{BIN}/interposer/interposed_program.exe", "ShowsForEver"],
            cwd=BIN, env=dict(os.environ, TESSLO_BROWSER_PORT=str(port), RUN_WINE_OVERRIDES="d3d9=n,b"),
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, start_new_session=True)
        self.addCleanup(end_session, process)
        wait_until(lambda: browser_frames.is_listening(port), "the server")
        page = Page(f"http://127.0.0.1:{port}/")
        self.addCleanup(page.close)
        page.until_shows(WIDTH, HEIGHT, drawn())


if __name__ == "__main__":
    browser_frames.main_of_tests()
