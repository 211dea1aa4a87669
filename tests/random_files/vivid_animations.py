#!/usr/bin/env python3
"""Random animations with what only browsers draw: effects, layer styles, text, images, gradients, strokes and soft masks.

usage: vivid_animations.py SEED

Prints the animation that the seed makes.
"""
import base64
import random
import struct
import sys
import zlib

from animations import Raw, Writer
from calm_animations import CalmMaker


def still(*values):
    return {"a": Raw("0"), "k": Raw(str(values[0])) if len(values) == 1 else [Raw(str(value)) for value in values]}


def png(width, height):
    """A picture of two colors, transparent in a corner."""
    def chunk(name, data):
        return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))
    rows = b""
    for y in range(height):
        rows += b"\0" + b"".join(bytes([200, 60, 20, 0 if x + y < width // 2 else 255]) if x > y else bytes([20, 90, 160, 255])
                                 for x in range(width))
    header = struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b"")


class VividMaker(CalmMaker):
    not_drawn = ("6",)

    def __init__(self, source):
        super().__init__(source)
        if self.chance(0.5):
            self.shares["effects"] = 0.4
        if self.chance(0.3):
            self.shares["fade"] = 0.5

    def color(self):
        return [round(self.random.random(), 2) for _ in range(3)] + [1]

    def paint(self):
        opacity = self.property(1, 60, 100) if self.chance(0.3) else still(100)
        kind = self.random.choice(["fl", "fl", "fl", "st", "gf"])
        if kind == "gf":
            stops = [0, *self.color()[:3], 1, *self.color()[:3]]
            return {"ty": "gf", "o": opacity, "r": Raw("1"), "g": {"p": Raw("2"), "k": still(*stops)}, "s": still(-20, -20),
                    "e": still(20, 20), "t": Raw("1"), "nm": "Gradient"}
        made = {"ty": kind, "c": still(*self.color()), "o": opacity, "nm": "Paint"}
        if kind == "st":
            made.update(w=self.property(1, 1, 9), lc=Raw("2"), lj=Raw("2"))
        else:
            made["r"] = Raw("1")
        return made

    def shapes(self):
        made = []
        for _ in range(self.random.choice([1, 1, 1, 2])):
            [group] = super().shapes()
            if self.chance(0.3):
                group["it"][0] = {"ty": "sh", "ks": {"a": Raw("0"), "k": self.path()}, "nm": "Path"}
            group["it"][1] = self.paint()
            if self.chance(0.15):
                group["it"].insert(2, self.paint())
            made.append(group)
        if self.chance(0.15):
            made.append({"ty": "tm", "s": self.property(1, 0, 30), "e": self.property(1, 60, 100), "o": still(0), "m": Raw("1")})
        return made

    def text(self):
        document = {"s": Raw(str(self.random.randint(12, 40))), "f": "Sans", "t": self.random.choice(["Text", "two\rlines", "Ü!"]),
                    "j": Raw(str(self.random.randint(0, 2))), "tr": Raw("0"), "lh": Raw("24"), "ls": Raw("0"),
                    "fc": [Raw(str(value)) for value in self.color()[:3]]}
        return {"d": {"k": [{"s": document, "t": Raw("0")}]}, "p": {}, "m": {"g": Raw("1"), "a": still(0, 0)}, "a": []}

    def effect(self):
        def parameters(*values):
            return [{"ty": Raw("0"), "nm": "Parameter", "v": value} for value in values]
        kinds = [
            ("ADBE Fill", "21", parameters(still(0), still(0), still(*self.color()), still(0), still(0), still(0),
                                           still(1) if self.chance(0.7) else self.property(1, 0, 1))),
            ("ADBE Tint", "20", parameters(still(*self.color()), still(*self.color()), self.property(1, 40, 100))),
            ("ADBE Tritone", "23", parameters(still(*self.color()), still(*self.color()), still(*self.color()), still(0))),
            ("ADBE Drop Shadow", "25", parameters(still(*self.color()), still(180), self.property(1, 0, 360), still(8),
                                                  self.property(1, 0, 9))),
            ("ADBE Gaussian Blur 2", "29", parameters(self.property(1, 0, 20), still(1), still(0))),
            ("ADBE Slider Control", "5", parameters(self.property(1, 0, 99))),
        ]
        name, kind, values = self.random.choice(kinds)
        return {"ty": Raw(kind), "nm": name[5:], "mn": name, "ix": Raw("1"), "np": Raw(str(len(values) + 2)), "en": Raw("1"),
                "ef": values}

    def effects(self, inds):
        made = [self.effect()]
        if self.chance(0.1):
            made[0]["en"] = Raw("0")
        return made

    def masks(self):
        [mask] = super().masks()
        mask["pt"] = {"a": Raw("0"), "k": {"i": [[Raw("0")] * 2] * 4, "o": [[Raw("0")] * 2] * 4, "c": True,
                                           "v": [self.values(2, -20, 20), self.values(2, 40, 120), self.values(2, 80, 160),
                                                 [self.number(60, 120), self.number(-20, 20)]]}}
        if self.chance(0.3):
            mask["f"] = still(5, 5)
        return [mask]

    def layer(self, ind, inds, assets):
        made = super().layer(ind, inds, assets)
        # Browsers cannot load files without these.
        if "masksProperties" not in made:
            made.pop("hasMask", None)
        made.setdefault("st", Raw("0"))
        if "ks" not in made:
            made["ks"] = self.transform(False)
        return made

    def layers(self, assets, need_nest):
        made = super().layers(assets, need_nest)
        asking = [layer for layer in made if "thisComp.layer" in layer.get("ks", {}).get("o", {}).get("x", "")]
        for layer in asking[1:]:
            del layer["ks"]["o"]["x"]  # two could ask for each other, without end
        for layer in made:
            if layer["ty"] == "3":
                layer.pop("tt", None)  # browsers draw nothing of such a file
        return made

    def document(self):
        made = super().document()
        made["ip"] = Raw("0")  # browsers round it
        made["assets"][0]["p"] = "data:image/png;base64," + base64.b64encode(png(30, 30)).decode()
        made["fonts"] = {"list": [{"fName": "Sans", "fFamily": "sans-serif", "fStyle": "Regular", "ascent": Raw("75")}]}
        return made


def vivid_animation(source):
    """The text of an animation whose main composition has at least one nest."""
    return Writer(source).text(VividMaker(source).document())


if __name__ == "__main__":
    sys.stdout.write(vivid_animation(random.Random(int(sys.argv[1]))))
