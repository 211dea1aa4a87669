#!/usr/bin/env python3
"""Checks that the pictures of docs/what-changes.md are those that tools/pictures makes, and that each is shown there.

usage: check_pictures.py ROOT BUILD
"""
import pathlib
import subprocess
import sys
import tempfile


def files(folder):
    return {path.name: path.read_bytes() for path in folder.iterdir()}


def main():
    root, build = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    if not (build / "player").exists():
        print("the player of report is not installed, so it makes no pictures")
        return 77
    kept = files(root / "docs/pictures/what-changes")
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([root / "tools/pictures", build, folder], check=True)
        made = files(pathlib.Path(folder))
    text = (root / "docs/what-changes.md").read_text(encoding="utf-8")
    faults = [f"{name}: run tools/pictures again" for name in kept.keys() | made.keys() if kept.get(name) != made.get(name)]
    faults += [f"{name}: docs/what-changes.md does not show it" for name in made if f"(pictures/what-changes/{name})" not in text]
    for fault in sorted(faults):
        print(fault, file=sys.stderr)
    return 1 if faults or len(made) < 10 else 0


if __name__ == "__main__":
    sys.exit(main())
