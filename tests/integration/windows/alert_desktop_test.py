#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Alerts on desktops with a real window manager, a real compositor or a real Wayland compositor, looked at by a process
that does not show them.

Usage: alert_desktop_test.py CASE ALERT_HOST TYPING_WINDOW AGENT_BUNDLE PICTURES

CASE is the name of one of the functions at the end; pictures are written to the folder PICTURES. Exit status: 0 when the
case holds, 1 when it does not.
"""

import contextlib
import json
import os
import selectors
import subprocess
import sys
import tempfile
import time

LIMIT = 60.0  # seconds; only bounds a failure
PAUSE = 0.02  # seconds between two looks at what tells nobody that it changes
WIDTH, HEIGHT = 1280, 800
GROUND = 33  # grey; what the bezel makes of the opaque layer below it
LETTERS = "the quick brown fox jumps over the lazy dog and then it rests " * 4

OPENBOX = """<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><followMouse>no</followMouse></focus>
  <desktops><number>1</number><firstdesk>1</firstdesk><popupTime>0</popupTime></desktops>
  <keyboard><keybind key="A-Tab"><action name="NextWindow"><dialog>none</dialog><interactive>no</interactive><finalactions>
    <action name="Focus"/><action name="Raise"/></finalactions></action></keybind></keyboard>
  <mouse><context name="Client"><mousebind button="Left" action="Press"><action name="Focus"/></mousebind></context></mouse>
</openbox_config>"""

WESTON = """[core]
idle-time=0
[shell]
background-color=0xffffffff
panel-position=none
animation=none
startup-animation=none
close-animation=none
locking=false
"""

ENGLISH = {"title": "Power Off", "text": "Will run on Mar 14, 2026, 7:30 PM.", "button": "Cancel", "seconds": 239.5,
           "schedule": "Every evening", "otherwise": "The computer goes off unless you cancel."}
GERMAN = {"title": "Ausschalten", "text": "Wird am 14.03.2026, 19:30 ausgeführt.", "button": "Abbrechen",
          "seconds": 239.5, "schedule": "Jeden Abend",
          "otherwise": "Der Computer wird ausgeschaltet, wenn Sie nicht abbrechen."}
ARABIC = {"title": "إطفاء", "text": "سيُنفَّذ في ١٤ مارس ٢٠٢٦، ٧:٣٠ م.", "button": "إلغاء", "seconds": 239.5,
          "schedule": "كل مساء", "otherwise": "سيُطفأ الحاسوب ما لم تُلغِ."}


class Failure(Exception):
    pass


def expect(holds, sentence):
    if not holds:
        raise Failure(sentence)


def wait_until(what, condition):
    deadline = time.monotonic() + LIMIT
    while not condition():
        expect(time.monotonic() < deadline, f"waited in vain: {what}")
        time.sleep(PAUSE)


class Program:
    """A process that tells what happens, line by line."""

    def __init__(self, desk, *arguments, environment=()):
        self.process = desk.start(*arguments, environment=environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.lines = []
        self.rest = b""
        os.set_blocking(self.process.stdout.fileno(), False)
        self.selector = selectors.DefaultSelector()
        self.selector.register(self.process.stdout, selectors.EVENT_READ)

    def tell(self, **order):
        self.process.stdin.write(json.dumps(order).encode() + b"\n")
        self.process.stdin.flush()

    def read(self, limit=0.0):
        if self.selector.select(limit):
            content = self.process.stdout.read()
            expect(content, "the program has ended")
            *lines, self.rest = (self.rest + content).split(b"\n")
            self.lines += [line.decode() for line in lines]

    def wait_for(self, condition, what):
        """The first line for which the condition holds, which is taken away with those before it."""
        deadline = time.monotonic() + LIMIT
        while True:
            for number, line in enumerate(self.lines):
                if condition(line):
                    self.lines = self.lines[number + 1:]
                    return line
            expect(time.monotonic() < deadline, f"waited in vain: {what}; there is {self.lines}")
            self.read(1.0)

    def wait_for_line(self, line):
        return self.wait_for(lambda found: found == line, f'the line "{line}"')


class Desk:
    """An X display with what is asked for; everything ends with it."""

    def __init__(self, stack, programs):
        self.stack = stack
        self.host, self.typing, self.bundle, self.pictures = programs
        self.folder = stack.enter_context(tempfile.TemporaryDirectory())
        self.environment = {name: value for name, value in os.environ.items()
                            if name not in ("WAYLAND_DISPLAY", "QT_SCALE_FACTOR", "LANGUAGE", "LC_ALL", "LC_TIME")}
        self.environment.update({"XDG_RUNTIME_DIR": self.folder, "LANG": "C.UTF-8", "QT_QPA_PLATFORM": "xcb",
                                 "QT_FONT_DPI": "96", "NO_AT_BRIDGE": "1"})
        reading, writing = os.pipe()
        self.start("Xvfb", "-displayfd", str(writing), "-screen", "0", f"{WIDTH}x{HEIGHT}x24", "-nolisten", "tcp",
                   "-noreset", pass_fds=[writing])
        os.close(writing)
        with open(reading, encoding="ascii") as numbers:
            self.environment["DISPLAY"] = ":" + numbers.readline().strip()

    def start(self, *arguments, environment=(), **others):
        process = subprocess.Popen(arguments, env={**self.environment, **dict(environment)},
                                   stderr=subprocess.DEVNULL, **others)
        self.stack.callback(process.wait)
        self.stack.callback(process.kill)
        return process

    def call(self, *arguments):
        return subprocess.run(arguments, env=self.environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                              timeout=LIMIT, check=False).stdout

    def write(self, name, content):
        path = os.path.join(self.folder, name)
        with open(path, "w", encoding="utf-8") as file:
            file.write(content)
        return path

    def manage(self, composite=True):
        self.start("openbox", "--config-file", self.write("rc.xml", OPENBOX), "--sm-disable")
        for count in ("2", "1"):  # what it is asked before it hears is lost, windows that are to be shown as well
            wait_until("the window manager", lambda count=count: self.has_desktops(count))
        if composite:
            self.start("picom", "--config", "/dev/null", "--backend", "xrender")
            wait_until("the compositor", lambda: b"picom" in self.call("xdotool", "search", "--class", "picom",
                                                                       "getwindowname"))

    def has_desktops(self, count):
        """Whether the window manager does as it is asked."""
        self.call("xdotool", "set_num_desktops", count)
        return self.call("xprop", "-root", "_NET_NUMBER_OF_DESKTOPS").endswith(f"= {count}\n".encode())

    def show_desktop(self, *arguments):
        window = Program(self, self.typing, *arguments)
        window.wait_for_line("active")
        return window

    def alerts(self, *arguments, **environment):
        language = [] if "--language" in arguments else ["--language", "en"]
        return Program(self, self.host, "--bundle", self.bundle, *language, *arguments, environment=environment)

    def place(self, title):
        """Left, top, width, height of the window of that title; nothing without."""
        found = self.call("xdotool", "search", "--onlyvisible", "--name", f"^{title}$").split()
        if not found:
            return None
        values = dict(line.split("=") for line in
                      self.call("xdotool", "getwindowgeometry", "--shell", found[-1]).decode().split())
        if "X" not in values:
            return None  # it went meanwhile
        return [int(values[name]) for name in ("X", "Y", "WIDTH", "HEIGHT")]

    def screen(self):
        pixels = self.call("import", "-window", "root", "-depth", "8", "rgb:-")
        expect(len(pixels) == WIDTH * HEIGHT * 3, "the screen cannot be seen")
        return pixels

    def is_whole(self, place, scale=1):
        """Whether an alert is seen there in full: its opaque ground, and text on it."""
        if not place:
            return False
        left, top, width, height = place
        pixels = self.screen()
        row = [pixels[3 * ((top + 8 * scale) * WIDTH + x):][:3] for x in range(left + 20 * scale,
                                                                               left + width - 20 * scale)]
        inside = [pixels[3 * (y * WIDTH + x)] for y in range(top + 10, top + height - 10, 2)
                  for x in range(left + 10, left + width - 10)]
        return all(abs(channel - GROUND) <= 2 for pixel in row for channel in pixel) and \
            sum(value > 150 for value in inside) > 200

    def is_there(self, title, scale=1):
        return self.is_whole(self.place(title), scale)

    def photograph(self, name, around):
        left, top, width, height = around
        path = os.path.join(self.pictures, name + ".png")
        self.call("import", "-window", "root", "-crop", f"{width}x{height}+{left}+{top}", "+repage", "-strip", path)
        expect(os.path.getsize(path) > 2000, f"{path} shows nothing")

    def photograph_alert(self, name, titles, border=24):
        places = [self.place(title) for title in titles]
        left = max(0, min(place[0] for place in places) - border)
        top = max(0, min(place[1] for place in places) - border)
        right = min(WIDTH, max(place[0] + place[2] for place in places) + border)
        bottom = min(HEIGHT, max(place[1] + place[3] for place in places) + border)
        self.photograph(name, (left, top, right - left, bottom - top))


def seen_whole(desk):
    desk.manage()
    desk.show_desktop()
    alerts = desk.alerts()
    alerts.tell(show="a", **ENGLISH)
    wait_until("the alert", lambda: desk.is_there("Power Off"))
    left, top, width, _ = desk.place("Power Off")
    expect((left + width, top) == (WIDTH - 16, 16), "it is not at the top right")
    alerts.wait_for_line("ready a")
    alerts.tell(close="a")
    wait_until("the end of the alert", lambda: not desk.place("Power Off"))


def leaves_the_keys(desk):
    """200 letters, while an alert appears, changes and goes; its countdown goes on all the time."""
    desk.manage()
    page = desk.show_desktop()
    alerts = desk.alerts()
    letters = LETTERS[:200]
    typing = desk.start("xdotool", "type", "--delay", "20", letters)

    def typed(count):
        return page.wait_for(lambda line: expect(line != "lost", "the keys were taken away") or
                             (line.startswith("text ") and len(line) - 5 >= count), f"{count} letters")

    typed(20)
    alerts.tell(show="a", **{**ENGLISH, "seconds": 30})
    alerts.wait_for_line("ready a")
    expect(desk.is_there("Power Off"), "the alert cannot be seen")
    typed(80)
    alerts.tell(show="a", **{**ENGLISH, "text": "Will run sooner.", "seconds": 30})
    alerts.tell(show="b", **{**ENGLISH, "title": "Another"})
    typed(120)
    alerts.tell(close="a")
    alerts.tell(close="b")
    line = typed(200)
    expect(line == "text " + letters, f"what was typed is {line!r}")
    expect(typing.wait(LIMIT) == 0, "typing failed")
    expect(not [line for line in alerts.lines if line.split()[0] in ("activated", "closed", "later")],
           "the alert took a key")


def above_full_screen(desk):
    desk.manage()
    page = desk.show_desktop("--full-screen")
    alerts = desk.alerts()
    alerts.tell(show="a", **ENGLISH)
    wait_until("the alert", lambda: desk.is_there("Power Off"))
    desk.call("xdotool", "type", "abc")
    page.wait_for_line("text abc")
    expect(desk.is_there("Power Off"), "it went below")
    desk.photograph("full-screen", (0, 0, WIDTH, HEIGHT))


def bright_photograph(desk):
    desk.manage()
    desk.show_desktop("--ground", "photograph")
    alerts = desk.alerts()
    alerts.tell(show="a", **ENGLISH)
    wait_until("the alert, of which all is opaque", lambda: desk.is_there("Power Off"))
    desk.photograph_alert("bright", ["Power Off"], 60)


def keyboard_alone(desk):
    desk.manage()
    page = desk.show_desktop()
    alerts = desk.alerts()
    for number, (keys, outcome) in enumerate(((["Return"], "activated"), (["KP_Enter"], "activated"),
                                              (["space"], "activated"), (["Escape"], "closed"),
                                              (["Tab", "Return"], "closed"), (["Tab", "space"], "closed"),
                                              (["Tab", "Tab", "Return", "Down", "Return"], "later"))):
        name = f"case{number}"
        alerts.tell(show=name, **ENGLISH)
        alerts.wait_for_line("ready " + name)
        desk.call("xdotool", "key", "alt+Tab")
        page.wait_for_line("lost")
        wait_until("the keys", lambda: desk.call("xdotool", "getactivewindow", "getwindowname") == b"Power Off\n")
        if number == 0:
            wait_until("the ring", lambda: desk.is_there("Power Off"))
            desk.photograph_alert("focus", ["Power Off"])
        desk.call("xdotool", "key", "--delay", "60", *keys)
        alerts.wait_for_line(f"{outcome} {name}")
        wait_until("its end", lambda: not desk.place("Power Off"))
        page.wait_for_line("active")


def wayland(desk):
    desk.start("weston", "--backend=x11-backend.so", "--use-pixman", "--socket=wayland-alert",
               "--config=" + desk.write("weston.ini", WESTON), "--log=" + desk.folder + "/log", f"--width={WIDTH}",
               f"--height={HEIGHT}")
    wait_until("the compositor", lambda: os.path.exists(desk.folder + "/wayland-alert"))
    white = bytes([255]) * 3
    wait_until("its desktop", lambda: desk.screen()[3 * (WIDTH * 100 + 100):][:3] == white)  # far from the pointer
    alerts = desk.alerts(QT_QPA_PLATFORM="wayland", WAYLAND_DISPLAY="wayland-alert",
                         QT_WAYLAND_CLIENT_BUFFER_INTEGRATION="none")
    alerts.tell(show="a", **ENGLISH)
    ground = bytes([GROUND]) * 3 * 300  # so many points in a row
    wait_until("the alert", lambda: desk.screen().find(ground) >= 0)
    alerts.wait_for_line("ready a")
    start = desk.screen().find(ground) // 3
    desk.photograph("wayland", (max(0, start % WIDTH - 60), max(0, start // WIDTH - 40), 440, 300))
    # What is being typed presses nothing, wherever the compositor sends it.
    desk.call("xdotool", "type", "a b c\n")
    alerts.tell(close="a")
    wait_until("the end of the alert", lambda: desk.screen().find(ground) < 0)
    alerts.tell(show="b", **ENGLISH)
    alerts.wait_for_line("shown b")
    expect(not [line for line in alerts.lines if line.startswith("activated")], "it was cancelled by typing")


LOOKS = {
    "light": ("#e8ebef", ENGLISH, [], {}),
    "dark": ("#14171d", ENGLISH, ["--palette", "dark"], {}),
    "high-contrast": ("#000000", ENGLISH, ["--palette", "contrast"], {}),
    "2x": ("#8a99ad", ENGLISH, [], {"QT_SCALE_FACTOR": "2"}),
    "german": ("#8a99ad", GERMAN, ["--language", "de"], {}),
    "arabic": ("#8a99ad", ARABIC, ["--language", "ar"], {}),
    "large-font": ("#8a99ad", GERMAN, ["--language", "de", "--font-points", "16"], {}),
}


def pictures(desk):
    """Those of docs/images: alert-window-NAME.png."""
    desk.manage()
    for name, (ground, texts, arguments, environment) in LOOKS.items():
        desk.show_desktop("--ground", ground)
        alerts = desk.alerts(*arguments, **environment)
        alerts.tell(show="a", **texts)
        alerts.wait_for_line("ready a")
        wait_until("the alert", lambda texts=texts: desk.place(texts["title"]))
        desk.photograph_alert("alert-window-" + name, [texts["title"]])
        alerts.process.kill()
        alerts.process.wait()
    desk.show_desktop("--ground", "photograph")
    alerts = desk.alerts()
    titles = ["Power Off", "Command", "Sleep"]
    for number, title in enumerate(titles + ["Script", "Command"]):
        otherwise = {"Power Off": ENGLISH["otherwise"], "Sleep": "The computer goes to sleep unless you cancel."}
        alerts.tell(show=str(number), **{**ENGLISH, "title": title, "seconds": 239.5 + 60 * number,
                                         "otherwise": otherwise.get(title, "The action runs unless you cancel it.")})
    alerts.wait_for_line("ready 2")
    wait_until("three alerts", lambda: all(desk.is_there(title) for title in titles))
    desk.photograph_alert("alert-window-several", titles, 40)


def main(case, *programs):
    os.makedirs(programs[3], exist_ok=True)
    with contextlib.ExitStack() as stack:
        try:
            {function.__name__: function for function in
             (seen_whole, leaves_the_keys, above_full_screen, bright_photograph, keyboard_alone, wayland,
              pictures)}[case](Desk(stack, programs))
        except (Failure, OSError, subprocess.SubprocessError) as failure:
            print(failure, file=sys.stderr)
            return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:6]))
