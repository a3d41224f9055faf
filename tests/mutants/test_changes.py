#!/usr/bin/python3 -B
# SPDX-License-Identifier: MIT
"""What is changed in code, what is left alone, and who is told to have noticed it."""

import pathlib
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
import changes  # noqa: E402
import related  # noqa: E402


def made(code):
    return {(change.kind, change.after) for change in changes.changes("a.cpp", code)}


class Changes(unittest.TestCase):
    def test_each_kind_is_made(self):
        for code, kind, after in (
                ("x = a < b;", "boundary", "x = a <= b;"), ("x = a >= b;", "boundary", "x = a > b;"),
                ("x = a == b;", "equality", "x = a != b;"), ("x = a && b;", "connective", "x = a || b;"),
                ("x = a - b;", "arithmetic", "x = a + b;"), ("f(true);", "truth", "f(false);"),
                ("x = 1'000;", "number", "x = 1001;"), ("x = !isOpen();", "negation dropped", "x = isOpen();"),
                ("    if (a.b(c))", "condition negated", "    if (!(a.b(c)))"),
                ("    m_a->b(c, d());", "statement dropped", "    ;"), ("    ::close(3);", "number", "    ::close(4);"),
                ("    m_count += n;", "statement dropped", "    ;"), ("        return;", "statement dropped", "        ;")):
            self.assertIn((kind, after), made(code), code)

    def test_a_condition_keeps_its_texts(self):
        self.assertIn(("condition negated", 'if (!(name == "a)"))'), made('if (name == "a)")'))

    def test_comments_texts_and_includes_are_left_alone(self):
        for code in ("// a < b && 3", "/* if (a == b)\n   c = 4; */", 'f("a < b, 3 + 4", \'5\')', "#if A == 3", "#define B \\\n  7",
                     'R"(a < b\n1)"'):
            self.assertEqual(made(code), set(), code)

    def test_what_is_no_statement_of_its_own_is_not_dropped(self):
        for code in ("    QString name(text);", "    return f(x);", "    const int a = f(x);", "    if (a) f(b);",
                     "    f(a,", "    using namespace dozely;"):
            self.assertFalse({kind for kind, _ in made(code) if kind == "statement dropped"}, code)

    def test_memory_that_is_reserved_is_left_alone(self):
        for code in ("    text.reserve(length + 1);", "    m_list->items.reserve(3);"):
            self.assertEqual(made(code), set(), code)

    def test_templates_arrows_and_shifts_are_no_comparisons(self):
        self.assertFalse({kind for kind, _ in made("QList<int> a = b->c << d;") if kind == "boundary"})

    def test_a_change_is_made_in_its_line_alone(self):
        source = "a < b;\na < b;\n"
        second = [change for change in changes.changes("a.cpp", source) if change.line == 2][0]
        self.assertEqual(changes.applied(source, second), "a < b;\na <= b;\n")

    def test_every_room_of_code_has_a_folder_of_tests(self):
        root = pathlib.Path(__file__).resolve().parent.parent.parent
        rooms = {str(file.relative_to(root)) for floor in ("kit", "hosts", "plugins") for file in (root / floor).rglob("*.cpp")}
        self.assertTrue(rooms)
        for path in sorted(rooms):
            for folder in related.folders_of_tests(path):
                self.assertTrue(list((root / folder).rglob("*Test.cpp")), f"{path}: {folder}")

    def test_the_longest_beginning_of_a_path_counts(self):
        table = {"hosts": 1, "hosts/daemon/bus": 2}
        self.assertEqual(related.entry_for(table, "hosts/daemon/bus/SchedulerBus.cpp"), 2)
        self.assertEqual(related.entry_for(table, "hosts/daemon/Scheduler.cpp"), 1)
        self.assertEqual(related.entry_for(table, "kit/core/log/ZDRLog.cpp"), ())

    def test_who_failed_may_have_blanks_in_its_name(self):
        for line, name in (("\t  7 - Store.KeepsEntries (Failed)", "Store.KeepsEntries"),
                           ("\t3457 - EachWay/Limits.Hold/InUnits  # GetParam() = InUnits (Subprocess aborted)",
                            "EachWay/Limits.Hold/InUnits  # GetParam() = InUnits")):
            self.assertEqual(related.failed(f"The following tests FAILED:\n{line}\nErrors while running CTest"), [name])
        self.assertEqual(related.failed("100% tests passed, 0 tests failed out of 2 (2 skipped)"), [])


unittest.main()
