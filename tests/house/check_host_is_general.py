#!/usr/bin/env python3
"""Checks that the headless host knows nothing of the one plug-in that the command ships: no name or text of it stands there.

usage: check_host_is_general.py ROOT
"""
import pathlib
import re
import sys


def traces(root):
    """The plug-in's name and every text of five or more letters that its sources and scripts show to people."""
    words = {"exflat", "corvane"}
    shown = re.compile(r'"((?:[^"\\\n]|\\.){12,})"')
    for source in [*(root / "plugin/src").glob("Exflate*.cpp"), *(root / "plugin/scripts").glob("*.jsx")]:
        for text in shown.findall(source.read_text(encoding="utf-8-sig")):
            if " " in text.strip() and not text.startswith("AEGP"):
                words.add(text.lower())
    return words


def main():
    root = pathlib.Path(sys.argv[1])
    words = traces(root)
    if len(words) < 10:
        print(f"only {len(words)} traces to look for: the plug-in's sources were not found", file=sys.stderr)
        return 1
    found = []
    for file in (root / "host").rglob("*"):
        if not file.is_file():
            continue
        if "exflate" in file.name.lower():
            found.append(f"{file.relative_to(root)}: the file's name")
        text = file.read_text(encoding="utf-8").lower()
        found += [f'{file.relative_to(root)}: holds "{word}"' for word in words if word in text]
    for line in sorted(found):
        print(line, file=sys.stderr)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
