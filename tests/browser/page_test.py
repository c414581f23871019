"""The page in a real browser: its canvases hold what was presented, to the last byte."""

import http.server
import re
import threading

import browser_frames
from browser_case import BrowserCase
from browser_frames import frame, ramp, wait_until
from browser_page import Page


class InABrowser(BrowserCase):
    def setUp(self):
        super().setUp()
        self.url = f"http://127.0.0.1:{self.port}/"

    def page(self, url=None):
        page = Page(url or self.url)
        self.addCleanup(page.close)
        return page

    def show(self, page, width, height, seed, source=0):
        self.presenter.do("frame", source, width, height, seed)
        page.until_shows(width, height, frame(width, height, seed), source=source)

    def test_landscape_and_portrait_sources_side_by_side(self):
        self.presenter.do("plug", 1)
        page = self.page()
        self.show(page, 320, 200, 1, source=0)
        self.show(page, 200, 320, 2, source=1)
        page.until_shows(320, 200, frame(320, 200, 1), source=0)

    def test_change_of_mode_and_single_pixels(self):
        page = self.page()
        self.show(page, 320, 200, 1)
        self.show(page, 200, 320, 2)
        self.show(page, 333, 77, 3)
        self.presenter.do("patch", 0, 9, 332, 76)
        page.until_shows(333, 77, frame(333, 77, 3, [(9, 332, 76)]))
        self.show(page, 64, 64, 4)

    def test_replug_with_another_size_is_shown_without_a_reload(self):
        self.presenter.do("plug", 1)  # keeps the server
        page = self.page()
        self.show(page, 320, 200, 1)
        page.run("window.loaded = true;")
        for seed, (width, height) in enumerate([(200, 320), (640, 480), (1, 1)], 2):
            self.presenter.do("unplug", 0)
            wait_until(lambda: page.canvases() == 1, "the end of the screen")
            self.presenter.do("plug", 0)
            wait_until(lambda: page.canvases() == 2, "the new screen")
            self.show(page, width, height, seed)
        self.assertTrue(page.run("return window.loaded;"), "the same page all the time")

    def test_replug_of_the_only_screen_ends_the_server_and_the_page_comes_back(self):
        page = self.page()
        self.show(page, 320, 200, 1)
        page.run("window.loaded = true;")
        self.presenter.do("unplug", 0)
        self.presenter.do("plug", 0)
        self.show(page, 200, 320, 2)
        self.assertEqual(page.canvases(), 1)
        self.assertTrue(page.run("return window.loaded;"), "the same page all the time")

    def test_many_frames_and_the_last_stands(self):
        page = self.page()
        for seed in range(60):
            self.presenter.do("frame", 0, 320, 200, seed)
        page.until_shows(320, 200, frame(320, 200, 59))

    def test_two_processes_and_one_takes_over_without_a_reload(self):
        page = self.page()
        self.show(page, 160, 100, 1)
        page.run("window.loaded = true;")
        second = self.present()
        wait_until(lambda: page.canvases() == 2, "the second canvas")
        first, other = page.run("return [...document.querySelectorAll('canvas')].map((c) => c.dataset.process);")
        second.do("frame", 0, 100, 160, 2)
        page.until_shows(100, 160, frame(100, 160, 2), process=other)
        page.until_shows(160, 100, frame(160, 100, 1), process=first)

        self.presenter.end()
        wait_until(lambda: page.canvases() == 1, "the first's end")
        second.do("frame", 0, 110, 70, 3)
        page.until_shows(110, 70, frame(110, 70, 3), process=other)
        self.assertTrue(page.run("return window.loaded;"), "the same page all the time")

    def test_caption_tells_size_shape_rate_age_and_drops(self):
        page = self.page()
        self.show(page, 200, 320, 1)
        told = re.compile(r"client_frames\.exe \(\d+\), source 0\s*200 × 320 portrait, \d+ frames/s, age ([\d.]+) ms, "
                          r"0 dropped")
        wait_until(lambda: told.search(page.caption()), "the caption")
        self.assertLess(float(told.search(page.caption())[1]), 10000)

    def difference(self, page, expected):
        """Of the canvas: the greatest of its bytes, and the mean."""
        canvas = page.canvas()
        if canvas is None or len(canvas[2]) != len(expected):
            return 255, 255
        pairs = zip(canvas[2].tobytes(), expected.tobytes())
        differences = [abs(shown - presented) for shown, presented in pairs]
        return max(differences), sum(differences) / len(differences)

    def test_jpeg_by_choice_is_nearly_the_picture_and_lossless_again_is_all_of_it(self):
        page = self.page()
        self.presenter.do("ramp", 0, 256, 130, 10)
        page.until_shows(256, 130, ramp(256, 130, 10))
        page.run("document.getElementById('jpeg').click();")
        wait_until(lambda: self.difference(page, ramp(256, 130, 10))[0] > 0, "a picture with loss")
        for blue in (60, 120, 200):
            self.presenter.do("ramp", 0, 256, 130, blue)
            wait_until(lambda: self.difference(page, ramp(256, 130, blue))[1] < 2, f"a picture like that of {blue}")
        page.run("document.getElementById('jpeg').click();")
        page.until_shows(256, 130, ramp(256, 130, 200))

    def test_still_is_a_png_of_what_was_presented(self):
        page = self.page()
        self.show(page, 200, 130, 1)
        name = page.run("""
            document.addEventListener("click", (event) => {
                event.preventDefault();
                window.still = {address: event.target.href, name: event.target.download};
            }, {once: true, capture: true});
            const link = document.createElement;
            document.createElement = (kind) => document.body.appendChild(link.call(document, kind));
            document.querySelector(".still").onclick();
            const answer = await fetch(window.still.address);
            const bitmap = await createImageBitmap(await answer.blob());
            const canvas = new OffscreenCanvas(bitmap.width, bitmap.height);
            const context = canvas.getContext("2d");
            context.drawImage(bitmap, 0, 0);
            const shown = document.querySelector("canvas").getContext("2d").getImageData(0, 0, 200, 130).data;
            const still = context.getImageData(0, 0, 200, 130).data;
            return [window.still.name, bitmap.width, bitmap.height, still.every((byte, at) => byte === shown[at])];""")
        self.assertEqual(name, ["source0-frame1.png", 200, 130, True])

    def test_f_shows_one_screen_whole(self):
        page = self.page()
        self.show(page, 64, 48, 1)
        for expected in ("FIGURE", None):
            for kind in ("keyDown", "keyUp"):
                page.call("Input.dispatchKeyEvent", type=kind, key="f", code="KeyF", text="f" * (kind == "keyDown"))
            wait_until(lambda: page.run("return document.fullscreenElement?.tagName ?? null;") == expected, "F")

    def test_page_of_another_origin_gets_nothing(self):
        class Foreign(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                self.send_response(200)
                self.send_header("Content-Type", "text/html")
                self.end_headers()
                self.wfile.write(b"<!DOCTYPE html><title>foreign</title>")

            def log_message(self, *_):
                pass

        server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Foreign)
        self.addCleanup(server.server_close)
        self.addCleanup(server.shutdown)
        threading.Thread(target=server.serve_forever, daemon=True).start()
        page = self.page(f"http://127.0.0.1:{server.server_port}/")
        wait_until(lambda: page.run("return document.title;") == "foreign", "the foreign page")
        opened = page.run(f"""
            const result = {{}};
            result.watch = await new Promise((resolve) => {{
                const socket = new WebSocket("ws://127.0.0.1:{self.port}/watch");
                socket.onopen = () => resolve(true);
                socket.onerror = () => resolve(false);
            }});
            result.fetch = await fetch("{self.url}view.js", {{mode: "no-cors"}}).then(() => true, () => false);
            return result;""")
        self.assertEqual(opened, {"watch": False, "fetch": False})


if __name__ == "__main__":
    browser_frames.main_of_tests()
