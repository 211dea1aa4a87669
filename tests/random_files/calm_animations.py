"""Random animations that the renderer of the tests accepts: it takes few spellings. Each leaves out most of what keeps a nest
from becoming flat, now this, now that."""
from random import Random

from animations import Maker, Raw, Writer

# How often a layer has each, in animations that have it; those that have not are the more.
SHARES = [0, 0, 0, 0.1, 0.4]


class CalmMaker(Maker):
    not_drawn = ("2", "5", "6")  # kinds of layers

    def __init__(self, random):
        super().__init__(random)
        self.is_old, self.version = False, "5.7.4"
        self.rate = random.choice(["24", "25", "30", "60"])
        kinds = ("blend", "effects", "masks", "depth", "fraction", "expression", "fade", "collapse", "remap", "stretch", "hidden",
                 "mattes")
        self.shares = {kind: random.choice(SHARES) for kind in kinds}

    def has(self, kind):
        return self.chance(self.shares[kind])

    def number(self, low, high):
        value = self.random.uniform(low, high)
        return Raw(str(round(value))) if self.chance(0.6) else Raw(str(round(value, 2)))

    def property(self, dimensions, low, high, spatial=False, keyed=0.3, expression=None):
        made = super().property(dimensions, low, high, spatial, keyed, expression)
        if "x" in made and not self.has("expression"):
            del made["x"]
        if dimensions == 1 and made["a"] == "0" and isinstance(made["k"], list):
            made["k"] = made["k"][0]
        return made

    def shapes(self):
        kind = self.random.choice(["rc", "el"])
        form = {"ty": kind, "d": Raw("1"), "s": self.property(2, 10, 60), "p": self.property(2, -30, 30), "nm": "Form"}
        if kind == "rc":
            form["r"] = self.property(1, 0, 9)
        color = {"a": Raw("0"), "k": [Raw(str(round(self.random.random(), 2))) for _ in range(3)] + [Raw("1")]}
        paint = {"ty": "fl", "c": color, "o": self.property(1, 60, 100), "r": Raw("1"), "nm": "Fill"}
        place = {"ty": "tr", "p": self.property(2, 0, 9), "a": self.property(2, 0, 9, keyed=0), "s": self.property(2, 90, 110),
                 "r": self.property(1, 0, 9), "o": self.property(1, 100, 100, keyed=0), "nm": "Transform"}
        return [{"ty": "gr", "it": [form, paint, place], "nm": "Group"}]

    def time(self, low, high):
        return super().time(low, high) if self.has("fraction") else Raw(str(self.random.randint(low, high)))

    def layer(self, ind, inds, assets):
        made = super().layer(ind, inds, assets)
        is_nest = made["ty"] == "0"
        del made["_kept"]
        if made["ty"] == "1":
            made["sh"] = Raw("30")
        if made["ty"] in self.not_drawn:
            return self.layer(ind, inds, assets)
        if "bm" in made and not self.has("blend"):
            made["bm"] = Raw("0")
        if not self.has("effects"):
            made.pop("ef", None)
            made.pop("sy", None)
        if not self.has("masks"):
            made.pop("hasMask", None)
            made.pop("masksProperties", None)
        if made.get("ddd") == "1" and not self.has("depth"):
            made["ddd"] = Raw("0")
            if "ks" in made:
                made["ks"] = self.transform(False)
        if "ks" in made and is_nest and not self.has("fade"):
            made["ks"]["o"] = {"a": Raw("0"), "k": Raw("100")}
        for key, kind in (("ct", "collapse"), ("tm", "remap"), ("hd", "hidden")):
            if not self.has(kind):
                made.pop(key, None)
        if made.get("sr") == "2" and not self.has("stretch"):
            made["sr"] = Raw("1")
        return made

    def layers(self, assets, need_nest):
        made = super().layers(assets, need_nest)
        if not self.has("mattes"):
            for layer in made:
                for key in ("tt", "tp", "td"):
                    layer.pop(key, None)
        if self.shares["expression"] == 0:
            for layer in made:
                layer.get("ks", {}).get("o", {}).pop("x", None)
        return made


def ground(random, document):
    """A plain layer below all others, in a color that may lack red, green or blue."""
    color = random.choice(["#000000", "#0030a0", "#ffe000", "#203040", "#ffffff"])
    still = {"a": Raw("0"), "k": Raw("100")}
    return {"ddd": Raw("0"), "ind": Raw("7777"), "ty": Raw("1"), "nm": "ground", "sr": Raw("1"), "ks": {"o": still},
            "ao": Raw("0"), "sw": document["w"], "sh": document["h"], "sc": color, "ip": Raw("-100"), "op": Raw("200"),
            "st": Raw("0"), "bm": Raw("0")}


def calm_animation(random):
    """The text of an animation whose main composition has at least one nest."""
    document = CalmMaker(random).document()
    apart = Random(random.getstate()[1][0])  # leaves to each seed the animation that it made before there were grounds
    if apart.random() < 0.3:
        document["layers"].append(ground(apart, document))
    return Writer(random).text(document)
