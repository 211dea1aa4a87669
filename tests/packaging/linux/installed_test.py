#!/usr/bin/env python3
"""What `cmake --install` makes: installed_test.py CMAKE BUILD_TREE ANIMATION"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

import command

CMAKE, TREE, ANIMATION = sys.argv[1:4]


class Installed(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def install(self, prefix, destination=""):
        subprocess.run([CMAKE, "--install", TREE, "--prefix", str(prefix)], check=True, capture_output=True,
                       env=os.environ | {"DESTDIR": str(destination)})

    def exflate(self, program, *arguments):
        """Without anything in the environment that tells the command where its parts are."""
        return subprocess.run([str(program), *arguments], capture_output=True, text=True, check=False, cwd=self.folder,
                              env={"PATH": "/usr/bin:/bin", "XDG_CONFIG_HOME": str(self.folder), "LC_ALL": "C.UTF-8"})

    def assert_works(self, program):
        done = self.exflate(program, ANIMATION)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(done.stdout, command.exflate(ANIMATION).stdout)

    def test_the_command_finds_its_parts_wherever_the_prefix_is_moved_to(self):
        self.install(self.folder / "first")
        self.assert_works(self.folder / "first/bin/exflate")
        moved = self.folder / "second place"
        (self.folder / "first").rename(moved)
        self.assert_works(moved / "bin/exflate")
        (self.folder / "link").symlink_to(moved / "bin/exflate")
        self.assert_works(self.folder / "link")

    def test_a_destination_stands_before_the_prefix(self):
        self.install("/usr", self.folder / "root")
        root = self.folder / "root/usr"
        self.assert_works(root / "bin/exflate")
        for file in ("lib/exflate/Exflate.so", "share/man/man1/exflate.1.gz", "share/doc/exflate/copyright",
                     "share/bash-completion/completions/exflate", "share/fish/vendor_completions.d/exflate.fish",
                     "share/zsh/vendor-completions/_exflate"):
            self.assertTrue((root / file).is_file(), file)
        self.install("/usr/local", self.folder / "root")
        self.assertTrue((root / "local/share/zsh/site-functions/_exflate").is_file())

    def test_without_the_dialogs_module_everything_else_works(self):
        self.install(self.folder / "first")
        (self.folder / "first/lib/exflate/dialog_window.so").unlink(missing_ok=True)
        program = self.folder / "first/bin/exflate"
        self.assert_works(program)
        done = self.exflate(program, "dialog", "--picture", "dialog.png")
        self.assertEqual(done.returncode, 2)
        self.assertRegex(done.stderr, r"\Aexflate: there is no dialog window beside this command [^\n]*\n\Z")

    def test_without_the_plug_in_the_command_says_where_it_looked(self):
        self.install(self.folder / "first")
        shutil.rmtree(self.folder / "first/lib")
        done = self.exflate(self.folder / "first/bin/exflate", ANIMATION)
        self.assertEqual(done.returncode, 4)
        self.assertIn(f"'{self.folder}/first/lib/exflate/Exflate.so': set EXFLATE_PLUGIN", done.stderr)

    def test_the_page_of_report_has_its_player(self):
        self.install(self.folder / "first")
        if not (self.folder / "first/share/exflate/player").exists():
            self.skipTest("lottie-web is not installed")
        done = self.exflate(self.folder / "first/bin/exflate", "report", ANIMATION, "-o", "page.html")
        self.assertIn(done.returncode, (0, 1), done.stderr)
        self.assertIn("lottie", (self.folder / "page.html").read_text(encoding="utf-8"))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
