#!/usr/bin/env python3
"""docs/testing-a-plug-in.md, followed word for word in an empty folder with the packages: page_test.py CPACK TREE PAGE"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

CPACK, TREE, PAGE = sys.argv[1:4]
FILE_OR_COMMANDS = re.compile(r"(?:Save this as `([^`]+)`:\n\n)?```(\w+)\n(.*?)```\n", re.S)


class Page(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        made, root, cls.folder = (pathlib.Path(folder.name) / name for name in ("made", "root", "empty"))
        cls.folder.mkdir()
        subprocess.run([CPACK, "--config", f"{TREE}/CPackConfig.cmake", "-G", "DEB", "-D", "CPACK_COMPONENTS_ALL=check;dev",
                        "-B", made], check=True, capture_output=True)
        cls.packages = sorted(made.glob("*.deb"))
        for package in cls.packages:
            subprocess.run(["dpkg-deb", "-x", package, root], check=True)
        cls.prefix = root / "usr"
        cls.environment = {"PATH": f"{cls.prefix}/bin:{os.environ['PATH']}", "HOME": folder.name,
                           "CMAKE_PREFIX_PATH": str(cls.prefix), "PKG_CONFIG_PATH": f"{cls.prefix}/lib/pkgconfig"}

    def run_commands(self, commands):
        return subprocess.run(["bash", "-ec", commands], cwd=self.folder, env=self.environment, capture_output=True, text=True)

    def test_there_are_the_two_packages_that_the_page_installs(self):
        patterns = re.search(r"sudo apt install (.*)", pathlib.Path(PAGE).read_text(encoding="utf-8")).group(1).split()
        self.assertEqual(len(self.packages), len(patterns))
        for package, pattern in zip(self.packages, patterns):
            self.assertTrue(package.match(pattern.removeprefix("./")), package)

    def test_every_command_of_the_page_does_what_it_says(self):
        page = pathlib.Path(PAGE).read_text(encoding="utf-8")
        runs, said = 0, ""
        for name, language, text in FILE_OR_COMMANDS.findall(page):
            if name:
                (self.folder / name).write_text(text, encoding="utf-8")
            elif language == "sh":
                done = self.run_commands(text)
                self.assertEqual(done.returncode, 0, f"{text}\n{done.stdout}\n{done.stderr}")
                said += done.stdout + done.stderr
                runs += 1
        self.assertGreater(runs, 8)
        self.assertIn("aegp-check: PASS", said)
        expected = re.search(r"    (failed .*?)\n\n", page, re.S).group(1)
        self.assertIn(" ".join(expected.split()), " ".join(said.split()))
        self.assertIn("<testsuite", (self.folder / "aegp-check.xml").read_text(encoding="utf-8"))

    def test_the_manual_has_every_option_of_the_help(self):
        help_text = self.run_commands("aegp-check --help").stdout
        options = set(re.findall(r"^  (?:-\w, )?(--[a-z-]+)", help_text, re.M))
        self.assertGreater(len(options), 12)
        manual = subprocess.run(["gzip", "-dc", self.prefix / "share/man/man1/aegp-check.1.gz"], capture_output=True, text=True,
                                check=True).stdout.replace("\\-", "-")
        for option in options:
            self.assertIn(option, manual)
        self.assertRegex(self.run_commands("aegp-check --version").stdout, r"\Aaegp-check \d+\.\d+\.\d+\n\Z")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
