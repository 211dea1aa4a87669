#!/usr/bin/env python3
"""The example of docs/embedding.md is the one that is built, and it works: embedding_test.py PROGRAM PLUG-IN ROOT"""
import pathlib
import re
import subprocess
import sys
import unittest

PROGRAM, PLUGIN, ROOT = sys.argv[1:4]


class Embedding(unittest.TestCase):
    def test_the_page_shows_the_example_as_it_is_built(self):
        page = pathlib.Path(ROOT, "docs/embedding.md").read_text(encoding="utf-8")
        source = pathlib.Path(ROOT, "examples/smallest_validator/main.cpp").read_text(encoding="utf-8")
        self.assertEqual(re.search(r"```cpp\n(.*?)```", page, re.S).group(1), source)
        self.assertLess(source.count("\n"), 70)

    def test_it_makes_every_call_of_a_command_fail(self):
        done = subprocess.run([PROGRAM, PLUGIN], capture_output=True, text=True, check=True)
        self.assertRegex(done.stdout, r"\b\d\d runs\n\Z")
        self.assertIn("call 10 fails: ", done.stdout)
        # The call that gives the collection back, when it fails itself.
        self.assertEqual(done.stdout.count(" is left"), 1)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
