"""One process serves: what viewers get, and that none of them is in the way of another or of the driver."""

import struct
import threading
import urllib.error
import urllib.request

import browser_frames
from browser_case import BrowserCase
from browser_frames import frame, ramp, wait_until
from browser_viewer import Viewer
from png import read_png


class Serving(BrowserCase):
    def test_frame_before_the_viewer_is_shown_whole(self):
        self.presenter.do("frame", 0, 200, 100, 1)
        viewer = self.viewer()
        viewer.until_shows(frame(200, 100, 1))
        self.assertEqual(viewer.screens[0]["source"], 0)
        self.assertEqual(viewer.screens[0]["program"], "client_frames.exe")

    def test_frames_follow_each_other_to_the_last_byte(self):
        viewer = self.viewer()
        for seed, (width, height) in enumerate([(200, 100), (100, 200), (64, 64), (1, 1), (130, 67)]):
            self.presenter.do("frame", 0, width, height, seed)
            viewer.until_shows(frame(width, height, seed))

    def test_unchanged_frames_send_nothing_and_a_changed_pixel_its_tile(self):
        self.presenter.do("frame", 0, 640, 480, 1)
        viewer = self.viewer()
        viewer.until_shows(frame(640, 480, 1))
        before = viewer.socket.bytes
        for _ in range(20):
            self.presenter.do("frame", 0, 640, 480, 1)
        self.presenter.do("patch", 0, 9, 100, 100)
        viewer.until_shows(frame(640, 480, 1, [(9, 100, 100)]))
        picture = viewer.picture()
        self.assertEqual((picture.updates, picture.tiles), (2, 1))
        self.assertLess(viewer.socket.bytes - before, 17000)

    def test_unplug_and_replug_while_watching_shows_the_new_screen(self):
        viewer = self.viewer()
        self.presenter.do("plug", 1)  # keeps the server
        self.presenter.do("frame", 0, 80, 60, 1)
        viewer.until_shows(frame(80, 60, 1))
        self.presenter.do("unplug", 0)
        viewer.until(lambda: [screen["source"] for screen in viewer.screens] == [1])
        self.presenter.do("plug", 0)
        self.presenter.do("frame", 0, 60, 80, 2)
        viewer.until_shows(frame(60, 80, 2))

    def test_last_unplug_ends_the_server_and_the_next_plug_begins_another(self):
        self.presenter.do("unplug", 0)
        self.assertFalse(browser_frames.is_listening(self.port))
        for seed in range(5):
            self.presenter.do("reload")
            self.presenter.do("plug", 0)
            self.presenter.do("frame", 0, 40, 30, seed)
            wait_until(lambda: browser_frames.is_listening(self.port), "the server")
            viewer = self.viewer()
            viewer.until_shows(frame(40, 30, seed))
            self.presenter.do("unplug", 0)
            with self.assertRaises((EOFError, ConnectionError)):
                while True:
                    viewer.step()

    def test_viewer_that_draws_nothing_gets_two_updates_and_then_the_newest(self):
        viewer = self.viewer(draws=False)
        viewer.step()
        for seed in range(30):
            self.presenter.do("frame", 0, 200, 100, seed)
            if seed < 2:
                viewer.step()
        other = self.viewer()
        other.until_shows(frame(200, 100, 29))
        self.assertEqual(viewer.picture().pixels, frame(200, 100, 1), "the second is the last that was sent")
        viewer.socket.send_json(drawn=viewer.screens[0]["id"])
        viewer.step()
        self.assertEqual(viewer.picture().pixels, frame(200, 100, 29), "the newest, and nothing in between")
        self.assertEqual(viewer.picture().dropped, 27)

    def test_viewers_that_never_read_delay_nobody(self):
        for _ in range(5):
            self.viewer(draws=False, receive_buffer=4096)
        viewer = self.viewer()
        longest = 0
        for seed in range(20):
            longest = max(longest, self.presenter.do("frame", 0, 800, 600, seed))
            viewer.until(lambda: viewer.picture().updates > seed)
        viewer.until_shows(frame(800, 600, 19))
        self.assertEqual(viewer.picture().dropped, 0)
        self.assertLess(longest, 2000, "milliseconds in the library")

    def test_twenty_viewers_all_see_the_newest(self):
        viewers = [self.viewer() for _ in range(20)]
        for seed in range(10):
            self.presenter.do("frame", 0, 320, 200, seed)
        for viewer in viewers:
            viewer.until_shows(frame(320, 200, 9))

    def test_viewer_that_goes_in_the_middle_of_a_frame_disturbs_nobody(self):
        staying = self.viewer()
        for seed in range(10):
            going = self.viewer(receive_buffer=4096)
            self.presenter.do("frame", 0, 640, 480, seed)
            going.socket.socket.recv(100)
            going.close()
            staying.until(lambda: staying.picture().updates > seed)
        staying.until_shows(frame(640, 480, 9))

    def test_clock_is_answered_with_the_time_that_frames_are_dated_with(self):
        viewer = self.viewer()
        viewer.socket.send_json(clock=1.5)
        viewer.until(lambda: viewer.clock is not None)
        begin = viewer.clock
        self.presenter.do("frame", 0, 8, 8, 1)
        viewer.until(lambda: viewer.picture().updates == 1)
        viewer.clock = None
        viewer.socket.send_json(clock=2)
        viewer.until(lambda: viewer.clock is not None)
        self.assertTrue(begin <= viewer.picture().time <= viewer.clock)

    def test_still_is_the_screen_as_a_png(self):
        def still(screen):
            with urllib.request.urlopen(f"http://127.0.0.1:{self.port}/still/{screen}.png", timeout=20) as answer:
                self.assertEqual(answer.headers["Content-Type"], "image/png")
                return answer.read()

        viewer = self.viewer()
        viewer.step()
        screen = viewer.screens[0]["id"]
        for missing in (screen, screen + 1):
            with self.assertRaisesRegex(urllib.error.HTTPError, "404"):
                still(missing)
        for seed, (width, height) in enumerate([(200, 130), (65, 300), (1, 1)]):
            self.presenter.do("frame", 0, width, height, seed)
            self.assertEqual(read_png(still(screen)), (width, height, frame(width, height, seed).tobytes()))

    def test_stills_of_a_large_screen_do_not_hold_up_viewers(self):
        self.presenter.do("frame", 0, 1920, 1080, 1)
        viewer = self.viewer()
        viewer.until(lambda: viewer.picture().updates == 1)
        address = f"http://127.0.0.1:{self.port}/still/{viewer.screens[0]['id']}.png"
        stills = [threading.Thread(target=lambda: urllib.request.urlopen(address, timeout=60).read()) for _ in range(4)]
        for still in stills:
            still.start()
        seen = 1
        while any(still.is_alive() for still in stills):
            self.presenter.do("patch", 0, seen + 1, 5, 5)
            viewer.until(lambda: viewer.picture().updates == seen + 1)
            seen += 1
        # One for each still is what a viewer would get that has to wait for them.
        self.assertGreater(seen, 2 * len(stills), "updates while the stills were made")

    def ramp_sent_to(self, viewer, blue):
        """Presents a ramp; its message, as words and whole. The viewer says that it has drawn it."""
        self.presenter.do("ramp", 0, 640, 480, blue)
        payload = viewer.socket.read()[1]
        words = struct.unpack_from("<12I", payload)
        viewer.socket.send_json(drawn=words[1])
        return words, payload

    def test_jpeg_mode_sends_compressed_pictures_in_order(self):
        viewer = Viewer(self.port)
        self.addCleanup(viewer.close)
        viewer.socket.send_json(jpeg=True)
        viewer.socket.send_json(clock=0)
        viewer.until(lambda: viewer.screens and viewer.clock is not None)  # answered: the wish has arrived before
        for blue in range(5):
            words, payload = self.ramp_sent_to(viewer, blue * 30)
            self.assertEqual(words[0], 2)
            self.assertEqual(words[3:5] + words[8:12], (640, 480, 0, 0, 640, 480))
            self.assertEqual(payload[48:51], b"\xff\xd8\xff")
            self.assertLess(len(payload), 60_000)
        self.presenter.do("patch", 0, 1, 639, 479)
        words = struct.unpack_from("<12I", viewer.socket.read()[1])
        self.assertEqual(words[8:12], (576, 448, 64, 32), "the tile that changed")
        viewer.socket.send_json(drawn=words[1])
        viewer.socket.send_json(jpeg=False)
        expected = ramp(640, 480, 120)
        expected[640 * 480 - 1] = frame(640, 480, 1)[640 * 480 - 1]
        viewer.until_shows(expected)

    def test_two_sources_of_one_process_are_two_screens(self):
        self.presenter.do("plug", 5)
        viewer = self.viewer()
        self.presenter.do("frame", 0, 80, 60, 1)
        self.presenter.do("frame", 5, 60, 80, 2)
        viewer.until_shows(frame(80, 60, 1), source=0)
        viewer.until_shows(frame(60, 80, 2), source=5)


if __name__ == "__main__":
    browser_frames.main_of_tests()
