#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Whether the application's texts are there in every language: texts_test.py FOLDER LUPDATE

FOLDER is hosts/application/translations."""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

FOLDER = Path(sys.argv[1])
LUPDATE = sys.argv[2]
LANGUAGES = ("ar", "de", "es", "fr", "ja")
# What has keys and is seen together.
EDITOR_CONTEXTS = ("ChangeBar", "PolicyForm", "PowerForm", "ScheduleHeader", "ScheduleListPane")


def messages(path):
    """(source, translations, whether it is finished) of every text in a file."""
    for message in ElementTree.parse(path).getroot().iter("message"):
        translation = message.find("translation")
        forms = [form.text or "" for form in translation.findall("numerusform")] or [translation.text or ""]
        yield message.find("source").text, forms, translation.get("type") is None


class Texts(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = Path(tempfile.mkdtemp())
        cls.addClassCleanup(shutil.rmtree, cls.scratch)
        for file in FOLDER.glob("*.ts"):
            shutil.copy(file, cls.scratch)
        subprocess.run([FOLDER / "update", cls.scratch], check=True, env={**os.environ, "LUPDATE": LUPDATE})

    def test_files_are_what_the_sources_say(self):
        for language in (*LANGUAGES, "en"):
            name = f"dozely_{language}.ts"
            self.assertEqual((self.scratch / name).read_text(encoding="utf-8"),
                             (FOLDER / name).read_text(encoding="utf-8"),
                             f"{name} is out of date: run hosts/application/translations/update")

    def test_no_text_is_missing_in_any_language(self):
        for language in (*LANGUAGES, "en"):
            texts = list(messages(self.scratch / f"dozely_{language}.ts"))
            self.assertGreater(len(texts), 100 if language != "en" else 0)
            missing = [source for source, forms, finished in texts if not finished or not all(forms)]
            self.assertEqual(missing, [], language)

    def test_what_is_filled_in_stays_in_every_translation(self):
        for language in LANGUAGES:
            for source, forms, _ in messages(self.scratch / f"dozely_{language}.ts"):
                wanted = sorted(re.findall(r"%\d", source))
                for form in forms:
                    self.assertEqual(sorted(re.findall(r"%\d", form)), wanted, f"{language}: {source}")

    def test_a_key_of_a_label_stays_one(self):
        for language in LANGUAGES:
            for source, forms, _ in messages(self.scratch / f"dozely_{language}.ts"):
                for form in forms:
                    self.assertEqual(form.count("&"), source.count("&"), f"{language}: {source}")
                    self.assertFalse(form.endswith("&"), f"{language}: {source}")

    def test_no_two_controls_of_a_page_have_the_same_key(self):
        # Not in Arabic: a letter is the key only at the beginning of a word, elsewhere its mark tears the word apart.
        for language in (None, *LANGUAGES[1:]):
            keys = {}
            for context in ElementTree.parse(self.scratch / f"dozely_{language or 'de'}.ts").getroot().iter("context"):
                if context.find("name").text not in EDITOR_CONTEXTS:
                    continue
                for message in context.iter("message"):
                    text = message.find("translation" if language else "source").text or ""
                    for key in re.findall(r"&(\w)", text):
                        self.assertNotIn(key.lower(), keys, f"{language}: {text}")
                        keys[key.lower()] = text
            self.assertEqual(len(keys), 11, language)

    def test_commands_are_not_translated(self):
        for language in LANGUAGES:
            for source, forms, _ in messages(self.scratch / f"dozely_{language}.ts"):
                for command in re.findall(r"systemctl [a-z -]+[a-z]", source):
                    self.assertTrue(all(command in form for form in forms), f"{language}: {source}")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
