# SPDX-License-Identifier: MIT
"""The log is rotated, as the installed configuration has it, while processes of root and of a user write to it.

    rotation_test.py LOG_WRITER CONFIGURATION [unittest arguments]
"""
import gzip
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

if os.geteuid() != 0:  # other users are needed
    os.execvp("unshare", ["unshare", "--user", "--map-root-user", "--map-auto", sys.executable, "-B", *sys.argv])

LOG_WRITER, CONFIGURATION = sys.argv[1:3]
USER = 4799
LINES = 4000
ROTATIONS = 3  # while they write; so many at least
LOGROTATE = shutil.which("logrotate", path=os.environ["PATH"] + ":/usr/sbin")


class RotationTest(unittest.TestCase):
    def setUp(self):
        self.root = Path(tempfile.mkdtemp(prefix="dz-rotation-"))
        self.addCleanup(shutil.rmtree, self.root)
        self.root.chmod(0o755)
        self.folder = self.root / "var/log"
        self.folder.mkdir(parents=True)
        self.log = self.folder / "dozely.log"
        self.log.touch()
        self.log.chmod(0o666)
        text = Path(CONFIGURATION).read_text(encoding="utf-8")
        self.assertRegex(text, r"(?m)^/var/log/dozely\.log \{$")
        text = text.replace("/var/log/dozely.log", str(self.log))
        text, kept = re.subn(r"(?m)^\trotate \d+$", "\trotate 10000", text)
        self.assertEqual(kept, 1)
        self.configuration = self.root / "logrotate.conf"
        self.configuration.write_text(text, encoding="utf-8")
        self.configuration.chmod(0o644)
        # The library's folder may be closed to others.
        self.writer = self.root / "log_writer"
        shutil.copy(LOG_WRITER, self.writer)
        libraries = self.root / "lib"
        libraries.mkdir()
        for line in subprocess.run(["ldd", LOG_WRITER], text=True, check=True, stdout=subprocess.PIPE).stdout.splitlines():
            found = re.search(r"(libDozely\S+) => (\S+)", line)
            if found:
                shutil.copy(found[2], libraries / found[1])
        self.environment = {**os.environ, "LD_LIBRARY_PATH": str(libraries)}

    def write(self, name, user):
        process = subprocess.Popen([self.writer, self.root, name, str(LINES)], env=self.environment, cwd="/", user=user,
                                group=user, extra_groups=[], stdin=subprocess.DEVNULL, stderr=subprocess.PIPE)
        self.addCleanup(process.stderr.close)
        return process

    def rotate(self):
        done = subprocess.run([LOGROTATE, "--force", "--state", self.root / "state", self.configuration], text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        self.assertEqual((done.returncode, done.stdout), (0, ""))

    def lines(self):
        for file in self.folder.iterdir():
            opened = gzip.open if file.suffix == ".gz" else open
            with opened(file, "rt", encoding="utf-8") as stream:
                for line in stream:
                    if line == "\n":  # who sees a line of another's half written closes it
                        continue
                    found = re.fullmatch(r"\w{3} \d\d \d\d:\d\d:\d\d (\S+) line (\d+)\n", line)
                    self.assertIsNotNone(found, f"{file.name}: {line!r}")
                    yield found[1], int(found[2])

    def test_no_line_is_lost_or_doubled(self):
        writers = {name: self.write(name, user) for name, user in
                   (("root-1", 0), ("user-1", USER), ("user-2", USER), ("user-3", USER))}
        rotations = 0
        while any(process.poll() is None for process in writers.values()):
            self.rotate()
            rotations += 1
        for name, process in writers.items():
            self.assertEqual((process.returncode, process.stderr.read().decode()), (0, ""), name)
        self.assertGreaterEqual(rotations, ROTATIONS)
        seen = {name: [] for name in writers}
        for name, number in self.lines():
            seen[name].append(number)
        for name, numbers in seen.items():
            self.assertEqual(sorted(numbers), list(range(LINES)), f"{name}, {rotations} rotations")
        # The newest is for everybody again, and nothing was put aside in another way.
        self.assertEqual(self.log.stat().st_mode & 0o7777, 0o666)
        names = {re.sub(r"\d+", "N", file.name) for file in self.folder.iterdir()}
        self.assertLessEqual(names, {"dozely.log", "dozely.log.N", "dozely.log.N.gz"})


if __name__ == "__main__":
    LOGROTATE or sys.exit("logrotate is missing")
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]], verbosity=2)
