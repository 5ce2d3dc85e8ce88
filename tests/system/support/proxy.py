# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""Listeners that see what goes over the wire."""

import re
import socket
import socketserver
import threading
from dataclasses import dataclass
from urllib.parse import unquote

SECRET_PATTERNS = {
    "access token": [rb'"access_token"\s*:\s*"([^"]+)"', rb"(?i)authorization: bearer (\S+)"],
    "refresh token": [rb'"refresh_token"\s*:\s*"([^"]+)"', rb"[&\n]refresh_token=([^&\s]+)",
                      rb"[&\n]token=([^&\s]+)"],
    "code": [rb"[?&\n]code=([^&\s]+)"],
    "verifier": [rb"[&\n]code_verifier=([^&\s]+)"],
}


@dataclass(frozen=True)
class Request:
    method: str
    target: str
    head: bytes
    body: bytes

    @property
    def path(self):
        return self.target.split("?")[0]

    def header(self, name):
        found = re.search(rb"(?im)^" + name.encode() + rb":[ \t]*(.*?)\r?$", self.head)
        return found.group(1).decode("latin-1") if found else None


def read_request(stream):
    """The next request of a connection, None at its end."""
    head = b""
    while not head.endswith(b"\r\n\r\n"):
        line = stream.readline(65536)
        if not line:
            return None
        head += line
    method, target, _ = head.split(b"\r\n", 1)[0].decode("latin-1").split(" ", 2)
    request = Request(method, target, head, b"")
    length = int(request.header("Content-Length") or 0)
    return Request(method, target, head, stream.read(length))


class Listener:
    """Serves every connection to a port of its own in a thread."""

    def __init__(self):
        self.requests = []
        serve = self.serve

        class Handler(socketserver.StreamRequestHandler):
            def handle(self):
                try:
                    serve(self.connection, self.rfile)
                except OSError:
                    pass

        class Server(socketserver.ThreadingTCPServer):
            daemon_threads = True
            block_on_close = False

        self._server = Server(("127.0.0.1", 0), Handler)
        self.port = self._server.server_address[1]
        self.base_url = f"http://127.0.0.1:{self.port}"
        threading.Thread(target=self._server.serve_forever, args=(0.05,), daemon=True).start()

    def serve(self, connection, stream):
        raise NotImplementedError

    def close(self):
        self._server.shutdown()
        self._server.server_close()


class Trap(Listener):
    """Another origin. It keeps what it is asked, and has nothing to give."""

    def serve(self, connection, stream):
        while (request := read_request(stream)) is not None:
            self.requests.append(request)
            connection.sendall(b"HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n")


class RecordingProxy(Listener):
    """Stands in front of the service under an address of its own, and keeps every byte."""

    def __init__(self, service_port):
        self._service_port = service_port
        self._seen = []
        self._redirects = {}
        super().__init__()

    def redirect_once(self, path, location):
        """Sends the next request for `path` elsewhere."""
        self._redirects[path] = location

    def redirects_left(self):
        return dict(self._redirects)

    def serve(self, connection, stream):
        seen = bytearray()
        self._seen.append(seen)
        with socket.create_connection(("127.0.0.1", self._service_port)) as service:
            threading.Thread(target=self._pump, args=(service, connection), daemon=True).start()
            while (request := read_request(stream)) is not None:
                self.requests.append(request)
                seen += request.head + b"\n" + request.body + b"\n"
                location = self._redirects.pop(request.path, None)
                if location:
                    connection.sendall(b"HTTP/1.1 302 Found\r\nContent-Length: 0\r\nLocation: "
                                       + location.encode() + b"\r\n\r\n")
                else:
                    service.sendall(self._addressed(request.head) + request.body)
            service.shutdown(socket.SHUT_WR)

    def _addressed(self, head):
        """The service answers only to its own name."""
        return re.sub(rb"(?im)^host:.*?\r$", b"Host: 127.0.0.1:%d\r" % self._service_port, head,
                      count=1)

    def _pump(self, service, connection):
        seen = bytearray()
        self._seen.append(seen)
        try:
            while data := service.recv(65536):
                seen += data
                connection.sendall(data)
            connection.shutdown(socket.SHUT_RDWR)
        except OSError:
            pass

    def secrets(self):
        """{secret: kind} of every token, code and verifier that passed by."""
        found = {}
        for seen in list(self._seen):
            for kind, patterns in SECRET_PATTERNS.items():
                for pattern in patterns:
                    for match in re.findall(pattern, bytes(seen)):
                        found[unquote(match.decode("latin-1"))] = kind
        return found
