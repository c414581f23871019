"""The whole way: the host program presents through the driver on a real Direct3D device, and a browser shows it."""

import os
import pathlib
import subprocess
import tempfile
import unittest

import browser_frames
from browser_frames import BIN, RUN_WINE, Presenter, end_session, wait_until
from browser_page import Page
from png import read_png

SCENE = ("--scene", "fill", "--source", "160x120", "--frames", "300")


class ThroughTheDriver(unittest.TestCase):
    def host(self, folder, *options, **settings):
        """folder: gets what the program leaves."""
        process = subprocess.Popen([RUN_WINE, "tesslo_host.exe", *SCENE, *options, "--out", "Z:" + folder], cwd=BIN,
                                   env=dict(os.environ, RUN_WINE_RESULTS=folder + "/overview.png", **settings),
                                   stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, start_new_session=True)
        self.addCleanup(end_session, process)
        return process

    def recorded(self, *options):
        """What the sample library records of the scene's frames."""
        with tempfile.TemporaryDirectory(prefix="tesslo-recorded-") as folder:
            host = self.host(folder, *options, "--every-frame")
            self.assertEqual(host.wait(60), 0)
            return {read_png(path.read_bytes()) for path in pathlib.Path(folder).glob("source0-*.png")}

    def shown(self, page, process):
        """The canvas in the form of a recorded picture; None if there is none."""
        canvas = page.canvas(process=process)
        if canvas is None:
            return None
        width, height, pixels = canvas
        data = pixels.tobytes()
        rows = bytearray(width * height * 3)
        for channel in range(3):
            rows[channel::3] = data[channel::4]
        return width, height, bytes(rows)

    def check(self, sizes, *options):
        """sizes: all that are seen, in any order."""
        recorded = self.recorded(*options)
        self.assertGreater(len(recorded), 100)
        port = browser_frames.free_port()
        first = Presenter(port)
        self.addCleanup(first.end)
        first.do("plug", 0)
        wait_until(lambda: browser_frames.is_listening(port), "the server")
        page = Page(f"http://127.0.0.1:{port}/")
        self.addCleanup(page.close)

        processes = "return [...document.querySelectorAll('canvas')].map((canvas) => canvas.dataset.process);"
        wait_until(lambda: len(page.run(processes)) == 1, "the first process's canvas")
        own, = page.run(processes)
        folder = tempfile.TemporaryDirectory(prefix="tesslo-shown-")
        self.addCleanup(folder.cleanup)
        host = self.host(folder.name, "--client", "TessloClientDllBrowser.dll", *options,
                         TESSLO_BROWSER_PORT=str(port))
        seen = set()
        while host.poll() is None:
            other = next((process for process in page.run(processes) if process != own), None)
            picture = other and self.shown(page, other)
            if picture:
                self.assertTrue(picture in recorded, "every picture is one that was presented, to the last byte")
                seen.add(picture)
        self.assertEqual(host.wait(), 0)
        self.assertGreater(len(seen), 5, "different pictures")
        self.assertEqual({picture[:2] for picture in seen}, sizes)

    def test_upright_source(self):
        self.check({(160, 120)})

    def test_source_on_its_side(self):
        self.check({(120, 160)}, "--rotation", "90")

    def test_source_that_changes_rotation_and_mode_while_it_is_shown(self):
        # Every other turn lies on its side and is of another mode.
        self.check({(160, 120), (90, 120)}, "--change-every", "30", "--fps", "60")


if __name__ == "__main__":
    browser_frames.main_of_tests()
