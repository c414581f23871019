"""What the library takes: no thread's time while nobody watches, and no more memory for whoever never reads."""

import time

import browser_frames
import browser_process
from browser_case import BrowserCase
from browser_frames import frame, wait_until

SECONDS = 6  # at least, of frames that change
FRAMES = 300  # at least
SIZE = (640, 480)
FRAME_BYTES = SIZE[0] * SIZE[1] * 4


class Resources(BrowserCase):
    def process(self, presenter):
        return browser_process.find(presenter.process.pid, "client_frames.exe")

    def until_at_rest(self):
        def rests():
            before = browser_process.turns(self.process(self.presenter))
            time.sleep(0.2)
            return browser_process.turns(self.process(self.presenter)) == before

        wait_until(rests, "the rest of the library's threads")

    def check_nothing_runs(self):
        """While frames change: they are copied, on the thread that delivers them.

        On a busy machine the threads' start may go on behind a rest: a thread that runs for frames runs every time.
        """
        self.presenter.do("frame", 0, *SIZE, 1)
        turns = []
        while 0 not in turns and len(turns) < 3:
            self.until_at_rest()
            before = browser_process.turns(self.process(self.presenter))
            for seed in range(200):
                self.presenter.do("frame", 0, *SIZE, seed)
            turns.append(browser_process.turns(self.process(self.presenter)) - before)
        self.assertIn(0, turns, "turns of the library's threads")

    def check_newcomer_sees_alone(self, seed):
        viewer = self.viewer()
        viewer.until_shows(frame(*SIZE, seed))
        self.assertEqual(viewer.picture().updates, 1)
        viewer.close()

    def test_nobody_watches_no_thread_runs_and_the_first_viewer_sees_the_present_frame(self):
        self.check_nothing_runs()
        self.check_newcomer_sees_alone(199)

    def test_nobody_watches_any_more_no_thread_runs_and_the_next_viewer_sees_the_present_frame(self):
        self.presenter.do("frame", 0, *SIZE, 300)
        self.check_newcomer_sees_alone(300)
        self.check_nothing_runs()
        self.check_newcomer_sees_alone(199)

    def check_memory(self, presenter, annoy):
        """Frames change, and change on: by then all buffers on the way are full."""

        def change(seconds):
            frames, end = 0, time.monotonic() + seconds
            while time.monotonic() < end or frames < FRAMES:
                presenter.do("frame", 0, *SIZE, frames)
                annoy()
                frames += 1
            return frames

        change(SECONDS / 5)
        processes = {self.process(each) for each in (self.presenter, presenter)}
        before = {process: browser_process.memory(process) for process in processes}
        frames = change(SECONDS)
        for process in processes:
            grown = browser_process.memory(process) - before[process]
            self.assertLess(grown, 2 * FRAME_BYTES, f"bytes more after {frames} frames")

    def test_viewer_that_never_reads_takes_no_more_with_time(self):
        self.viewer(draws=False, receive_buffer=4096)
        self.check_memory(self.presenter, lambda: None)

    def test_viewer_that_never_reads_but_calls_all_drawn_takes_no_more_with_time(self):
        viewer = self.viewer(draws=False, receive_buffer=4096)
        viewer.step()
        screen = viewer.screens[0]["id"]

        def annoy():
            viewer.socket.send_json(drawn=screen)
            viewer.socket.send_json(clock=1)

        self.check_memory(self.presenter, annoy)

    def test_viewer_of_compressed_pictures_that_never_reads_takes_no_more_with_time(self):
        viewer = self.viewer(draws=False, receive_buffer=4096)
        viewer.socket.send_json(jpeg=True)
        viewer.step()
        screen = viewer.screens[0]["id"]
        self.check_memory(self.presenter, lambda: viewer.socket.send_json(drawn=screen))

    def test_viewer_that_never_reads_takes_no_more_of_the_second_process_with_time(self):
        second = self.present()
        viewer = self.viewer(draws=False, receive_buffer=4096)
        viewer.until(lambda: len(viewer.screens) == 2)
        self.check_memory(second, lambda: None)


if __name__ == "__main__":
    browser_frames.main_of_tests()
