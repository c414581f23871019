"""Watches as the page does, without a browser: applies updates to pictures and calls them drawn."""

import array
import json
import struct

from browser_socket import TEXT, WebSocket

TILE = 64
HEAD = struct.Struct("<5IQI")


def unpack(words, width, height):
    """The pixels of one tile."""
    pixels = array.array("I")
    at = 0
    while at < len(words):
        kind, count = words[at] >> 30, words[at] & 0x3FFFFFFF
        at += 1
        if kind == 0:
            pixels.extend(words[at:at + count])
            at += count
        elif kind == 1:
            pixels.extend(array.array("I", [words[at]]) * count)
            at += 1
        else:
            for _ in range(count):
                pixels.append(pixels[-width])
    assert len(pixels) == width * height and at == len(words)
    return pixels


class Picture:
    """What a page's canvas would hold."""

    def __init__(self):
        self.width = self.height = self.number = self.updates = self.dropped = 0
        self.time = 0  # microseconds of the library's clock
        self.tiles = 0  # of the last update
        self.pixels = array.array("I")

    def draw(self, message):
        _, _, number, width, height, self.time, count = HEAD.unpack_from(message)
        if (width, height) != (self.width, self.height):
            self.width, self.height = width, height
            self.pixels = array.array("I", bytes(width * height * 4))
        words = array.array("I", message)
        at = 8
        for _ in range(count):
            end = at + 2 + words[at + 1]
            self._place(words[at], words[at + 2:end])
            at = end
        assert at == len(words)
        if self.updates:
            self.dropped += number - self.number - 1
        self.number, self.tiles = number, count
        self.updates += 1

    def _place(self, tile, words):
        columns = (self.width + TILE - 1) // TILE
        x, y = tile % columns * TILE, tile // columns * TILE
        width, height = min(TILE, self.width - x), min(TILE, self.height - y)
        pixels = unpack(words, width, height)
        for row in range(height):
            begin = (y + row) * self.width + x
            self.pixels[begin:begin + width] = pixels[row * width:(row + 1) * width]


class Viewer:
    def __init__(self, port, draws=True, **options):
        """draws: whether updates are called drawn."""
        headers = {"Origin": f"http://127.0.0.1:{port}"}
        headers.update(options.pop("headers", {}))
        self.socket = WebSocket(port, headers=headers, **options)
        self.draws = draws
        self.screens = []
        self.pictures = {}  # by screen
        self.clock = None  # answer to the last question

    def close(self):
        self.socket.close()

    def step(self):
        """Takes one message."""
        kind, payload = self.socket.read()
        if kind == TEXT:
            message = json.loads(payload)
            self.screens = message.get("screens", self.screens)
            self.clock = message.get("clock", self.clock)
            return
        screen = struct.unpack_from("<I", payload, 4)[0]
        self.pictures.setdefault(screen, Picture()).draw(payload)
        if self.draws:
            self.socket.send_json(drawn=screen)

    def until(self, condition):
        """Takes messages until the condition holds; the socket's time limits each."""
        while not condition():
            self.step()

    def picture(self, source=0, process=None):
        """The picture of a source; one without an update if none came yet."""
        for screen in self.screens:
            if screen["source"] == source and process in (None, screen["process"]):
                return self.pictures.get(screen["id"], Picture())
        return Picture()

    def until_shows(self, frame, source=0, process=None):
        """Takes messages until the picture is the frame, which it has to be whole."""
        self.until(lambda: self.picture(source, process).pixels == frame)
