#!/usr/bin/env python3
"""Gives the command's results no room: a full device, a limit on the size of files, a disk of a few kilobytes. Each time one
sentence and exit code 4, the input as it was, and nothing left behind.

usage: full_disk.py COMMAND ANIMATION
"""
import os
import pathlib
import resource
import signal
import subprocess
import sys
import tempfile
import unittest
import zipfile

LIMIT = 600  # bytes: less than any result
JOURNAL_LIMIT = 100_000  # more than the result, and less than its journal
DISK = 256 << 10
PLAYER = {"EXFLATE_PLAYER": "player.js"}


class Room(unittest.TestCase):
    """A folder with inputs, large enough that no result fits into what is left."""
    limit = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.inputs = pathlib.Path(folder.name)
        self.outputs = self.inputs
        text = ANIMATION.read_bytes()
        (self.inputs / "a.json").write_bytes(text)
        with zipfile.ZipFile(self.inputs / "a.lottie", "w", zipfile.ZIP_DEFLATED) as archive:
            archive.writestr("manifest.json", '{"version":"2","generator":"a test","animations":[{"id":"x"}]}')
            archive.writestr("a/x.json", text)
        (self.inputs / "player.js").write_text("")
        (self.inputs / "LICENSE.md").write_text("")

    def exflate(self, *arguments, stdout=subprocess.DEVNULL):
        def bound():
            if self.limit is not None:
                resource.setrlimit(resource.RLIMIT_FSIZE, (self.limit, self.limit))
        done = subprocess.run([COMMAND, *map(str, arguments)], cwd=self.inputs, stdin=subprocess.DEVNULL, stdout=stdout,
                              stderr=subprocess.PIPE, env=os.environ | PLAYER, preexec_fn=bound, check=False, timeout=120)
        return done.returncode, done.stderr.decode()

    def contents(self):
        folders = {self.inputs, self.outputs}
        return {file: file.read_bytes() for folder in folders for file in sorted(folder.iterdir()) if file.is_file()}

    def assert_refused(self, *arguments, says=("cannot be written",), **streams):
        before = self.contents()
        code, said = self.exflate(*arguments, **streams)
        self.assertEqual(code, 4, (arguments, said))
        sentences = [line for line in said.splitlines() if any(words in line for words in says)]
        self.assertEqual(len(sentences), 1, (arguments, said))
        after = self.contents()
        self.assertEqual(sorted(after), sorted(before), arguments)
        self.assertTrue(after == before, arguments)

    def assert_only_the_journal_is_lost(self, journal, reason):
        """The result is as good as without one."""
        self.assertEqual(self.exflate("run", "a.json", "-o", "wanted.json")[0], 0)
        code, said = self.exflate("run", "a.json", "-o", "b.json", "--journal", journal)
        self.assertEqual(code, 4, said)
        self.assertEqual(said.count(f"the journal '{journal}' cannot be written: {reason}"), 1, said)
        self.assertEqual((self.inputs / "b.json").read_bytes(), (self.inputs / "wanted.json").read_bytes())


class FullDevice(Room):
    def test_standard_output(self):
        for command in (["run", "a.json"], ["flatten", "a.json"], ["run", "a.lottie"], ["flatten", "a.lottie"], ["check", "a.json"],
                        ["check", "--format", "json", "a.json"], ["list", "a.json"], ["report", "a.json"], ["--help"], ["--version"]):
            with self.subTest(command), open("/dev/full", "wb") as full:
                self.assert_refused(*command, stdout=full)

    def test_journal(self):
        self.assert_only_the_journal_is_lost("/dev/full", "No space left on device")


class SmallFiles(Room):
    limit = LIMIT

    def test_results(self):
        for command in (["run", "-i", "a.json"], ["flatten", "-i", "a.json"], ["run", "-i", "a.lottie"], ["flatten", "-i", "a.lottie"],
                        ["run", "a.json", "-o", "b.json"], ["flatten", "a.json", "-o", "b.json"], ["report", "a.json", "-o", "p.html"],
                        ["run", "a.json", "--out-dir", "."], ["run", "a.lottie", "-o", "b.lottie"]):
            with self.subTest(command):
                self.assert_refused(*command)

    def test_journal(self):
        self.limit = JOURNAL_LIMIT
        self.assert_only_the_journal_is_lost("j", "File too large")


class SmallDisk(Room):
    def setUp(self):
        super().setUp()
        self.outputs = self.inputs / "disk"
        self.outputs.mkdir()
        mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={DISK}", "none", self.outputs], stderr=subprocess.DEVNULL,
                                 check=False)
        if mounted.returncode != 0:
            self.skipTest("no disk can be made here")
        self.addCleanup(subprocess.run, ["umount", "-l", self.outputs], check=False)

    def fill(self, left):
        with open(self.outputs / "filler", "wb", buffering=0) as filler:
            while filler.tell() < DISK:
                try:
                    filler.write(b"x" * 4096)
                except OSError:
                    break
            filler.truncate(max(0, filler.tell() - left))

    def test_results(self):
        self.fill(left=0)
        for command in (["run", "a.json", "-o", "disk/b.json"], ["flatten", "a.json", "-o", "disk/b.json"],
                        ["run", "a.lottie", "-o", "disk/b.lottie"], ["flatten", "a.lottie", "-o", "disk/b.lottie"],
                        ["report", "a.json", "-o", "disk/p.html"], ["run", "a.json", "--out-dir", "disk"]):
            with self.subTest(command):
                self.assert_refused(*command)

    def test_a_file_there_that_is_to_be_replaced(self):
        for name in ("a.json", "a.lottie"):
            (self.outputs / name).write_bytes((self.inputs / name).read_bytes())
        for left in (0, 4096):  # so much that a file can be begun, and a packed one written
            self.fill(left)
            for command in (["run", "-i"], ["flatten", "-i"]):
                for name in ("disk/a.json", "disk/a.lottie")[:1 if left else 2]:
                    with self.subTest(command=command, name=name, left=left):
                        self.assert_refused(*command, name)

    def test_journal(self):
        self.fill(left=8192)
        self.assert_only_the_journal_is_lost("disk/j", "No space left on device")


if __name__ == "__main__":
    COMMAND, ANIMATION = sys.argv[1], pathlib.Path(sys.argv[2]).resolve()
    unittest.main(argv=sys.argv[:1])
