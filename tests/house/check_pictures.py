#!/usr/bin/env python3
"""Checks that the pictures of the documents are those that tools/pictures and tools/drawings make, and that each is shown.

usage: check_pictures.py ROOT BUILD
"""
import pathlib
import subprocess
import sys
import tempfile


def files(folder):
    return {str(path.relative_to(folder)): path.read_bytes() for path in folder.rglob("*") if path.is_file()}


def faults_of(root, build, tool, kept, document_names):
    """Of the pictures in the folder `kept`, which `tool` makes."""
    place = root / "docs/pictures" / kept
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([root / "tools" / tool, build, folder], check=True)
        made = files(pathlib.Path(folder))
    there = {name: content for name, content in files(place).items() if kept or name.endswith(".svg")}
    shown = "".join((root / name).read_text(encoding="utf-8") for name in document_names)
    faults = [f"{name}: run tools/{tool} again" for name in there.keys() | made.keys() if there.get(name) != made.get(name)]
    faults += [f"{name}: no document shows it" for name in made if f"pictures/{kept}{name})" not in shown]
    return faults if made else [f"tools/{tool} makes nothing"]


def main():
    root, build = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    faults = faults_of(root, build, "drawings", "", ["README.md", "docs/after-effects.md"])
    has_player = (build / "player").exists()
    if has_player:
        faults += faults_of(root, build, "pictures", "what-changes/", ["docs/what-changes.md"])
    for fault in sorted(faults):
        print(fault, file=sys.stderr)
    if not faults and not has_player:
        print("the player of report is not installed, so it makes no pictures")
        return 77
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
