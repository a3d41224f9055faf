#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""What is said of an occurrence: each invariant can be broken."""
import pathlib
import sys
import unittest

HERE = pathlib.Path(__file__).resolve().parent
sys.path[:0] = [str(HERE), str(HERE.parent.parent / "scripts")]
import controlled  # noqa: E402


class Judging(unittest.TestCase):
    def test_what_was_performed_once_and_is_done_holds(self):
        self.assertIsNone(controlled.judge("done", 1))

    def test_nothing_is_performed_twice(self):
        for state in controlled.OVER_BY_ITSELF:
            self.assertIn("2 times", controlled.judge(state, 2, may_be_lost=True))

    def test_what_was_not_performed_left_no_mark(self):
        for state in ("not performed", "skipped", "removed"):
            self.assertIn("it was performed", controlled.judge(state, 1, may_be_lost=True))
            self.assertIsNone(controlled.judge(state, 0, may_be_lost=True))

    def test_without_an_excuse_nothing_is_lost(self):
        for state in controlled.OVER_BY_ITSELF:
            self.assertIn("lost", controlled.judge(state, 0))
            self.assertIsNone(controlled.judge(state, 0, may_be_lost=True, is_known=False))

    def test_what_was_interrupted_may_have_been_performed(self):
        for state in ("failed", "unknown"):
            for performed in (0, 1):
                self.assertIsNone(controlled.judge(state, performed, may_be_lost=True))

    def test_what_was_performed_is_done_and_not_interrupted(self):
        self.assertIn("performed 1 times", controlled.judge("interrupted", 1, may_be_lost=True))
        self.assertIn("performed 0 times", controlled.judge("done", 0, may_be_lost=True))

    def test_of_what_somebody_else_has_it_is_not_known_how_it_ends(self):
        self.assertIsNone(controlled.judge("interrupted", 1, may_be_lost=True, is_known=False))
        self.assertIsNone(controlled.judge("done", 0, may_be_lost=True, is_known=False))

    def test_what_nobody_is_left_to_tell_of_may_have_been_performed_and_is_not_done_without(self):
        self.assertIsNone(controlled.judge("interrupted", 1, may_be_lost=True, can_be_told=False))
        self.assertIn("performed 0 times", controlled.judge("done", 0, may_be_lost=True, can_be_told=False))

    def test_something_becomes_of_everything(self):
        for state in (None, "asked", "begun"):
            self.assertIn("the record says", controlled.judge(state, 1, may_be_lost=True))


if __name__ == "__main__":
    unittest.main()
