# Measuring whole processes: instructions by callgrind, times and memory by the program measured_run.
import os
import re
import subprocess
import tempfile
from dataclasses import dataclass, field
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
ANIMATIONS = ROOT / "tests" / "node_modules" / "lottie-web" / "test" / "animations"


class Failed(Exception):
    pass


@dataclass
class Counts:
    """Instructions of one process, in all and by who ran them."""
    total: int = 0
    by_share: dict = field(default_factory=dict)
    # The plug-in's walks: how many calls, and what the host needs to answer them.
    walk_calls: int = 0
    walk: int = 0


@dataclass
class Taken:
    seconds: float
    processor_seconds: float
    megabytes: float


def share_of(object_file, function):
    """In whose code a function stands."""
    name = os.path.basename(object_file)
    if name == "Exflate.so":
        return "plug-in"
    if name != "exflate":
        return "libraries"
    return "engine" if re.match(r"duk_|host::script::", function) else "host"


# With these the plug-in goes through all items, and through all selected layers, again for each nest.
WALKS = ["GetNextProjItem", "GetItemID", "GetNewCollectionFromCompSelection", "GetCollectionItemByIndex", "GetLayerIndex"]


def is_step_of_a_walk(function):
    return "SlotFunction<" in function and re.search(rf"::AEGP_({'|'.join(WALKS)}),", function) is not None


def read_callgrind(path):
    """Callgrind's file: positions name an object and a function; the line behind `calls=` is the callee's cost."""
    names = {}
    counts = Counts()
    place = {"ob": "", "fn": ""}
    callee = ""
    calls = 0
    callee_line = False
    with open(path, encoding="utf-8", errors="replace") as lines:
        for line in lines:
            if line[0] in "0123456789+-*":
                if not callee_line:
                    cost = int(line.split()[1])
                    share = share_of(place["ob"], place["fn"])
                    counts.total += cost
                    counts.by_share[share] = counts.by_share.get(share, 0) + cost
                elif is_step_of_a_walk(callee):
                    counts.walk_calls += calls
                    counts.walk += int(line.split()[1])
                callee_line = False
            elif line.startswith("calls="):
                calls = int(line[len("calls="):].split()[0])
                callee_line = True
            else:
                named = re.match(r"(c?)(ob|fn)=\((\d+)\)(?: (.*))?$", line)
                if named:
                    called, kind, number, name = named.groups()
                    if name is not None:
                        names[kind, number] = name
                    if not called:
                        place[kind] = names[kind, number]
                    elif kind == "fn":
                        callee = names[kind, number]
    return counts


class Bench:
    """The programs of one build, run in a folder of its own where nothing of the user's is read or written."""

    def __init__(self, build):
        self.build = Path(build).resolve()
        self.exflate = str(self.build / "cli" / "exflate")
        self.plugin = str(self.build / "plugin" / "Exflate.so")
        self._folder = tempfile.TemporaryDirectory(prefix="exflate-bench-")
        self.folder = Path(self._folder.name)
        self.output = str(self.folder / "out.json")
        self.environment = {**os.environ, "XDG_CONFIG_HOME": str(self.folder / "config"), "LC_ALL": "C.UTF-8"}

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._folder.cleanup()

    def program(self, name):
        return str(self.build / "bench" / name)

    def file(self, name, text):
        path = self.folder / name
        path.write_text(text, encoding="utf-8")
        return str(path)

    def _run(self, command):
        done = subprocess.run(command, env=self.environment, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
                              text=True, errors="replace", check=False)
        if done.returncode != 0:
            raise Failed(f"{' '.join(command)}: exit code {done.returncode}\n{done.stderr[-2000:]}")

    def output_of(self, command):
        return subprocess.run(command, env=self.environment, capture_output=True, text=True, check=True).stdout

    def instructions(self, command):
        out = str(self.folder / "callgrind")
        self._run(["valgrind", "--tool=callgrind", f"--callgrind-out-file={out}", *command])
        return read_callgrind(out)

    def taken(self, command):
        report = self.folder / "taken"
        self._run([self.program("measured_run"), str(report), *command])
        seconds, processor, kilobytes = report.read_text().split()
        return Taken(float(seconds), float(processor), float(kilobytes) / 1024)

    def best_of(self, rounds, commands):
        """By name, the least that each command took. The commands take turns, so that all meet the same disturbances."""
        best = {}
        for _ in range(rounds):
            for name, command in commands.items():
                now = self.taken(command)
                old = best.get(name, now)
                best[name] = Taken(min(old.seconds, now.seconds), min(old.processor_seconds, now.processor_seconds),
                                   max(old.megabytes, now.megabytes))
        return best

    def run(self, file, *flags):
        return [self.exflate, "run", *flags, file, "-o", self.output]

    def dom(self, file):
        return [self.program("dom_parse_and_write"), file, self.output]


def toolchain(build):
    """What instruction counts depend on beside the sources."""
    cache = (Path(build) / "CMakeCache.txt").read_text()

    def cached(name):
        found = re.search(rf"^{name}:\w+=(.*)$", cache, re.MULTILINE)
        return found.group(1) if found else ""

    def first_line(*command):
        return subprocess.run(command, capture_output=True, text=True, check=True).stdout.splitlines()[0]

    return {"build type": cached("CMAKE_BUILD_TYPE"), "flags": cached("CMAKE_CXX_FLAGS"),
            "compiler": first_line(cached("CMAKE_CXX_COMPILER"), "--version"), "library": first_line("ldd", "--version"),
            "processor": processor_features(), "counter": first_line("valgrind", "--version")}


def processor_features():
    """The C library chooses its functions for texts and memory by these."""
    flags = re.search(r"^flags\s*:(.*)$", Path("/proc/cpuinfo").read_text(), re.MULTILINE)
    found = set(flags.group(1).split()) if flags else set()
    return " ".join(sorted(found & {"sse4_2", "avx2", "bmi2", "erms", "fsrm", "movbe", "rtm"}))
