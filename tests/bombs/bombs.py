#!/usr/bin/env python3
"""Small ways to write down a great deal of work: animations of a kind and a size.

usage: bombs.py KIND SIZE   writes one to standard output
"""
import functools
import json
import subprocess
import sys

FRAMES = 20
PLACEHOLDER = "?"


def compact(value):
    return json.dumps(value, separators=(",", ":"))


def with_text(made, text):
    """The animation with that in the place of its placeholder."""
    return compact(made).replace(compact(PLACEHOLDER), text)


def still(value):
    return {"a": 0, "k": value}


@functools.cache
def standing():
    """The transform of all layers that have none of their own: a million of them would fill the memory."""
    return transform()


def keyed(count, value):
    """From key to key, within `count` frames."""
    return {"a": 1, "k": [{"t": t, "s": value(t), "i": {"x": [1], "y": [1]}, "o": {"x": [0], "y": [0]}} for t in range(count)]}


def transform(**members):
    return {"o": still(100), "r": still(0), "p": still([0, 0, 0]), "a": still([0, 0, 0]), "s": still([100, 100, 100])} | members


def layer(number, name, kind, **members):
    return {"ddd": 0, "ind": number, "ty": kind, "nm": name, "sr": 1, "ks": standing(), "ao": 0, "ip": 0, "op": FRAMES, "st": 0,
            "bm": 0} | members


def solid(number, name="solid", **members):
    return layer(number, name, 1, sw=40, sh=40, sc="#ff0000", **members)


def null(number, name="null", **members):
    return layer(number, name, 3, **members)


def shape(number, shapes, name="shape", **members):
    return layer(number, name, 4, shapes=shapes, **members)


def nest(number, source, name="nest", **members):
    return layer(number, name, 0, refId=source, **{"w": 100, "h": 100} | members)


def composition(name, layers):
    return {"id": name, "nm": name, "layers": layers}


def animation(layers, compositions=(), frames=FRAMES):
    return {"v": "5.7.4", "fr": 25, "ip": 0, "op": frames, "w": 100, "h": 100, "nm": "main", "ddd": 0, "assets": list(compositions),
            "layers": layers, "markers": []}


def with_nest(inside, frames=FRAMES, **members):
    """One nest with those layers inside."""
    return animation([nest(1, "c", op=frames, **members), solid(2, op=frames)], [composition("c", inside)], frames)


RECTANGLE = {"ty": "rc", "nm": "rectangle", "p": still([0, 0]), "s": still([10, 10]), "r": still(0), "d": 1}
ELLIPSE = {"ty": "el", "nm": "ellipse", "p": still([20, 20]), "s": still([40, 40]), "d": 1}
FILL = {"ty": "fl", "nm": "fill", "c": still([1, 0, 0, 1]), "o": still(100), "r": 1}
GROUP_END = {"ty": "tr", "p": still([0, 0]), "a": still([0, 0]), "s": still([100, 100]), "r": still(0), "o": still(100)}


def path(points, closed=True):
    corners = [[i % 97, i * 7 % 89] for i in range(points)]
    flat = [[0, 0]] * points
    return {"i": flat, "o": flat, "v": corners, "c": closed}


def mask(points=4):
    return {"mode": "a", "inv": False, "nm": "mask", "pt": still(path(points)), "o": still(100), "x": still(0)}


def repeater(copies):
    return {"ty": "rp", "nm": "repeater", "c": still(copies), "o": still(0), "m": 1,
            "tr": {"ty": "tr", "p": still([1, 0]), "a": still([0, 0]), "s": still([100, 100]), "r": still(1), "so": still(100),
                   "eo": still(100)}}


def siblings(n):
    """Nests of one composition."""
    return animation([nest(i + 1, "c", f"nest {i}") for i in range(n)], [composition("c", [solid(1, "a"), solid(2, "b")])])


def families(n):
    """Nests of a composition each."""
    return animation([nest(i + 1, f"c{i}", f"nest {i}") for i in range(n)],
                     [composition(f"c{i}", [solid(1, f"a{i}"), solid(2, f"b{i}")]) for i in range(n)])


def chain(n):
    """Each composition shows the next."""
    inside = [composition(f"c{i}", [nest(1, f"c{i + 1}"), solid(2)]) for i in range(n - 1)]
    return animation([nest(1, "c0"), solid(2)], [*inside, composition(f"c{n - 1}", [solid(1)])])


def doubling(n):
    """Each composition shows the next twice: two to the power of n layers."""
    inside = [composition(f"c{i}", [nest(1, f"c{i + 1}", "one"), nest(2, f"c{i + 1}", "two")]) for i in range(n - 1)]
    return animation([nest(1, "c0")], [*inside, composition(f"c{n - 1}", [solid(1)])])


def layers(n):
    return with_nest([solid(i + 1, f"layer {i}") for i in range(n)])


def namesakes(n):
    return with_nest([solid(i + 1, "layer") for i in range(n)])


def parents(n):
    """Inside the nest each layer hangs on the next, and moves."""
    moving = transform(p=keyed(2, lambda t: [t, 0, 0]))
    return with_nest([solid(i + 1, ks=moving, **({"parent": i + 2} if i + 1 < n else {})) for i in range(n)])


def outer_parents(n):
    """The layers beside the nest hang on each other, the last on the nest."""
    beside = [solid(i + 2, parent=i + 1, ks=transform(p=keyed(2, lambda t: [t, 0, 0]))) for i in range(n)]
    return animation([nest(1, "c"), *beside], [composition("c", [solid(1)])])


def mattes(n):
    pairs = [solid(i + 1, td=1) if i % 2 == 0 else solid(i + 1, tt=1) for i in range(n)]
    return with_nest(pairs)


def frames(n):
    """Moving for that long, in a nest that fades."""
    inside = [solid(i + 1, op=n, ks=transform(p={"a": 1, "k": [{"t": 0, "s": [0, 0, 0]}, {"t": n, "s": [90, 90, 0]}]})) for i in range(9)]
    return with_nest(inside, frames=n, ks=transform(o={"a": 1, "k": [{"t": 0, "s": [100]}, {"t": n, "s": [50]}]}))


def crowd(n):
    """Moving layers, for a thousand frames."""
    moving = transform(p={"a": 1, "k": [{"t": 0, "s": [0, 0, 0]}, {"t": 1000, "s": [90, 90, 0]}]})
    return with_nest([solid(i + 1, op=1000, ks=moving) for i in range(n)], frames=1000, ks=transform(r=still(5)))


def fading(n):
    """Layers that do not meet, in a nest that fades."""
    inside = [solid(i + 1, ks=transform(p=still([i % 1000 * 50, i // 1000 * 50, 0]))) for i in range(n)]
    return with_nest(inside, ks=transform(o=keyed(2, lambda t: [100 - 50 * t])))


def covers(n):
    """Layers that move over one another, in a nest that fades for a hundred frames."""
    def over_others(i):
        x, y = i % 50, i // 50 % 50
        moving = transform(p={"a": 1, "k": [{"t": 0, "s": [x, y, 0]}, {"t": 100, "s": [50 - x, 50 - y, 0]}]})
        make = functools.partial(shape, shapes=[ELLIPSE, FILL]) if i % 2 else solid
        return make(i + 1, name=f"layer {i}", ks=moving, op=100)
    wide = {"w": 50_000, "h": 50_000}  # small layers in a large picture: of nests that fill more of it nothing is cut
    return with_nest([over_others(i) for i in range(n)], frames=100, **wide,
                     ks=transform(o={"a": 1, "k": [{"t": 0, "s": [0]}, {"t": 100, "s": [100]}]})) | wide


def keyframes(n):
    """Of a layer inside and of the nest itself."""
    moving = transform(p=keyed(n, lambda t: [t % 90, t % 50, 0]))
    return with_nest([solid(1, ks=moving, op=n), solid(2)], frames=n, ks=transform(p=keyed(n, lambda t: [t % 9, 0, 0])))


def moving_paths(n):
    """A path with that many keyframes, cut by a moving nest."""
    keys = {"a": 1, "k": [{"t": t, "s": [path(4)], "i": {"x": 1, "y": 1}, "o": {"x": 0, "y": 0}} for t in range(n)]}
    inside = [shape(1, [{"ty": "sh", "nm": "path", "ks": keys}, FILL], op=n)]
    return with_nest(inside, frames=n, ks=transform(r=keyed(2, lambda t: [t * 90])))


def points(n):
    return with_nest([shape(1, [{"ty": "sh", "nm": "path", "ks": still(path(n))}, FILL], ks=transform(r=keyed(9, lambda t: [t * 9])))])


def shapes(n):
    return with_nest([shape(1, [RECTANGLE, FILL] * n, ks=transform(r=keyed(9, lambda t: [t * 9])))])


def groups(n):
    """Groups in groups; as text, for they lie too deep for the writer of JSON."""
    begin, end = '{"ty":"gr","nm":"group","it":[', "," + compact(GROUP_END) + "]}"
    return with_text(with_nest([shape(1, [PLACEHOLDER])]), begin * n + compact(RECTANGLE) + "," + compact(FILL) + end * n)


def copies(n):
    """A repeater with that many copies."""
    return with_nest([shape(1, [RECTANGLE, FILL, repeater(n)])])


def repeaters(n):
    """Each doubles what is above it."""
    return with_nest([shape(1, [RECTANGLE, FILL, *[repeater(2)] * n], ks=transform(r=keyed(9, lambda t: [t * 9])))])


def masks(n):
    return with_nest([solid(1, hasMask=True, masksProperties=[mask() for _ in range(n)]), solid(2)])


def nest_masks(n):
    return with_nest([solid(1), solid(2)], hasMask=True, masksProperties=[mask() for _ in range(n)])


def effects(n):
    one = {"ty": 5, "nm": "slider", "mn": "ADBE Slider Control", "ix": 1, "en": 1,
           "ef": [{"ty": 0, "nm": "slider", "mn": "ADBE Slider Control-0001", "ix": 1, "v": still(5)}]}
    return with_nest([solid(1), solid(2)], ef=[one | {"ix": i + 1} for i in range(n)])


def expressions(n):
    """Layers that ask for one another by name."""
    def asks(i):
        return {"a": 0, "k": 100, "x": f"var $bm_rt; $bm_rt = thisComp.layer('layer {(i + 1) % n}').transform.opacity;"}
    return with_nest([solid(i + 1, f"layer {i}", ks=transform(o=asks(i))) for i in range(n)])


def long_expression(n):
    text = "var $bm_rt; $bm_rt = 0" + " + thisComp.layer('a').transform.opacity" * n + ";"
    return with_nest([solid(1, "a", ks=transform(o={"a": 0, "k": 100, "x": text})), solid(2, "b")])


def composition_calls(n):
    """An expression that asks for as many compositions, each by a variable."""
    text = "".join(f"var c{i} = 'comp {i}'; comp(c{i}).layer('a').effect('b');" for i in range(n))
    return with_nest([solid(1, "a", ks=transform(o={"a": 0, "k": 100, "x": text})), solid(2, "b")])


def assets(n):
    """Compositions that nobody shows."""
    return animation([nest(1, "c0")], [composition(f"c{i}", [solid(1)]) for i in range(n)])


def long_name(n):
    return with_nest([solid(1, "x" * n), solid(2)], nm="y" * n)


def brackets(n):
    """Arrays in arrays, in a member that nobody knows."""
    return with_text(with_nest([solid(1, unknown=PLACEHOLDER)]), "[" * n + "]" * n)


KINDS = {make.__name__: make for make in (
    siblings, families, chain, doubling, layers, namesakes, parents, outer_parents, mattes, frames, crowd, fading, covers,
    keyframes, moving_paths, points, shapes, groups, copies, repeaters, masks, nest_masks, effects, expressions,
    long_expression, composition_calls, assets, long_name, brackets)}


def text_of(kind, size):
    made = KINDS[kind](size)
    return made if isinstance(made, str) else compact(made)


def write(kind, size, file):
    """Made by a process of its own, whose memory does not count as that of who asks."""
    with open(file, "w", encoding="utf-8") as stream:
        subprocess.run([sys.executable, __file__, kind, str(size)], stdout=stream, check=True)


def main():
    print(text_of(sys.argv[1], int(sys.argv[2])))


if __name__ == "__main__":
    main()
