# SPDX-License-Identifier: MIT
"""The modules of the plug-ins that come along name no library that they do not use.

    links_test.py PLUG_INS LIBRARIES [unittest arguments]
"""
import os
import re
import subprocess
import sys
import unittest
from pathlib import Path

PLUG_INS, LIBRARIES = sys.argv[1:3]
# The interface library loads the views of settings, which need not call anything of it.
WANTED = {"libDozelyInterface.so.0"}


class LinksTest(unittest.TestCase):
    def test_no_module_names_what_it_does_not_use(self):
        modules = sorted(Path(PLUG_INS).glob("*.plugin/Contents/Linux/*.so"))
        self.assertGreaterEqual(len(modules), 5)
        for module in modules:
            done = subprocess.run(["ldd", "-u", str(module)], text=True, check=False, stdout=subprocess.PIPE,
                                  env={**os.environ, "LD_LIBRARY_PATH": LIBRARIES, "LC_ALL": "C"})
            unused = set(re.findall(r"([^/\s]+\.so[.\d]*)$", done.stdout, re.MULTILINE))
            self.assertEqual(unused - (WANTED if module.name.endswith("PrefPane.so") else set()), set(), module.name)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]], verbosity=2)
