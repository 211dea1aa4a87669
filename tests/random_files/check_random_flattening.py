#!/usr/bin/env python3
"""Makes random animations, makes them flat, and checks that nothing of what is said to look the same looks different.

usage: check_random_flattening.py EXFLATE FOLDER

Each is drawn before and after; made flat twice, which gives the same bytes; and made flat again, which changes nothing.
FOLDER takes files that failed. Environment: EXFLATE_RANDOM_FILES is how many animations (default 20), EXFLATE_RANDOM_SEED
the first seed (default 1, so that a failure of the tests is never chance; sweeps choose their own). Both are printed, and a
seed makes the same animation again. Without them the seeds that failed once are tried too.
"""
import json
import os
import random
import subprocess
import sys
from collections import Counter

from animations import animation
from calm_animations import calm_animation

# Findings by which the renderer's pictures cannot be judged: it counts whole frames inside of nests.
BEYOND_RENDERER = {"fractional-start", "time-remap", "stretch"}


def is_beyond_renderer(animation):
    """Whether it takes links other than other players do: a parent numbered -1 as none, one without a transform as any, and
    always the layer right above as a matte."""
    for stack in [animation["layers"]] + [asset.get("layers", []) for asset in animation["assets"]]:
        without_transform = {layer.get("ind") for layer in stack if "ks" not in layer}
        above = [{}, *stack]
        if any("tp" in layer and layer["tp"] != above[place].get("ind") for place, layer in enumerate(stack)):
            return True
        if any(layer.get("parent") in without_transform | {-1} for layer in stack if "parent" in layer):
            return True
    return False


FAILED_ONCE = [1039, 5043, 10026, 10087, 10165, 20070, 20088, 20389, 40077, 61326, 100594, 101149, 102420, 110083, 200518,
               511362, 550187, 550463, 560617, 830001, 870137]


class Failed(Exception):
    pass


def expect(holds, what):
    if not holds:
        raise Failed(what)


class Sweep:
    def __init__(self, exflate):
        self.exflate = exflate
        self.counts = Counter()

    def command(self, *arguments, text):
        ran = subprocess.run([self.exflate, *arguments], input=text, capture_output=True, check=False)
        expect(ran.returncode in (0, 1), f"{' '.join(arguments)}: exit {ran.returncode}: {ran.stderr.decode()[-400:]}")
        return ran

    def check(self, text):
        flat = self.command("flatten", "-", text=text)
        expect(self.command("flatten", "-", text=text).stdout == flat.stdout, "flattening twice gave different bytes")
        expect(self.command("flatten", "-", text=flat.stdout).stdout == flat.stdout, "flattening the result changed it")
        checked = json.loads(self.command("check", "--flatten", "--prove", "--format", "json", "-", text=text).stdout)["files"][0]
        self.count(checked)
        if is_beyond_renderer(json.loads(text)) or any(
            reason["code"] in BEYOND_RENDERER for nest in checked["nests"] for reason in nest["reasons"]
        ):
            self.counts["not judged by pictures"] += 1
            return
        for nest in checked["nests"]:
            expect(nest["becomes"] == "kept" or nest["verdict"] != "changes", f"{nest['name']} changes and became flat")
            self.check_pictures(nest, f"composition {nest['composition_name']}")
        self.check_pictures(checked, "the whole")

    def count(self, checked):
        for nest in checked["nests"]:
            if nest["becomes"] == "kept":
                self.counts["kept: " + nest["kept_because"].split(":")[0]] += 1
            else:
                self.counts["flat, mended for " + ", ".join(nest["mended"]) if nest["mended"] else "flat"] += 1

    def check_pictures(self, drawn, what):
        pictures = drawn.get("pictures")
        if pictures is None:
            self.counts["no pictures" if "pictures_problem" in drawn else "nothing to draw"] += 1
            return
        expect(pictures["equal"], f"{what} looks different at frame {pictures['worst_frame']}: mean {pictures['mean']:.3f}, "
                                  f"{100 * pictures['share_beyond_8']:.2f} % of pixels, SSIM {pictures['ssim']:.4f}")


def main():
    exflate, folder = sys.argv[1:]
    count = int(os.environ.get("EXFLATE_RANDOM_FILES", "20"))
    first = int(os.environ.get("EXFLATE_RANDOM_SEED", "1"))
    print(f"EXFLATE_RANDOM_FILES={count} EXFLATE_RANDOM_SEED={first}", flush=True)
    sweep = Sweep(exflate)
    failures = 0
    seeds = [*range(first, first + count)] + ([] if "EXFLATE_RANDOM_SEED" in os.environ else FAILED_ONCE)
    for seed in seeds:
        source = random.Random(seed)
        text = (animation if seed % 8 == 0 else calm_animation)(source).encode("utf-8")
        try:
            sweep.check(text)
        except Failed as failure:
            failures += 1
            path = os.path.join(folder, f"flatten_{seed}.json")
            os.makedirs(folder, exist_ok=True)
            with open(path, "wb") as stream:
                stream.write(text)
            print(f"FAILED seed {seed}: {failure}\n  exflate check --flatten --prove {path}", file=sys.stderr)
    for what, number in sweep.counts.most_common():
        print(f"{number:6} {what}")
    print(f"{len(seeds)} animations, {failures} failures")
    return 1 if failures or not seeds else 0


if __name__ == "__main__":
    sys.exit(main())
