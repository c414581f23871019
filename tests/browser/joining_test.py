"""Several processes with the library: one serves, the others join it, and another takes over when it ends."""

import unittest

import browser_frames
from browser_frames import Presenter, frame, wait_until
from browser_viewer import Viewer


class Joining(unittest.TestCase):
    def setUp(self):
        self.port = browser_frames.free_port()
        self.first = self.presenter()
        wait_until(lambda: browser_frames.is_listening(self.port), "the server")

    def presenter(self, **settings):
        presenter = Presenter(self.port, **settings)
        self.addCleanup(presenter.end)
        presenter.do("plug", 0)
        return presenter

    def viewer(self, **options):
        viewer = Viewer(self.port, **options)
        self.addCleanup(viewer.close)
        return viewer

    def until_screens(self, viewer, count):
        viewer.until(lambda: len(viewer.screens) == count)
        return [screen["process"] for screen in viewer.screens]

    def test_second_process_is_shown_beside_the_first(self):
        self.first.do("frame", 0, 80, 60, 1)
        viewer = self.viewer()
        first, = self.until_screens(viewer, 1)
        second = self.presenter()
        other = next(process for process in self.until_screens(viewer, 2) if process != first)
        for seed, (width, height) in enumerate([(200, 100), (100, 200), (300, 30)]):
            second.do("frame", 0, width, height, seed)
            viewer.until_shows(frame(width, height, seed), process=other)
        viewer.until_shows(frame(80, 60, 1), process=first)

    def test_frames_of_the_second_before_any_viewer_are_not_lost(self):
        second = self.presenter()
        for seed in range(20):
            second.do("frame", 0, 80, 60, seed)
        viewer = self.viewer()
        self.until_screens(viewer, 2)
        viewer.until(lambda: any(picture.pixels == frame(80, 60, 19) for picture in viewer.pictures.values()))

    def test_nobody_watches_the_second_sends_two_updates_and_rests(self):
        second = self.presenter()
        for seed in range(40):
            second.do("frame", 0, 80, 60, seed)
        viewer = self.viewer()
        self.until_screens(viewer, 2)
        viewer.until(lambda: any(picture.number == 40 for picture in viewer.pictures.values()))
        updates = max(picture.updates for picture in viewer.pictures.values())
        self.assertLessEqual(updates, 3)

    def test_second_process_ends_its_screen_goes(self):
        viewer = self.viewer()
        first, = self.until_screens(viewer, 1)
        second = self.presenter()
        self.until_screens(viewer, 2)
        second.end()
        self.assertEqual(self.until_screens(viewer, 1), [first])

    def test_second_process_unplugs_its_screen_goes(self):
        viewer = self.viewer()
        second = self.presenter()
        second.do("plug", 1)
        self.until_screens(viewer, 3)
        second.do("unplug", 1)
        self.until_screens(viewer, 2)
        second.do("unplug", 0)
        self.until_screens(viewer, 1)

    def take_over(self, end):
        second, third = self.presenter(), self.presenter()
        viewer = self.viewer()
        gone = self.until_screens(viewer, 3)[0]
        end()

        def is_another():
            # Wine may keep a killed process's sockets: an old connection need not end, and a new one need not begin.
            try:
                self.next = self.viewer(timeout=2)
                return gone not in self.until_screens(self.next, 2)
            except OSError:
                return False

        wait_until(is_another, "another server")
        second.do("frame", 0, 80, 60, 1)
        third.do("frame", 0, 60, 80, 2)
        for shown in (frame(80, 60, 1), frame(60, 80, 2)):
            self.next.until(lambda: any(picture.pixels == shown for picture in self.next.pictures.values()))

    def test_serving_process_ends_another_takes_over(self):
        self.take_over(self.first.end)

    def test_serving_process_unplugs_another_takes_over(self):
        self.take_over(lambda: self.first.do("unplug", 0))

    def test_viewer_that_never_reads_keeps_no_other_from_the_second_process(self):
        self.viewer(draws=False, receive_buffer=4096)
        viewer = self.viewer()
        second = self.presenter()
        self.until_screens(viewer, 2)
        for seed in range(10):
            second.do("frame", 0, 800, 600, seed)
        viewer.until(lambda: any(picture.pixels == frame(800, 600, 9) for picture in viewer.pictures.values()))


if __name__ == "__main__":
    browser_frames.main_of_tests()
