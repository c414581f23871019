"""A case that begins with a process which has plugged source 0, so that its library serves."""

import unittest

import browser_frames
from browser_frames import Presenter, wait_until
from browser_viewer import Viewer


class BrowserCase(unittest.TestCase):
    settings = {}  # of the first process

    def setUp(self):
        self.port = browser_frames.free_port()
        self.presenter = self.present(**self.settings)

    def present(self, **settings):
        presenter = Presenter(self.port, **settings)
        self.addCleanup(presenter.end)
        presenter.do("plug", 0)
        wait_until(lambda: browser_frames.is_listening(self.port), "the server")
        return presenter

    def viewer(self, **options):
        viewer = Viewer(self.port, **options)
        self.addCleanup(viewer.close)
        return viewer
