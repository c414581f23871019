"""Requests and messages that are wrong, by mistake or on purpose: refused, and nobody else notices."""

import array
import os
import socket
import struct
import time

import browser_frames
from browser_case import BrowserCase
from browser_frames import Presenter, frame
from browser_socket import BINARY, TEXT, WebSocket

TOKEN = "0123456789abcdef-_XYZ"


class Hostile(BrowserCase):
    """Each case ends with a viewer that was there before and sees the next frame."""

    root = "/"

    def setUp(self):
        super().setUp()
        self.bystander = self.viewer()
        self.addCleanup(self.bystander_sees_the_next_frame)

    def viewer(self, **options):
        return super().viewer(target=self.root + "watch", **options)

    def bystander_sees_the_next_frame(self):
        self.presenter.do("frame", 0, 70, 50, 99)
        self.bystander.until_shows(frame(70, 50, 99))

    def ask(self, data, host="127.0.0.1"):
        """Sends bytes and reads to the end: the status of the answer, 0 for none."""
        with socket.create_connection((host, self.port), timeout=20) as connection:
            answer = b""
            try:
                connection.sendall(data)
                while part := connection.recv(65536):
                    answer += part
            except ConnectionError:
                pass  # an answer that came before counts
            return int(answer.split()[1]) if answer.startswith(b"HTTP/1.1 ") else 0

    def get(self, target, **fields):
        fields = {"Host": f"127.0.0.1:{self.port}", **{name.replace("_", "-"): text for name, text in fields.items()}}
        lines = [f"GET {target} HTTP/1.1"] + [f"{name}: {text}" for name, text in fields.items()]
        return self.ask(("\r\n".join(lines) + "\r\n\r\n").encode())

    def refused(self, target="/watch", **headers):
        with self.assertRaises(ConnectionError) as raised:
            WebSocket(self.port, target, headers={name.replace("_", "-"): text for name, text in headers.items()})
        return str(raised.exception)

    def ends(self, web_socket):
        """Whether the server ends the connection, whatever it sent before."""
        try:
            while True:
                web_socket.read()
        except TimeoutError:
            return False
        except (EOFError, ConnectionError):
            return True


class HostileRequests(Hostile):
    def test_files_are_the_page_s_own_and_no_others(self):
        for name in ("", "view.js", "screen.js", "tiles.js", "clock.js", "style.css"):
            self.assertEqual(self.get("/" + name), 200, name)
        for target in ("/../view.js", "/../../../../etc/passwd", "/..\\..\\windows\\win.ini", "/%2e%2e/view.js",
                       "/page/view.js", "/./view.js", "//view.js", "/view.js/", "/view.js?x", "/VIEW.JS",
                       "/still/../view.js", "/C:/windows/win.ini", "/still/1.png/../../view.js", "/index.htm"):
            self.assertEqual(self.get(target), 404, target)

    def test_other_name_of_this_machine(self):
        self.assertEqual(self.get("/", Host="example.org"), 403)
        self.assertEqual(self.get("/", Host=f"rebound.example.org:{self.port}"), 403)
        self.assertIn("403", self.refused(Host="example.org", Origin="http://example.org"))

    def test_other_origin(self):
        for origin in ("http://example.org", "null", "https://127.0.0.1", "http://localhost:1"):
            self.assertIn("403", self.refused(Origin=origin))
        self.assertEqual(self.get("/view.js", Origin="http://example.org"), 403)
        self.assertEqual(self.get("/view.js", Sec_Fetch_Site="cross-site"), 403)

    def test_page_cannot_join(self):
        origin = f"http://127.0.0.1:{self.port}"
        self.assertIn("403", self.refused("/join"))
        self.assertIn("403", self.refused("/join", Origin=origin))
        self.assertIn("403", self.refused("/join", Origin=origin, Tesslo_Join="1"))

    def test_other_address_of_this_machine_is_not_listened_to(self):
        self.assertFalse(browser_frames.is_listening(self.port, "127.0.0.2"))

    def test_malformed_requests(self):
        host = f"Host: 127.0.0.1:{self.port}\r\n".encode()
        for data in (b"\r\n\r\n\r\n", b"\0" * 100 + b"\r\n\r\n", b"GET\r\n\r\n", b"GET / HTTP/9.9\r\n\r\n", b"GET /\r\n\r\n",
                     b"GET / HTTP/1.1\r\n\r\n", b"GET / HTTP/1.1\r\n" + host + host + b"\r\n",
                     b"GET / HTTP/1.1\r\n" + host + b"No colon\r\n\r\n", b"GET / HTTP/1.1\r\n : x\r\n\r\n",
                     b"GET / HTTP/1.1\r\n" + host + b"Content-Length: 5\r\n\r\nhello",
                     b"GET / HTTP/1.1\r\n" + host + b"Content-Length: -1\r\n\r\n",
                     b"GET / HTTP/1.1\r\n" + host + b"Transfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n0\r\n\r\n",
                     b"GET / HTTP/1.1\r\n" + host + b"\r\nGET / HTTP/1.1\r\n" + host + b"\r\n",
                     b"\x16\x03\x01\x02\x00\x01\x00\x01\xfc\x03\x03" + os.urandom(500), os.urandom(4000)):
            self.assertIn(self.ask(data + b"\r\n\r\n"), (0, 400), data[:80])

    def test_other_methods(self):
        for method in ("POST", "HEAD", "PUT", "OPTIONS", "TRACE"):
            request = f"{method} / HTTP/1.1\r\nHost: 127.0.0.1:{self.port}\r\n\r\n"
            self.assertEqual(self.ask(request.encode()), 405, method)

    def test_oversized_requests(self):
        self.assertIn(self.get("/" + "x" * 100_000), (0, 431))
        self.assertIn(self.get("/", Cookie="x" * 9000), (0, 431))
        self.assertIn(self.get("/", **{f"X{i}": "x" for i in range(3000)}), (0, 431))
        self.assertEqual(self.get("/", Cookie="x" * 7000), 200, "as much as browsers send is taken")

    def test_headers_that_come_slowly(self):
        slow = [socket.create_connection(("127.0.0.1", self.port), timeout=30) for _ in range(100)]
        for connection in slow:
            self.addCleanup(connection.close)
        begin = time.monotonic()

        def trickle(connection):
            """Whether the server still listens to it."""
            try:
                connection.sendall(b"G")
                connection.setblocking(False)
                return connection.recv(1) != b""
            except BlockingIOError:
                return True
            except OSError:
                return False
            finally:
                connection.settimeout(30)

        for connection in slow:
            trickle(connection)
        self.presenter.do("frame", 0, 40, 30, 5)
        newcomer = self.viewer()
        newcomer.until_shows(frame(40, 30, 5))
        self.assertLess(time.monotonic() - begin, 8, "seconds until a newcomer sees a frame")
        while slow and time.monotonic() - begin < 25:
            slow = [connection for connection in slow if trickle(connection)]
            time.sleep(0.2)
        self.assertEqual(slow, [], "a letter now and then keeps no connection")


class HostileMessages(Hostile):
    def test_of_a_viewer(self):
        self.presenter.do("frame", 0, 40, 30, 1)
        messages = [("", TEXT), ("x", TEXT), ("[]", TEXT), ("{}", TEXT), ("1", TEXT), ('{"drawn":-1}', TEXT),
                    ('{"drawn":"1"}', TEXT), ('{"drawn":1.5}', TEXT), ('{"clock":"x"}', TEXT), ('{"clock":null}', TEXT),
                    ("[" * 4000, TEXT), ('{"a":' * 800, TEXT), ("x" * 5000, TEXT), ("x" * 200_000, TEXT),
                    (b"\xff\xfe\xfd", TEXT), (b"", BINARY), (struct.pack("<8I", *range(8)), BINARY), (b"x", 3), (b"x", 11),
                    (b"x" * 126, 9)]
        for payload, kind in messages:
            viewer = self.viewer(timeout=10)
            try:
                viewer.socket.send(payload, kind)
            except ConnectionError:
                pass
            self.assertTrue(self.ends(viewer.socket), payload[:80])

    def test_drawn_that_were_never_sent(self):
        viewer = self.viewer()
        for screen in (0, 1, 7, 4294967295, 4294967296):
            for _ in range(10):
                viewer.socket.send_json(drawn=screen)
        self.presenter.do("frame", 0, 40, 30, 1)
        viewer.until_shows(frame(40, 30, 1))

    def test_bytes_that_are_no_frames(self):
        for data in (os.urandom(2000), b"\x81\x05hello", b"\x81\xff" + b"\xff" * 12, b"\xc1\x80\0\0\0\0", b"\0" * 100):
            viewer = self.viewer(timeout=10)
            viewer.socket.socket.sendall(data)
            self.assertTrue(self.ends(viewer.socket), data[:20])

    def test_questions_without_end_from_a_viewer_that_never_reads(self):
        viewer = self.viewer(draws=False, receive_buffer=4096, timeout=3)
        try:
            for _ in range(50_000):
                viewer.socket.send_json(clock=1)
        except OSError:
            pass  # the server may stop to read, or the connection end

    def guest(self):
        guest = WebSocket(self.port, "/join", headers={"Tesslo-Join": "1"}, timeout=10)
        self.addCleanup(guest.close)
        return guest

    def test_of_another_process(self):
        told = {"id": 1, "source": 0, "process": 7, "program": "x"}
        for text in ("x", "{}", '{"screens":1}', '{"screens":[1]}', '{"screens":[{}]}', '{"screens":[{"id":"x"}]}'):
            guest = self.guest()
            guest.send(text)
            self.assertTrue(self.ends(guest), text)
        guest = self.guest()
        guest.send_json(screens=[dict(told, id=number) for number in range(1000)])
        self.assertTrue(self.ends(guest), "a thousand screens")
        whole = [1, 1, 1, 2, 2, 0, 0, 1, 0, 2, 1 << 30 | 4, 5]  # one tile of 2 x 2 pixels
        for at, word in ((0, 2), (1, 2), (3, 0), (3, 100_000), (3, 3), (7, 0), (7, 2), (8, 1), (9, 3), (10, 1 << 30 | 5),
                         (10, 3 << 30 | 4)):
            guest = self.guest()
            guest.send_json(screens=[told])
            guest.send(array.array("I", whole[:at] + [word] + whole[at + 1:]).tobytes(), BINARY)
            self.assertTrue(self.ends(guest), (at, word))
        guest = self.guest()
        guest.send_json(screens=[told])
        guest.send(array.array("I", whole).tobytes(), BINARY)
        self.bystander.until(lambda: self.bystander.picture(process=7).pixels == array.array("I", [5] * 4))


class WithAToken(Hostile):
    settings = {"TESSLO_BROWSER_ADDRESS": "0.0.0.0", "TESSLO_BROWSER_TOKEN": TOKEN}
    root = f"/{TOKEN}/"

    def test_token_begins_every_address(self):
        self.assertEqual(self.get(self.root), 200)
        self.assertEqual(self.get(self.root + "view.js"), 200)
        for target in ("/", "/view.js", "/" + TOKEN, f"/{TOKEN[:-1]}/", f"/{TOKEN}x/", f"/{TOKEN.lower()}/", "//"):
            self.assertEqual(self.get(target), 403, target)
        self.assertIn("403", self.refused("/watch"))
        self.assertIn("403", self.refused("/join", Tesslo_Join="1"))
        self.assertIn("403", self.refused(self.root + "watch", Origin="http://example.org"))

    def test_other_addresses_are_listened_to(self):
        self.assertTrue(browser_frames.is_listening(self.port, "127.0.0.2"))

    def test_other_process_joins_with_the_token(self):
        second = Presenter(self.port, **self.settings)
        self.addCleanup(second.end)
        second.do("plug", 3)
        second.do("frame", 3, 40, 30, 1)
        self.bystander.until_shows(frame(40, 30, 1), source=3)


class WithoutAToken(Hostile):
    settings = {"TESSLO_BROWSER_ADDRESS": "0.0.0.0"}

    def test_other_addresses_are_not_listened_to(self):
        self.assertFalse(browser_frames.is_listening(self.port, "127.0.0.2"))


if __name__ == "__main__":
    browser_frames.main_of_tests()
