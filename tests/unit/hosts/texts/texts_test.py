#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Whether the texts of a program are there in every language: texts_test.py HOSTS SOURCES LUPDATE

HOSTS is the folder hosts/, SOURCES is application, admin or common."""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

HOSTS = Path(sys.argv[1])
SOURCES = sys.argv[2]
FOLDER = HOSTS / SOURCES / "translations"
LUPDATE = sys.argv[3]
LANGUAGES = ("ar", "de", "es", "fr", "ja")
NAME = next(FOLDER.glob("*_de.ts")).stem.removesuffix("_de")
# What there are at least, so that a search that finds nothing is noticed.
FEWEST = {"application": 100, "admin": 400, "common": 25}[SOURCES]
# What has keys and is seen together.
EDITOR_CONTEXTS = ("ChangeBar", "PolicyForm", "PowerForm", "ScheduleHeader", "ScheduleListPane")
# What one types, or another program reads: commands, options, paths, parts of rules and of files.
TYPED = re.compile(r"systemctl(?: --[\w=%@-]+)* (?:[a-z]+ dozely[a-z-]*|reload dbus)|timedatectl [a-z-]+ [\w/]+"
                   r"|apt install [\w-]+|journalctl -u dozelyd|mv '%1' '%1.damaged'"
                   r"|(?<![\w-])--[a-z][a-z-]*|/[a-z]+/[\w./-]+\w|\b(?:BY|FREQ|UNTIL|COUNT|RFC)[A-Z]*|[A-Z]+=[\w-]+")


def messages(path):
    """(source, translations, whether it is finished, whether it has plural forms) of every text in a file."""
    for message in ElementTree.parse(path).getroot().iter("message"):
        translation = message.find("translation")
        forms = [form.text or "" for form in translation.findall("numerusform")] or [translation.text or ""]
        yield (message.find("source").text, forms, translation.get("type") is None, message.get("numerus") == "yes")


class Texts(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = Path(tempfile.mkdtemp())
        cls.addClassCleanup(shutil.rmtree, cls.scratch)
        for file in FOLDER.glob("*.ts"):
            shutil.copy(file, cls.scratch)
        subprocess.run([HOSTS / "update-texts", SOURCES, cls.scratch], check=True, env={**os.environ, "LUPDATE": LUPDATE})

    def file(self, language):
        return self.scratch / f"{NAME}_{language}.ts"

    def test_files_are_what_the_sources_say(self):
        for language in (*LANGUAGES, "en"):
            name = self.file(language).name
            self.assertEqual((self.scratch / name).read_text(encoding="utf-8"),
                             (FOLDER / name).read_text(encoding="utf-8"),
                             f"{name} is out of date: run hosts/update-texts {SOURCES}")

    def test_no_text_is_missing_in_any_language(self):
        for language in (*LANGUAGES, "en"):
            texts = list(messages(self.file(language)))
            if language != "en":
                self.assertGreater(len(texts), FEWEST)
            missing = [source for source, forms, finished, _ in texts if not finished or not all(forms)]
            self.assertEqual(missing, [], language)

    def test_what_is_filled_in_stays_in_every_translation(self):
        for language in LANGUAGES:
            for source, forms, _, is_plural in messages(self.file(language)):
                wanted = sorted(re.findall(r"%\d", source))
                for form in forms:
                    self.assertEqual(sorted(re.findall(r"%\d", form)), wanted, f"{language}: {source}")
                if is_plural and "%n" in source:
                    self.assertIn("%n", forms[-1], f"{language}: {source}")

    def test_what_is_typed_is_not_translated(self):
        for language in LANGUAGES:
            for source, forms, _, _ in messages(self.file(language)):
                for typed in TYPED.findall(source):
                    for form in forms:
                        self.assertIn(typed, form, f"{language}: {source}")

    def test_texts_hold_no_marks_of_direction(self):
        """Which the tool shows escaped, as a stranger's; a toolkit may have them."""
        if SOURCES == "application":
            return
        for language in LANGUAGES:
            for source, forms, _, _ in messages(self.file(language)):
                for form in forms:
                    self.assertIsNone(re.search("[\u200e\u200f\u202a-\u202e\u2066-\u2069]", form), f"{language}: {source}")


class Keys(unittest.TestCase):
    """Of labels; the tool has none."""

    def test_a_key_of_a_label_stays_one(self):
        for language in LANGUAGES:
            for source, forms, _, _ in messages(FOLDER / f"{NAME}_{language}.ts"):
                for form in forms:
                    self.assertEqual(form.count("&"), source.count("&"), f"{language}: {source}")
                    self.assertFalse(form.endswith("&"), f"{language}: {source}")

    def test_no_two_controls_of_a_page_have_the_same_key(self):
        # Not in Arabic: a letter is the key only at the beginning of a word, elsewhere its mark tears the word apart.
        for language in (None, *LANGUAGES[1:]) if SOURCES == "application" else ():
            keys = {}
            for context in ElementTree.parse(FOLDER / f"{NAME}_{language or 'de'}.ts").getroot().iter("context"):
                if context.find("name").text not in EDITOR_CONTEXTS:
                    continue
                for message in context.iter("message"):
                    text = message.find("translation" if language else "source").text or ""
                    for key in re.findall(r"&(\w)", text):
                        self.assertNotIn(key.lower(), keys, f"{language}: {text}")
                        keys[key.lower()] = text
            self.assertEqual(len(keys), 11, language)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
