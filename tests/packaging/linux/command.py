"""What the command says of itself, for comparing with it what is written by hand."""
import functools
import os
import re
import subprocess
import tempfile

COMMAND = os.environ["EXFLATE_COMMAND"]
SUBCOMMANDS = ("run", "check", "report", "list", "replay", "dialog")


def exflate(*arguments):
    with tempfile.TemporaryDirectory() as folder:
        return subprocess.run([COMMAND, *arguments], capture_output=True, text=True, check=False, cwd=folder, timeout=100,
                              stdin=subprocess.DEVNULL, env=os.environ | {"XDG_CONFIG_HOME": folder})


def help_text():
    return exflate("--help").stdout


@functools.cache
def all_options():
    """Every option that the help names, short ones too."""
    return sorted(set(re.findall(r"(?<![\w-])--?[a-z][a-z-]*", help_text())))


def takes(subcommand, option):
    """Whether the subcommand knows the option. There is nothing to work on, so it ends either way."""
    needed = ("--picture", "absent/picture.png") if subcommand == "dialog" else ("absent",)
    done = exflate(subcommand, *needed, option)
    return f"there is no option {option}" not in done.stderr


@functools.cache
def options_of(subcommand):
    return {option for option in all_options() if option != "--version" and takes(subcommand, option)}
