# SPDX-License-Identifier: MIT
"""Asks the service manager's own tool what it thinks of the daemon's unit; nothing is started.

    unit_test.py UNIT [unittest arguments]
"""
import re
import subprocess
import sys
import unittest

UNIT = sys.argv[1]
MOST_EXPOSURE = 2.5  # of 10


class UnitTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.asked = subprocess.run(["systemd-analyze", "security", "--offline=true", "--no-pager", UNIT], text=True,
                                   env={"PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8"}, stdout=subprocess.PIPE,
                                   stderr=subprocess.PIPE, check=True)

    def test_the_daemon_can_do_little_harm(self):
        overall = re.search(r"Overall exposure level for dozelyd\.service: ([0-9.]+)", self.asked.stdout)
        self.assertIsNotNone(overall, self.asked.stdout)
        self.assertLessEqual(float(overall.group(1)), MOST_EXPOSURE, self.asked.stdout)

    def test_the_service_manager_understands_every_line(self):
        self.assertEqual(self.asked.stderr, "")

    def test_every_restriction_says_why(self):
        """A comment stands above each group of lines."""
        with open(UNIT, encoding="utf-8") as file:
            text = file.read()
        restrictions = text.partition("# What follows binds the daemon")[2].partition("[Install]")[0]
        groups = [group.splitlines() for group in restrictions.strip().split("\n\n")[1:]]
        self.assertGreater(len(groups), 4)
        for group in groups:
            self.assertTrue(group[0].startswith("#"), group)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[2:]], verbosity=2)
