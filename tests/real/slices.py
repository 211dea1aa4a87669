"""Where the layers of an animation stand in its text."""
import json

SPACE = " \t\r\n"
DECODER = json.JSONDecoder(parse_float=str, parse_int=str)


def parse(text):
    """The document with every number as its text."""
    return DECODER.decode(text.lstrip("\ufeff"))


def compositions(document):
    """Composition objects by asset id; the main one is None."""
    found = {None: document}
    for asset in document.get("assets", []):
        if "layers" in asset:
            found[asset["id"]] = asset
    return found


def skip_space(text, at):
    while text[at] in SPACE:
        at += 1
    return at


def members(text, at):
    """Yields (key, start, end) for the members of the object that begins at `at`."""
    at = skip_space(text, at + 1)
    while text[at] != "}":
        key, at = DECODER.raw_decode(text, at)
        at = skip_space(text, skip_space(text, at) + 1)
        _, end = DECODER.raw_decode(text, at)
        yield key, at, end
        at = skip_space(text, end)
        if text[at] == ",":
            at = skip_space(text, at + 1)


def elements(text, at):
    """Yields (start, end) for the elements of the array that begins at `at`."""
    at = skip_space(text, at + 1)
    while text[at] != "]":
        _, end = DECODER.raw_decode(text, at)
        yield at, end
        at = skip_space(text, end)
        if text[at] == ",":
            at = skip_space(text, at + 1)


def layers_of(text, at):
    """The texts of the layers of the composition object that begins at `at`; None if it is not a composition."""
    for key, start, _ in members(text, at):
        if key == "layers":
            return [text[s:e] for s, e in elements(text, start)]
    return None


def layer_slices(text):
    """The texts of all layers, by composition as `compositions` names them."""
    start = skip_space(text, text.startswith("\ufeff"))
    found = {None: layers_of(text, start)}
    for key, at, _ in members(text, start):
        if key != "assets":
            continue
        for asset, end in elements(text, at):
            layers = layers_of(text, asset)
            if layers is not None:
                found[json.loads(text[asset:end])["id"]] = layers
    return found
