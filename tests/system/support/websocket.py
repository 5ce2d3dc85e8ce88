# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""As much of a WebSocket client as a browser's debugging port needs."""

import base64
import os
import socket
import struct
from urllib.parse import urlsplit

TEXT, CLOSE, PING, PONG = 0x1, 0x8, 0x9, 0xA


class WebSocket:
    def __init__(self, url, timeout=20):
        parts = urlsplit(url)
        self._socket = socket.create_connection((parts.hostname, parts.port), timeout)
        self._buffer = b""
        key = base64.b64encode(os.urandom(16)).decode()
        self._socket.sendall((f"GET {parts.path} HTTP/1.1\r\nHost: {parts.netloc}\r\n"
                              "Upgrade: websocket\r\nConnection: Upgrade\r\n"
                              f"Sec-WebSocket-Key: {key}\r\n"
                              "Sec-WebSocket-Version: 13\r\n\r\n").encode())
        while b"\r\n\r\n" not in self._buffer:
            self._fill()
        head, self._buffer = self._buffer.split(b"\r\n\r\n", 1)
        if b" 101 " not in head.split(b"\r\n")[0]:
            raise ConnectionError(head.decode("latin-1"))

    def _fill(self):
        data = self._socket.recv(65536)
        if not data:
            raise ConnectionError("the browser closed the connection")
        self._buffer += data

    def _take(self, count):
        while len(self._buffer) < count:
            self._fill()
        data, self._buffer = self._buffer[:count], self._buffer[count:]
        return data

    def _send_frame(self, opcode, payload):
        mask = os.urandom(4)
        length = len(payload)
        if length < 126:
            head = struct.pack("!BB", 0x80 | opcode, 0x80 | length)
        elif length < 65536:
            head = struct.pack("!BBH", 0x80 | opcode, 0x80 | 126, length)
        else:
            head = struct.pack("!BBQ", 0x80 | opcode, 0x80 | 127, length)
        masked = bytes(byte ^ mask[index % 4] for index, byte in enumerate(payload))
        self._socket.sendall(head + mask + masked)

    def _read_frame(self):
        first, second = self._take(2)
        length = second & 0x7F
        if length == 126:
            length, = struct.unpack("!H", self._take(2))
        elif length == 127:
            length, = struct.unpack("!Q", self._take(8))
        return bool(first & 0x80), first & 0x0F, self._take(length)

    def send(self, text):
        self._send_frame(TEXT, text.encode())

    def receive(self):
        message = b""
        while True:
            final, opcode, payload = self._read_frame()
            if opcode == PING:
                self._send_frame(PONG, payload)
            elif opcode == CLOSE:
                raise ConnectionError("the browser ended the conversation")
            elif opcode != PONG:
                message += payload
                if final:
                    return message.decode()

    def close(self):
        self._socket.close()
