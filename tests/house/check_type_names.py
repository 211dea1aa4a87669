#!/usr/bin/env python3
"""Checks that the name of a type tells its room: no two rooms define types of the same name outside of a class.

usage: check_type_names.py ROOT BUILD
"""
import collections
import pathlib
import re
import sys

from rooms import read_rooms

# Names that may stand in several rooms, each with the reason.
SHARED = {
}

IGNORED = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:[^"\\\n]|\\.)*"|\'(?:[^\'\\\n]|\\.)\'|^[ \t]*#(?:[^\n\\]|\\.|\\\n)*', re.S | re.M)
TOKEN = re.compile(r"(?P<namespace>\bnamespace\b[\w:\s]*\{|\bextern\s*\{)|(?P<open>\{)|(?P<close>\})"
                   r"|\b(?:class|struct|union|enum(?:\s+(?:class|struct))?)\s+(?P<type>\w+)(?=[^;(){},>]*\{)|\busing\s+(?P<alias>\w+)\s*=")


def types_in(source):
    """The types and aliases that a file defines at namespace scope; template parameters and locals are none."""
    scopes = []
    for token in TOKEN.finditer(IGNORED.sub(" ", source)):
        if token["namespace"] or token["open"]:
            scopes.append(bool(token["namespace"]))
        elif token["close"]:
            scopes.pop()
        elif all(scopes):
            yield token["type"] or token["alias"]


def main():
    root = pathlib.Path(sys.argv[1])
    homes = collections.defaultdict(lambda: collections.defaultdict(set))
    for room in read_rooms(sys.argv[2], root).values():
        for file in room.sources():
            for name in types_in(file.read_text(encoding="utf-8-sig")):
                homes[name][room.name].add(file.relative_to(root).as_posix())
    faults = [] if len(homes) > 300 else [f"only {len(homes)} types were found"]
    for name, rooms in sorted(homes.items()):
        if len(rooms) > 1 and name not in SHARED:
            faults.append(f"{name} is a type in {len(rooms)} rooms: {', '.join(sorted(f for fs in rooms.values() for f in fs))}")
    faults += [f"{name} no longer stands in two rooms: take it off the list" for name in SHARED if len(homes[name]) < 2]
    print(f"{len(homes)} types")
    for fault in faults:
        print(fault, file=sys.stderr)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
