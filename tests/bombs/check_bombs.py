#!/usr/bin/env python3
"""Runs every command on small files that ask for a great deal of work: each ends within its time and memory, with a documented
exit code and, if it refuses the file, with one sentence.

usage: check_bombs.py COMMAND [--sizes 100,10000] [--kinds siblings,chain] [--commands run,check] [--figures FILE]

With --figures each result is added to that file, for limits.py; what stands in it already is not run again.
"""
import argparse
import pathlib
import sys
import tempfile

import bombs
import figures
from limited_run import run

# What is added where a command line stands for itself.
MORE = {"--max-growth": ["10"], "--prove": ["--picture-time", "0.2"], "--flatten": ["--picture-time", "0.2"],
        "report": ["--picture-time", "0.2"]}
COMMANDS = {line: line.split() + MORE.get(line.split()[-1], []) for line in (
    "run", "run --recursive", "run --only-exact", "run --strict", "run --keep-look", "run --max-growth", "run --mend",
    "run --recursive --only-exact", "run --recursive --strict", "run --recursive --keep-look", "run --recursive --max-growth",
    "check", "check --flatten", "check --prove", "flatten", "flatten --exact", "flatten --all", "flatten --max-growth",
    "flatten --prove", "list", "list --json", "report", "report --flatten")}


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("command")
    parser.add_argument("--sizes", default="100,1000")
    parser.add_argument("--kinds", default=",".join(bombs.KINDS))
    parser.add_argument("--commands", default=",".join(COMMANDS))
    parser.add_argument("--seconds", type=float, default=30, help="of the processor that a command may take")
    parser.add_argument("--figures", help="a file that results are added to")
    options = parser.parse_args()
    known = figures.read(options.figures) if options.figures else {}
    problems = 0
    with tempfile.TemporaryDirectory() as folder:
        file = pathlib.Path(folder) / "bomb.json"
        for size in map(int, options.sizes.split(",")):
            for kind in options.kinds.split(","):
                names = [name for name in options.commands.split(",") if ("now", kind, size, name) not in known]
                if not names:
                    continue
                bombs.write(kind, size, file)
                for name in names:
                    result = run(options.command, [*COMMANDS[name], file])
                    problem = result.problem(file.name, options.seconds)
                    problems += bool(problem)
                    print(f"{kind} {size}, {name}: {result}{' | PROBLEM: ' + problem if problem else ''}",
                          *result.said.splitlines()[-1:], sep="\n    ", flush=True)
                    if options.figures:
                        figures.add(options.figures, ("now", kind, size, name), file.stat().st_size, result)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
