#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""What is said of the figures of an attack: each limit can be broken, and what the machine took is allowed for."""
import copy
import importlib.machinery
import importlib.util
import pathlib
import unittest

HERE = pathlib.Path(__file__).resolve().parent
loader = importlib.machinery.SourceFileLoader("attack_run", str(HERE / "run"))
run = importlib.util.module_from_spec(importlib.util.spec_from_loader("attack_run", loader))
loader.exec_module(run)
import attacks  # noqa: E402
import wire  # noqa: E402


def pinged(worst, failed=0, outage=0.0):
    return {"count": 100, "failed": failed, "worst_ms": worst, "outage_ms": outage or worst, "why": "it was closed"}


GOOD = {
    "pings": {"root": pinged(99.0), "other": pinged(99.0), "machine": pinged(1.0)},
    "expected": 3, "late_ms": {"daemon": [1, 2, 50], "session": [3, 4, 50]}, "recorded": 3,
    "memory_peak_mib": 64.0, "memory_after_mib": 8.0, "memory_seconds": 1.0,
    "descriptors": 0, "descriptor_seconds": 1.0, "own": {"performed": 60}, "complaints": [],
}
ATTACK = attacks.Attack("any", "Any attack", attacks.nobody, extra=[("performed", 60)])


class Judging(unittest.TestCase):
    def broken(self, attack=ATTACK, **changes):
        figures = copy.deepcopy(GOOD)
        for name, value in changes.items():
            if isinstance(value, dict):
                figures[name] |= value
            else:
                figures[name] = value
        return run.judge(attack, figures)

    def test_figures_within_their_limits_hold(self):
        self.assertEqual(self.broken(), [])

    def test_each_limit_can_be_broken(self):
        for changes in (
                {"pings": {"root": pinged(102.0)}}, {"pings": {"other": pinged(102.0)}},
                {"pings": {"other": pinged(5.0, outage=300.0)}}, {"pings": {"root": pinged(5.0, failed=1)}},
                {"late_ms": {"daemon": [1, 2]}}, {"late_ms": {"session": []}}, {"late_ms": {"daemon": [1, 2, 52]}},
                {"recorded": 2}, {"memory_peak_mib": 64.1}, {"memory_after_mib": 8.1}, {"descriptors": 1},
                {"own": {"performed": 61}}, {"complaints": ["dozelyd had to be killed"]}):
            with self.subTest(changes=changes):
                self.assertEqual(len(self.broken(**changes)), 1)

    def test_what_the_machine_took_for_the_same_is_allowed_for(self):
        self.assertEqual(self.broken(pings={"machine": pinged(30.0), "root": pinged(129.0)}, late_ms={"daemon": [1, 2, 79]}),
                         [])

    def test_the_short_form_has_room_for_a_machine_that_is_not_quiet(self):
        slow = copy.deepcopy(GOOD) | {"late_ms": {"daemon": [1, 2, 1050], "session": [3, 4, 5]}}
        slow["pings"]["root"] = pinged(1100.0)
        self.assertEqual(run.judge(ATTACK, slow, run.SHORT_ROOM), [])
        slow["late_ms"]["daemon"][-1] += 2
        slow["pings"]["root"] = pinged(1102.0)
        self.assertEqual(len(run.judge(ATTACK, slow, run.SHORT_ROOM)), 2)

    def test_a_machine_that_does_not_answer_measures_nothing(self):
        self.assertEqual(len(self.broken(pings={"machine": pinged(30.0, failed=1)})), 1)

    def test_where_the_socket_is_taken_away_others_are_refused_for_a_while(self):
        attack = attacks.Attack("any", "Any attack", attacks.nobody, outage=11_500.0)
        gone = {"root": pinged(5.0, failed=7, outage=11_000.0)}
        self.assertEqual(self.broken(attack, pings=gone), [])
        self.assertEqual(len(self.broken(attack, pings={"root": pinged(5.0, failed=7, outage=11_800.0)})), 1)


class Writing(unittest.TestCase):
    def test_messages_have_the_size_that_they_are_to_have(self):
        for size in (256 << 10, 4 << 20):
            for message in (wire.bulky(size), wire.dense(size)):
                self.assertLessEqual(len(message), size)
                self.assertGreater(len(message), size - 256)

    def test_a_header_ends_at_a_multiple_of_eight(self):
        self.assertEqual(len(wire.call("/root", "pong")) % 8, 0)


if __name__ == "__main__":
    unittest.main()
