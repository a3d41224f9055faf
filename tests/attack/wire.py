# SPDX-License-Identifier: MIT
"""As much of D-Bus, written by hand, as an attacker or a caller needs (docs/wire-protocol.md)."""

import socket
import struct

OBJECT = "com.dozely.Object"
INTROSPECTABLE = "org.freedesktop.DBus.Introspectable"
PATH, INTERFACE, MEMBER, SIGNATURE = 1, 2, 3, 8  # fields of a header
METHOD_RETURN = 2
LARGEST = 1 << 23  # bytes of a reply; more is no reply


def greeting(user):
    """The handshake of that user, all that a client says before its first message."""
    return b"\0AUTH EXTERNAL " + str(user).encode().hex().encode() + b"\r\nBEGIN\r\n"


def padded(data, boundary):
    return data + bytes(-len(data) % boundary)


def text(value):
    data = value.encode()
    return struct.pack("<I", len(data)) + data + b"\0"


def field(code, kind, value):
    """One field of a header."""
    if kind == "g":
        return bytes((code, 1)) + b"g\0" + bytes((len(value),)) + value.encode() + b"\0"
    return bytes((code, 1)) + kind.encode() + b"\0" + text(value)


def call(path, member, signature="", body=b"", interface=OBJECT, serial=1):
    """A whole message that calls a method."""
    fields = [field(PATH, "o", path), field(INTERFACE, "s", interface), field(MEMBER, "s", member)]
    if signature:
        fields.append(field(SIGNATURE, "g", signature))
    header = b""
    for one in fields:
        header = padded(header, 8) + one
    head = struct.pack("<cBBBIII", b"l", 1, 0, 1, len(body), serial, len(header))
    return padded(head + header, 8) + body


def bulky(size):
    """A message of `size` bytes that is cheap to read: one array of bytes."""
    return call("/root", "pong", "ay", struct.pack("<I", size - 256) + bytes(size - 256))


def dense(size):
    """A message of `size` bytes that is dear to read: a list of small numbers, each eight bytes with its type."""
    count = (size - 256) // 8
    return call("/root", "pong", "av", struct.pack("<I", count * 8) + b"\1i\0\0\7\0\0\0" * count)


def notification(path, name, sender, user_info):
    """A message that posts a notification; `user_info` is a dictionary of texts."""
    body = padded(text(name), 4) + text(sender)
    entries = b""
    for key, value in user_info.items():
        entries = padded(entries, 8) + padded(text(key) + b"\1s\0", 4) + text(value)
    # The entries begin at a multiple of eight, which the length of the array does not count.
    body = padded(padded(body, 4) + struct.pack("<I", len(entries)), 8) + entries
    return call(path, "postNotification", "ssa{sv}", body)


class Refused(Exception):
    """What a stream or a call came to instead of an answer."""


class Stream:
    """A client's stream. Raises OSError and Refused."""

    def __init__(self, path, user, limit):
        self.socket = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        try:
            # Waits while the queue of the listener is full, which one that does not block would not.
            self.socket.setsockopt(socket.SOL_SOCKET, socket.SO_SNDTIMEO, struct.pack("ll", int(limit), 0))
            self.socket.connect(path)
            self.socket.settimeout(limit)
            self.socket.sendall(greeting(user))
            self.input = self.socket.makefile("rb")
            if not self.input.readline(512).startswith(b"OK "):
                raise Refused("the handshake was refused")
        except BaseException:
            self.close()
            raise

    def close(self):
        self.socket.close()

    def receive(self, size):
        data = self.input.read(size)
        if data is None or len(data) < size:
            raise Refused("the stream was closed")
        return data

    def answer(self, message):
        """Sends a call and returns the body of its result."""
        self.socket.sendall(message)
        kind, body_size, fields_size = struct.unpack("<xB2xI4xI", self.receive(16))
        if body_size > LARGEST or fields_size > LARGEST:
            raise Refused("the answer is no message")
        self.receive(fields_size + -fields_size % 8)
        body = self.receive(body_size)
        if kind != METHOD_RETURN:
            raise Refused(f"the answer is an error: {body[4:200]!r}")
        return body


def ping(path, user, limit):
    """One whole request on a connection of its own."""
    stream = Stream(path, user, limit)
    try:
        stream.answer(call("/root", "pong"))
    finally:
        stream.close()


def centre_of(path, user, limit):
    """The object path of the communication centre that listens there."""
    stream = Stream(path, user, limit)
    try:
        body = stream.answer(call("/root", "communicationCenter"))
    finally:
        stream.close()
    return body[4:-1].decode()
