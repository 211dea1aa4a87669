#!/usr/bin/env python3
"""Checks the arrows between the rooms, as the build has them: each is needed, public only where a public header needs it, and
the table of docs/architecture.md says the same. Prints the arrows.

usage: check_arrows.py ROOT BUILD
"""
import pathlib
import re
import sys

from rooms import INCLUDE, read_rooms


def included_rooms(room, rooms, only_public):
    owners = {header: other.name for other in rooms.values() for header in other.headers}
    found = set()
    for source in room.sources():
        if only_public and not room.is_public(source):
            continue
        found |= {owners[name] for name in INCLUDE.findall(source.read_text(encoding="utf-8")) if name in owners}
    return found - {room.name}


def table_of(page):
    """Rooms and what they use, from the rows `| folder | purpose | uses |`; only names of rooms are looked at."""
    rows = {}
    for line in page.splitlines():
        cells = [cell.strip() for cell in line.split("|")]
        if len(cells) == 5 and (folder := re.fullmatch(r"`([a-z/]+)/`", cells[1])):
            rows[folder.group(1)] = set(re.findall(r"`([a-z]+)`", cells[3]))
    return rows


def main():
    root = pathlib.Path(sys.argv[1])
    rooms = read_rooms(sys.argv[2], root)
    faults = [] if len(rooms) > 10 else [f"only {len(rooms)} rooms: was this build configured with tests?"]
    table = table_of((root / "docs/architecture.md").read_text(encoding="utf-8"))
    for room in rooms.values():
        arrows = room.uses | room.uses_privately
        print(f"{room.name} -> {', '.join(sorted(arrows)) or 'nobody'}")
        needed = included_rooms(room, rooms, only_public=False)
        needed_by_headers = included_rooms(room, rooms, only_public=True)
        faults += [f"{room.name} links {other} and includes nothing of it" for other in arrows - needed]
        faults += [f"{room.name} includes {other} without linking it" for other in needed - arrows]
        faults += [f"{room.name} links {other} publicly; no public header needs it" for other in room.uses - needed_by_headers]
        folder = room.folder.relative_to(root).as_posix()
        if table.pop(folder, None) != arrows:
            faults.append(f"docs/architecture.md does not say that {folder} uses {', '.join(sorted(arrows)) or 'nobody'}")
    faults += [f"docs/architecture.md names {folder}, which the build has not" for folder in table]
    for fault in sorted(faults):
        print(fault, file=sys.stderr)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
