# SPDX-License-Identifier: MIT
"""Installs the build into a scratch folder, looks at what came, and builds programs against it.

    install_test.py BUILD SOURCE PREFIX LIBDIR CXX FLAGS [unittest arguments]

FLAGS are the compiler flags of the build, which a consumer needs when it is a sanitized one.
"""
import os
import plistlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from xml.etree import ElementTree

BUILD, SOURCE, PREFIX, LIBDIR, CXX, FLAGS = sys.argv[1:7]
SOURCE = Path(SOURCE)
AGENT = "/Applications/Dozely.app/Contents/Helpers/Dozely Agent.app/Contents/Linux/Dozely Agent"
EXPECTED = ["sha1: a9993e364706816aba3e25717850c26c9cd0d89d", "bundle: com.dozely.Kit", "wakes: yes",
            "heard: good morning", "port: consumer", "own header: yes"]


def run(*command, fails=False, **environment):
    """What the command wrote; raises when it does not end as expected."""
    done = subprocess.run(command, env={**os.environ, **environment}, text=True, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, check=False)
    if (done.returncode != 0) != fails:
        raise AssertionError(f"{command} ended with {done.returncode}:\n{done.stdout}")
    return done.stdout


class InstallTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = Path(tempfile.mkdtemp(prefix="dz-install-"))
        cls.addClassCleanup(shutil.rmtree, cls.scratch)
        run("cmake", "--install", BUILD, DESTDIR=str(cls.scratch / "first"))
        # Whoever uses it afterwards finds it at another place: nothing may depend on where it was put.
        cls.stage = cls.scratch / "stage"
        (cls.scratch / "first").rename(cls.stage)
        cls.prefix = cls.stage / PREFIX.lstrip("/")
        cls.library = cls.prefix / LIBDIR
        cls.headers = cls.prefix / "include" / "DozelyKit"

    def installed(self):
        return [file for file in self.stage.rglob("*") if file.is_file() and not file.is_symlink()]

    def test_every_public_header_is_installed_and_no_private_one(self):
        public = {file.relative_to(SOURCE / "kit") for file in (SOURCE / "kit").rglob("*.h")
                  if not file.name.endswith("_p.h") and "linux" not in file.relative_to(SOURCE / "kit").parts}
        self.assertIn(Path("plugin/WDPlugIn.h"), public)
        here = {file.relative_to(self.headers) for file in self.headers.rglob("*") if file.is_file()}
        self.assertEqual(here, public | {Path("core/foundation/DozelyKitExport.h"), Path("interface/DozelyInterfaceExport.h")})
        everywhere = {file for file in self.stage.rglob("*.h")}
        self.assertEqual({file for file in everywhere if file.name.endswith("_p.h") or "linux" in file.parts}, set())
        self.assertEqual(everywhere, {self.headers / file for file in here})

    def test_nothing_of_the_tests_is_installed(self):
        names = [file.name for file in self.installed() if re.search(r"(?i)gtest|gmock|_tests?$|fake|support", file.name)]
        self.assertEqual(names, [])

    def test_no_installed_program_searches_the_build_or_source_folder(self):
        programs = 0
        for file in self.installed():
            if file.read_bytes()[:4] != b"\x7fELF":
                continue
            programs += 1
            dynamic = run("readelf", "-d", str(file), LC_ALL="C")
            for path in re.findall(r"\((?:RUNPATH|RPATH)\).*\[(.*)\]", dynamic):
                for entry in path.split(":"):
                    self.assertTrue(entry.startswith("$ORIGIN") or entry == f"{PREFIX}/{LIBDIR}", f"{file}: {path}")
        self.assertGreaterEqual(programs, 4)  # library, daemon, agent, admin tool

    def test_the_library_carries_its_version_in_its_name(self):
        library = self.library / "libDozelyKit.so"
        self.assertRegex(library.resolve().name, r"^libDozelyKit\.so\.\d+\.\d+\.\d+$")
        self.assertIn("Library soname: [libDozelyKit.so.0]", run("readelf", "-d", str(library), LC_ALL="C"))

    def test_installed_programs_find_their_library(self):
        for program in (self.prefix / "sbin" / "dozelyd", self.prefix / "bin" / "dozely-admin"):
            run(str(program), "--version", LD_LIBRARY_PATH="")
        run(str(next(self.prefix.rglob("dozely-session-performer"))), "--version", LD_LIBRARY_PATH="")
        # These know the library by its full path, which this scratch folder is not.
        for program in (AGENT, "/usr/bin/osascript", "/usr/bin/pmset"):
            run(str(self.stage / program.lstrip("/")), "--version", LD_LIBRARY_PATH=str(self.library))

    def test_an_installed_tree_runs_scripts(self):
        tool = self.stage / "usr/bin/osascript"
        run_script = lambda: run(str(tool), "-e", "return 6 * 7", LD_LIBRARY_PATH=str(self.library))
        self.assertEqual(run_script(), "42\n")
        modules = list((self.library / "dozely").iterdir())
        self.assertEqual([module.name for module in modules if "ScriptEngine" in module.name],
                         [module.name for module in modules])
        self.assertNotIn("liblua", run("readelf", "-d", str(self.library / "libDozelyKit.so"), LC_ALL="C"))
        self.assertIn("liblua", run("readelf", "-d", str(modules[0]), LC_ALL="C"))

    def build(self, source, *arguments, fails=False):
        folder = Path(tempfile.mkdtemp(dir=self.scratch))
        output = run("cmake", "-S", str(source), "-B", str(folder), "-G", "Ninja", f"-DCMAKE_CXX_COMPILER={CXX}",
                     f"-DCMAKE_CXX_FLAGS={FLAGS}", f"-DCMAKE_PREFIX_PATH={self.prefix}", *arguments, fails=fails)
        if not fails:
            run("cmake", "--build", str(folder))
        return folder, output

    def test_a_program_builds_with_find_package_and_runs(self):
        folder, _ = self.build(SOURCE / "tests/install/consumer")
        self.assertEqual(run(str(folder / "consumer")).splitlines(), EXPECTED)

    def test_a_program_builds_with_pkg_config_and_runs(self):
        environment = {"PKG_CONFIG_PATH": str(self.library / "pkgconfig")}
        version = run("pkg-config", "--modversion", "DozelyKit", **environment).strip()
        self.assertRegex(version, r"^0\.1\.\d+$")
        flags = shlex.split(run("pkg-config", "--cflags", "--libs", "DozelyKit", **environment))
        folder = Path(tempfile.mkdtemp(dir=self.scratch))
        moc = Path(run("pkg-config", "--variable=libexecdir", "Qt6Core").strip(), "moc")
        run(str(moc), str(SOURCE / "tests/install/consumer/main.cpp"), "-o", str(folder / "main.moc"))
        run(CXX, "-std=c++20", "-fPIC", *shlex.split(FLAGS), f"-I{folder}",
            f"-I{SOURCE / 'tests/install/consumer'}", str(SOURCE / "tests/install/consumer/main.cpp"), "-o",
            str(folder / "consumer"), *flags)
        self.assertEqual(run(str(folder / "consumer"), LD_LIBRARY_PATH=str(self.library)).splitlines(), EXPECTED)

    def test_a_program_with_windows_builds_with_either_and_runs(self):
        source = SOURCE / "tests/install/interface_consumer"
        expected = ["top: 70", "dot: yes"]
        folder, _ = self.build(source)
        self.assertEqual(run(str(folder / "interface_consumer")).splitlines()[-2:], expected)

        environment = {"PKG_CONFIG_PATH": str(self.library / "pkgconfig")}
        flags = shlex.split(run("pkg-config", "--cflags", "--libs", "DozelyInterface", **environment))
        run(CXX, "-std=c++20", "-fPIC", *shlex.split(FLAGS), str(source / "main.cpp"), "-o", str(folder / "second"), *flags)
        self.assertEqual(run(str(folder / "second"), LD_LIBRARY_PATH=str(self.library)).splitlines()[-2:], expected)

    def test_programs_without_windows_load_no_widgets(self):
        folder, _ = self.build(SOURCE / "tests/install/consumer")
        for program in (folder / "consumer", self.library / "libDozelyKit.so", self.prefix / "sbin" / "dozelyd"):
            needed = run("readelf", "-d", str(program), LC_ALL="C")
            self.assertIn("libQt6Core", needed)
            self.assertNotRegex(needed, r"libQt6(Gui|Widgets)|libDozelyInterface", str(program))
        self.assertIn("libQt6Widgets", run("readelf", "-d", str(self.library / "libDozelyInterface.so"), LC_ALL="C"))

    def test_another_minor_version_is_not_taken_for_this_one(self):
        source = Path(tempfile.mkdtemp(dir=self.scratch))
        for version in ("0.2", "0.0", "1.0"):
            (source / "CMakeLists.txt").write_text(
                "cmake_minimum_required(VERSION 3.25)\nproject(Later LANGUAGES CXX)\n"
                f"find_package(DozelyKit {version} REQUIRED)\n", encoding="utf-8")
            _, output = self.build(source, fails=True)
            self.assertIn("DozelyKit", output)
            self.assertIn("compatible with requested", output)

    def test_the_template_plug_in_builds_outside_the_tree(self):
        copy = Path(tempfile.mkdtemp(dir=self.scratch)) / "my plug-in"
        shutil.copytree(SOURCE / "examples/template-plugin", copy)
        folder, _ = self.build(copy)
        bundles = [path for path in folder.rglob("*.plugin") if (path / "Contents/Info.plist").is_file()]
        self.assertEqual(len(bundles), 1, bundles)
        modules = [file for file in (bundles[0] / "Contents/Linux").iterdir() if file.suffix == ".so"]
        self.assertTrue(modules)

    def test_the_system_finds_units_and_entries(self):
        daemon = (self.prefix / "lib/systemd/system/dozelyd.service").read_text(encoding="utf-8")
        self.assertIn(f"ExecStart={PREFIX}/sbin/dozelyd\n", daemon)
        self.assertRegex(daemon, r"(?m)^After=.*\btime-sync\.target\b")
        # It is fed half-way: as much has to be left for a script of a plug-in, which may take a minute.
        self.assertGreaterEqual(int(re.search(r"(?m)^WatchdogSec=(\d+)$", daemon).group(1)) / 2, 90)
        self.assertTrue((self.stage / AGENT.lstrip("/")).is_file())
        unit = (self.prefix / "lib/systemd/user/dozely-agent.service").read_text(encoding="utf-8")
        self.assertIn(f'ExecStart="{AGENT}"\n', unit)
        wanted = self.prefix / "lib/systemd/user/graphical-session.target.wants/dozely-agent.service"
        self.assertEqual(wanted.read_text(encoding="utf-8"), unit)
        entry = (self.stage / "etc/xdg/autostart/dozely-agent.desktop").read_text(encoding="utf-8")
        self.assertIn(f'Exec="{AGENT}"\n', entry)

    def test_the_system_bus_and_polkit_find_what_they_are_told(self):
        # Neither looks below another prefix.
        policy = ElementTree.parse(self.stage / "usr/share/dbus-1/system.d/com.dozely.Scheduler1.conf").getroot()
        owners = [rule.get("user") for rule in policy.findall("policy") if rule.find("allow[@own='com.dozely']") is not None]
        self.assertEqual(owners, ["root"])
        self.assertIsNotNone(policy.find("policy[@context='default']/deny[@send_destination='com.dozely']"))
        node = ElementTree.parse(self.prefix / "share/dbus-1/interfaces/com.dozely.Scheduler1.xml").getroot()
        self.assertEqual([each.get("name") for each in node.findall("interface")], ["com.dozely.Scheduler1"])
        names = (SOURCE / "hosts/common/bus/SchedulerNames.h").read_text(encoding="utf-8")
        page = (SOURCE / "docs/bus.md").read_text(encoding="utf-8")
        for member in node.findall("interface/*"):
            self.assertIn(f"`{member.get('name')}", page)
        policies = ElementTree.parse(self.stage / "usr/share/polkit-1/actions/com.dozely.policy").getroot()
        actions = policies.findall("action")
        self.assertEqual({action.get("id") for action in actions}, set(re.findall(r'"(com\.dozely\.scheduler\.[a-z-]+)"', names)))
        language = "{http://www.w3.org/XML/1998/namespace}lang"
        for action in actions:
            self.assertIn(f"`{action.get('id')}`", page)
            for kind in ("description", "message"):
                texts = {each.get(language, "en"): each.text for each in action.findall(kind)}
                self.assertEqual(set(texts), {"en", "fr", "de", "es", "ja", "ar"})
                self.assertEqual(len(set(texts.values())), 6)
        active = {action.get("id").rpartition(".")[2]: action.find("defaults/allow_active").text for action in actions}
        self.assertEqual(active, {"manage-own": "yes", "wake": "yes", "manage-all": "auth_admin_keep"})

    def test_what_was_installed_is_removed_again(self):
        """By the target "uninstall": all of it, and nothing else."""
        stage = self.scratch / "removed"
        stage.mkdir()
        run("cmake", "--install", BUILD, DESTDIR=str(stage))
        own = ["Library/Application Support/Dozely/PlugIns/Own.plugin/Info.plist", "var/lib/dozely/occurrences.db",
               "Library/Preferences/com.dozely.plist"]
        for name in own:
            (stage / name).parent.mkdir(parents=True, exist_ok=True)
            (stage / name).touch()
        self.assertIn("0 files are removed", run("cmake", "--build", BUILD, "--target", "uninstall",
                                                 DESTDIR=str(self.scratch / "elsewhere")))
        said = run("cmake", "--build", BUILD, "--target", "uninstall", DESTDIR=str(stage))
        self.assertEqual({str(file.relative_to(stage)) for file in stage.rglob("*") if not file.is_dir()}, set(own))
        folders = {str(folder.relative_to(stage)) for folder in stage.rglob("*")
                   if folder.is_dir() and re.search("[Dd]ozely|Applications", str(folder.relative_to(stage)))}
        self.assertEqual(folders, {"var/lib/dozely", "Library/Application Support/Dozely",
                                   "Library/Application Support/Dozely/PlugIns",
                                   "Library/Application Support/Dozely/PlugIns/Own.plugin"})
        for name in ("/var/lib/dozely", "/Library/Preferences/com.dozely.plist",
                     "/Library/Application Support/Dozely/PlugIns"):
            self.assertIn(f"There is still {name}\n", said)
        self.assertGreater(int(re.search(r"(\d+) files are removed", said)[1]), 150)
        self.assertIn("0 files are removed", run("cmake", "--build", BUILD, "--target", "uninstall", DESTDIR=str(stage)))

    def test_the_desktop_finds_its_entry_icon_and_page(self):
        shared = self.prefix / "share"
        for name in ("applications/com.dozely.Dozely.desktop", "metainfo/com.dozely.Dozely.metainfo.xml",
                     "icons/hicolor/scalable/apps/com.dozely.Dozely.svg"):
            self.assertTrue((shared / name).is_file(), name)
        sizes = {folder.name for folder in (shared / "icons/hicolor").iterdir() if
                 (folder / "apps/com.dozely.Dozely.png").is_file()}
        self.assertEqual(sizes, {f"{size}x{size}" for size in (16, 22, 24, 32, 48, 64, 128, 256, 512)})
        self.assertTrue((self.stage / "etc/logrotate.d/dozely").is_file())

    def test_bundles_lie_where_the_hosts_look_for_them(self):
        with open(self.stage / "Applications/Dozely.app/Contents/Info.plist", "rb") as file:
            info = plistlib.load(file)
        self.assertRegex(info["CFBundleShortVersionString"], r"^0\.1\.\d+$")
        self.assertRegex(info["CFBundleVersion"], r"^1\d\d$")
        plug_ins = self.stage / "Library/Application Support/Dozely/PlugIns"
        self.assertTrue((plug_ins / "Command.plugin/Contents/Info.plist").is_file())
        self.assertTrue((plug_ins / "Command.plugin/Contents/Linux/Command.so").is_file())

    def test_the_tmpfiles_entries_make_the_folders(self):
        root = Path(tempfile.mkdtemp(dir=self.scratch))
        entries = (self.prefix / "lib/tmpfiles.d/dozely.conf").read_text(encoding="utf-8")
        if os.geteuid() != 0:  # an ordinary user's folders belong to that user
            entries = entries.replace("root root", "-    -   ")
        file = root / "dozely.conf"
        file.write_text(entries, encoding="utf-8")
        # Read below another root, systemd-tmpfiles asks that root who "root" is.
        (root / "etc").mkdir()
        (root / "etc/passwd").write_text("root:x:0:0:root:/root:/bin/sh\n", encoding="utf-8")
        (root / "etc/group").write_text("root:x:0:\n", encoding="utf-8")
        run("systemd-tmpfiles", "--create", f"--root={root}", str(file))
        for folder in ("Library/Preferences", "Library/Application Support/Dozely/PlugIns", "var/lib/dozely"):
            self.assertEqual((root / folder).stat().st_mode & 0o7777, 0o755, folder)
        self.assertEqual((root / "var/log/dozely.log").stat().st_mode & 0o7777, 0o666)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[7:]], verbosity=2)
