# SPDX-License-Identifier: MIT
"""Does what docs/plug-in-tutorial.md says, twice in a row, with the daemon and agent of the installed build running.

    tutorial_test.py BUILD SOURCE PREFIX LIBDIR CXX FLAGS SETTINGS_PROBE [unittest arguments]

A block of the tutorial that begins with ```sh is run as it stands. A block ```text behind it is what the command shows:
each of its lines, … standing for anything, has to come; a block that only looks is repeated until it does. The machine
is a scratch folder: what is installed goes there (DESTDIR, and the folder of plug-ins), sudo and apt-get are stand-ins.
FLAGS are the compiler flags of the build, which a plug-in needs when it is a sanitized one.
"""
import contextlib
import os
import plistlib
import re
import shutil
import subprocess
import sys
import time
import unittest
from pathlib import Path

BUILD, SOURCE, PREFIX, LIBDIR, CXX, FLAGS, SETTINGS_PROBE = sys.argv[1:8]
SOURCE = Path(SOURCE)
sys.path.insert(0, str(SOURCE / "scripts"))
from pages import blocks, is_shown, write_stand_ins  # pylint: disable=wrong-import-position
from scratch_system import PLUG_INS, SOCKETS, System, scratch  # pylint: disable=wrong-import-position

TUTORIAL = SOURCE / "docs/plug-in-tutorial.md"
LOG = "var/log/dozely.log"
MODULES = "Farewell.plugin/Contents/Linux"
LIMIT = 30.0  # seconds for what a block shows to come; only bounds a failure
LOOKS = re.compile(r"(sudo )?dozely-admin (log|list)\b.*\n?")
STAND_INS = {
    "sudo": 'exec "$@"\n',
    # Nothing is fetched: what the tutorial names has to be here.
    "apt-get": """[ "$1" = install ] || exit 1
shift
for package; do
    dpkg-query --show --showformat='${Status}' "$package" | grep -qx "install ok installed" || exit 1
done
""",
}


class InstalledSystem(System):
    """What `cmake --install` makes of the build, below the scratch folder."""

    def lay_out(self, more_plug_ins=()):
        del more_plug_ins
        subprocess.run(["cmake", "--install", BUILD], env={**os.environ, "DESTDIR": self.root}, check=True,
                       stdout=subprocess.DEVNULL)
        for folder in ("Library/Preferences", "private/var/tmp", "run", "var/lib/dozely", "var/log", "usr/bin",
                       "usr/sbin", "home", "stand-ins", self.runtime):
            os.makedirs(self.path(folder), mode=0o755, exist_ok=True)
        self.prefix = self.path(PREFIX.lstrip("/"))
        self.environment["LD_LIBRARY_PATH"] = os.path.join(self.prefix, LIBDIR)
        self.session_environment = {"LANG": "fr_FR.UTF-8"}
        for name, folder in (("dozelyd", "sbin"), ("dozely-admin", "bin")):
            if not os.path.exists(self.path(f"usr/{folder}/{name}")):
                os.symlink(f"{self.prefix}/{folder}/{name}", self.path(f"usr/{folder}/{name}"))
        self.stand_ins()
        self.close_to_others()
        os.chmod(self.runtime, 0o700)
        if os.geteuid() == 0:
            os.chown(self.runtime, self.user.pw_uid, self.user.pw_gid)
        else:
            os.mkdir(self.path(SOCKETS))
            os.chmod(self.path(SOCKETS), 0o777)

    def stand_ins(self):
        admin = f'exec "{self.prefix}/bin/dozely-admin" --root "{self.root}" "$@"\n'
        write_stand_ins(self.path("stand-ins"), {**STAND_INS, "dozely-admin": admin})

    def shell(self):
        """The environment of who follows the tutorial."""
        return {**os.environ, "PATH": self.path("stand-ins") + ":" + os.environ["PATH"], "HOME": self.path("home"),
                "DESTDIR": self.root, "CMAKE_PREFIX_PATH": self.prefix, "CXX": CXX, "CXXFLAGS": FLAGS,
                "DBUS_SYSTEM_BUS_ADDRESS": self.bus}

    def log_lines(self):
        return Path(self.path(LOG)).read_text(encoding="utf-8").splitlines()


class Reader:
    """Follows the tutorial."""

    def __init__(self, system):
        self.system = system
        self.folder = str(SOURCE)
        self.output = ""
        self.block = ""
        self.greetings = []  # who greeted and how, in the order of the log

    def follow(self):
        self.folder = str(SOURCE)
        for language, text in blocks(TUTORIAL):
            if language == "sh":
                self.run(text)
            elif language == "text":
                self.see(text)

    def run(self, block):
        if "dozely-admin add" in block:  # what is shown afterwards is to be of this one
            self.take_log()
        self.block = block
        here = self.system.path("stand-ins/folder")
        # Written out, the folder of plug-ins is the machine's.
        script = block.replace('"/' + PLUG_INS, f'"{self.system.path(PLUG_INS)}')
        done = subprocess.run(["bash", "-eu", "-o", "pipefail", "-c", f'{script}\npwd >"{here}"'], cwd=self.folder,
                              env=self.system.shell(), stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, text=True, check=False, timeout=170)
        if done.returncode != 0:
            raise AssertionError(f"This step ended with {done.returncode}:\n{block}\n{done.stdout}")
        self.output = done.stdout
        self.folder = Path(here).read_text(encoding="utf-8").strip()

    def see(self, shown):
        deadline = time.monotonic() + LIMIT
        while not is_shown(self.output, shown):
            if not LOOKS.fullmatch(self.block) or time.monotonic() > deadline:
                raise AssertionError(f"This step:\n{self.block}\nshows\n{self.output}\ninstead of\n{shown}\n" +
                                     "\n".join(self.system.log_lines()))
            self.system.wait_until("the next look", LIMIT, self.has_changed(time.monotonic()))
            self.run(self.block)

    def has_changed(self, begun):
        """Whether there is more to see than before: another line of the log, or a record that may have been written."""
        lines = len(self.system.log_lines())
        return lambda: len(self.system.log_lines()) != lines or time.monotonic() - begun > 0.5

    def take_log(self):
        """Keeps the greetings of the log, and empties it."""
        for line in self.system.log_lines():
            found = re.search(r"\): (\w+: .* from the (?:session|daemon))$", line)
            if found:
                self.greetings.append(found[1])
        os.truncate(self.system.path(LOG), 0)


def modules(system):
    """The inode of each installed module."""
    folder = Path(system.path(PLUG_INS), MODULES)
    return {file.name: file.stat().st_ino for file in folder.iterdir()}


class TutorialTest(unittest.TestCase):
    def test_it_has_steps(self):
        languages = [language for language, _ in blocks(TUTORIAL)]
        self.assertGreaterEqual(languages.count("sh"), 8)
        self.assertGreaterEqual(languages.count("text"), 3)
        self.assertNotIn("", languages)  # or nobody would know whether it is to be run

    def test_whoever_follows_it_twice_has_the_new_version_act_each_time(self):
        with scratch(BUILD, InstalledSystem) as system:
            system.lay_out()
            system.start_bus()
            system.start_hosts()
            hosts = {name: system.process(name).pid for name in ("dozelyd", "Dozely Agent")}
            reader = Reader(system)
            seen = []
            for _ in range(2):
                reader.greetings.clear()
                reader.follow()
                reader.take_log()
                seen.append(list(reader.greetings))
            for greetings in seen:
                self.assertEqual(greetings, ["Adieux: Hello from the session", "Farewell: Hello from the daemon",
                                             "Adieux: Good evening from the session",
                                             "Farewell: Good evening from the daemon"])
            for name, process in hosts.items():  # the same ones have seen it all
                self.assertEqual((system.process(name).pid, system.process(name).poll()), (process, None), name)
            self.install_over_what_is_installed(system, reader)
            self.copy_over_what_is_installed(system, reader)
            self.look_at_the_settings(system)

    def install_over_what_is_installed(self, system, reader):
        """As the tutorial says, that writes over no file."""
        before = modules(system)
        with contextlib.ExitStack() as kept:  # held open, for their inodes would be given to the new ones
            for name in before:
                kept.enter_context(open(Path(system.path(PLUG_INS), MODULES, name), "rb"))
            reader.run("touch build/Farewell.plugin/Contents/Linux/*.so\nsudo cmake --install build\n")
            after = modules(system)
        self.assertEqual(before.keys(), after.keys())
        self.assertFalse(set(before.values()) & set(after.values()))

    def copy_over_what_is_installed(self, system, reader):
        """What the tutorial advises against harms neither daemon nor agent."""
        system.stop_last()
        system.start_agent()
        self.announce_and_act(reader)  # from now on the agent has the very files that are written over
        before = modules(system)
        build = system.path("home/farewell/build/Farewell.plugin")
        subprocess.run(["cp", "-r", build, system.path(PLUG_INS)], check=True)
        self.assertEqual(modules(system), before, "these are not written over")
        self.announce_and_act(reader)

    def announce_and_act(self, reader):
        reader.run('sudo dozely-admin add "Once more" --bundle Farewell --in 2 --alert 1\n')
        reader.run("dozely-admin log\n")
        reader.see("… Farewell.plugin announces an action …\n… Adieux: Good evening from the session\n")

    def look_at_the_settings(self, system):
        bundle = Path(system.path(PLUG_INS), "Farewell.plugin")
        with open(bundle / "Contents/Info.plist", "rb") as file:
            self.assertEqual(plistlib.load(file)["WDPrefPaneModule"], "FarewellPrefPane.so")
        shown = subprocess.run([SETTINGS_PROBE, str(bundle), "greeting", "Good night"], check=False, text=True,
                               env={**os.environ, "QT_QPA_PLATFORM": "offscreen", "LANG": "fr_FR.UTF-8",
                                    "LC_ALL": "", "LANGUAGE": ""}, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.assertEqual((shown.returncode, shown.stdout.splitlines()),
                         (0, ["Adieux", "Say Hello", "Hello", "Say Good night"]))


if __name__ == "__main__":
    shutil.which("ninja") or sys.exit("ninja is missing, which the tutorial uses")
    os.umask(0o022)
    unittest.main(argv=[sys.argv[0], *sys.argv[8:]], verbosity=2)
