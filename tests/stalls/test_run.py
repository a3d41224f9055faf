#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""What tests/stalls/run says of a folder with tests of which one fails, and one only where a child of it is held."""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

RUN = pathlib.Path(__file__).resolve().parent / "run"
# Fails when it was away for half a second; it looks at the clock all the time.
CHILD = """
import sys, time
begin = last = time.monotonic()
longest = 0
while last - begin < 2:
    now = time.monotonic()
    longest, last = max(longest, now - last), now
print("away for", longest)
sys.exit(longest > 0.5)
"""
PARENT = f"import subprocess, sys; sys.exit(subprocess.call([sys.executable, '-c', {CHILD!r}]))"


def said(*arguments):
    done = subprocess.run([RUN, *map(str, arguments)], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
    return done.returncode, done.stdout


class Stalls(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.build = pathlib.Path(folder.name)
        (self.build / "held.py").write_text(PARENT)
        (self.build / "CTestTestfile.cmake").write_text(
            'add_test(Good.Passes "/bin/sh" "-c" "test $COLOUR = red")\n'
            'set_tests_properties(Good.Passes PROPERTIES ENVIRONMENT "COLOUR=red")\n'
            'add_test(Bad.Fails "/bin/sh" "-c" "echo it is broken; false")\n'
            f'add_test(Slow.IsHeld "{sys.executable}" "{self.build}/held.py")\n')

    def test_a_test_that_passes_is_no_failure(self):
        self.assertEqual(said(self.build, "Good", "--repeat", 3), (0, "3 runs, 0 failed\n"))

    def test_one_that_fails_is_told_with_what_it_said(self):
        status, text = said(self.build, "Good|Bad")
        self.assertEqual(status, 1)
        self.assertIn("failed: Bad.Fails (seed 1)\nit is broken\n", text)
        self.assertTrue(text.endswith("2 runs, 1 failed\n"), text)

    def test_children_are_held(self):
        status, text = said(self.build, "Slow", "--longest", 4)
        self.assertEqual(status, 1, text)
        self.assertIn("away for", text)

    def test_no_test_is_bad(self):
        status, text = said(self.build, "Nothing")
        self.assertEqual(status, 3)
        self.assertIn("there is no test that matches Nothing", text)


if __name__ == "__main__":
    os.environ.pop("COLOUR", None)
    unittest.main()
