#!/usr/bin/env python3
"""Ends the command at random times, by TERM, INT, HUP and KILL in turn, while it works with processes of its own, and asks what is
left: 100 ms later no process may be, and no file may be replaced after the command's end. A worker that is killed may leave the
temporary file that it is about to make. Prints the seed and the counts.

usage: left_behind.py COMMAND ANIMATION [--runs N] [--seed N]     EXFLATE_LEFT_BEHIND_RUNS is the full form's N
"""
import argparse
import os
import pathlib
import random
import shutil
import signal
import subprocess
import sys
import tempfile
import time

SIGNALS = (signal.SIGTERM, signal.SIGINT, signal.SIGHUP, signal.SIGKILL)
FILES = 24


def is_killed(process):
    """Whether it can do nothing any more but end, though the system may let it wait for that, as for its turn or a disk."""
    return any(int(line.split()[1], 16) & 1 << signal.SIGKILL - 1 for line in (process / "status").read_text().splitlines()
               if line.startswith(("SigPnd:", "ShdPnd:")))


def processes_of(session):
    """The live processes of a session; what has ended and waits to be noticed does not count."""
    found = []
    for entry in pathlib.Path("/proc").iterdir():
        if entry.name.isdigit():
            try:
                fields = (entry / "stat").read_text().rpartition(")")[2].split()
                if int(fields[3]) == session and fields[0] not in "ZX":
                    found.append((int(entry.name), fields[0], is_killed(entry)))
            except OSError:
                continue
    return found


def files_in(folder):
    return {entry.name: (entry.inode(), entry.stat().st_mtime_ns) for entry in os.scandir(folder) if not entry.name.startswith(".")}


def listen():
    """To signals that whoever started the test may have had ignored."""
    for each in SIGNALS:
        if each != signal.SIGKILL:
            signal.signal(each, signal.SIG_DFL)


class Case:
    def __init__(self, name, arguments, folder, animation):
        self.name, self._arguments, self._folder, self._animation = name, arguments, folder, animation
        self.runs = self.ended = self.left = self.ending = self.replaced = self.damaged = self.temporary = 0
        self._before = pathlib.Path(animation).read_bytes()
        self._duration, self._after = min(self._whole_run() for _ in range(3))

    def _lay_out(self):
        shutil.rmtree(self._folder, ignore_errors=True)
        self._folder.mkdir()
        for number in range(FILES):
            shutil.copy(self._animation, self._folder / f"{number}.json")

    def _start(self):
        return subprocess.Popen(self._arguments, cwd=self._folder, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                stderr=subprocess.DEVNULL, start_new_session=True, preexec_fn=listen)

    def _whole_run(self):
        self._lay_out()
        begin = time.monotonic()
        process = self._start()
        if process.wait() not in (0, 1):
            sys.exit(f"{self.name}: cannot be run: {self._arguments}")
        return time.monotonic() - begin, (self._folder / "0.json").read_bytes()

    def run(self, how, moment):
        self._lay_out()
        process = self._start()
        time.sleep(moment * self._duration)
        process.send_signal(how)
        code = process.wait()
        at_end = files_in(self._folder)
        time.sleep(0.1)
        self.runs += 1
        self.ended += code == -how
        for left in processes_of(process.pid):
            print(f"{self.name}: after signal {how} process {left[0]} is left, in state {left[1]}{', killed' * left[2]}", flush=True)
            self.left += not left[2]
            self.ending += left[2]
        self.replaced += files_in(self._folder) != at_end
        for file in self._folder.iterdir():
            if file.name.startswith("."):
                self.temporary += how != signal.SIGKILL
            elif file.read_bytes() not in (self._before, self._after):
                self.damaged += 1

    def is_clean(self):
        return self.ended > 0 and not (self.left or self.replaced or self.damaged or self.temporary)

    def __str__(self):
        return (f"{self.name}: {self.runs} runs, {self.ended} ended by the signal; processes left {self.left} ({self.ending} more were "
                f"killed and only waited for their end), files replaced after "
                f"the end {self.replaced}, files damaged {self.damaged}, temporary files left {self.temporary}")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("command")
    parser.add_argument("animation")
    parser.add_argument("--runs", type=int, default=int(os.environ.get("EXFLATE_LEFT_BEHIND_RUNS", 12)), help="of each case")
    parser.add_argument("--seed", type=int, default=time.time_ns() % 1_000_000)
    options = parser.parse_args()
    print(f"seed {options.seed}")
    random.seed(options.seed)
    with tempfile.TemporaryDirectory() as folder:
        files = [f"{number}.json" for number in range(FILES)]
        place = pathlib.Path(folder) / "files"
        cases = (Case("run -j 3 -i", [options.command, "run", "-j", "3", "-i", *files], place, options.animation),
                 Case("flatten -j 3 -i", [options.command, "flatten", "-j", "3", "-i", *files], place, options.animation),
                 Case("check --prove", [options.command, "check", "--prove", *files[:3]], place, options.animation))
        for case in cases:
            for number in range(options.runs):
                case.run(SIGNALS[number % len(SIGNALS)], random.random())
            print(case, flush=True)
    return 0 if all(case.is_clean() for case in cases) else 1


if __name__ == "__main__":
    sys.exit(main())
