#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Whether the agent's texts are there in every language: texts_test.py FOLDER

FOLDER is hosts/agent/Resources."""
import re
import sys
import unittest
from pathlib import Path

FOLDER = Path(sys.argv[1])
LANGUAGES = ("ar", "de", "en", "es", "fr", "ja")


def texts(language):
    content = (FOLDER / f"{language}.lproj/Localizable.strings").read_text(encoding="utf-8")
    return dict(re.findall(r'^"([^"]+)" = "([^"]*)";$', content, re.MULTILINE))


class Texts(unittest.TestCase):
    def test_every_language_has_the_same_keys_in_whole_lines(self):
        for language in LANGUAGES:
            lines = (FOLDER / f"{language}.lproj/Localizable.strings").read_text(encoding="utf-8").splitlines()
            self.assertEqual([line for line in lines if not re.fullmatch(r'"[^"]+" = "[^"]+";|/\*.*\*/', line)], [], language)
            self.assertEqual(sorted(texts(language)), sorted(texts("en")), language)

    def test_what_is_filled_in_and_keys_stay(self):
        for language in LANGUAGES:
            for key, text in texts(language).items():
                self.assertEqual(text.count("%@"), texts("en")[key].count("%@"), f"{language}: {key}")
                self.assertEqual(text.count("&"), texts("en")[key].count("&"), f"{language}: {key}")

    def test_the_sources_ask_for_no_text_that_there_is_not(self):
        asked = set()
        for source in FOLDER.parent.glob("*.cpp"):
            asked |= set(re.findall(r'agentText\("([^"]+)"\)', source.read_text(encoding="utf-8")))
        self.assertGreater(len(asked), 5)
        self.assertEqual(asked - set(texts("en")), set())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
