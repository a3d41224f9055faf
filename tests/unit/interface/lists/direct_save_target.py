#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""A client of its own on the X server that plays user and drop target, written against the two protocols' texts.

    direct_save_target.py FROM_X FROM_Y MODE [FOLDER_URL | TO_X TO_Y]

The drag is begun by a small movement and goes on when a line comes on the standard input.

MODE "save" opens a window that takes drops, drags from the point given to it and asks for the file below FOLDER_URL.
MODE "refuse" opens a window that refuses. MODE "drag" opens none and drags to the point TO_X TO_Y. What happened is written
to the standard output, one "key: value" a line; "done: yes" is the last.
"""
import select
import sys
import time

from Xlib import X, Xatom, display
from Xlib.ext import xtest
from Xlib.protocol import event

LIMIT = 20  # seconds; only bounds a failing test


def say(key, value):
    print(f"{key}: {value}", flush=True)


class Target:
    def __init__(self, mode, folder):
        self.display = display.Display()
        self.mode, self.folder = mode, folder
        self.atoms = {}
        self.source = None
        self.finished = self.left = False
        self.types = []
        self.places = []
        root = self.display.screen().root
        self.window = root.create_window(700, 300, 200, 200, 0, X.CopyFromParent, override_redirect=True,
                                         event_mask=X.StructureNotifyMask | X.PropertyChangeMask)
        self.window.change_property(self.atom("XdndAware"), Xatom.ATOM, 32, [5])
        self.window.map()
        while self.display.next_event().type != X.MapNotify:
            pass

    def atom(self, name):
        if name not in self.atoms:
            self.atoms[name] = self.display.intern_atom(name)
        return self.atoms[name]

    def name(self, atom):
        return self.display.get_atom_name(atom)

    def answer(self, kind, data):
        self.source.send_event(event.ClientMessage(window=self.source, client_type=self.atom(kind), data=(32, data)))
        self.display.flush()

    def property_text(self):
        found = self.source.get_full_property(self.atom("XdndDirectSave0"), X.AnyPropertyType)
        return None if found is None else bytes(found.value).decode()

    def entered(self, data):
        self.source = self.display.create_resource_object("window", data[0])
        if data[1] & 1:
            self.types = list(self.source.get_full_property(self.atom("XdndTypeList"), Xatom.ATOM).value)
        else:
            self.types = [atom for atom in data[2:5] if atom]
        say("types", " ".join(self.name(atom) for atom in self.types))

    def moved(self, data):
        self.places.append((data[2] >> 16, data[2] & 0xffff))
        say("action", self.name(data[4]))
        takes = self.mode == "save"
        self.answer("XdndStatus", [self.window.id, 1 if takes else 0, 0, 0, self.atom("XdndActionCopy") if takes else 0])

    def dropped(self, data):
        say("name", self.property_text())
        address = f"{self.folder}/{self.property_text()}"
        self.source.change_property(self.atom("XdndDirectSave0"), self.atom("text/plain"), 8, address.encode())
        self.window.convert_selection(self.atom("XdndSelection"), self.atom("XdndDirectSave0"),
                                      self.atom("DROP_ANSWER"), data[2])
        self.display.flush()

    def answered(self):
        found = self.window.get_full_property(self.atom("DROP_ANSWER"), X.AnyPropertyType)
        say("answer", bytes(found.value).decode() if found else "none")
        self.answer("XdndFinished", [self.window.id, 1, self.atom("XdndActionCopy"), 0, 0])
        self.finished = True

    def handle(self, one):
        if one.type == X.SelectionNotify:
            self.answered()
        elif one.type == X.ClientMessage:
            kind = self.name(one.client_type)
            if kind == "XdndEnter":
                self.entered(one.data[1])
            elif kind == "XdndPosition":
                self.moved(one.data[1])
            elif kind == "XdndDrop":
                self.dropped(one.data[1])
            elif kind == "XdndLeave":
                say("left", "yes")
                self.left = True

    def serve(self, until, limit=LIMIT):
        """Handles events until the condition holds; whether it does after `limit` seconds at most."""
        end = time.monotonic() + limit
        while not until() and time.monotonic() < end:
            if not self.display.pending_events():
                select.select([self.display.fileno()], [], [], 0.05)
            while self.display.pending_events():
                self.handle(self.display.next_event())
        return until()


class Hand:
    """The user's hand, by the XTEST extension."""

    def __init__(self):
        self.display = display.Display()

    def move(self, x, y):
        xtest.fake_input(self.display, X.MotionNotify, x=x, y=y)
        self.display.sync()

    def button(self, kind):
        xtest.fake_input(self.display, kind, 1)
        self.display.sync()

    def drag(self, start, end):
        self.move(*start)
        self.button(X.ButtonPress)
        self.move(start[0] + 2, start[1])
        sys.stdin.readline()
        for step in range(1, 11):
            self.move(start[0] + (end[0] - start[0]) * step // 10, start[1] + (end[1] - start[1]) * step // 10)


def hover(hand, target):
    """Moves within the target until the source tells of a movement that it was not told before; whether it does.

    A drag begins where the pointer is then, which may be ahead of movements that the source has yet to read; and a
    source may leave out places while it waits for an answer. A hand of flesh would not notice either.
    """
    end = time.monotonic() + LIMIT
    step = 0
    while time.monotonic() < end:
        step += 1
        known = len(target.places)
        place = (801 + step % 2, 401)
        hand.move(*place)
        if target.serve(lambda: place in target.places[known:], 0.3):
            target.display.sync()  # the hand is another connection: it must come after the answer
            return True
    return False


def drag_to_target(hand, start, mode, folder):
    """Whether the drag came to its end."""
    target = Target(mode, folder)
    hand.drag(start, (800, 400))
    arrived = hover(hand, target)
    target.left = False
    hand.button(X.ButtonRelease)
    return target.serve(lambda: target.finished if mode == "save" else target.left) and arrived


def main():
    start, mode = (int(sys.argv[1]), int(sys.argv[2])), sys.argv[3]
    hand = Hand()
    if mode == "drag":
        hand.drag(start, (int(sys.argv[4]), int(sys.argv[5])))
        hand.button(X.ButtonRelease)
        done = True
    else:
        done = drag_to_target(hand, start, mode, sys.argv[4] if len(sys.argv) > 4 else "")
    say("done", "yes" if done else "no")


if __name__ == "__main__":
    main()
