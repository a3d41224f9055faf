# SPDX-License-Identifier: MIT
"""Whether a change of a library's interface that breaks others is noticed, and no other change is.

    abi_test.py COMPARE_ABI CXX [unittest arguments]
"""
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

COMPARE, CXX = sys.argv[1:3]
HEADER = """struct Greeter {
    virtual ~Greeter();
    virtual int greet(int times);
    int remembered = 0;
};
int greetings();
"""
SOURCE = """#include "greeter.h"
Greeter::~Greeter() {}
int Greeter::greet(int times) { return remembered = times; }
int greetings() { return 3; }
"""


class AbiTest(unittest.TestCase):
    def setUp(self):
        self.scratch = Path(tempfile.mkdtemp(prefix="dz-abi-"))
        self.addCleanup(shutil.rmtree, self.scratch)
        self.before = self.build("before", HEADER, SOURCE)

    def build(self, name, header, source):
        folder = self.scratch / name
        headers, libraries = folder / "usr/include/DozelyKit", folder / "usr/lib/any"
        headers.mkdir(parents=True)
        libraries.mkdir(parents=True)
        (headers / "greeter.h").write_text(header, encoding="utf-8")
        (folder / "greeter.cpp").write_text(source, encoding="utf-8")
        subprocess.run([CXX, "-g", "-shared", "-fPIC", f"-I{headers}", "-Wl,-soname,libDozelyKit.so.0", "-o",
                        str(libraries / "libDozelyKit.so.0"), str(folder / "greeter.cpp")], check=True)
        return folder

    def compare(self, header, source=SOURCE):
        after = self.build("after", header, source)
        return subprocess.run([COMPARE, str(self.before), str(after)], text=True, check=False,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT)

    def test_the_same_interface_is_none(self):
        done = self.compare(HEADER)
        self.assertEqual(done.returncode, 0, done.stdout)

    def test_a_new_function_breaks_nobody(self):
        done = self.compare(HEADER + "int more();\n", SOURCE + "int more() { return 4; }\n")
        self.assertEqual(done.returncode, 0, done.stdout)

    def test_a_function_that_is_gone_is_noticed(self):
        done = self.compare(HEADER.replace("int greetings();\n", ""),
                            SOURCE.replace("int greetings() { return 3; }\n", ""))
        self.assertEqual(done.returncode, 1, done.stdout)
        self.assertIn("greetings", done.stdout)

    def test_a_class_of_another_size_is_noticed(self):
        done = self.compare(HEADER.replace("int remembered = 0;", "int remembered = 0; long more = 0;"))
        self.assertEqual(done.returncode, 1, done.stdout)
        self.assertIn("Greeter", done.stdout)

    def test_a_virtual_function_before_others_is_noticed(self):
        done = self.compare(HEADER.replace("    virtual int greet", "    virtual int before();\n    virtual int greet"),
                            SOURCE + "int Greeter::before() { return 0; }\n")
        self.assertEqual(done.returncode, 1, done.stdout)

    def test_a_library_that_is_gone_is_noticed(self):
        (self.scratch / "after/usr/lib").mkdir(parents=True)
        done = subprocess.run([COMPARE, str(self.before), str(self.scratch / "after")], text=True, check=False,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        self.assertEqual(done.returncode, 1, done.stdout)
        self.assertIn("libDozelyKit.so.0 is gone", done.stdout)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]], verbosity=2)
