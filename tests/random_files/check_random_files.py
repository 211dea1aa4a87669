#!/usr/bin/env python3
"""Makes random animations, un-nests them, and checks what must hold whatever the file holds.

usage: check_random_files.py EXFLATE FOLDER

FOLDER takes files that failed. Environment: EXFLATE_RANDOM_FILES is how many animations (default 100), EXFLATE_RANDOM_SEED
the first seed (default 1, so that a failure of the tests is never chance; sweeps choose their own). Both are printed, and a
seed makes the same animation and the same run again.
"""
import os
import random
import subprocess
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "real"))
from animations import animation
from slices import compositions, layer_slices, parse

TICKS_PER_SECOND = 120000
# What follows from a copy's new place: links and mattes go, timing and name are matched, the transform is carried over.
MAY_DIFFER = {"ind", "parent", "ip", "op", "st", "nm", "tt", "tp", "td", "hd", "ddd", "ks", "ef"}


class Failed(Exception):
    pass


def expect(holds, what):
    if not holds:
        raise Failed(what)


def is_number(text):
    try:
        float(text)
        return True
    except (TypeError, ValueError):
        return False


class Comparison:
    """Whether something of a copy is what the original has, with keyframes moved by `shift` frames."""

    def __init__(self, shift, slack, may_change_expressions):
        self.shift = shift
        self.slack = slack
        self.may_change_expressions = may_change_expressions

    def same(self, before, after, where):
        expect(type(before) is type(after), f"{where} was {before!r} and is {after!r}")
        if isinstance(before, dict):
            keys = [key for key in before if key != "x" or not self.may_change_expressions]
            expect(keys == [key for key in after if key != "x" or not self.may_change_expressions],
                   f"{where}: members were {list(before)} and are {list(after)}")
            for key in keys:
                is_list_of_keys = key == "k" and isinstance(before[key], list)
                if is_list_of_keys:
                    self.same_keys(before[key], after[key], f"{where}/k")
                else:
                    self.same(before[key], after[key], f"{where}/{key}")
        elif isinstance(before, list):
            expect(len(before) == len(after), f"{where} had {len(before)} elements and has {len(after)}")
            for place, (one, other) in enumerate(zip(before, after)):
                self.same(one, other, f"{where}/{place}")
        else:
            expect(before == after, f"{where} was {before!r} and is {after!r}")

    def same_keys(self, before, after, where):
        expect(isinstance(after, list) and len(before) == len(after), f"{where} has another number of elements")
        for place, (one, other) in enumerate(zip(before, after)):
            here = f"{where}/{place}"
            if not (isinstance(one, dict) and is_number(one.get("t"))):
                self.same(one, other, here)
                continue
            if self.shift == 0:
                expect(one["t"] == other.get("t"), f"{here}/t was {one['t']} and is {other.get('t')}")
            error = abs(float(one["t"]) + self.shift - float(other["t"]))
            expect(error <= self.slack, f"{here}/t was {one['t']}, moved by {self.shift}, and is {other['t']}")
            self.same({key: value for key, value in one.items() if key != "t"},
                      {key: value for key, value in other.items() if key != "t"}, here)


class Run:
    def __init__(self, exflate, seed):
        self.exflate = exflate
        self.random = random.Random(seed)
        self.text = animation(self.random)
        self.before = parse(self.text)
        nests = [place for place, layer in enumerate(self.before["layers"]) if layer["ty"] == "0"]
        self.nest_at = self.random.choice(nests)
        self.copies_attributes = self.random.random() < 0.7
        self.is_recursive = self.random.random() < 0.15
        self.arguments = ["--copy-attributes" if self.copies_attributes else "--discard-attributes"]
        self.renames = self.random.random() < 0.3
        self.seeds = self.random.random() < 0.15
        if self.renames:
            self.arguments += self.random.choice([["--prefix", "pré"], ["--prepend-name"]])
        if self.seeds:
            self.arguments.append("--fix-random")
        self.arguments += self.random.choice([[], [], ["--keep-in-comp"], ["--delete-source"]])
        self.arguments += ["--recursive"] if self.is_recursive else ["--layer", f"#{self.nest_at + 1}"]

    def command(self, *arguments, text):
        return subprocess.run([self.exflate, *arguments], input=text, capture_output=True, check=False)

    def check(self):
        data = self.text.encode("utf-8")
        first = self.command("run", "-", *self.arguments, text=data)
        expect(first.returncode == 0, f"exit {first.returncode}: {first.stderr.decode()[-400:]}")
        second = self.command("run", "-", *self.arguments, text=data)
        expect(first.stdout == second.stdout, "two runs gave different bytes")
        listed = self.command("list", "-", text=first.stdout)
        expect(listed.returncode == 0, f"the output does not load: {listed.stderr.decode()[-400:]}")
        after_text = first.stdout.decode("utf-8")
        after = parse(after_text)
        for key, comp in compositions(after).items():
            self.check_links(key, comp)
        expect({key: value for key, value in self.before.items() if key not in ("layers", "assets", "ddd")} ==
               {key: value for key, value in after.items() if key not in ("layers", "assets", "ddd")}, "a member of the document changed")
        expect([key for key in self.before] == [key for key in after], "the members of the document changed")
        if not self.is_recursive:
            self.check_others(after_text)
            self.check_copies(after)

    def check_links(self, key, comp):
        inds = [layer["ind"] for layer in comp["layers"] if "ind" in layer]
        expect(len(set(inds)) == len(inds), f"composition {key}: some layers share their number")
        for layer in comp["layers"]:
            for link in ("parent", "tp"):
                expect(link not in layer or layer[link] in inds, f"composition {key}: {link} of {layer.get('nm')} leads nowhere")
            for effect in layer.get("ef", []):
                for parameter in effect.get("ef", []):
                    if parameter.get("mn") == "ADBE Layer Control-0001":
                        value = parameter["v"]["k"]
                        expect(value == "0" or value in inds, f"composition {key}: a layer parameter of {layer.get('nm')} names {value}")

    def source(self):
        return compositions(self.before)[self.before["layers"][self.nest_at]["refId"]]

    def check_others(self, after_text):
        """All layers that have nothing to do with the nest keep their bytes."""
        nest = self.before["layers"][self.nest_at]
        after_slices = {layer["_id"]: text for key, texts in layer_slices(after_text).items() if key is None
                        for layer, text in ((parse(text), text) for text in texts) if "_id" in layer}
        texts = layer_slices(self.text)[None]
        extracted = len(self.source()["layers"])
        for place, layer in enumerate(self.before["layers"]):
            ind = nest.get("ind")
            hangs_on_it = ind is not None and (layer.get("parent") == ind or layer.get("tp") == ind)
            is_near = place <= extracted or abs(place - self.nest_at) <= 1
            names_it = any(p.get("mn") == "ADBE Layer Control-0001" and p["v"]["k"] == ind for e in layer.get("ef", []) for p in e.get("ef", []))
            if place == self.nest_at or hangs_on_it or is_near or names_it:
                continue
            expect(after_slices.get(layer["_id"]) == texts[place] or "thisComp" in texts[place], f"layer {place + 1} of the main composition changed")

    def check_copies(self, after):
        nest = self.before["layers"][self.nest_at]
        originals = self.source()["layers"]
        copies = {layer["_id"]: layer for layer in after["layers"] if "_id" in layer}
        expect(all(layer["_id"] in copies for layer in originals), "a layer did not come out")
        order = [layer["_id"] for layer in after["layers"] if layer.get("_id") in {one["_id"] for one in originals}]
        expect(order == [layer["_id"] for layer in originals], "the layers came out in another order")
        rate = float(self.before["fr"])
        slack = 4.5 * rate / TICKS_PER_SECOND + 1e-9
        by_ind = {layer["ind"]: layer for layer in originals if "ind" in layer}
        for original in originals:
            copy = copies[original["_id"]]
            # The command clears parents by places of the stack where some copies may stand, the null above them.
            at = after["layers"].index(copy)
            is_hit = any("parent" not in hit for hit in originals[at:at + 3])
            lost_parent = is_hit and "parent" in original and "parent" not in copy
            shift = float(nest.get("st", "0")) if self.copies_attributes else 0.0
            moved = float(copy.get("st", "0")) - float(original.get("st", "0"))
            expect(abs(moved - shift) <= slack, f"{original['_id']} moved by {moved} instead of {shift}")
            compare = Comparison(shift, slack, self.renames or self.seeds or "thisComp" in self.text)
            rest = [{key: value for key, value in layer.items() if key not in MAY_DIFFER} for layer in (original, copy)]
            compare.same(*rest, original["_id"])
            if not self.renames:
                expect(original["nm"] == copy["nm"], f"{original['_id']}: the name became {copy['nm']!r}")
            self.check_effects(compare, original, copy)
            if not lost_parent:
                self.check_parent(original, copy, copies, by_ind)
                self.check_transform(compare, original, copy)

    def check_parent(self, original, copy, copies, by_ind):
        if "parent" in original:
            wanted = copies[by_ind[original["parent"]]["_id"]]
            expect(copy.get("parent") == wanted["ind"], f"{original['_id']} hangs on {copy.get('parent')} instead of {wanted['ind']}")

    def check_effects(self, compare, original, copy):
        before, after = original.get("ef", []), copy.get("ef", [])
        expect(len(after) >= len(before), f"{original['_id']} lost effects")
        for one, other in zip(before, after):
            if "Layer Control" not in one["mn"]:
                compare.same(one, other, original["_id"] + "/ef")

    def check_transform(self, compare, original, copy):
        if "ks" not in original or original.get("ddd", "0") != copy.get("ddd", "0"):
            return
        for key in ("a", "o", "rx", "ry"):
            if key in original["ks"] or key in copy["ks"]:
                expect(key in original["ks"] and key in copy["ks"], f"{original['_id']}/ks/{key} came or went")
                compare.same(original["ks"][key], copy["ks"][key], f"{original['_id']}/ks/{key}")
        if not self.copies_attributes:
            compare.same(original["ks"], copy["ks"], original["_id"] + "/ks")


def main():
    exflate, folder = sys.argv[1:]
    count = int(os.environ.get("EXFLATE_RANDOM_FILES", "100"))
    first = int(os.environ.get("EXFLATE_RANDOM_SEED", "1"))
    print(f"EXFLATE_RANDOM_FILES={count} EXFLATE_RANDOM_SEED={first}", flush=True)
    failures = 0
    for seed in range(first, first + count):
        run = Run(exflate, seed)
        try:
            run.check()
        except Failed as failure:
            failures += 1
            path = os.path.join(folder, f"random_{seed}.json")
            os.makedirs(folder, exist_ok=True)
            with open(path, "w", encoding="utf-8", newline="") as stream:
                stream.write(run.text)
            print(f"FAILED seed {seed}: {failure}\n  exflate run {path} {' '.join(run.arguments)}", file=sys.stderr)
    print(f"{count} animations, {failures} failures")
    return 1 if failures or count < 1 else 0


if __name__ == "__main__":
    sys.exit(main())
