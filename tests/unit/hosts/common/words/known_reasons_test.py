#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Whether what hosts take for a reason of the daemon's or the library's stands in their sources as well: one
that is worded anew there would come in English again, and nobody would notice. known_reasons_test.py TREE"""
import re
import sys
import unittest
from pathlib import Path

TREE = Path(sys.argv[1])
KNOWN = TREE / "hosts/common/words/KnownReasons.cpp"
SAYING = ("kit", "hosts/common", "hosts/daemon", "hosts/performer", "hosts/application/actions")
LITERALS = re.compile(r'"((?:[^"\\\n]|\\.)*)"(?:\s*"((?:[^"\\\n]|\\.)*)")*')
ONE = re.compile(r'"((?:[^"\\\n]|\\.)*)"')


def texts(file):
    """The texts of a source; those that stand one after the other are one."""
    for found in LITERALS.finditer(file.read_text(encoding="utf-8")):
        yield "".join(ONE.findall(found.group())).replace('\\"', '"')


class KnownReasons(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        source = KNOWN.read_text(encoding="utf-8")
        cls.known = ["".join(ONE.findall(found)).replace('\\"', '"')
                     for found in re.findall(r'QT_TRANSLATE_NOOP\(\s*"ReasonWords",\s*((?:"(?:[^"\\]|\\.)*"\s*)+)\)', source)]
        cls.count = source.count("QT_TRANSLATE_NOOP(")
        cls.said = {text for folder in SAYING for file in (TREE / folder).rglob("*.cpp") if file != KNOWN
                    for text in texts(file)}

    def test_every_one_is_read(self):
        self.assertGreater(len(self.known), 40)
        self.assertEqual(len(self.known), self.count)

    def test_every_one_is_said(self):
        self.assertEqual([text for text in self.known if text not in self.said], [])

    def test_none_comes_twice(self):
        self.assertEqual(len(set(self.known)), len(self.known))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
