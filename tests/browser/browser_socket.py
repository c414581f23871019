"""A WebSocket of the tests' own: it may also be rude."""

import base64
import json
import os
import socket
import struct

TEXT, BINARY, CLOSE, PING, PONG = 1, 2, 8, 9, 10


class WebSocket:
    """Connects and asks for a WebSocket. Raises ConnectionError if it is refused."""

    def __init__(self, port, target="/watch", headers=None, timeout=20, host="127.0.0.1", receive_buffer=None):
        self.socket = socket.socket()
        if receive_buffer:
            self.socket.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, receive_buffer)
        self.socket.settimeout(timeout)
        self.bytes = 0  # of messages that came
        try:
            self.socket.connect((host, port))
            self._ask(host, port, target, headers or {})
        except OSError:
            self.close()
            raise

    def _ask(self, host, port, target, headers):
        fields = {"Host": f"{host}:{port}", "Connection": "Upgrade", "Upgrade": "websocket",
                  "Sec-WebSocket-Version": "13", "Sec-WebSocket-Key": base64.b64encode(os.urandom(16)).decode()}
        fields.update(headers)
        lines = [f"GET {target} HTTP/1.1"] + [f"{name}: {value}" for name, value in fields.items() if value is not None]
        self.socket.sendall(("\r\n".join(lines) + "\r\n\r\n").encode())
        self.stream = self.socket.makefile("rb")
        status = self.stream.readline().decode()
        if " 101 " not in status:
            raise ConnectionError(status.strip() or "closed without an answer")
        while self.stream.readline().strip():
            pass

    def close(self):
        if hasattr(self, "stream"):
            self.stream.close()
        self.socket.close()

    def send(self, payload, kind=TEXT):
        payload = payload.encode() if isinstance(payload, str) else payload
        mask = os.urandom(4)
        length = len(payload)
        head = bytes([0x80 | kind])
        if length < 126:
            head += bytes([0x80 | length])
        elif length < 65536:
            head += bytes([0x80 | 126]) + struct.pack(">H", length)
        else:
            head += bytes([0x80 | 127]) + struct.pack(">Q", length)
        key = int.from_bytes(mask * (length // 4 + 1), "little") & ((1 << 8 * length) - 1)
        masked = (int.from_bytes(payload, "little") ^ key).to_bytes(length, "little")
        self.socket.sendall(head + mask + masked)

    def send_json(self, **message):
        self.send(json.dumps(message))

    def read(self):
        """The next message: (kind, bytes). Answers pings. Raises EOFError at the end."""
        while True:
            head = self._exactly(2)
            kind, length = head[0] & 15, head[1] & 127
            if length == 126:
                length = struct.unpack(">H", self._exactly(2))[0]
            elif length == 127:
                length = struct.unpack(">Q", self._exactly(8))[0]
            payload = self._exactly(length)
            if kind == PING:
                self.send(payload, PONG)
            elif kind == CLOSE:
                raise EOFError("closed")
            elif kind != PONG:
                self.bytes += length
                return kind, payload

    def _exactly(self, count):
        data = self.stream.read(count)
        if data is None or len(data) < count:
            raise EOFError("the connection ended")
        return data
