#!/usr/bin/env python3
"""Tries every pair of rooms: a source of the one that includes a header of the other must compile where an arrow leads from the
one to the other, and must be stopped by the compiler where none does. Beyond that, each room may find just the headers of the
rooms it sees: no private header of another room, and nothing by its path from the root of the repository.

usage: every_pair.py ROOT BUILD COMPILER
"""
import concurrent.futures
import pathlib
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "house"))
from rooms import read_rooms, visible_from  # noqa: E402


class Compiler:
    def __init__(self, program, folder):
        self._program, self._folder = program, folder

    def run(self, search_path, text, *how):
        """Compiles a text as a source whose own folder is empty."""
        command = [self._program, "-std=c++20", "-x", "c++", *how, "-", *(f"-I{path}" for path in search_path)]
        return subprocess.run(command, input=text, capture_output=True, text=True, cwd=self._folder)

    def compiles(self, room, header):
        run = self.run(room.search_path, f'#include "{header}"\n', "-fsyntax-only")
        if run.returncode and "No such file" not in run.stderr and f"'{header}' file not found" not in run.stderr:
            raise RuntimeError(f"{room.name} includes {header}: {run.stderr}")
        return run.returncode == 0

    def found(self, search_path, names):
        questions = "".join(f'#if __has_include("{name}")\nfound {name}\n#endif\n' for name in names)
        run = self.run(search_path, questions, "-E", "-P")
        if run.returncode:
            raise RuntimeError(run.stderr)
        return {line.removeprefix("found ") for line in run.stdout.splitlines() if line.startswith("found ")}


def names_of(rooms, root):
    """Every way to name a header of a room: as everybody may, as the room itself may, and from the root of the repository."""
    for room in rooms.values():
        for source in room.sources():
            if source.suffix == ".h":
                yield source.relative_to(root).as_posix()
                if (room.folder / "src") in source.parents:
                    yield source.relative_to(room.folder / "src").as_posix()
        yield from room.headers


def main():
    root, build = pathlib.Path(sys.argv[1]).resolve(), sys.argv[2]
    rooms = read_rooms(build, root)
    pairs = [(room, other) for room in rooms.values() for other in rooms.values() if room is not other and other.headers]
    allowed = {(room.name, other) for room in rooms.values() for other in visible_from(room, rooms)}
    faults = []
    with tempfile.TemporaryDirectory() as empty, concurrent.futures.ThreadPoolExecutor(4) as pool:
        compiler = Compiler(sys.argv[3], empty)
        results = pool.map(lambda pair: compiler.compiles(pair[0], pair[1].headers[0]), pairs)
        for (room, other), compiled in zip(pairs, results):
            if compiled != ((room.name, other.name) in allowed):
                faults.append(f"{room.name} -> {other.name}: {other.headers[0]} {'compiles' if compiled else 'is not found'}")
        names = set(names_of(rooms, root))
        names -= compiler.found([], names)  # the system has headers of its own
        for room in rooms.values():
            own = {s.relative_to(room.folder / "src").as_posix() for s in room.sources() if (room.folder / "src") in s.parents}
            may_find = own | {header for name in {room.name} | visible_from(room, rooms) for header in rooms[name].headers}
            found = compiler.found(room.search_path, names)
            faults += [f"{room.name} finds {name}" for name in found - may_find]
    print(f"{len(pairs)} pairs of rooms tried, {sum((r.name, o.name) in allowed for r, o in pairs)} of them allowed; "
          f"{len(names)} names of headers looked for from each room")
    for fault in sorted(faults):
        print(fault, file=sys.stderr)
    return 1 if faults or len(pairs) < 100 or len(names) < 200 else 0


if __name__ == "__main__":
    sys.exit(main())
