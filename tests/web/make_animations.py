#!/usr/bin/env python3
"""Makes random animations as files, each also packed in turn as .lottie or .tgs, and prints the seed.

usage: make_animations.py FOLDER COUNT SEED
"""
import gzip
import json
import os
import pathlib
import random
import sys
import zipfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "random_files"))
from animations import animation


def pack(text, number):
    if number % 2:
        return ".tgs", gzip.compress(text, mtime=0)
    from io import BytesIO
    buffer = BytesIO()
    with zipfile.ZipFile(buffer, "w", zipfile.ZIP_DEFLATED) as archive:
        archive.writestr("manifest.json", json.dumps({"version": "1", "animations": [{"id": "one"}]}))
        archive.writestr("animations/one.json", text)
    return ".lottie", buffer.getvalue()


def main():
    folder, count, seed = pathlib.Path(sys.argv[1]), int(sys.argv[2]), int(sys.argv[3])
    print(f"{count} random animations from seed {seed}")
    for number in range(count):
        text = animation(random.Random(seed + number))
        text = text.encode() if isinstance(text, str) else json.dumps(text).encode()
        (folder / f"random{number}.json").write_bytes(text)
        if number % 10 == 0:
            extension, bytes_ = pack(text, number // 10)
            (folder / f"random{number}{extension}").write_bytes(bytes_)


if __name__ == "__main__":
    main()
