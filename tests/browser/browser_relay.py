"""A way in between, as an SSH forward is one: what comes to its port goes on to another, and back."""

import contextlib
import socket
import threading
import time


class Relay:
    """Relays to a port until it is cut; may begin again at the same port of its own."""

    def __init__(self, target, rate=None):
        """rate: bytes a second that come back through one connection."""
        self.target = target
        self.rate = rate
        self.port = 0
        self.lock = threading.Lock()
        self.flowing = threading.Event()  # cleared: bytes are held up, and connections stay
        self.flowing.set()
        self.begin()

    def begin(self):
        self.sockets = [socket.create_server(("127.0.0.1", self.port))]
        self.port = self.sockets[0].getsockname()[1]
        self._run(self._accept, self.sockets[0])

    def cut(self):
        """Ends the relay and every connection through it."""
        with self.lock:
            ended, self.sockets = self.sockets, []
        for each in ended:
            with contextlib.suppress(OSError):
                each.shutdown(socket.SHUT_RDWR)
            each.close()

    def _run(self, work, *arguments):
        def until_cut():
            with contextlib.suppress(OSError):
                work(*arguments)

        threading.Thread(target=until_cut, daemon=True).start()

    def _keep(self, *connections):
        """Whether the relay still runs; if not, they are closed."""
        with self.lock:
            if self.sockets:
                self.sockets.extend(connections)
                return True
        for connection in connections:
            connection.close()
        return False

    def _accept(self, listener):
        while True:
            near = listener.accept()[0]
            try:
                far = socket.create_connection(("127.0.0.1", self.target))
            except OSError:
                near.close()  # a forward takes the connection before it knows that nobody is there
                continue
            if self._keep(near, far):
                self._run(self._pump, near, far, None)
                self._run(self._pump, far, near, self.rate)

    def _pump(self, source, sink, rate):
        try:
            while data := source.recv(16384):
                self.flowing.wait()
                if rate:
                    time.sleep(len(data) / rate)
                sink.sendall(data)
        finally:
            for each in (source, sink):
                with contextlib.suppress(OSError):
                    each.shutdown(socket.SHUT_RDWR)
