"""What the command says of itself, for comparing with it what shells offer and the manual tells."""
import functools
import os
import re
import subprocess
import tempfile

COMMAND = os.environ["EXFLATE_COMMAND"]


def exflate(*arguments):
    with tempfile.TemporaryDirectory() as folder:
        return subprocess.run([COMMAND, *arguments], capture_output=True, text=True, check=False, cwd=folder, timeout=100,
                              stdin=subprocess.DEVNULL, env=os.environ | {"XDG_CONFIG_HOME": folder})


def help_text():
    return exflate("--help").stdout


def _subcommands():
    found = re.findall(r"^  ([a-z]+) ", help_text().split("Commands:")[1].split("\n\n")[0], re.M)
    assert {"run", "check", "version"} <= set(found)
    return tuple(found)


SUBCOMMANDS = _subcommands()


def _takes(subcommand, option):
    """Whether the subcommand knows the option. There is nothing to work on, so it ends either way."""
    return f"there is no option {option}" not in exflate(subcommand, option).stderr


@functools.cache
def options_of(subcommand):
    """Long and short; the summary's claim is tried out."""
    listed = re.findall(r"^ +(-[a-zA-Z])?,? *(--[a-z-]+)?", exflate(subcommand, "-h").stdout, re.M)
    options = {option for both in listed for option in both if option}
    assert {"-h", "--help"} <= options and all(_takes(subcommand, option) for option in options), options
    return options


@functools.cache
def all_options():
    return sorted(set().union(*map(options_of, SUBCOMMANDS)))
