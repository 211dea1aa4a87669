"""The rooms and the arrows between them, as the build has them: read from the file that it writes."""
import pathlib
import re

# Targets that stand for a room beside the one that bears its name.
ROOM_OF = {"aegp_own": "aegp", "aegp_suite_handler": "aegp", "desktop_port": "desktop", "exflate_plugin_units": "plugin"}
INCLUDE = re.compile(r'^\s*#\s*include\s*["<]([^">]+)[">]', re.M)
SOURCES = (".h", ".cpp", ".in", ".def")


class Room:
    def __init__(self, line, root):
        target, folder, uses, uses_privately, search = line.split("|")
        self.name = ROOM_OF.get(target, target)
        self.folder = root / folder
        self._uses, self._privately = uses.split(","), uses_privately.split(",")
        self.search_path = [path for path in search.split(":") if path]
        public = self.folder / "include"
        self.headers = sorted(h.relative_to(public).as_posix() for h in public.rglob("*") if h.suffix in (".h", ".def"))

    def resolve(self, names):
        self.uses = {ROOM_OF.get(n, n) for n in self._uses} & names - {self.name}
        self.uses_privately = {ROOM_OF.get(n, n) for n in self._privately} & names - {self.name}

    def sources(self):
        return [f for f in self.folder.rglob("*") if f.suffix in SOURCES]

    def is_public(self, source):
        return (self.folder / "include") in source.parents


def read_rooms(build, root):
    lines = (pathlib.Path(build) / "rooms.txt").read_text(encoding="utf-8").split("\n")
    rooms = {room.name: room for room in (Room(line, pathlib.Path(root)) for line in lines if line)}
    for room in rooms.values():
        room.resolve(set(rooms))
    return rooms


def visible_from(room, rooms):
    """What a room may include: the rooms it links, and those that they show in their own headers."""
    seen, waiting = set(), list(room.uses | room.uses_privately)
    while waiting:
        name = waiting.pop()
        if name not in seen:
            seen.add(name)
            waiting += rooms[name].uses
    return seen
