#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Looks for alerts on the screen, by the accessibility bus of the session that it runs in.

Usage: alert_eye.py see|gone|do:NAME APPLICATION SECONDS

"see" waits for a window of the application (as the accessibility bus names it) with a button that bears a label, and
prints what it says and where it stands as one JSON object; "gone" waits until there is none. "do:NAME" waits for such
a window and has its button NAME do what it does, as a screen reader would. Exit status: 0, or 1 when
the time was over before.
"""

import json
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PAUSE = 0.05  # seconds between two looks


def widgets(node):
    yield node
    for index in range(node.get_child_count()):
        child = node.get_child_at_index(index)
        if child is not None:
            yield from widgets(child)


class Gone(Exception):
    """What is looked at has gone meanwhile."""


def place(node):
    component = node.get_component_iface()
    if component is None:
        raise Gone
    extents = component.get_extents(Atspi.CoordType.SCREEN)
    return [extents.x, extents.y, extents.width, extents.height]


def is_showing(node):
    states = node.get_state_set()
    return states is not None and states.contains(Atspi.StateType.SHOWING)


def can_be_pressed(button):
    """An alert takes no input before it has been seen for a moment."""
    states = button.get_state_set()
    return states is not None and states.contains(Atspi.StateType.SENSITIVE)


def alert_in(window):
    labels, button, later, hide = [], None, None, None
    for node in widgets(window):
        role = node.get_role()
        if role == Atspi.Role.LABEL and node.get_name() and is_showing(node):
            labels.append(node.get_name())
        elif node.get_name() == "Later" and is_showing(node) and later is None:
            later = node
        elif node.get_name() == "Hide" and is_showing(node):
            hide = node
        elif role == Atspi.Role.PUSH_BUTTON and node.get_name() and is_showing(node):
            button = node
    if button is None or not is_showing(window) or not can_be_pressed(button):
        return None
    return {"title": labels[0] if labels else "", "text": "\n".join(labels[1:]), "button": button.get_name(),
            "press": place(button), "later": later and place(later), "hide": hide and place(hide),
            "window": place(window), "role": window.get_role_name(), "description": window.get_description()}


def look(name):
    """The application's first alert; None without. What goes away while it is looked at is none."""
    try:
        desktop = Atspi.get_desktop(0)
        desktop.clear_cache()
        for application in filter(None, map(desktop.get_child_at_index, range(desktop.get_child_count()))):
            application.clear_cache()
            if application.get_name() != name:
                continue
            for window in filter(None, map(application.get_child_at_index, range(application.get_child_count()))):
                alert = alert_in(window)
                if alert is not None:
                    return alert
    except (Gone, GLib.Error):
        pass
    return None


def act(name, wanted):
    """Does what the widget of that name does, wherever in the application it is."""
    desktop = Atspi.get_desktop(0)
    for application in filter(None, map(desktop.get_child_at_index, range(desktop.get_child_count()))):
        if application.get_name() != name:
            continue
        for node in widgets(application):
            action = node.get_action_iface() if node.get_name() == wanted and is_showing(node) else None
            if action is not None:
                names = [action.get_action_name(index) for index in range(action.get_n_actions())]
                first = next((index for index, found in enumerate(names) if found in ("Press", "ShowMenu")), 0)
                return 0 if action.do_action(first) else 1
    print(f"nothing is named {wanted}", file=sys.stderr)
    return 1


def watch(wanted, application, seconds):
    """Two looks in a row must agree: a window that appears is still being moved to its place."""
    deadline = time.monotonic() + seconds
    former = object()
    while True:
        seen = look(application)
        if (seen is not None) == wanted and seen == former:
            return True, seen
        if time.monotonic() > deadline:
            return False, seen
        former = seen
        time.sleep(PAUSE)


def main(arguments):
    if len(arguments) != 3 or not (arguments[0] in ("see", "gone") or arguments[0].startswith("do:")):
        print(__doc__.strip(), file=sys.stderr)
        return 2
    came, alert = watch(arguments[0] != "gone", arguments[1], float(arguments[2]))
    if not came:
        print("an alert is still there" if alert else "no alert appeared", file=sys.stderr)
        return 1
    if arguments[0].startswith("do:"):
        return act(arguments[1], arguments[0].removeprefix("do:"))
    if alert is not None:
        print(json.dumps(alert))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
