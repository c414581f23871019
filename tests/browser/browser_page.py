"""The library's page in a real browser: headless Chromium, asked through its own protocol."""

import array
import base64
import json
import re
import shutil
import subprocess
import tempfile
import urllib.request

from browser_frames import LONG, end_session, wait_until
from browser_socket import WebSocket

CHROMIUM = ("chromium-headless-shell", "chromium")

# The canvas of a source, and of a process if one is named.
FIND = """
    const canvas = [...document.querySelectorAll("canvas")].find((canvas) =>
        canvas.dataset.source === "%(source)s" && ("%(process)s" === "" || canvas.dataset.process === "%(process)s"));
"""
READ = FIND + """
    if (!canvas?.dataset.number)
        return null;
    const bytes = canvas.getContext("2d").getImageData(0, 0, canvas.width, canvas.height).data;
    let text = "";
    for (let at = 0; at < bytes.length; at += 8192)
        text += String.fromCharCode(...bytes.subarray(at, at + 8192));
    return {width: canvas.width, height: canvas.height, pixels: btoa(text)};
"""


class Page:
    """One browser with one page."""

    def __init__(self, url):
        program = next(filter(None, map(shutil.which, CHROMIUM)))
        self.folder = tempfile.TemporaryDirectory(prefix="tesslo-browser-", ignore_cleanup_errors=True)
        self.process = subprocess.Popen(
            [program, "--headless", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
             "--remote-debugging-port=0", f"--user-data-dir={self.folder.name}", "about:blank"],
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True,
            start_new_session=True)
        self.socket = None
        self.last = 0
        try:
            self._connect()
            self.call("Page.enable")
            self.call("Page.navigate", url=url)
        except BaseException:
            self.close()
            raise

    def _connect(self):
        for line in self.process.stderr:
            if found := re.search(r"ws://127\.0\.0\.1:(\d+)/", line):
                self.port = int(found[1])
                break
        else:
            raise EOFError("the browser ended")
        self.socket = WebSocket(self.port, self._target(), timeout=LONG)

    def _target(self):
        def pages():
            with urllib.request.urlopen(f"http://127.0.0.1:{self.port}/json/list", timeout=LONG) as answer:
                return [target for target in json.load(answer) if target["type"] == "page"]

        wait_until(pages, "the browser's page")
        return re.sub(r"^ws://[^/]*", "", pages()[0]["webSocketDebuggerUrl"])

    def close(self):
        if self.socket:
            try:
                self.call("Browser.close")
                self.process.wait(LONG)
            except (OSError, EOFError, subprocess.TimeoutExpired):
                pass
            self.socket.close()
        # The program is a script: the browser and its helpers are others of its session.
        end_session(self.process)
        self.process.stderr.close()
        self.folder.cleanup()

    def call(self, method, **parameters):
        self.last += 1
        self.socket.send_json(id=self.last, method=method, params=parameters)
        while True:
            message = json.loads(self.socket.read()[1])
            if message.get("id") == self.last:
                assert "error" not in message, message
                return message["result"]

    def run(self, script):
        """The value that the body of a function returns in the page; promises are waited for."""
        answer = self.call("Runtime.evaluate", expression="(async () => {" + script + "})()", returnByValue=True,
                           awaitPromise=True, userGesture=True)
        assert "exceptionDetails" not in answer, answer
        return answer["result"].get("value")

    def canvas(self, source=0, process=""):
        """(width, height, pixels) of a canvas; None before the first frame."""
        read = self.run(READ % {"source": source, "process": process})
        if read is None:
            return None
        return read["width"], read["height"], array.array("I", base64.b64decode(read["pixels"]))

    def until_shows(self, width, height, pixels, **which):
        wait_until(lambda: self.canvas(**which) == (width, height, pixels), f"the canvas of {which} as presented")

    def canvases(self):
        return self.run("return document.querySelectorAll('canvas').length;")

    def caption(self, source=0):
        return self.run(FIND % {"source": source, "process": ""} + "return canvas.parentElement.textContent;")
