# SPDX-License-Identifier: MIT
"""Proves that the checker finds what it is there to find, on trees that break one rule each."""
import tempfile
import unittest
from pathlib import Path

from include_rules import Rules

GOOD = {
    "kit/platform/NSLock.h": "#include \"platform/Export.h\"\n#include <QSemaphore>\n#include <chrono>\n",
    "kit/platform/Export.h": "#include \"DozelyKitExport.h\"\n",
    "kit/platform/Stream_p.h": "#include <QByteArray>\n",
    "kit/platform/NSLock.cpp": "#include \"platform/NSLock.h\"\n#include \"Stream_p.h\"\n#include <unistd.h>\n",
    "kit/platform/linux/Bus_p.h": "#include <systemd/sd-bus.h>\n",
    "kit/platform/linux/Bus.cpp": "#include \"platform/linux/Bus_p.h\"\n#include <sys/socket.h>\n#include \"Bus.moc\"\n",
    "kit/core/ZDRLog.h": "#include \"platform/NSLock.h\"\n",
    "kit/core/ZDRLog.cpp": "#include \"core/ZDRLog.h\"\n#include <zlib.h>\n",
    "kit/communication/Center.h": "#include \"core/ZDRLog.h\"\n",
    "kit/system/Facts.h": "#include \"core/ZDRLog.h\"\n",
    "kit/plugin/WDPlugIn.h": "#include \"communication/Center.h\"\n#include \"system/Facts.h\"\n",
    "kit/update/Checker.h": "#include \"system/Facts.h\"\n",
    "kit/interface/Cell.h": "#include \"core/ZDRLog.h\"\n#include <QWidget>\n#include <QtGui/QColor>\n",
    "hosts/daemon/main.cpp": "#include \"plugin/WDPlugIn.h\"\n#include <QString>\n#include <sys/stat.h>\n",
    "hosts/app/main.cpp": "#include <QWidget>\n",
}


class CheckerTest(unittest.TestCase):
    def broken(self, changes):
        with tempfile.TemporaryDirectory() as folder:
            qt_core = Path(folder, "QtCore")
            qt_core.mkdir()
            for header in ("QString", "QByteArray", "QSemaphore", "qglobal.h"):
                Path(qt_core, header).touch()
            root = Path(folder, "tree with blanks")
            for name, content in {**GOOD, **changes}.items():
                file = root / name
                file.parent.mkdir(parents=True, exist_ok=True)
                file.write_text(content, encoding="utf-8")
            return Rules(root, qt_core).check()

    def assert_one(self, file, content, problem):
        broken = self.broken({file: content})
        self.assertEqual(len(broken), 1, broken)
        self.assertTrue(broken[0].startswith(f"{file}:"), broken[0])
        self.assertIn(problem, broken[0])

    def test_a_tree_that_holds_the_rules_has_nothing_broken(self):
        self.assertEqual(self.broken({}), [])

    def test_an_arrow_that_goes_up_is_found(self):
        for folder, upper in (("platform", "core/ZDRLog.h"), ("core", "communication/Center.h"),
                              ("core", "plugin/WDPlugIn.h"), ("system", "plugin/WDPlugIn.h"),
                              ("communication", "interface/Cell.h")):
            self.assert_one(f"kit/{folder}/Bad.cpp", f'#include "{upper}"\n', f"kit/{folder} may not include")

    def test_an_arrow_between_siblings_is_found(self):
        for folder, sibling in (("communication", "system/Facts.h"), ("system", "communication/Center.h"),
                                ("interface", "plugin/WDPlugIn.h"), ("plugin", "interface/Cell.h"),
                                ("update", "communication/Center.h")):
            self.assert_one(f"kit/{folder}/Bad.h", f'#include "{sibling}"\n', f"kit/{folder} may not include")

    def test_an_arrow_hidden_by_a_relative_path_or_angle_brackets_is_found(self):
        self.assert_one("kit/core/Bad.cpp", '#include "../plugin/WDPlugIn.h"\n', "kit/core may not include kit/plugin")
        self.assert_one("kit/core/Bad.cpp", "#include <plugin/WDPlugIn.h>\n", "kit/core may not include kit/plugin")
        self.assert_one("kit/core/Bad.cpp", '  #  include "plugin/WDPlugIn.h" // why\n', "kit/core may not include")

    def test_a_line_with_windows_ends_is_read_and_the_right_line_is_named(self):
        broken = self.broken({"kit/core/Bad.cpp": '/* a\n b */\r\n\r\n#include "plugin/WDPlugIn.h"\r\n'})
        self.assertEqual(len(broken), 1)
        self.assertIn("kit/core/Bad.cpp:4:", broken[0])

    def test_an_include_in_a_comment_or_a_raw_string_is_none(self):
        self.assertEqual(self.broken({"kit/core/Fine.cpp": '// #include <sys/stat.h>\n/*\n#include <QWidget>\n*/\n'
                                                           'auto s = R"(\n#include <sys/stat.h>\n)";\n'}), [])

    def test_a_header_of_the_linux_side_is_for_the_linux_side_alone(self):
        self.assert_one("kit/platform/Bad.cpp", '#include "platform/linux/Bus_p.h"\n', "only kit/platform/linux")
        self.assert_one("kit/platform/Bad.cpp", '#include "linux/Bus_p.h"\n', "only kit/platform/linux")
        self.assert_one("hosts/daemon/Bad.cpp", '#include "platform/linux/Bus_p.h"\n', "not a public header")
        self.assert_one("plugins/X/Bad.cpp", '#include "platform/Stream_p.h"\n', "not a public header")
        self.assert_one("examples/x/Bad.cpp", '#include "../../kit/platform/Stream_p.h"\n', "not a public header")

    def test_the_machine_is_known_to_the_linux_side_alone(self):
        for header in ("systemd/sd-bus.h", "sys/socket.h", "dbus/dbus.h", "QDBusConnection", "poll.h",
                       "libevdev/libevdev.h", "curl/curl.h", "linux/rtc.h"):
            self.assertEqual(len(self.broken({"kit/core/Bad.cpp": f"#include <{header}>\n"})), 1, header)
            self.assertEqual(len(self.broken({"kit/platform/Bad.cpp": f"#include <{header}>\n"})), 1, header)

    def test_a_public_header_that_shows_its_means_is_found(self):
        for header in ("sys/types.h", "systemd/sd-bus.h", "dbus/dbus.h", "libevdev/libevdev.h", "curl/curl.h",
                       "plist/plist.h", "unicode/ucal.h", "zlib.h", "unistd.h", "QtDBus/QDBusMessage"):
            self.assertEqual(len(self.broken({"kit/core/Bad.h": f"#include <{header}>\n"})), 1, header)

    def test_a_public_header_that_includes_a_private_one_is_found(self):
        self.assert_one("kit/core/Bad.h", '#include "platform/Stream_p.h"\n', "may not include a private one")

    def test_widgets_outside_the_interface_are_found(self):
        for header in ("QWidget", "QtWidgets/QWidget", "QtGui/QColor", "QColor", "qwidget.h", "QtCore/QWidget"):
            self.assert_one("kit/plugin/Bad.cpp", f"#include <{header}>\n", "only kit/interface")
            self.assert_one("hosts/daemon/Bad.cpp", f"#include <{header}>\n", "only QtCore")

    def test_an_include_by_macro_is_found(self):
        self.assert_one("kit/core/Bad.cpp", "#include HEADER\n", "hides")

    def test_an_unknown_folder_and_an_unknown_header_are_found(self):
        self.assertEqual(len(self.broken({"kit/stuff/New.h": ""})), 1)
        self.assert_one("kit/core/Bad.cpp", '#include "core/Nowhere.h"\n', "neither")

    def test_an_empty_tree_is_not_taken_for_a_good_one(self):
        with tempfile.TemporaryDirectory() as folder:
            Path(folder, "QString").touch()
            with self.assertRaises(ValueError):
                Rules(folder, folder).check()


if __name__ == "__main__":
    unittest.main()
