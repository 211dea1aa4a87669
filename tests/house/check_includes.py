#!/usr/bin/env python3
"""Checks that every #include of a room's header follows the arrows between the rooms, and prints the arrows found.

usage: check_includes.py ROOT
"""
import pathlib
import re
import sys

# Who may use whom. A room's own headers are always allowed.
ARROWS = {
    "aegp": set(),
    "plugin": {"aegp"},
    "host/archive": set(),
    "host/model": set(),
    "host/suites": {"aegp", "host/model"},
    "host/journal": {"aegp", "host/suites"},
    "host/script": {"host/model"},
    "host/dialog": {"host/script"},
    "host/lottie": {"host/model"},
    "host/render": set(),
    "host/audit": {"host/model"},
    "host/runner": {"aegp", "host/model", "host/suites", "host/script"},
    "cli": {"host/archive", "host/audit", "host/dialog", "host/journal", "host/lottie", "host/model", "host/render", "host/runner", "host/script"},
}
INCLUDE = re.compile(r'^\s*#\s*include\s*["<]([^">]+)[">]', re.M)


def header_owners(root):
    """Maps each public header, as it is included, to its room."""
    owners = {}
    for room in ARROWS:
        public = root / room / "include"
        for header in public.rglob("*"):
            if header.suffix in (".h", ".def"):
                owners[header.relative_to(public).as_posix()] = room
    return owners


def main():
    root = pathlib.Path(sys.argv[1])
    owners = header_owners(root)
    arrows, breaches, files = set(), [], 0
    for room, allowed in ARROWS.items():
        for source in (root / room).rglob("*"):
            if source.suffix not in (".h", ".cpp", ".in"):
                continue
            files += 1
            for included in INCLUDE.findall(source.read_text(encoding="utf-8")):
                other = owners.get(included)
                if other is None or other == room:
                    continue
                arrows.add((room, other))
                if other not in allowed:
                    breaches.append(f"{source.relative_to(root)} includes {included}: {room} may not use {other}")
    for start, end in sorted(arrows):
        print(f"{start} -> {end}")
    if files < 20 or not owners:
        breaches.append(f"only {files} files looked at: is {root} the root of the sources?")
    for breach in breaches:
        print(breach, file=sys.stderr)
    return 1 if breaches else 0


if __name__ == "__main__":
    sys.exit(main())
