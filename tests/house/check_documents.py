#!/usr/bin/env python3
"""check_documents.py SOURCE BUILD: what the documents name is there, and the commands that they show run as written.

Links and paths must lead somewhere. Every `exflate ...`, `make ...`, `cmake --preset ...` in a document is taken out of it: the
first are run in a folder with animations of the names that the documents use; of the others target and preset must exist."""
import gzip
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import zipfile
from pathlib import Path

SOURCE, BUILD = Path(sys.argv[1]), Path(sys.argv[2])
problems = []


def documents():
    names = subprocess.run(["git", "-C", SOURCE, "ls-files", "*.md"], capture_output=True, text=True, check=True).stdout.split()
    return [(SOURCE / name, (SOURCE / name).read_text(encoding="utf-8")) for name in names]


def check_links(document, text):
    for target in re.findall(r"\]\(([^)#\s]+)(?:#[^)]*)?\)", text):
        if not re.match(r"[a-z]+:", target) and not (document.parent / target).exists():
            problems.append(f"{document.relative_to(SOURCE)}: the link {target} leads nowhere")


def check_paths(document, text):
    folders = {entry.name for entry in SOURCE.iterdir() if entry.is_dir()} - {"build", "dist", ".git"}
    for path in re.findall(r"`((?:[\w.]+/)+[\w.]*)`", text):
        if path.split("/")[0] not in folders or "node_modules" in path:
            continue
        # A document in a folder may speak of its own files.
        if not (SOURCE / path).exists() and not (document.parent / path).exists():
            problems.append(f"{document.relative_to(SOURCE)}: there is no {path}")


def commands(text):
    """What stands in code, indented or between backticks, and is a command of ours with at least one argument."""
    lines = [re.sub(r"\s+#.*", "", line.strip()) for line in text.splitlines() if line.startswith("    ")]
    # Code runs over the ends of lines; two backticks in a row are none of ours.
    lines += [" ".join(code.split()) for code in re.findall(r"(?<!`)`([^`]+)`(?!`)", text)]
    starts = r"(cat \S+ \| )?(build/release/cli/)?exflate |make |cmake --preset |cmake --build --preset |ctest --preset "
    return [line for line in lines if re.match(starts, line)]


def check_build_command(document, command):
    makefile = (SOURCE / "Makefile").read_text()
    presets = json.loads((SOURCE / "CMakePresets.json").read_text())
    known = {"make": set(re.findall(r"^(\w+):", makefile, re.M)),
             "cmake": {preset["name"] for preset in presets["configurePresets"]},
             "ctest": {preset["name"] for preset in presets["testPresets"]}}
    tool, *rest = command.split()
    name = rest[rest.index("--preset") + 1] if "--preset" in rest else rest[0]
    if name not in known[tool]:
        problems.append(f"{document.relative_to(SOURCE)}: there is nothing named {name} for \"{command}\"")


def fill(folder):
    """The files that commands in documents name."""
    program = folder / "build/release/cli"
    program.parent.mkdir(parents=True)
    program.symlink_to(BUILD / "cli")
    (folder / "examples").symlink_to(SOURCE / "examples")
    animation = SOURCE / "examples/lift_off.json"
    for name in ["animation.json", "file.json", "intro.json"]:
        shutil.copy(animation, folder / name)
    for golden in ["typical_request.json", "names_of_all_planes.json"]:
        for found in (SOURCE / "tests/golden").rglob(golden):
            shutil.copy(found, folder / golden)
    inner = {"v": "5.7.0", "fr": 25, "ip": 0, "op": 50, "w": 100, "h": 100, "nm": "Main", "layers": [
        {"ty": 0, "nm": "Outer", "refId": "o", "ind": 1, "ip": 0, "op": 50, "st": 0, "w": 100, "h": 100, "ks": {}}], "assets": [
        {"id": "o", "nm": "Outer", "layers": [
            {"ty": 0, "nm": "Inner", "refId": "i", "ind": 1, "ip": 0, "op": 50, "st": 0, "w": 100, "h": 100, "ks": {}}]},
        {"id": "i", "nm": "Inner", "layers": [
            {"ty": 1, "nm": "Red", "ind": 1, "ip": 0, "op": 50, "st": 0, "sc": "#ff0000", "sw": 9, "sh": 9, "ks": {}},
            {"ty": 0, "nm": "Inner", "refId": "p", "ind": 2, "ip": 0, "op": 50, "st": 0, "w": 100, "h": 100, "ks": {}}]},
        {"id": "p", "nm": "Inmost", "layers": []}]}
    (folder / "a.json").write_text(json.dumps(inner))
    (folder / "animations").mkdir()
    shutil.copy(animation, folder / "animations")
    (folder / "sticker.tgs").write_bytes(gzip.compress(animation.read_bytes()))
    with zipfile.ZipFile(folder / "animation.lottie", "w", zipfile.ZIP_DEFLATED) as packed:
        packed.writestr("manifest.json", json.dumps({"version": "1", "animations": [{"id": "intro"}]}))
        packed.write(animation, "animations/intro.json")
    exflate("run --journal run.journal animation.json -o flat.json", folder)


def exflate(arguments, folder, feed=""):
    environment = dict(os.environ, PATH=f"{BUILD / 'cli'}:{os.environ['PATH']}", HOME=str(folder), XDG_CONFIG_HOME=str(folder))
    return subprocess.run(["bash", "-o", "pipefail", "-c", f"{feed}exflate {arguments}"], cwd=folder, env=environment,
                          stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=120)


def check_exflate(document, command):
    # Windows have tests of their own, which bring a display; without a file it is the name of a command or of an option.
    if "dialog" in command or not re.search(r"\bFILE\b|\.journal\b|\w\.\w|\s-(\s|$)|--version", command):
        words = re.search(r"exflate (\w+)?", command).group(1) or ""
        options = re.findall(r"(?<= )--[a-z-]+", command)
        manual = exflate(f"{words} --help", SOURCE).stdout
        missing = [option for option in options if option not in manual]
        if missing:
            problems.append(f"{document.relative_to(SOURCE)}: the help of \"{command}\" has no {', '.join(missing)}")
        return
    runnable = re.sub(r"\bFILE\b", "animation.json", command)
    runnable = re.sub(r"\bRUN\.journal\b", "run.journal", runnable)
    runnable = re.sub(r"\bN\b", "2", runnable)
    feed, arguments = re.match(r"(?:(.*\| )?)(?:build/release/cli/)?exflate (.*)", runnable).groups() if runnable.startswith("cat") \
        else ("", re.sub(r"^(build/release/cli/)?exflate ", "", runnable))
    with tempfile.TemporaryDirectory() as place:
        folder = Path(place)
        fill(folder)
        ended = exflate(arguments, folder, feed or "")
    # 1 is no failure where a command says what would change or what stays.
    allowed = {0, 1} if re.search(r"\b(check|report|flatten|strict)\b", command) else {0}
    if ended.returncode not in allowed:
        problems.append(f"{document.relative_to(SOURCE)}: \"{command}\" ends with {ended.returncode}: {ended.stderr.strip()[-300:]}")


tried = set()
for document, text in documents():
    check_links(document, text)
    check_paths(document, text)
    for command in commands(text):
        if (document, command) in tried:
            continue
        tried.add((document, command))
        if "exflate " in command and not command.startswith(("make", "cmake", "ctest")):
            check_exflate(document, command)
        else:
            check_build_command(document, command)

if not tried:
    problems.append("no document shows a command: this test looks in the wrong place")
for problem in problems:
    print(problem, file=sys.stderr)
print(f"{len(tried)} commands tried")
sys.exit(1 if problems else 0)
