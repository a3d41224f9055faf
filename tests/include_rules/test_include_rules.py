# SPDX-License-Identifier: MIT
"""Proves that the checker finds what it is there to find, on trees that break one rule each."""
import tempfile
import unittest
from pathlib import Path

from include_rules import ARROWS, COMMON, HOST_ARROWS, Rules

GOOD = {
    "kit/core/foundation/NSLock.h": "#include \"DozelyKit/core/foundation/Export.h\"\n#include <QSemaphore>\n#include <chrono>\n",
    "kit/core/foundation/Export.h": "#include \"DozelyKitExport.h\"\n",
    "kit/core/foundation/Text_p.h": "#include <QByteArray>\n",
    "kit/core/foundation/NSLock.cpp": "#include \"DozelyKit/core/foundation/NSLock.h\"\n#include \"Text_p.h\"\n#include <unistd.h>\n",
    "kit/core/foundation/linux/Clock_p.h": "#include <sys/timerfd.h>\n",
    "kit/core/dbus/linux/Bus_p.h": "#include <systemd/sd-bus.h>\n",
    "kit/core/dbus/linux/Bus.cpp": "#include \"DozelyKit/core/dbus/linux/Bus_p.h\"\n#include <sys/socket.h>\n#include \"Bus.moc\"\n",
    "kit/core/files/List.h": "#include \"DozelyKit/core/foundation/NSLock.h\"\n",
    "kit/core/files/List.cpp": "#include \"DozelyKit/core/files/List.h\"\n#include <zlib.h>\n",
    "kit/core/bundles/Bundle.h": "#include \"DozelyKit/core/files/List.h\"\n",
    "kit/communication/remoting/Stream_p.h": "#include <QByteArray>\n",
    "kit/communication/remoting/linux/Stream.cpp": "#include \"../Stream_p.h\"\n#include \"DozelyKit/core/dbus/linux/Bus_p.h\"\n",
    "kit/communication/channel/Center.h": "#include \"DozelyKit/core/foundation/NSLock.h\"\n",
    "kit/system/machine/Facts.h": "#include \"DozelyKit/core/bundles/Bundle.h\"\n",
    "kit/system/power/Power.h": "#include \"DozelyKit/system/machine/Facts.h\"\n",
    "kit/plugin/WDPlugIn.h": "#include \"DozelyKit/communication/channel/Center.h\"\n#include \"DozelyKit/system/machine/Facts.h\"\n",
    "kit/update/Checker.h": "#include \"DozelyKit/system/machine/Facts.h\"\n",
    "kit/interface/Export.h": "#include \"DozelyInterfaceExport.h\"\n",
    "kit/interface/cells/Cell.h": "#include \"DozelyKit/interface/Export.h\"\n#include <QWidget>\n#include <QtGui/QColor>\n",
    "hosts/daemon/main.cpp": "#include \"DozelyKit/plugin/WDPlugIn.h\"\n#include <QString>\n#include <sys/stat.h>\n",
    "hosts/agent/main.cpp": "#include \"hosts/common/orders/Order.h\"\n#include <QWidget>\n",
    "hosts/common/orders/Order.h": "#include <QString>\n",
}
# One public header of each room.
HEADERS = {room: f"{room}/Sample.h" for room in ARROWS}


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

    def test_each_arrow_of_the_table_holds_and_every_other_is_found(self):
        tree = {f"kit/{header}": "" for header in HEADERS.values()}
        for room, others in ARROWS.items():
            broken = self.broken({**tree, f"kit/{room}/All.cpp": "".join(
                f'#include "DozelyKit/{header}"\n' for header in HEADERS.values())})
            found = {line.split(": ")[1].removeprefix("DozelyKit/").removesuffix("/Sample.h") for line in broken}
            self.assertEqual(found, set(ARROWS) - {room, "core/foundation", *others}, room)

    def test_an_arrow_of_the_table_that_nothing_uses_is_found(self):
        with tempfile.TemporaryDirectory() as folder:
            Path(folder, "QString").touch()
            file = Path(folder, "kit/core/bundles/Bundle.cpp")
            file.parent.mkdir(parents=True)
            rules = Rules(folder, folder)
            file.touch()
            rules.check()
            self.assertIn(("core/bundles", "core/files"), rules.unused_arrows())
            Path(folder, "kit/core/files").mkdir()
            Path(folder, "kit/core/files/List.h").touch()
            file.write_text('#include "DozelyKit/core/files/List.h"\n', encoding="utf-8")
            rules.check()
            self.assertNotIn(("core/bundles", "core/files"), rules.unused_arrows())

    def test_each_arrow_between_hosts_holds_and_every_other_is_found(self):
        hosts = {room for room in HOST_ARROWS if room.startswith("hosts/")}
        common = {room for room in hosts if room.startswith("hosts/common/")}
        tree = {f"{room}/Sample.h": "" for room in hosts}
        everything = "".join(f'#include "{room}/Sample.h"\n' for room in hosts)
        for room, others in HOST_ARROWS.items():
            broken = self.broken({**tree, f"{room}/All.cpp": everything})
            found = {line.split(": ")[1].removesuffix("/Sample.h") for line in broken}
            self.assertEqual(found, hosts - {room, *others} - (common if COMMON in others else set()), room)

    def test_a_program_that_includes_another_is_found_by_any_path(self):
        tree = {"hosts/daemon/Scheduler.h": ""}
        for room in ("hosts/agent", "hosts/admin", "hosts/pmset", "hosts/common/orders"):
            up = "../" * room.count("/")
            for include in ('"hosts/daemon/Scheduler.h"', f'"{up}daemon/Scheduler.h"', "<hosts/daemon/Scheduler.h>"):
                broken = self.broken({**tree, f"{room}/Bad.cpp": f"#include {include}\n"})
                self.assertEqual(len(broken), 1, (room, include))
                self.assertIn(f"{room} may not include hosts/daemon", broken[0])

    def test_a_bundle_or_an_example_that_includes_a_host_is_found(self):
        for place in ("plugins/Command", "examples/gallery", "examples/template-plugin"):
            self.assert_one(f"{place}/Bad.cpp", '#include "hosts/common/orders/Order.h"\n', "may not include hosts/common/orders")

    def test_a_host_outside_the_known_rooms_is_found(self):
        for place in ("hosts/common/New.h", "hosts/common/new/New.h", "hosts/new/main.cpp"):
            broken = self.broken({place: ""})
            self.assertEqual(len(broken), 1, place)
            self.assertIn("no room that the rules know", broken[0])

    def test_an_arrow_between_hosts_that_nothing_uses_is_found(self):
        with tempfile.TemporaryDirectory() as folder:
            Path(folder, "QString").touch()
            for place in ("hosts/common/orders", "hosts/common/faults"):
                Path(folder, place).mkdir(parents=True)
            Path(folder, "hosts/common/faults/Label.h").touch()
            arrow = ("hosts/common/orders", "hosts/common/faults")
            for include, used in (("", False), ('#include "hosts/common/faults/Label.h"\n', True)):
                Path(folder, "hosts/common/orders/Post.cpp").write_text(include, encoding="utf-8")
                rules = Rules(folder, folder)
                self.assertEqual(rules.check(), [])
                self.assertEqual(arrow not in rules.unused_arrows(), used)

    def test_an_arrow_hidden_by_a_relative_path_or_angle_brackets_is_found(self):
        for include in ('"../../plugin/WDPlugIn.h"', "<DozelyKit/plugin/WDPlugIn.h>"):
            self.assert_one("kit/core/files/Bad.cpp", f"#include {include}\n", "kit/core/files may not include kit/plugin")
        self.assert_one("kit/core/files/Bad.cpp", '  #  include "DozelyKit/plugin/WDPlugIn.h" // why\n',
                        "kit/core/files may not include")

    def test_a_line_with_windows_ends_is_read_and_the_right_line_is_named(self):
        broken = self.broken({"kit/core/files/Bad.cpp": '/* a\n b */\r\n\r\n#include "DozelyKit/plugin/WDPlugIn.h"\r\n'})
        self.assertEqual(len(broken), 1)
        self.assertIn("kit/core/files/Bad.cpp:4:", broken[0])

    def test_an_include_in_a_comment_or_a_raw_string_is_none(self):
        self.assertEqual(self.broken({"kit/core/files/Fine.cpp": '// #include <sys/stat.h>\n/*\n#include <QWidget>\n*/\n'
                                                           'auto s = R"(\n#include <sys/stat.h>\n)";\n'}), [])

    def test_a_header_of_a_linux_folder_is_for_linux_folders_alone(self):
        for name in ("DozelyKit/core/dbus/linux/Bus_p.h", "linux/Bus_p.h"):
            self.assert_one("kit/core/dbus/Bad.cpp", f'#include "{name}"\n', "only a linux/ folder")
        self.assert_one("hosts/daemon/Bad.cpp", '#include "DozelyKit/core/dbus/linux/Bus_p.h"\n', "not a public header")
        self.assert_one("plugins/X/Bad.cpp", '#include "DozelyKit/core/foundation/Text_p.h"\n', "not a public header")
        self.assert_one("examples/x/Bad.cpp", '#include "../../kit/core/foundation/Text_p.h"\n', "not a public header")

    def test_an_arrow_is_one_for_linux_folders_too(self):
        self.assert_one("kit/core/files/linux/Bad.cpp", '#include "DozelyKit/core/dbus/linux/Bus_p.h"\n',
                        "kit/core/files may not include kit/core/dbus")

    def test_the_machine_is_known_to_linux_folders_alone(self):
        for header in ("systemd/sd-bus.h", "sys/socket.h", "dbus/dbus.h", "QDBusConnection", "poll.h",
                       "libevdev/libevdev.h", "curl/curl.h", "linux/rtc.h"):
            for room in ("core/foundation", "system/power", "plugin"):
                self.assertEqual(len(self.broken({f"kit/{room}/Bad.cpp": f"#include <{header}>\n"})), 1, header)

    def test_a_public_header_that_shows_its_means_is_found(self):
        for header in ("sys/types.h", "systemd/sd-bus.h", "dbus/dbus.h", "libevdev/libevdev.h", "curl/curl.h",
                       "plist/plist.h", "unicode/ucal.h", "zlib.h", "unistd.h", "QtDBus/QDBusMessage"):
            self.assertEqual(len(self.broken({"kit/core/files/Bad.h": f"#include <{header}>\n"})), 1, header)

    def test_a_public_header_that_includes_a_private_one_is_found(self):
        self.assert_one("kit/core/files/Bad.h", '#include "DozelyKit/core/foundation/Text_p.h"\n',
                        "may not include a private one")

    def test_widgets_outside_the_interface_are_found(self):
        for header in ("QWidget", "QtWidgets/QWidget", "QtGui/QColor", "QColor", "qwidget.h", "QtCore/QWidget"):
            self.assert_one("kit/plugin/Bad.cpp", f"#include <{header}>\n", "only kit/interface")
            self.assert_one("hosts/daemon/Bad.cpp", f"#include <{header}>\n", "only QtCore")

    def test_an_include_by_macro_is_found(self):
        self.assert_one("kit/core/files/Bad.cpp", "#include HEADER\n", "hides")

    def test_an_unknown_folder_and_an_unknown_header_are_found(self):
        for place in ("kit/stuff/New.h", "kit/core/New.h", "kit/core/stuff/New.h", "kit/interface/New.h"):
            self.assertEqual(len(self.broken({place: ""})), 1, place)
        self.assert_one("kit/core/files/Bad.cpp", '#include "DozelyKit/core/Nowhere.h"\n', "neither")

    def test_an_empty_tree_is_not_taken_for_a_good_one(self):
        with tempfile.TemporaryDirectory() as folder:
            Path(folder, "QString").touch()
            with self.assertRaises(ValueError):
                Rules(folder, folder).check()


if __name__ == "__main__":
    unittest.main()
