# SPDX-License-Identifier: MIT
"""What tests/packages/run makes of what a machine tells."""
import importlib.machinery
import importlib.util
import io
import os
import sys
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
LOADER = importlib.machinery.SourceFileLoader("packages_run", os.path.join(HERE, "run"))
run = importlib.util.module_from_spec(importlib.util.spec_from_loader("packages_run", LOADER))
LOADER.exec_module(run)


class Told:
    """A machine that has said all that it is going to say."""

    def __init__(self, lines):
        self.left = [("line", line) for line in lines] + [("end", None)]

    def take(self, _limit):
        return self.left.pop(0)


class Silent:
    def write(self, text):
        pass


def judged(*lines):
    table = run.Table()
    run.judge(run.Scenario(Told(lines), Silent()), ["install", "purge"], table)
    return table


class RunTest(unittest.TestCase):
    def test_all_parts_that_were_seen_are_a_success(self):
        table = judged("vm: seen it is there", "vm: over install", "vm: seen it is gone", "vm: over purge")
        self.assertEqual(table.rows, [("install", "it is there", True), ("purge", "it is gone", True)])
        self.assertTrue(table.is_good())

    def test_a_part_that_fails_leaves_the_others_untried(self):
        table = judged("vm: seen it is there", "FAILED: it is not", "vm: ended 1")
        self.assertFalse(table.is_good())
        self.assertEqual([row[2] for row in table.rows], [True, False, False])
        self.assertEqual(table.rows[2][:2], ("purge", "was not tried"))
        printed = io.StringIO()
        table.print(printed)
        self.assertEqual([line.split()[0] for line in printed.getvalue().splitlines()], ["ok", "FAILED", "FAILED"])

    def test_a_part_that_shows_nothing_is_none(self):
        self.assertFalse(judged("vm: over install", "vm: seen it is gone", "vm: over purge").is_good())

    def test_a_machine_that_ends_with_success_before_the_last_part_has_failed(self):
        self.assertFalse(judged("vm: seen it is there", "vm: over install", "vm: ended 0").is_good())

    def test_no_row_is_no_success(self):
        self.assertFalse(run.Table().is_good())


if __name__ == "__main__":
    unittest.main(argv=sys.argv, verbosity=2)
