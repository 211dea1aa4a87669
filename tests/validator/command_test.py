#!/usr/bin/env python3
"""The program aegp-check as people run it: command_test.py PROGRAM BAD_PLUGIN ANIMATION"""
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

PROGRAM, PLUGIN, ANIMATION = sys.argv[1:4]


def check(*arguments, mistake="", module=PLUGIN):
    command = [PROGRAM, *arguments, *([module] if module else [])]
    return subprocess.run(command, capture_output=True, text=True, env=os.environ | {"MISTAKE": mistake})


class Command(unittest.TestCase):
    def test_the_last_line_and_the_code_tell_whether_it_passed(self):
        good = check("--strictness", "6")
        self.assertEqual((good.returncode, good.stdout.splitlines()[-1]), (0, "aegp-check: PASS"), good.stdout)
        bad = check("--strictness", "5", mistake="leaves_a_stream")
        self.assertEqual(bad.returncode, 1)
        self.assertRegex(bad.stdout.splitlines()[-1], r"\Aaegp-check: FAIL \(1 of \d\d\)\Z")

    def test_a_failed_test_can_be_repeated_alone_as_it_says(self):
        bad = check("--strictness", "5", mistake="leaves_a_stream")
        line = next(line for line in bad.stdout.splitlines() if line.startswith("    again: "))
        again = line.removeprefix("    again: aegp-check ").split()
        done = check(*again, mistake="leaves_a_stream", module=None)
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stdout.splitlines()[-1], "aegp-check: FAIL (1 of 1)")

    def test_reports_for_programs_say_the_same(self):
        report = check("--strictness", "5", "--format", "json", mistake="leaves_a_stream")
        data = json.loads(report.stdout)
        self.assertEqual((data["verdict"], data["failed"]), ("fail", 1))
        failed = [test for test in data["tests"] if test["verdict"] == "failed"]
        self.assertEqual([test["id"] for test in failed], ["leaks.streams"])
        self.assertTrue(report.stderr.startswith("aegp-check: FAIL (1 of "))
        junit = check("--strictness", "5", "--format", "junit", mistake="leaves_a_stream")
        suite = xml.etree.ElementTree.fromstring(junit.stdout).find("testsuite")
        self.assertEqual(suite.get("failures"), "1")
        self.assertEqual(len(suite.findall("testcase/failure")), 1)

    def test_the_list_names_every_test_once(self):
        listed = check("--list", module=None)
        self.assertEqual(listed.returncode, 0)
        names = [line.split()[1] for line in listed.stdout.splitlines()]
        self.assertGreater(len(names), 100)
        self.assertEqual(len(names), len(set(names)))

    def test_a_journal_is_left_for_each_test_that_failed(self):
        with tempfile.TemporaryDirectory() as folder:
            done = check("--only", "leaks.streams", "--journal", folder, mistake="leaves_a_stream")
            journal = pathlib.Path(folder, "leaks.streams.journal")
            self.assertIn(f"journal: {journal}", done.stdout)
            self.assertIn("AEGP_GetNewLayerStream", journal.read_text(encoding="utf-8"))

    def test_a_project_and_a_selection_are_worked_on(self):
        done = check("--only", "typical.project", "--project", ANIMATION, "--select", "#1")
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        self.assertTrue(done.stdout.startswith("ok "), done.stdout)
        wrong = check("--project", ANIMATION, "--select", "nobody")
        self.assertEqual((wrong.returncode, wrong.stdout), (2, ""))
        self.assertIn("there is no layer \"nobody\"", wrong.stderr)

    def test_wrong_usage_is_one_sentence(self):
        for arguments in (["--nonsense"], ["--strictness", "11"], ["--only", "no.test"], ["--format", "xml"], ["--seed", "2-1"],
                          ["--answer", "x"], ["--select", "x"], ["--command", "Nothing"]):
            done = check(*arguments)
            self.assertEqual(done.returncode, 2, arguments)
            self.assertRegex(done.stderr, r"\Aaegp-check: [^\n]+\n\Z")
        self.assertEqual(check(module=None).returncode, 2)

    def test_what_cannot_be_read_has_a_code_of_its_own(self):
        self.assertEqual(check(module="no/such/module.so").returncode, 3)
        self.assertEqual(check(module=ANIMATION).returncode, 3)
        self.assertEqual(check("--declare", "no/such/file").returncode, 3)
        self.assertEqual(check("--declare", ANIMATION).returncode, 3)
        self.assertEqual(check("--project", PROGRAM).returncode, 3)

    def test_the_same_arguments_give_the_same_report(self):
        first = check("--only", "random.lives", "--only", "random.undo", "--seed", "1-5")
        second = check("--only", "random.lives", "--only", "random.undo", "--seed", "1-5", "-j2")
        self.assertEqual([line for line in first.stdout.splitlines() if not line.endswith(" s")],
                         [line for line in second.stdout.splitlines() if not line.endswith(" s")])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
