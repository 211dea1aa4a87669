#!/usr/bin/env python3
"""Runs every command on small files that ask for a great deal of work: each ends within its time and memory, with a documented
exit code and, if it refuses the file, with one sentence. Figures are of the processor's time and of resident memory.

usage: check_bombs.py COMMAND [--sizes 100,10000] [--kinds siblings,chain] [--commands run,check] [--table] [--before COMMAND]
"""
import argparse
import dataclasses
import os
import pathlib
import resource
import signal
import subprocess
import sys
import tempfile
import threading

import bombs

# What is added where a command line stands for itself.
MORE = {"--max-growth": ["10"], "--prove": ["--picture-time", "0.2"], "--flatten": ["--picture-time", "0.2"],
        "report": ["--picture-time", "0.2"]}
COMMANDS = {line: line.split() + MORE.get(line.split()[-1], []) for line in (
    "run", "run --recursive", "run --only-exact", "run --strict", "run --keep-look", "run --max-growth", "run --mend",
    "run --recursive --only-exact", "run --recursive --strict", "run --recursive --keep-look", "run --recursive --max-growth",
    "check", "check --flatten", "check --prove", "flatten", "flatten --exact", "flatten --all", "flatten --max-growth",
    "flatten --prove", "list", "list --json", "report", "report --flatten")}
REFUSALS = (2, 3, 4)
ADDRESS_SPACE = 2 << 30  # bytes
SLOW = 60  # seconds after which a command is ended, whatever it is at


@dataclasses.dataclass
class Result:
    code: int  # negative: the signal that ended it
    seconds: float
    megabytes: float
    said: str

    def problem(self, seconds):
        if self.code not in (0, 1, *REFUSALS):
            return f"ended with {self.code}"
        if self.seconds > seconds:
            return "took too long"
        lines = self.said.splitlines()
        if self.code in REFUSALS and not (lines and "bomb.json" in lines[-1] and "std::" not in self.said):
            return "said no sentence"
        return ""

    def __str__(self):
        is_ended = self.code in (-signal.SIGKILL, -signal.SIGXCPU)
        return f"{'ended after' if is_ended else f'{self.code},'} {self.seconds:.1f} s, {self.megabytes:.0f} MB"


def run(command, arguments, file, slow=SLOW):
    def bound():
        resource.setrlimit(resource.RLIMIT_AS, (ADDRESS_SPACE, ADDRESS_SPACE))
        resource.setrlimit(resource.RLIMIT_CPU, (slow, slow))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))

    with tempfile.TemporaryFile() as said:
        process = subprocess.Popen([command, *arguments, str(file)], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=said,
                                   preexec_fn=bound)
        alarm = threading.Timer(10 * slow, process.kill)  # it may have to wait for the processor
        alarm.start()
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = 0
        alarm.cancel()
        said.seek(0)
        return Result(os.waitstatus_to_exitcode(status), usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024,
                      said.read().decode(errors="replace"))


def size_text(count):
    return f"{count / 1e6:.1f} MB" if count >= 1e6 else f"{count / 1e3:.0f} kB"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("command")
    parser.add_argument("--sizes", default="100,1000")
    parser.add_argument("--kinds", default=",".join(bombs.KINDS))
    parser.add_argument("--commands", default=",".join(COMMANDS))
    parser.add_argument("--seconds", type=float, default=30, help="of the processor that a command may take")
    parser.add_argument("--table", action="store_true", help="a row for each animation")
    parser.add_argument("--before", help="an older build of the command, for the table's cells")
    options = parser.parse_args()
    names = options.commands.split(",")
    problems = 0
    if options.table:
        print("| Bomb | Input |" + "".join(f" `{name}` |" for name in names))
        print("|---|---|" + "---|" * len(names))
    with tempfile.TemporaryDirectory() as folder:
        file = pathlib.Path(folder) / "bomb.json"
        for kind in options.kinds.split(","):
            for size in map(int, options.sizes.split(",")):
                file.write_text(bombs.text_of(kind, size))
                row = f"| {kind} {size:,} | {size_text(file.stat().st_size)} |"
                for name in names:
                    result = run(options.command, COMMANDS[name], file)
                    problem = result.problem(options.seconds)
                    problems += bool(problem)
                    if problem or not options.table:
                        print(f"{kind} {size}, {name}: {result}{' | PROBLEM: ' + problem if problem else ''}",
                              *result.said.splitlines()[-1:], sep="\n    ", file=sys.stderr if options.table else sys.stdout, flush=True)
                    row += f" {result}"
                    if options.before:
                        row += f" (before: {run(options.before, COMMANDS[name], file, int(options.seconds))})"
                    row += " |"
                if options.table:
                    print(row, flush=True)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
