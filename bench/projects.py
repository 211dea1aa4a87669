# Animations of any size, made by a rule: families that each grow one thing.
import json


def transform():
    return {"o": {"a": 0, "k": 100}, "r": {"a": 0, "k": 0}, "p": {"a": 0, "k": [100, 100, 0]},
            "a": {"a": 0, "k": [0, 0, 0]}, "s": {"a": 0, "k": [100, 100, 100]}}


def layer(number, name, **more):
    return {"ddd": 0, "ind": number, "nm": name, "ks": transform(), "ip": 0, "op": 60, "st": 0, "bm": 0, **more}


def solid(number, name):
    return layer(number, name, ty=1, sw=10, sh=10, sc="#ff0000")


def nest(number, name, comp):
    return layer(number, name, ty=0, refId=comp, w=200, h=200)


def animation(layers, comps):
    assets = [{"id": name, "nm": name.upper(), "layers": inside} for name, inside in comps]
    return {"v": "5.7.0", "fr": 30, "ip": 0, "op": 60, "w": 200, "h": 200, "nm": "Main", "ddd": 0,
            "assets": assets, "layers": layers}


def keyframes(times, values):
    """Eased ones; the last needs no ease."""
    frames = [{"t": time, "s": value, "i": {"x": [.8], "y": [1]}, "o": {"x": [.2], "y": [0]}}
              for time, value in zip(times, values)]
    frames[-1] = {"t": times[-1], "s": values[-1]}
    return {"a": 1, "k": frames}


def one_nest(count):
    return animation([nest(1, "Nest", "c")], [("c", [solid(i, f"Layer {i}") for i in range(1, count + 1)])])


def inside(project):
    return project["assets"][0]["layers"]


def parents(count):
    project = one_nest(count)
    for i, child in enumerate(inside(project)):
        if i > 0:
            child["parent"] = 1 if i % 10 else i + 1 - 10
    return project


def keyframed(count):
    project = one_nest(count)
    for child in inside(project):
        child["ks"]["p"] = keyframes([0, 30], [[0, 0, 0], [50, 50, 0]])
        child["ks"]["r"] = keyframes([0, 30], [[0], [90]])
    return project


def expressions(count):
    project = one_nest(count)
    for i, child in enumerate(inside(project)):
        other = (i + 1) % count + 1
        child["ks"]["o"]["x"] = f"var $bm_rt;\n$bm_rt = thisComp.layer('Layer {other}').transform.opacity;"
    return project


EFFECT_KEYFRAMES = 10


def effects(count):
    project = one_nest(count)
    slider = {"ty": 0, "nm": "Slider", "mn": "ADBE Slider Control-0001", "ix": 1,
              "v": keyframes(list(range(EFFECT_KEYFRAMES)), [[i] for i in range(EFFECT_KEYFRAMES)])}
    project["layers"][0]["ef"] = [{"ty": 5, "nm": "Slider Control", "np": 3, "mn": "ADBE Slider Control", "ix": 1,
                                   "en": 1, "ef": [slider]}]
    return project


def nests_of_ten(count):
    """`count` is the number of layers that come out."""
    nests = range(count // 10)
    return animation([nest(i + 1, f"Nest {i}", f"c{i}") for i in nests],
                     [(f"c{i}", [solid(j, f"Layer {j}") for j in range(1, 11)]) for i in nests])


def depth(count):
    """Two layers a level: one that stays and the next nest."""
    def level(i):
        deeper = nest(1, f"Nest {i + 1}", f"c{i + 1}") if i + 1 < count else solid(1, "End")
        return [deeper, solid(2, f"Layer {i}")]
    return animation([nest(1, "Nest 0", "c0")], [(f"c{i}", level(i)) for i in range(count)])


# By name: how it is made, and the flags of `exflate run` for it.
FAMILIES = {
    "one nest": (one_nest, []),
    "one nest, prefix": (one_nest, ["--prefix", "p"]),
    "parents": (parents, []),
    "keyframes": (keyframed, []),
    "expressions, prefix": (expressions, ["--prefix", "p"]),
    "effects on the nest": (effects, []),
    "nests of ten layers": (nests_of_ten, []),
    "depth": (depth, ["--recursive"]),
}


def text_of(family, count):
    make, flags = FAMILIES[family]
    return json.dumps(make(count), separators=(",", ":")), flags
