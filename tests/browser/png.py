"""Reads the pictures that the client libraries write."""

import struct
import zlib


def read_png(data):
    """(width, height, bytes of the pixels) of a picture of 8 bits a channel, whose rows are stored as they are."""
    assert data[:8] == b"\x89PNG\r\n\x1a\n"
    at, packed = 8, b""
    while at < len(data):
        length, kind = struct.unpack_from(">I4s", data, at)
        if kind == b"IHDR":
            width, height, depth, colours = struct.unpack_from(">IIBB", data, at + 8)
        elif kind == b"IDAT":
            packed += data[at + 8:at + 8 + length]
        at += 12 + length
    assert depth == 8
    pitch = 1 + width * {2: 3, 6: 4}[colours]
    rows = zlib.decompress(packed)
    assert len(rows) == pitch * height and not any(rows[::pitch])
    return width, height, b"".join(rows[y * pitch + 1:(y + 1) * pitch] for y in range(height))
