"""Random animations: valid files with what exporters of all ages write, and with what only hands and other tools do."""
import json

RATES = ["24", "25", "30", "60", "12.5", "29.9700012207031", "23.9759979248047", "59.9700012207031", "3e1"]
NAMES = ["Shape", "Größe ü", "日本語の名前", "😀 smile", "a name that is longer than thirty-one bytes, by far",
         "quote ' one", "quote \" two", "back\\slash", "x" * 40, "ÿ" * 20, "tab\tname", "A", "dot.class #id"]


class Raw(str):
    """Text that stands in the file as it is: a number."""


class Writer:
    """Spells a document: compact or indented, text raw or escaped."""

    def __init__(self, random):
        self.newline = "\n" if random.random() < 0.2 else ""
        self.between = random.choice(["", "", "", " "])
        self.escapes = random.random() < 0.2

    def text(self, value, depth=0):
        if isinstance(value, Raw):
            return str(value)
        if isinstance(value, (dict, list)):
            inner = self.newline + " " * (depth + 1 if self.newline else 0)
            outer = self.newline + " " * (depth if self.newline else 0)
            if isinstance(value, dict):
                parts = [self.string(key) + ":" + self.between + self.text(one, depth + 1) for key, one in value.items()]
            else:
                parts = [self.text(one, depth + 1) for one in value]
            if not parts:
                return "{}" if isinstance(value, dict) else "[]"
            brackets = "{}" if isinstance(value, dict) else "[]"
            return brackets[0] + inner + ("," + self.between + inner).join(parts) + outer + brackets[1]
        return self.string(value) if isinstance(value, str) else json.dumps(value)

    def string(self, value):
        return json.dumps(value, ensure_ascii=self.escapes)


class Maker:
    def __init__(self, random):
        self.random = random
        self.rate = random.choice(RATES)
        self.is_old = random.random() < 0.25
        self.version = random.choice(["4.1.0", "4.4.10", "4.6.8"] if self.is_old else ["4.12.0", "5.1.7", "5.7.4", "5.12.2"])
        self.last_id = 0
        self.width, self.height = 200, 160

    def chance(self, share):
        return self.random.random() < share

    def number(self, low, high):
        """A number in one of the spellings that files have."""
        pick = self.random.random()
        value = self.random.uniform(low, high)
        if pick < 0.5:
            return Raw(str(round(value)))
        if pick < 0.8:
            return Raw(str(round(value, 3)))
        if pick < 0.85:
            return Raw(f"{round(value)}.0")
        if pick < 0.9:
            return Raw(f"{value:.6e}")
        return Raw(repr(value))

    def time(self, low, high):
        pick = self.random.random()
        if pick < 0.6:
            return Raw(str(self.random.randint(low, high)))
        if pick < 0.9:
            return Raw(str(round(self.random.uniform(low, high), 3)))
        if pick < 0.95:
            return Raw(f"{self.random.randint(low, high)}.0")
        return Raw(repr(self.random.uniform(low, high)))

    def key_times(self, count):
        at, times = self.random.uniform(-40, 40), []
        for _ in range(count):
            whole = self.chance(0.7)
            times.append(Raw(str(round(at)) if whole else str(round(at, 3))))
            at = max(at, float(times[-1])) + self.random.choice([1, 2.5, 7, 20, 33.333])
        return times

    def handle(self, dimensions, as_arrays):
        def one(count):
            return [Raw(str(round(self.random.uniform(0, 1), 3))) for _ in range(count)]
        if as_arrays:
            return {"x": one(dimensions), "y": one(dimensions)}
        return {"x": one(1)[0], "y": one(1)[0]}

    def values(self, dimensions, low, high):
        return [self.number(low, high) for _ in range(dimensions)]

    def keys(self, dimensions, low, high, spatial=False):
        keys = []
        times = self.key_times(self.random.randint(2, 4))
        for i, time in enumerate(times):
            is_last = i + 1 == len(times)
            key = {}
            holds = self.chance(0.15)
            if not holds and not is_last:
                key["i"] = self.handle(dimensions, not spatial)
                key["o"] = self.handle(dimensions, not spatial)
                if self.is_old:
                    key["n"] = "0p667_1_0p333_0" if spatial else ["0p667_1_0p333_0"] * dimensions
            key["t"] = time
            if not is_last or not self.is_old:
                key["s"] = self.values(dimensions, low, high)
            if self.is_old and not is_last:
                key["e"] = self.values(dimensions, low, high)
            if holds:
                key["h"] = Raw("1")
            elif spatial and not is_last and self.chance(0.5):
                key["to"] = self.values(dimensions, -20, 20)
                key["ti"] = self.values(dimensions, -20, 20)
            keys.append(key)
        return keys

    def property(self, dimensions, low, high, spatial=False, keyed=0.3, expression=None):
        is_keyed = self.chance(keyed)
        made = {}
        if not self.is_old or self.chance(0.5):
            made["a"] = Raw("1" if is_keyed else "0")
        if is_keyed:
            made["k"] = self.keys(dimensions, low, high, spatial)
        else:
            value = self.values(dimensions, low, high)
            made["k"] = value[0] if dimensions == 1 and self.chance(0.8) else value
        if not self.is_old:
            made["ix"] = Raw(str(self.random.randint(1, 12)))
        if expression is None and self.chance(0.06):
            expression = self.random.choice(["var $bm_rt;\n$bm_rt = random(3);", "var $bm_rt;\n$bm_rt = loopOut('cycle');",
                                             "var $bm_rt;\n$bm_rt = $bm_sum(value, time);"])
        if expression:
            made["x"] = expression
        return made

    def position(self):
        if not self.chance(0.15):
            return self.property(3, 0, 200, spatial=True)
        made = {"s": True, "x": self.property(1, 0, 200), "y": self.property(1, 0, 200)}
        if self.chance(0.4):
            made["z"] = self.property(1, 0, 0, keyed=0)
        return made

    def transform(self, is_3d, keyed=0.3):
        made = {"o": self.property(1, 0, 100, keyed=keyed)}
        if is_3d:
            made.update(rx=self.property(1, -20, 20), ry=self.property(1, -20, 20), rz=self.property(1, -90, 90))
            made["or"] = self.property(3, 0, 30, spatial=True)
        else:
            made["r"] = self.property(1, -90, 90, keyed=keyed)
        made["p"] = self.position() if keyed else self.property(3, 0, 200, keyed=0)
        made["a"] = self.property(3, 0, 50, spatial=True, keyed=keyed / 2)
        made["s"] = self.property(3, 20, 150, keyed=keyed)
        for key in list(made):
            if self.chance(0.05):
                del made[key]
        return made

    def path(self):
        def points():
            return [[self.number(-50, 50), self.number(-50, 50)] for _ in range(3)]
        return {"i": points(), "o": points(), "v": points(), "c": self.chance(0.8)}

    def path_property(self):
        if self.chance(0.6):
            return {"a": Raw("0"), "k": self.path(), "ix": Raw("2")}
        keys = [{"i": self.handle(1, False), "o": self.handle(1, False), "t": time, "s": [self.path()]}
                for time in self.key_times(3)]
        if self.is_old:
            for key in keys[:-1]:
                key["e"] = [self.path()]
            keys[-1] = {"t": keys[-1]["t"]}
        return {"a": Raw("1"), "k": keys, "ix": Raw("2")}

    def gradient(self):
        stops = ["0", "1", "0", "0", "1", "0", "1", "0.5"]
        if self.chance(0.5):
            inner = {"a": Raw("0"), "k": [Raw(n) for n in stops]}
        else:
            inner = {"a": Raw("1"), "k": [{"i": self.handle(1, False), "o": self.handle(1, False), "t": time,
                                           "s": [Raw(n) for n in stops]} for time in self.key_times(2)]}
        return {"ty": "gf", "o": self.property(1, 0, 100), "r": Raw("1"), "g": {"p": Raw("2"), "k": inner},
                "s": self.property(2, 0, 10), "e": self.property(2, 10, 100), "t": Raw("1"), "nm": "Gradient"}

    def shapes(self):
        items = [{"ty": "sh", "ks": self.path_property(), "nm": "Path"},
                 {"ty": "rc", "d": Raw("1"), "s": self.property(2, 10, 90), "p": self.property(2, -30, 30),
                  "r": self.property(1, 0, 9), "nm": "Rect"}]
        paints = [{"ty": "fl", "c": self.property(4, 0, 1), "o": self.property(1, 0, 100), "nm": "Fill"}, self.gradient(),
                  {"ty": "st", "c": self.property(4, 0, 1), "o": self.property(1, 0, 100), "w": self.property(1, 1, 9),
                   "d": [{"n": "d", "nm": "dash", "v": self.property(1, 1, 9)}], "nm": "Stroke"}]
        trim = {"ty": "tm", "s": self.property(1, 0, 50), "e": self.property(1, 50, 100), "o": self.property(1, 0, 90),
                "m": Raw("1"), "nm": "Trim"}
        move = {"ty": "tr", "p": self.property(2, 0, 9, spatial=True), "a": self.property(2, 0, 9), "s": self.property(2, 90, 110),
                "r": self.property(1, 0, 9), "o": self.property(1, 0, 100), "nm": "Transform"}
        group = {"ty": "gr", "it": [self.random.choice(items), self.random.choice(paints), move], "nm": "Group"}
        return [group] + ([trim] if self.chance(0.3) else [])

    def text(self):
        document = {"s": Raw("20"), "f": "Arial", "t": "text\rtwo", "j": Raw("0"), "tr": Raw("0"), "lh": Raw("24"),
                    "fc": [Raw("1"), Raw("0"), Raw("0")]}
        keys = [{"s": document, "t": time} for time in self.key_times(self.random.randint(1, 2))]
        data = document if self.version == "4.4.10" else {"k": keys}
        animator = {"nm": "Animator", "s": {"t": Raw("0"), "xe": self.property(1, 0, 9), "s": self.property(1, 0, 100)},
                    "a": {"o": self.property(1, 0, 100), "fc": self.property(4, 0, 1)}}
        return {"d": data, "p": {}, "m": {"g": Raw("1"), "a": self.property(2, 0, 1)}, "a": [animator]}

    def effects(self, inds):
        made = []
        for i in range(self.random.randint(1, 2)):
            slider = {"ty": Raw("0"), "nm": "Slider", "mn": "ADBE Slider Control-0001", "ix": Raw("1"), "v": self.property(1, 0, 99)}
            layer = {"ty": Raw("10"), "nm": "Layer", "mn": "ADBE Layer Control-0001", "ix": Raw("1"),
                     "v": {"a": Raw("0"), "k": Raw(self.random.choice(["0"] + [str(n) for n in inds])), "ix": Raw("1")}}
            fill = [{"ty": Raw("10"), "nm": "Fill Mask", "mn": "ADBE Fill-0001", "ix": Raw("1"), "v": {"a": Raw("0"), "k": Raw("2"), "ix": Raw("1")}},
                    {"ty": Raw("7"), "nm": "All Masks", "mn": "ADBE Fill-0007", "ix": Raw("2"), "v": {"a": Raw("0"), "k": Raw("0"), "ix": Raw("2")}},
                    {"ty": Raw("2"), "nm": "Color", "mn": "ADBE Fill-0002", "ix": Raw("3"), "v": self.property(4, 0, 1)}, {}]
            kind = self.random.choice([("ADBE Slider Control", "5", [slider]), ("ADBE Layer Control", "5", [layer]),
                                       ("ADBE Fill", "21", fill)])
            effect = {"ty": Raw(kind[1]), "nm": self.random.choice(["Effect", "Wirkung"]), "np": Raw(str(len(kind[2]) + 2)),
                      "mn": kind[0], "ix": Raw(str(i + 1)), "en": Raw("1"), "ef": kind[2]}
            if self.chance(0.2):
                del effect["en"]
            made.append(effect)
        return made

    def masks(self):
        return [{"inv": self.chance(0.2), "mode": self.random.choice("asin"), "pt": self.path_property(),
                 "o": self.property(1, 0, 100), "x": self.property(1, -5, 5), "nm": "Mask"}]

    def layer(self, ind, inds, assets):
        """One layer; `assets` are the compositions that it may show."""
        kind = self.random.choice([1, 1, 2, 3, 4, 4, 4, 4, 5, 6] + [0] * (3 if assets else 0))
        is_3d = self.chance(0.1)
        made = {}
        if not self.is_old or is_3d or self.chance(0.5):
            made["ddd"] = Raw("1" if is_3d else "0")
        if ind is not None:
            made["ind"] = Raw(str(ind))
        made["ty"] = Raw(str(kind))
        made["nm"] = self.random.choice(NAMES)
        if self.chance(0.1):
            made["cl"] = "class"
        if self.chance(0.3):
            made["hd"] = self.chance(0.5)
        if kind in (0, 2, 6):
            made["refId"] = self.random.choice(assets) if kind == 0 else "image" if kind == 2 else "audio"
        if self.chance(0.85):
            made["sr"] = Raw("1") if self.chance(0.95) else Raw("2")
        if kind != 6 and not (kind == 3 and self.chance(0.1)):
            made["ks"] = self.transform(is_3d, keyed=self.random.choice([0, 0.3]))
        made["ao"] = Raw("0")
        if kind != 6:
            if self.chance(0.25):
                made["hasMask"] = True
                made["masksProperties"] = self.masks()
            elif self.chance(0.1):
                made["hasMask"] = True
            if self.chance(0.25):
                made["ef"] = self.effects(inds)
            if self.chance(0.1):
                made["sy"] = [{"ty": Raw("1"), "nm": "Shadow", "c": self.property(4, 0, 1), "o": self.property(1, 0, 100), "s": self.property(1, 0, 9)}]
        if kind == 0:
            if self.chance(0.1):
                made["tm"] = self.property(1, 0, 3, keyed=1)
            made["w"], made["h"] = Raw(str(self.width)), Raw(str(self.height))
        if kind == 1:
            made["sw"], made["sh"], made["sc"] = Raw("40"), Raw("30.0"), "#a0b0C0"
        if kind == 4:
            made["shapes"] = self.shapes()
        if kind == 5:
            made["t"] = self.text()
        if kind == 6:
            made["au"] = {"lv": self.property(2, 0, 100)}
        start = self.time(-40, 40)
        made["ip"] = self.time(-30, 20)
        made["op"] = self.time(21, 140)
        if self.chance(0.9):
            made["st"] = start if self.chance(0.75) else Raw("0")
        if self.chance(0.2):
            made["ct"] = Raw("1")
        if not self.is_old or self.chance(0.5):
            made["bm"] = Raw(str(self.random.randint(0, 15)))
        self.last_id += 1
        made["_id"] = "layer-" + str(self.last_id)
        made["_kept"] = [Raw("-0"), Raw("1e5"), Raw("1.0"), None, {"x": Raw("1E-7"), "t": Raw("3")}]
        return made

    def layers(self, assets, need_nest):
        count = self.random.randint(1, 6)
        inds = list(range(1, count + 1))
        pick = self.random.random()
        if pick < 0.2:
            inds = [n - 1 for n in inds]
        elif pick < 0.3:
            inds = [n * 3 - 4 for n in inds]
        elif pick < 0.4:
            self.random.shuffle(inds)
        made = [self.layer(ind, inds, assets) for ind in inds]
        if need_nest and assets:
            nest = self.layer(max(inds) + 5, inds, assets)
            while nest["ty"] != "0":
                nest = self.layer(max(inds) + 5, inds, assets)
            made.insert(self.random.randint(0, count), nest)
        for place, layer in enumerate(made):
            if place and self.chance(0.3):
                layer["parent"] = self.random.choice(made[:place])["ind"]
            if place and self.chance(0.15):
                layer["tt"] = Raw(str(self.random.randint(1, 4)))
                if self.chance(0.4):
                    layer["tp"] = self.random.choice(made[:place])["ind"]
                else:
                    made[place - 1]["td"] = Raw("1")
        for layer in made:
            others = [other for other in made if other is not layer and not set("'\"\\\t") & set(other["nm"])]
            if others and "ks" in layer and self.chance(0.1) and "o" in layer["ks"]:
                quote = self.random.choice("'\"")
                layer["ks"]["o"]["x"] = f"var $bm_rt;\n$bm_rt = thisComp.layer({quote}{self.random.choice(others)['nm']}{quote}).transform.opacity;"
        referred = {layer.get("parent") for layer in made} | {layer.get("tp") for layer in made}
        names_layers = any("ef" in layer for layer in made)
        for layer in made:
            if not names_layers and layer["ind"] not in referred and self.chance(0.05):
                del layer["ind"]
        return made

    def document(self):
        ids = [f"comp_{n}" for n in range(self.random.randint(1, 3))]
        assets = [{"id": "image", "w": Raw("30"), "h": Raw("30"), "u": "", "p": "data:image/png;base64,", "e": Raw("1")},
                  {"id": "audio", "u": "", "p": "a.mp3", "e": Raw("0"), "t": Raw("2")}]
        for place, name in enumerate(ids):
            comp = {"id": name, "layers": self.layers(ids[:place], False)}
            if self.chance(0.3):
                comp = {"id": name, "nm": "Comp " + name, "fr": Raw(self.rate), "layers": comp["layers"]}
            assets.append(comp)
        made = {"v": self.version, "fr": Raw(self.rate), "ip": Raw(self.random.choice(["0", "0", "10", "-5.5"])), "op": Raw("100"),
                "w": Raw(str(self.width)), "h": Raw(str(self.height)), "nm": self.random.choice(["main", "Übung"]), "ddd": Raw("0"),
                "assets": assets, "fonts": {"list": [{"fName": "Arial", "fFamily": "Arial", "fStyle": "Regular", "ascent": Raw("71.6")}]},
                "layers": self.layers(ids, True), "markers": [{"tm": Raw("3"), "cm": "mark", "dr": Raw("0")}]}
        return made


def animation(random):
    """The text of an animation whose main composition has at least one nest."""
    maker = Maker(random)
    document = maker.document()
    text = Writer(random).text(document)
    return ("\ufeff" if random.random() < 0.05 else "") + text + ("\n" if random.random() < 0.3 else "")
