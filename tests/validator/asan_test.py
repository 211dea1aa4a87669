#!/usr/bin/env python3
"""A plug-in with AddressSanitizer in aegp-check, as the manual tells: asan_test.py AEGP-CHECK ROOT COMPILER"""
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

CHECK, ROOT, COMPILER = sys.argv[1:4]


class AddressSanitizer(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        cls.module = os.path.join(cls.folder.name, "Bad.so")
        aegp = pathlib.Path(ROOT, "aegp")
        sources = [pathlib.Path(ROOT, "tests/validator/bad_plugin.cpp"), *(aegp / "src" / f"{name}.cpp" for name in
                                                                          ("AEGP_SuiteHandler", "MissingSuiteError"))]
        subprocess.run([COMPILER, "-std=c++20", "-g", "-fsanitize=address", "-shared", "-fPIC", f"-I{aegp}/include",
                        f"-I{aegp}/include/SP", *sources, "-o", cls.module], check=True)
        cls.library = subprocess.run([COMPILER, "-print-file-name=libasan.so"], capture_output=True, text=True,
                                     check=True).stdout.strip()

    def check(self, mistake, **environment):
        return subprocess.run([CHECK, "--strictness", "4", "--memory-limit", "0", self.module], capture_output=True, text=True,
                              env={**os.environ, "MISTAKE": mistake, "LD_PRELOAD": self.library,
                                   "ASAN_OPTIONS": "detect_leaks=0", **environment})

    def test_a_write_past_a_buffer_is_the_reason_and_its_report_is_shown(self):
        done = self.check("writes_past_a_buffer")
        self.assertEqual(done.returncode, 1, done.stdout)
        found = [line for line in done.stdout.splitlines() if " typical.one-layer: " in line]
        self.assertRegex(found[0], r"^crashed .* sanitizer stopped it in its command hook, "
                                   r"after LayerSuite5.AEGP_GetLayerName: .*heap-buffer-overflow")
        self.assertRegex(done.stdout, r"(?m)^ +it printed: +#\d+ .* look_at_name.*bad_plugin\.cpp")

    def test_without_the_library_it_says_what_to_do(self):
        done = self.check("", LD_PRELOAD="")
        self.assertEqual(done.returncode, 1, done.stdout)
        self.assertRegex(done.stdout, "(?m)^failed .*: set LD_PRELOAD=")

    def test_without_a_mistake_nothing_is_found(self):
        done = self.check("")
        self.assertEqual(done.returncode, 0, done.stdout)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
