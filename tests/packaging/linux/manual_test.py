#!/usr/bin/env python3
"""The manual page, made from the tables of the command: manual_test.py PAGE VERSION"""
import re
import shutil
import subprocess
import sys
import unittest

import command

PAGE, VERSION = sys.argv[1:3]


def page():
    with open(PAGE, encoding="utf-8") as file:
        return file.read()


class Manual(unittest.TestCase):
    def test_every_option_and_subcommand_of_the_help_is_described(self):
        described = set()
        for heading in re.findall(r"^\.TP\n(.*)$", page().split(".SH OPTIONS")[1].split(".SH")[0], re.M):
            described |= set(re.findall(r"(?<![\w-])--?[a-zA-Z][a-z-]*", re.sub(r"\\f.", " ", heading.replace("\\-", "-"))))
        options = set(command.all_options())
        self.assertGreater(len(options), 30)
        self.assertEqual(described, options)
        for subcommand in command.SUBCOMMANDS:
            self.assertIn(f"\n.TP\n\\fB{subcommand}\\fR\n", page())

    def test_every_variable_and_exit_code_of_the_help_is_described(self):
        environment = command.help_text().split("Environment:")[1]
        for variable in re.findall(r"\b[A-Z]+_[A-Z_]+\b", environment):
            self.assertIn(f"\n\\fB{variable}\\fR\n", page())
        codes = re.findall(r"^  (\d)  ", command.help_text(), re.M)
        self.assertEqual(codes, ["0", "1", "2", "3", "4"])
        for code in codes:
            self.assertIn(f"\n.TP\n\\fB{code}\\fR\n", page())

    def test_the_version_is_the_commands(self):
        self.assertIn(f'.TH EXFLATE 1 "" "exflate {VERSION}"', page())
        self.assertEqual(command.exflate("--version").stdout, f"exflate {VERSION}\n")

    @unittest.skipUnless(shutil.which("man"), "man is not installed")
    def test_the_page_is_shown_without_a_warning(self):
        shown = subprocess.run(["man", "--warnings", "-E", "UTF-8", "-l", PAGE], capture_output=True, text=True, check=True,
                               env={"PATH": "/usr/bin:/bin", "MANWIDTH": "100", "LC_ALL": "C.UTF-8"})
        self.assertEqual(shown.stderr, "")
        self.assertIn("exflate - take the layers of nested compositions out again", shown.stdout)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
