#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""A person who has the accessibility bus of the session for eyes and hands, as a screen reader's user has.

Reads orders from standard input and answers each on standard output, a JSON object a line:
{"do": WHAT, "app": NAME, "role": ROLE, "name": PATTERN, ...} is answered by {"done": RESULT} or {"failure": SENTENCE}.
PATTERN is a regular expression for the whole name. Everything waits until it is there, for SECONDS (LIMIT) at most.
"""

import json
import re
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

LIMIT = 30.0  # seconds; only bounds a failure
PAUSE = 0.03  # seconds between two looks; no message tells when a tree is complete
ROWS = Atspi.Role.LIST_ITEM, Atspi.Role.TABLE_CELL  # the current one says that it has the keys, wherever they are
MOST_ROWS = 40  # of a list or table that are looked at


class Missing(Exception):
    """What is looked for is not there, or not yet."""


def is_in(node, *states):
    found = node.get_state_set()
    return all(found.contains(state) for state in states)


def children(node):
    most = node.get_child_count()
    if node.get_role() in (Atspi.Role.LIST, Atspi.Role.TABLE):
        most = min(most, MOST_ROWS)
    return filter(None, map(node.get_child_at_index, range(most)))


def nodes(node):
    """Those below it that are shown, in their order."""
    yield node
    for child in children(node):
        if is_in(child, Atspi.StateType.SHOWING):
            yield from nodes(child)


def windows(application):
    desktop = Atspi.get_desktop(0)
    desktop.clear_cache()
    for found in children(desktop):
        if found.get_name() == application:
            found.clear_cache()
            yield from (window for window in children(found) if is_in(window, Atspi.StateType.SHOWING))


def matches(node, order):
    return ((not order.get("role") or node.get_role_name() == order["role"])
            and re.fullmatch(order.get("name", ".*"), node.get_name() or "", re.DOTALL)
            and (not order.get("saying")
                 or re.fullmatch(order["saying"], Atspi.Text.get_text(node.get_text_iface(), 0, -1), re.DOTALL))
            and (not order.get("description")
                 or re.fullmatch(order["description"], node.get_description() or "", re.DOTALL)))


def find(order):
    for window in windows(order["app"]):
        for node in nodes(window):
            if matches(node, order):
                return node
    raise Missing("nothing is named so")


def usable(order):
    node = find(order)
    if not is_in(node, Atspi.StateType.ENABLED):
        raise Missing("it is disabled")
    return node


def act(node, *wanted):
    """Does the first of the wanted actions that it has."""
    interface = node.get_action_iface()
    names = [interface.get_action_name(index) for index in range(interface.get_n_actions())] if interface else []
    for name in wanted:
        if name in names:
            if not interface.do_action(names.index(name)):
                raise Missing(f"it does not do {name}")
            return
    raise Missing(f"it can do {names}")


def ready(order):
    """Waits until it can be used."""
    usable(order)


def press(order):
    act(usable(order), "Press", "Toggle", "ShowMenu", "click")


def check(order):
    """Has a check mark, or what can be pressed in, as it is wanted."""
    node = usable(order)
    if is_in(node, Atspi.StateType.CHECKED) != order["on"]:
        act(node, "Toggle", "Press")
        raise Missing("it does not stay as it was set")  # looked at again
    return None


def write(order):
    """Puts a text in the place of the one there."""
    node = usable(order)
    text = node.get_text_iface()
    if Atspi.Text.get_text(text, 0, -1) != order["text"]:
        if not Atspi.EditableText.set_text_contents(node.get_editable_text_iface(), order["text"]):
            raise Missing("its text cannot be changed")
        raise Missing(f"it stays {Atspi.Text.get_text(text, 0, -1)!r}")  # looked at again


def read(order):
    """The text of a field, or the name."""
    node = find(order)
    text = node.get_text_iface()
    return Atspi.Text.get_text(text, 0, -1) if text else node.get_name()


def choose(order):
    """A row of a list, a table or a tab bar."""
    node = usable(order)
    if not is_in(node, Atspi.StateType.SELECTED):
        parent = node.get_parent()
        selection = parent.get_selection_iface()
        if not (selection and selection.select_child(node.get_index_in_parent())):
            act(node, "Press", "toggle", "Toggle", "SetFocus")
        raise Missing("it is not chosen")  # looked at again


def focus(order):
    node = usable(order)
    if not is_in(node, Atspi.StateType.FOCUSED):
        act(node, "SetFocus")
        raise Missing("it does not take the keys")


def see(order):
    """What it is called, with what describes it and the place on the screen."""
    node = find(order)
    place = node.get_component_iface().get_extents(Atspi.CoordType.SCREEN)
    return {"name": node.get_name(), "description": node.get_description(),
            "place": [place.x, place.y, place.width, place.height]}


def focused(order):
    """What has the keys, of what role and where, as soon as it is another than "before"."""
    seen = None
    for window in windows(order["app"]):
        for node in nodes(window):
            if is_in(node, Atspi.StateType.FOCUSED) and node.get_role() not in ROWS:
                place = node.get_component_iface().get_extents(Atspi.CoordType.SCREEN)
                seen = [node.get_role_name(), node.get_name(), place.x, place.y]  # the innermost is the last
    if seen is None or seen == order.get("before"):
        raise Missing(f"the keys are at {seen}")
    return seen


def gone(order):
    try:
        find(order)
    except Missing:
        return
    raise Missing("it is still there")


def show(order):
    """All that can be seen, a line each: for who writes a test."""
    lines = []

    def walk(node, depth):
        lines.append("  " * depth + f"{node.get_role_name()} {node.get_name()!r} {node.get_description()!r}")
        for child in children(node):
            if is_in(child, Atspi.StateType.SHOWING):
                walk(child, depth + 1)
    for window in windows(order["app"]):
        walk(window, 0)
    return "\n".join(lines)


def obey(order):
    do = {function.__name__: function for function in (press, ready, check, write, read, choose, focus, see, focused, gone, show,
                                                       )}[order["do"]]
    deadline = time.monotonic() + order.get("limit", LIMIT)
    while True:
        try:
            return {"done": do(order)}
        except (Missing, GLib.Error, AttributeError) as missing:  # what goes while it is looked at has no interfaces
            if time.monotonic() > deadline:
                return {"failure": f"{order}: {missing}"}
        time.sleep(PAUSE)


def main():
    for line in sys.stdin:
        print(json.dumps(obey(json.loads(line))), flush=True)


if __name__ == "__main__":
    main()
