#!/usr/bin/env python3
"""Writes the inputs that fuzzing starts from: small pieces of the example animations, and a few small texts.

usage: make_seeds.py EXAMPLES FOLDER     makes FOLDER/<harness>/
"""
import copy
import gzip
import io
import json
import pathlib
import sys
import zipfile


def text(value):
    return json.dumps(value, separators=(",", ":")).encode()


def transform():
    return {"o": {"a": 0, "k": 100}, "p": {"a": 0, "k": [1, 2, 0]}, "a": {"a": 0, "k": [0, 0, 0]},
            "s": {"a": 0, "k": [100, 100, 100]}, "r": {"a": 0, "k": 0}}


def layer(ind, kind, **members):
    return {"ind": ind, "ty": kind, "nm": f"L{ind}", "ks": transform(), "ip": 0, "op": 9, "st": 0, **members}


def animation(layers, assets=()):
    return {"v": "5.9.6", "fr": 30, "ip": 0, "op": 9, "w": 8, "h": 6, "nm": "M", "assets": list(assets),
            "layers": list(layers)}


def small_animations():
    keys = {"a": 1, "k": [{"t": 0, "s": [1, 2, 0], "o": {"x": 0.3, "y": 0}, "i": {"x": 0.7, "y": 1}, "to": [1, 0, 0],
                           "ti": [0, 1, 0]}, {"t": 4.5, "s": [3, 4, 0]}], "x": "time"}
    moving = transform() | {"p": keys}
    separated = transform() | {"p": {"s": True, "x": {"a": 1, "k": [{"t": 1, "s": [2]}, {"t": 3, "s": [4], "h": 1}]},
                                     "y": {"a": 0, "k": 1}}}
    effect = {"ty": 5, "nm": "E", "mn": "ADBE Slider Control", "ix": 1, "en": 1, "ef": [
        {"ty": 0, "nm": "S", "mn": "ADBE Slider Control-0001", "ix": 1, "v": {"a": 0, "k": 7}},
        {"ty": 10, "nm": "L", "mn": "ADBE Layer Control-0001", "ix": 2, "v": {"a": 0, "k": 1}},
        {"ty": 2, "nm": "C", "ix": 3, "v": {"a": 0, "k": [1, 0, 0, 1]}}, {"ty": 3, "nm": "P", "v": {"a": 0, "k": [1, 2]}}]}
    nested = [{"id": "n", "nm": "N", "layers": [layer(1, 4, shapes=[])]}]
    yield "empty", animation([])
    yield "nest", animation([layer(1, 0, refId="n", w=8, h=6, tm=keys), layer(2, 4, shapes=[], parent=1)], nested)
    yield "matte", animation([layer(1, 4, td=1), layer(2, 1, tt=1, tp=1, sw=8, sh=6, sc="#ff0000"), layer(3, 3, hd=True)])
    yield "keys", animation([layer(1, 4, ks=moving, ddd=1, ao=1, bm=3, sr=2)])
    yield "separated", animation([layer(1, 4, ks=separated)])
    yield "effects", animation([layer(1, 2, refId="i", ef=[effect])], [{"id": "i", "w": 1, "h": 1, "p": "i.png"}])
    yield "text", animation([layer(7, 5, t={"d": {"k": []}}), layer(9, 13, pe={"a": 0, "k": 1})])
    yield "masks", animation([layer(1, 4, hasMask=True, masksProperties=[
        {"mode": "a", "pt": {"a": 0, "k": {"i": [[0, 0]], "o": [[0, 0]], "v": [[0, 0]], "c": True}}, "o": {"a": 0, "k": 100}}])])


def pieces(whole):
    """Each layer of an animation alone, and each of its compositions as the main one."""
    for number, one in enumerate(whole["layers"]):
        part = whole | {"layers": [one], "assets": [a for a in whole["assets"] if a["id"] == one.get("refId")]}
        used = [inner.get("refId") for asset in part["assets"] for inner in asset.get("layers", [])]
        part["assets"] = part["assets"] + [a for a in whole["assets"] if a["id"] in used]
        yield f"layer{number}", part
    for asset in whole["assets"]:
        for number, one in enumerate(asset.get("layers", [])):
            plain = {key: value for key, value in copy.deepcopy(one).items() if key not in ("refId", "parent", "tt", "td", "tp")}
            if plain["ty"] != 0:
                yield f"{asset['id']}{number}", animation([plain])


def dialog_results():
    yield "ok", b'[true,false,false,"",false,false]'
    yield "all", b'[true,true,true,"prefix",true,true]'
    yield "discard", b'[false,true,false,"\xc3\xa4\\"\\u0041",true,false]'
    yield "longest", b'[true,false,false,"' + 50 * b"x" + b'",false,false]'
    yield "too_long", b'[true,false,false,"' + 51 * b"x" + b'",false,false]'
    yield "nested", b'[true,[],{},"",[1],null]'
    yield "cancel", b""


def settings():
    yield "header", b'# Settings\n\n["corvane.exflate"]\n"copyAttributes" = "true"\n"prefix" = "a\\"b\\\\c\\x0a"\n'
    yield "two", b'["a"]\n"k" = "v"\n["b"]\n\t"k" = ""\r\n'
    yield "empty", b""


def journals():
    whole = (b'plug-in journal 1\nsession("film.json")\nenter entry_point(1, "Any", 114, 0)\n'
             b'call 1 SPBasicSuite.AcquireSuite("AEGP Memory Suite", 1, out)\ndone 1 = 0 (table)\n'
             b'call 2 MemorySuite1.AEGP_LockMemHandle(mem#1, out)\nmemory(mem#1, "abc\\0")\ndone 2 = 0 (mem#1)\n'
             b'wrote(mem#1, L"x\\0")\ncall 3 LayerSuite5.AEGP_DeleteLayer(null)\ndone 3 = 3 injected ()\n'
             b'leave entry_point = 3 (refcon#1)\nend\n')
    yield "whole", whole
    yield "cut", whole[:150]
    yield "values", b'plug-in journal 1\nsession("f")\nenter command_hook({num: 1, den: 2}, [1, 2.5], L"a")\nend\n'


def whole_runs():
    """A byte of choices, then prefix, effect, nest, two layers, two expressions, two compositions."""
    def fields(choices, *texts):
        return bytes([choices]) + b"".join(one + b"\x1f" for one in texts)
    yield "plain", fields(0x01, b"", b"E", b"nest", b"a", b"b", b"time", b"wiggle(1,2)", b"inner", b"outer")
    yield "renamed", fields(0x1b, b"fx", b"E", b"nest", b"a", b"b", b'thisComp.layer("b").transform.rotation',
                            b"thisComp.layer('a')", b"inner", b"outer")
    yield "discard", fields(0x16, b"p", b"", b"\xc3\xa4\xf0\x9f\x98\x80", b'"', b"\\", b'comp("inner").layer("a")', b"", b"", b"")
    yield "script", fields(0x09, b"", b"E", b'");app.project.item(1).remove();//', b'");app.beginUndoGroup("x");//',
                           b'");app.project.item(1).layer(1).name="x";//', b"", b"", b"inner", b"outer")
    yield "long", fields(0x0b, 50 * b"p", b"E", 40 * b"n", 300 * b"a", b"b", 100 * b"x", b"", b"i", b"o")


def archives():
    def zipped(*entries):
        stream = io.BytesIO()
        with zipfile.ZipFile(stream, "w", zipfile.ZIP_DEFLATED) as archive:
            for name, content in entries:
                archive.writestr(zipfile.ZipInfo(name), content)
        return stream.getvalue()
    yield "second", zipped(("manifest.json", '{"version":"2","animations":[{"id":"x"},{"id":"y"}]}'), ("a/x.json", "{}"),
                           ("a/y.json", "{}"), ("i/p.png", "PNG"))
    yield "first", zipped(("manifest.json", '{"animations":[{"id":"x"}]}'), ("animations/x.json", "{}"))
    yield "empty", zipped()
    yield "sticker", gzip.compress(b"{}", mtime=0)
    yield "header", b"\x1f\x8b\x08\x1c" + bytes(6) + b"\2\0ABname\0comment\0" + gzip.compress(b"{}", mtime=0)[10:]


def write(folder, seeds):
    folder.mkdir(parents=True, exist_ok=True)
    for name, content in seeds:
        (folder / name).write_bytes(content)


def main():
    examples, folder = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    whole = json.loads((examples / "lift_off.json").read_text(encoding="utf-8"))
    write(folder / "archive", archives())
    write(folder / "lottie", ((name, text(value)) for name, value in [*small_animations(), *pieces(whole)]))
    write(folder / "dialog_result", dialog_results())
    write(folder / "settings", settings())
    write(folder / "journal", journals())
    write(folder / "whole_run", whole_runs())


if __name__ == "__main__":
    main()
