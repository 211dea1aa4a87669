#!/usr/bin/env python3
"""Runs the command on every nest of one real animation and checks what must hold for each run.

usage: check_run.py EXFLATE FILE

For every pre-comp layer of every composition: alone with copied and with discarded attributes; then --recursive from the
main composition. Each run must exit with 0 and write a file that parses, that `list` reads, and that a second run writes
with the same bytes. Layers that the run had no business with must keep their bytes.
"""
import json
import subprocess
import sys

from slices import compositions, layer_slices, parse


def run(exflate, *arguments):
    return subprocess.run([exflate, *arguments], capture_output=True, check=False)


class Input:
    def __init__(self, text):
        self.text = text
        self.comps = compositions(parse(text))
        self.slices = layer_slices(text)


class Failures:
    def __init__(self):
        self.count = 0

    def expect(self, holds, what, detail=""):
        if not holds:
            self.count += 1
            print(f"FAILED {what} {detail}", file=sys.stderr)
        return holds


def may_change(before_comp, nest_at, extracted):
    """Places in the stack whose layer one run may rewrite: what hung on the nest or was its matte partner, and the layers
    that stand, when the null is let go, in the topmost places, where the command clears parents."""
    layers = before_comp["layers"]
    nest = layers[nest_at]
    places = set(range(0, extracted))
    for place, layer in enumerate(layers):
        if "parent" in layer and layer["parent"] == nest.get("ind"):
            places.add(place)
        if "tt" in layer and (layer.get("tp") == nest.get("ind") or ("tp" not in layer and place - 1 == nest_at)):
            places.add(place)
    places.add(nest_at)
    if "tt" in nest:
        places.add(nest_at - 1)
    return places


def check_untouched(failures, before, after_text, comp_key, nest_at, what):
    """Every layer of the input, but those that the run may rewrite, stands in the output with its very bytes."""
    compared, found_at = 0, 0
    for key, comp in before.comps.items():
        allowed, names = set(), set()
        if key == comp_key:
            source = before.comps.get(comp["layers"][nest_at].get("refId"), {"layers": []})
            allowed = may_change(comp, nest_at, len(source["layers"]))
            names = {layer.get("nm") for layer in comp["layers"]}
        for place, text in enumerate(before.slices[key]):
            if place in allowed:
                continue
            compared += 1
            # Layers mostly stand in the order they stood in: look on from the last one first.
            at = after_text.find(text, found_at)
            if at < 0:
                at = after_text.find(text)
            if at >= 0:
                found_at = at
                continue
            named = any(f"'{name}'" in text or f'\\"{name}\\"' in text for name in names)
            failures.expect(named, what, f"layer {place + 1} of {key} changed: {text[:120]}")
    return compared


def check_output(failures, exflate, file, arguments, what):
    """Runs twice; returns the output text if all that holds for any run holds."""
    first = run(exflate, "run", file, *arguments)
    if not failures.expect(first.returncode == 0, what, f"exit {first.returncode}: {first.stderr.decode()[-300:]}"):
        return None
    second = run(exflate, "run", file, *arguments)
    failures.expect(first.stdout == second.stdout, what, "two runs gave different bytes")
    try:
        text = first.stdout.decode("utf-8")
        json.loads(text)
    except ValueError as problem:
        failures.expect(False, what, f"the output does not parse: {problem}")
        return None
    again = subprocess.run([exflate, "list", "-"], input=first.stdout, capture_output=True, check=False)
    failures.expect(again.returncode == 0, what, f"the output does not load: {again.stderr.decode()[-300:]}")
    return text


def main():
    exflate, file = sys.argv[1:]
    with open(file, encoding="utf-8", newline="") as stream:
        before = Input(stream.read())
    failures, runs, compared = Failures(), 0, 0
    for key, comp in before.comps.items():
        for place, layer in enumerate(comp["layers"]):
            if layer.get("ty") != "0":
                continue
            for mode in ("--copy-attributes", "--discard-attributes"):
                what = f"{key} #{place + 1} {mode}"
                arguments = ["--layer", f"#{place + 1}", mode]
                if key is not None:
                    arguments += ["--comp", key]
                text = check_output(failures, exflate, file, arguments, what)
                runs += 1
                if text is not None:
                    compared += check_untouched(failures, before, text, key, place, what)
    text = check_output(failures, exflate, file, ["--recursive"], "recursive")
    runs += 1
    if text is not None:
        nests = [layer for layer in parse(text)["layers"] if layer.get("ty") == "0"]
        failures.expect(not nests, "recursive", f"{len(nests)} nests are left in the main composition")
    print(f"{runs} runs, {compared} layers compared byte for byte, {failures.count} failures")
    return 1 if failures.count or runs == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
