#!/usr/bin/env python3
"""What shells offer after `exflate`: completions_test.py FOLDER with the files for them"""
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

import command

FOLDER = pathlib.Path(sys.argv[1]).resolve()

# One file of each kind that is offered, one that is not, and a folder.
FILES = ("a.json", "b.lottie", "c.tgs", "d.txt")


class InAFolder(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        for name in FILES:
            (self.folder / name).touch()
        (self.folder / "sub").mkdir()

    def run_shell(self, *words):
        done = subprocess.run(words, capture_output=True, text=True, check=False, cwd=self.folder, timeout=60,
                              env={"PATH": "/usr/bin:/bin", "HOME": str(self.folder), "LC_ALL": "C.UTF-8", "TERM": "dumb"})
        self.assertEqual(done.stderr, "")
        self.assertEqual(done.returncode, 0)
        return done.stdout.split("\n")[:-1]


class Bash(InAFolder):
    def offered(self, *words):
        """What a real bash puts into COMPREPLY for these words, the last one being typed."""
        script = 'source "$1"; shift; COMP_WORDS=(exflate "$@"); COMP_CWORD=$#; _exflate; printf "%s\\n" "${COMPREPLY[@]}"'
        return [word for word in self.run_shell("bash", "--norc", "-c", script, "bash", str(FOLDER / "exflate.bash"), *words)
                if word]

    def test_every_subcommand_and_every_file_that_can_be_read_is_offered_first(self):
        self.assertEqual(set(self.offered("")), {*command.SUBCOMMANDS, "a.json", "b.lottie", "c.tgs", "sub"})
        self.assertEqual(self.offered("re"), [name for name in command.SUBCOMMANDS if name.startswith("re")])

    def test_just_the_options_that_a_subcommand_takes_are_offered(self):
        for subcommand in command.SUBCOMMANDS:
            options = command.options_of(subcommand)
            self.assertIn("--help", options)
            self.assertEqual(set(self.offered(subcommand, "-")), options, subcommand)
        self.assertEqual(set(self.offered("-")), command.options_of("run"))
        self.assertEqual(set(self.offered("a.json", "-")), command.options_of("run"))

    def test_values_are_offered_where_there_is_a_choice(self):
        self.assertEqual(self.offered("check", "--format", ""), ["text", "json", "junit"])
        self.assertEqual(self.offered("check", "--format", "j"), ["json", "junit"])
        self.assertEqual(self.offered("--out-dir", ""), ["sub"])
        self.assertEqual(sorted(self.offered("-o", "")), [*FILES, "sub"])
        self.assertEqual(self.offered("--prefix", ""), [])

    def test_files_are_offered_after_a_subcommand(self):
        self.assertEqual(set(self.offered("check", "")), {"a.json", "b.lottie", "c.tgs", "sub"})
        self.assertEqual(set(self.offered("replay", "")), {*FILES, "sub"})
        self.assertEqual(self.offered("dialog", ""), [])

    def test_commands_are_offered_after_help(self):
        self.assertEqual(set(self.offered("help", "")), set(command.SUBCOMMANDS))


class Fish(InAFolder):
    def offered(self, line):
        if shutil.which("fish") is None:
            self.skipTest("fish is not installed")
        lines = self.run_shell("fish", "--no-config", "-c", f"source {FOLDER}/exflate.fish; complete -C '{line}'")
        return {one.split("\t")[0] for one in lines}

    def test_just_the_options_that_a_subcommand_takes_are_offered(self):
        for subcommand in command.SUBCOMMANDS:
            options = {option for option in command.options_of(subcommand) if option.startswith("--")}
            self.assertEqual(self.offered(f"exflate {subcommand} --"), options, subcommand)
        self.assertEqual(self.offered("exflate --"), {one for one in command.options_of("run") if one.startswith("--")})

    def test_every_subcommand_is_offered(self):
        self.assertLessEqual(set(command.SUBCOMMANDS), self.offered("exflate "))
        self.assertEqual(self.offered("exflate check --format "), {"text", "json", "junit"})
        self.assertEqual(self.offered("exflate help "), set(command.SUBCOMMANDS))
        self.assertEqual(self.offered("exflate version "), set())


class Zsh(InAFolder):
    # A zsh inside zsh, with a terminal between them: what is typed is completed as for a person.
    SCRIPT = """
        zmodload zsh/zpty
        zpty -b shell zsh -f -i
        zpty -w shell "PS1= PS2= RPS1=; fpath=($1 \\$fpath); autoload -Uz compinit; compinit -u -D; setopt no_beep no_list_beep
                       zstyle ':completion:*' list-separator '//'; zstyle ':completion:*' group-name ''
                       LISTMAX=0 COLUMNS=200 LINES=100; bindkey '^T' list-choices; print read""y"
        zpty -r shell seen '*ready*'
        zpty -w shell "$2"$'\\x14\\x15'"print fin""ished"
        zpty -r shell seen '*finished*'
        print -r -- "$seen"
        zpty -d shell
    """

    def shown(self, line):
        if shutil.which("zsh") is None:
            self.skipTest("zsh is not installed")
        (self.folder / "functions").mkdir(exist_ok=True)
        shutil.copy(FOLDER / "_exflate", self.folder / "functions")
        return " ".join(self.run_shell("zsh", "-f", "-c", self.SCRIPT, "zsh", str(self.folder / "functions"), line))

    def test_every_option_that_a_subcommand_takes_is_shown(self):
        for subcommand in command.SUBCOMMANDS:
            shown = self.shown(f"exflate {subcommand} --").split()
            options = {option for option in command.all_options() if option.startswith("--")}
            found = {word.rstrip("=") for word in shown} & options
            expected = {option for option in command.options_of(subcommand) if option.startswith("--")}
            self.assertEqual(found, expected, (subcommand, shown))

    def test_every_subcommand_is_shown(self):
        shown = self.shown("exflate ")
        for subcommand in command.SUBCOMMANDS:
            self.assertRegex(shown, rf"\b{subcommand}\s+//", subcommand)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
