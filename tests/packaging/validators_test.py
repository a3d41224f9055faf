# SPDX-License-Identifier: MIT
"""Asks the desktop's own validators what they think of the files that are installed for it.

    validators_test.py BUILD SOURCE [unittest arguments]
"""
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

BUILD, SOURCE = Path(sys.argv[1]), Path(sys.argv[2])
MADE, WRITTEN = BUILD / "packaging", SOURCE / "packaging"
ICON = "com.dozely.Dozely"
SIZES = (16, 22, 24, 32, 48, 64, 128, 256, 512)
LANGUAGES = {"ar", "de", "es", "fr", "ja"}
LOGROTATE = shutil.which("logrotate") or "/usr/sbin/logrotate"


def said(*command):
    done = subprocess.run([str(word) for word in command], text=True, check=False, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, env={"PATH": "/usr/bin:/bin:/usr/sbin", "LC_ALL": "C.UTF-8"})
    return done.returncode, done.stdout


class ValidatorsTest(unittest.TestCase):
    def test_desktop_entries(self):
        for name in (ICON + ".desktop", "dozely-agent.desktop"):
            self.assertEqual(said("desktop-file-validate", MADE / name), (0, ""), name)

    def test_what_software_centres_show(self):
        file = WRITTEN / (ICON + ".metainfo.xml")
        status, text = said("appstreamcli", "validate", "--no-net", file)
        self.assertEqual(status, 0, text)
        self.assertNotRegex(text, r"(?m)^[EW]:")
        page, entry = file.read_text(encoding="utf-8"), (MADE / (ICON + ".desktop")).read_text(encoding="utf-8")
        self.assertIn(f"<launchable type=\"desktop-id\">{ICON}.desktop</launchable>", page)
        # It says of itself what the menu does.
        for language in LANGUAGES:
            summary = re.search(rf'<summary xml:lang="{language}">(.*)</summary>', page)[1]
            self.assertIn(f"Comment[{language}]={summary}\n", entry)

    def test_policies_and_interfaces(self):
        for name, grammar in (("com.dozely.Scheduler1.xml", "/usr/share/xml/dbus-1/introspect.dtd"),
                              ("com.dozely.policy", "/usr/share/polkit-1/policyconfig-1.dtd")):
            self.assertTrue(Path(grammar).is_file(), grammar)
            self.assertEqual(said("xmllint", "--noout", "--nonet", "--dtdvalid", grammar, WRITTEN / name), (0, ""))
        # The grammar of bus policies lacks most of what one may say; that a bus takes it is shown by the tests of the bus.
        for name in ("com.dozely.Scheduler1.conf", ICON + ".svg"):
            self.assertEqual(said("xmllint", "--noout", "--nonet", WRITTEN / name), (0, ""))

    def test_the_icon_is_there_in_the_sizes_of_themes(self):
        for size in SIZES:
            file = MADE / f"icons/{size}x{size}/apps/{ICON}.png"
            content = file.read_bytes()
            self.assertEqual(content[:8], b"\x89PNG\r\n\x1a\n", file)
            self.assertEqual(struct.unpack(">II", content[16:24]), (size, size))
        made = {int(folder.name.split("x")[0]) for folder in (MADE / "icons").iterdir()}
        self.assertEqual(made, set(SIZES))

    def test_the_rotation_of_the_log(self):
        folder = Path(tempfile.mkdtemp(prefix="dz-logrotate-"))
        self.addCleanup(shutil.rmtree, folder)
        # It takes no file that others may write, as one in a source folder may be.
        file = folder / "dozely"
        shutil.copyfile(WRITTEN / "dozely.logrotate", file)
        file.chmod(0o644)
        status, text = said(LOGROTATE, "--debug", "--state", folder / "state", file)
        self.assertEqual(status, 0, text)
        self.assertNotIn("error:", text)
        self.assertIn("rotating pattern: /var/log/dozely.log", text)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]], verbosity=2)
