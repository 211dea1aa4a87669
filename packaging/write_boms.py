#!/usr/bin/env python3
"""Writes what is in each package as a bill of materials, CycloneDX 1.6: write_boms.py DIST

For each package in DIST, the folder that `make package` fills, a file PACKAGE.cdx.json beside it: what is compiled in or lies in
the package, and what it asks the system for. Versions are those of the machine that builds. The time is SOURCE_DATE_EPOCH, or that of the
last commit, so that the same packages give the same bytes.
"""
import datetime
import hashlib
import json
import os
import pathlib
import re
import subprocess
import sys
import uuid

ROOT = pathlib.Path(__file__).resolve().parent.parent
OWN_SPACE = uuid.UUID("6ba7b811-9dad-11d1-80b4-00c04fd430c8")  # that of names that are URLs

# What others wrote and packages carry: from which Debian package it came, and its licence.
PARTS = {
    "duktape": ("duktape-dev", "MIT"),
    "rapidjson": ("rapidjson-dev", "MIT"),
    "jsmn": ("libjsmn-dev", "MIT"),
    "zlib": ("zlib1g-dev", "Zlib"),
    "libzip": ("libzip-dev", "BSD-3-Clause"),
    "emscripten system libraries": ("emscripten", "MIT AND (Apache-2.0 WITH LLVM-exception)"),
    "mingw-w64 runtime": ("mingw-w64-x86-64-dev", "ZPL-2.1"),
    "GCC runtime libraries": ("g++-mingw-w64-x86-64-posix", "GPL-3.0-or-later WITH GCC-exception-3.1"),
}
PLAYER = "lottie-web"
COMMAND = ["duktape", "rapidjson", "jsmn"]
# By the beginning of a package's place in DIST.
CONTENTS = {
    "linux/exflate_": [*COMMAND, PLAYER],
    "linux/exflate-dialog_": [],
    "linux/aegp-check_": ["duktape", "rapidjson"],
    "linux/libaegp-dev_": [],
    "linux/exflate-": [*COMMAND, PLAYER],
    "windows/Exflate.aex": ["jsmn", "mingw-w64 runtime", "GCC runtime libraries"],
    "macos/Exflate.plugin": ["jsmn"],
    "web/": [*COMMAND, "zlib", "libzip", "emscripten system libraries", PLAYER],
}


def output(*words):
    done = subprocess.run(words, capture_output=True, text=True, check=False, cwd=ROOT)
    return done.stdout.strip() if done.returncode == 0 else ""


def build_time():
    seconds = int(os.environ.get("SOURCE_DATE_EPOCH") or output("git", "log", "-1", "--format=%ct") or 0)
    return datetime.datetime.fromtimestamp(seconds, datetime.timezone.utc).strftime("%Y-%m-%dT%H:%M:%SZ")


def project_version():
    return re.search(r"project\(exflate VERSION ([\d.]+)", (ROOT / "CMakeLists.txt").read_text(encoding="utf-8"))[1]


def licences(text):
    is_expression = " " in text
    return [{"expression": text}] if is_expression else [{"license": {"id": text}}]


def debian_component(name, package, kind="library", **members):
    """`package` in the version that is installed here."""
    version = output("dpkg-query", "-W", "-f", "${Version}", package)
    if not version:
        raise SystemExit(f"write_boms: the Debian package {package} is not installed: run tools/setup package")
    purl = f"pkg:deb/debian/{package}@{version.replace('+', '%2B').replace(':', '%3A')}"
    return {"type": kind, "bom-ref": purl, "name": name, "version": version, **members, "purl": purl}


def part(name):
    if name == PLAYER:
        package = json.loads((ROOT / "tests/node_modules/lottie-web/package.json").read_text(encoding="utf-8"))
        purl = f"pkg:npm/lottie-web@{package['version']}"
        return {"type": "library", "bom-ref": purl, "name": name, "version": package["version"], "licenses": licences("MIT"), "purl": purl}
    package, licence = PARTS[name]
    return debian_component(name, package, licenses=licences(licence))


def wanted_by(package):
    """The components that a .deb depends on, its own siblings left out."""
    depends = output("dpkg-deb", "-f", str(package), "Depends")
    names = [re.match(r"[\w.+-]+", one.strip())[0] for one in depends.split(",") if one.strip()]
    return [debian_component(name, name, scope="required") for name in sorted(names) if not name.startswith("exflate")]


def wanted_by_archive(folder):
    found = {one["bom-ref"]: one for package in folder.glob("*.deb") for one in wanted_by(package)}
    return [found[ref] for ref in sorted(found)]


def hashes(file):
    return [{"alg": "SHA-256", "content": hashlib.sha256(file.read_bytes()).hexdigest()}]


def bom(package, contents, dist):
    place = package.relative_to(dist).as_posix()
    name = package.name.split("_")[0] if package.suffix == ".deb" else package.name
    version = project_version()
    subject = {"type": "application", "bom-ref": f"exflate:{place}", "name": name, "version": version}
    components = [part(one) for one in contents]
    if package.is_dir():
        files = sorted(one for one in package.rglob("*") if one.is_file())
        components += [{"type": "file", "bom-ref": f"exflate:{one.relative_to(dist).as_posix()}", "name": one.relative_to(package).as_posix(),
                        "hashes": hashes(one)} for one in files]
    else:
        subject["hashes"] = hashes(package)
    if package.suffix == ".deb":
        components += wanted_by(package)
    elif place.startswith("linux/"):
        components += wanted_by_archive(package.parent)
    document = {
        "bomFormat": "CycloneDX", "specVersion": "1.6", "version": 1,
        "metadata": {"timestamp": build_time(), "component": subject},
        "components": components,
        "dependencies": [{"ref": subject["bom-ref"], "dependsOn": [one["bom-ref"] for one in components]}],
    }
    number = uuid.uuid5(OWN_SPACE, json.dumps(document, sort_keys=True))
    return {"$schema": "http://cyclonedx.org/schema/bom-1.6.schema.json", "serialNumber": f"urn:uuid:{number}", **document}


def packages(dist):
    """{package: what is in it}; ends the program at a file of which the table does not know what is in it."""
    found = {}
    for place in sorted([*dist.glob("*/*.deb"), *dist.glob("*/*.gz"), *dist.glob("*/*.tgz"), *dist.glob("*/*.html"), *dist.glob("*/*.aex"),
                         *dist.glob("*/*.plugin")]):
        # The longest beginning: "linux/exflate-dialog_" before "linux/exflate-".
        begins = [begin for begin in CONTENTS if place.relative_to(dist).as_posix().startswith(begin)]
        if not begins:
            raise SystemExit(f"write_boms: what is in {place}? The table CONTENTS does not say")
        found[place] = CONTENTS[max(begins, key=len)]
    return found


def main():
    dist = pathlib.Path(sys.argv[1]).resolve()
    found = packages(dist)
    if not found:
        raise SystemExit(f"write_boms: there are no packages in {dist}: run make package")
    for package, contents in found.items():
        text = json.dumps(bom(package, contents, dist), indent=2, ensure_ascii=False) + "\n"
        package.with_name(package.name + ".cdx.json").write_text(text, encoding="utf-8")


if __name__ == "__main__":
    main()
