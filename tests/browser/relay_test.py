"""From elsewhere, over a relay as an SSH forward is one: another port, a line that is slow, hangs or is cut."""

import time
import urllib.request

import browser_frames
from browser_case import BrowserCase
from browser_frames import frame, wait_until
from browser_page import Page
from browser_relay import Relay
from browser_viewer import Viewer
from png import read_png


class OverARelay(BrowserCase):
    def setUp(self):
        super().setUp()
        self.relay = self.relay_to(self.port)

    def relay_to(self, port, **options):
        relay = Relay(port, **options)
        self.addCleanup(relay.cut)
        return relay

    def viewer(self, host="127.0.0.1", relay=None):
        port = (relay or self.relay).port
        viewer = Viewer(port, host=host, headers={"Origin": f"http://{host}:{port}"})
        self.addCleanup(viewer.close)
        return viewer

    def page(self, host="127.0.0.1"):
        page = Page(f"http://{host}:{self.relay.port}/")
        self.addCleanup(page.close)
        return page

    def state(self, page):
        return page.run("return document.getElementById('state').textContent;")

    def show(self, page, width, height, seed):
        self.presenter.do("frame", 0, width, height, seed)
        page.until_shows(width, height, frame(width, height, seed))

    def test_either_name_of_the_relay_s_own_port_is_served(self):
        for seed, host in enumerate(("127.0.0.1", "localhost")):
            viewer = self.viewer(host)
            self.presenter.do("frame", 0, 200, 100, seed)
            viewer.until_shows(frame(200, 100, seed))
            still = f"http://{host}:{self.relay.port}/still/{viewer.screens[0]['id']}.png"
            with urllib.request.urlopen(still, timeout=20) as answer:
                self.assertEqual(read_png(answer.read()), (200, 100, frame(200, 100, seed).tobytes()))

    def test_cut_ends_the_viewer_alone_and_the_next_one_sees_the_present_frame(self):
        gone = self.viewer()
        self.presenter.do("frame", 0, 200, 100, 1)
        gone.until_shows(frame(200, 100, 1))
        self.relay.cut()
        with self.assertRaises((EOFError, ConnectionError)):
            gone.step()
        for seed in range(20):
            self.presenter.do("frame", 0, 100, 200, seed)
        with self.assertRaises(ConnectionError):
            self.viewer()
        self.relay.begin()
        viewer = self.viewer()
        viewer.until_shows(frame(100, 200, 19))
        self.assertEqual(viewer.picture().updates, 1)

    def test_slow_line_the_newest_frame_is_never_more_than_three_updates_away(self):
        slow = self.relay_to(self.relay.target, rate=2_000_000)
        viewer = self.viewer(relay=slow)
        self.presenter.do("frame", 0, 320, 200, 0)
        viewer.until_shows(frame(320, 200, 0))
        presented = 1
        while viewer.picture().updates < 8:
            for _ in range(5):
                self.presenter.do("frame", 0, 320, 200, presented)
                presented += 1
                time.sleep(0.01)  # room for the library to send each
            viewer.step()
        before = viewer.picture().updates
        viewer.until_shows(frame(320, 200, presented - 1))
        self.assertLessEqual(viewer.picture().updates - before, 3, "two that were on their way, and the newest")
        self.assertEqual(viewer.picture().dropped, presented - viewer.picture().updates)

    def test_page_goes_on_without_a_reload_when_the_relay_comes_back(self):
        page = self.page("localhost")
        self.show(page, 160, 100, 1)
        page.run("window.loaded = true;")
        for seed in (2, 3):
            self.relay.cut()
            wait_until(lambda: "lost" in self.state(page), "the page's word of it")
            self.presenter.do("frame", 0, 100, 160, seed)
            self.relay.begin()
            page.until_shows(100, 160, frame(100, 160, seed))
        self.assertTrue(page.run("return window.loaded;"), "the same page all the time")

    def test_page_leaves_a_relay_that_hangs(self):
        page = self.page()
        self.show(page, 160, 100, 1)
        self.relay.flowing.clear()
        self.presenter.do("frame", 0, 100, 160, 2)
        wait_until(lambda: "lost" in self.state(page), "the page's word of it")
        self.relay.flowing.set()
        page.until_shows(100, 160, frame(100, 160, 2))


if __name__ == "__main__":
    browser_frames.main_of_tests()
