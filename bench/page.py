# The page docs/performance.md.
import measure
import projects

HOST, ENGINE, PLUGIN, LIBRARIES = "host", "engine", "plug-in", "libraries"
SHARES = [PLUGIN, ENGINE, HOST, LIBRARIES]


def table(head, rows):
    def line(cells):
        return "| " + " | ".join(str(cell) for cell in cells) + " |"
    return "\n".join([line(head), line(["---"] + ["---:"] * (len(head) - 1)), *map(line, rows)])


def millions(count):
    return f"{count / 1e6:,.1f}"


def animations(results):
    columns = ["read", "read, write unchanged", "un-nest one", "un-nest all of the main composition",
               "un-nest recursively", "simdjson parse"]
    rows = []
    for name, found in results.items():
        dom = found["RapidJSON parse and write"]["total"]
        rows.append([name, f"{found['bytes']:,}", f"{millions(dom)} ({dom / found['bytes']:.0f} a byte)",
                     *(f"{found[column]['total'] / dom:.2f} ×" for column in columns)])
    return table(["Animation", "Bytes", "RapidJSON parse and write, million instructions", *columns], rows)


def without_walks(found):
    """What is left without the plug-in's own code and the host's answers to its walks."""
    return found["total"] - found[PLUGIN] - found["walk"]


SIZES = [100, 1_000, 10_000, 100_000]


def growth(results):
    rows = []
    for family, found in results.items():
        counts = sorted(map(int, found))
        each = {count: found[str(count)]["total"] / count for count in counts}
        cells = dict.fromkeys(SIZES, "–")
        for count in counts:
            size = next(size for size in SIZES if size >= count)
            cells[size] = f"{each[count] / 1000:,.0f}" + ("" if size == count else f" at {count:,}")
        last = max(counts)
        rest, rest_base = (without_walks(found[str(count)]) / count for count in (last, 1_000))
        rows.append([family, *cells.values(), *([f"{each[last] / each[1_000]:.2f} ×", f"{rest / rest_base:.2f} ×"]
                                                if last > 1_000 else ["", ""])])
    return table(["Family", *(f"{size:,}" for size in SIZES), "largest to 1,000", "the same without the walks"], rows)


WALKING = ["nests of ten layers", "depth"]


def walks(results):
    rows = []
    for family in WALKING:
        for count in sorted(map(int, results[family])):
            found = results[family][str(count)]
            rows.append([f"{family}, {count:,}", f"{found['walk calls'] / count:,.0f}",
                         f"{found['walk'] / found['walk calls']:.0f}", f"{found['walk'] / count / 1000:,.0f}",
                         f"{found[PLUGIN] / count / 1000:,.0f}", f"{without_walks(found) / count / 1000:,.0f}"])
    return table(["Project", "steps a layer", "host's instructions a step", "host's for the steps, thousand a layer",
                  "plug-in's own, thousand a layer", "all else, thousand a layer"], rows)


def shares(animations_found, growth_found):
    def row(name, found):
        total = found["total"]
        return [name, millions(total), *(f"{100 * found.get(share, 0) / total:.1f} %" for share in SHARES)]
    rows = [row(f"{name}, all nests", found["un-nest all of the main composition"])
            for name, found in animations_found.items()]
    for family, found in growth_found.items():
        count = max(map(int, found))
        rows.append(row(f"{family}, {count:,}", found[str(count)]))
    return table(["Run", "Million instructions", *SHARES], rows)


def clock(results):
    own = results["exflate run"]["seconds"]
    rows = [[name, f"{1000 * found['seconds']:.0f} ms", f"{own / found['seconds']:.2f} ×"]
            for name, found in results.items()]
    return table(["Process", "On the clock", "exflate run takes of it"], rows)


def memory(results):
    nothing = results["nothing at all"]["megabytes"]
    rows = []
    for name, found in results.items():
        if name == "nothing at all":
            continue
        size = found["input"] / 2**20
        layers = f", {found['layers']:,} layers" if name in projects.FAMILIES else ""
        rows.append([name + layers, f"{size:.1f}", f"{found['output'] / 2**20:.1f}", f"{found['megabytes']:.1f}",
                     f"{found['megabytes'] / size:.1f} ×", f"{found['processor']:.2f} s",
                     f"{1e6 * found['processor'] / found['layers']:.0f} µs" if "layers" in found else ""])
    return nothing, table(["Run", "Input, MiB", "Output, MiB", "Peak, MiB", "Peak to input", "Processor's time", "a layer"],
                          rows)


def text(results, toolchain):
    nothing, memory_table = memory(results["memory"])
    start = results["start"]
    return f"""# Performance

Made by `bench/performance`; `bench/README.md` says how. Instructions are counted by callgrind and hold for one compiler and
processor; what counts are the ratios, which were taken in one run.

## Instructions on real animations

The largest animations of the npm package lottie-web. Each process reads the file, does its work, writes the result and ends;
× is in relation to the process that reads the same file into RapidJSON's document and writes it again.

{animations(results["animations"])}

`read` and `simdjson parse` are the reading alone. What was not touched is never parsed twice, nor copied: long unchanged
stretches go from the text that was read to the file, and numbers keep their spelling.

## Growth

Generated projects of one nest with N layers, plain or with parents, keyframes or expressions that name another layer, or with
effects on the nest; of N / 10 nests with ten layers each; and of N levels, un-nested recursively. Thousands of instructions for
each layer that comes out (for depth, each level). The largest N is counted by `bench/performance --largest` alone.

{growth(results["growth"])}

Two families cannot be in proportion, because the plug-in's own calls are not. For each nest it asks all selected layers for
their places (`AEGP_GetNewCollectionFromCompSelection`, `AEGP_GetCollectionItemByIndex`, `AEGP_GetLayerIndex`), and to write a
composition's number into a script it walks all items from the first one (`AEGP_GetNextProjItem`, `AEGP_GetItemID`), once or twice
for each nest and once for each layer without a parent where the composition is not selected. With N nests these are walks of
N² / 2 steps and more. The host answers each step with as many instructions in a large project as in a small one, or nearly (a
layer's place is looked up in a tree), and all that is not steps stays in proportion. The walks are part of the work that one
file may make ([limits.md](limits.md)): {results["memory"]["nests of ten layers"]["layers"]:,} layers and {results["memory"]["depth"]["layers"]:,} levels are within that bound and are the largest here; 100,000 layers in nests of ten
and 10,000 levels are beyond it, and `run` refuses them.

{walks(results["growth"])}

## Whose instructions

By whose code they are in: the plug-in's module, the script engine with the scripting model, the rest of the host, and the
shared libraries (mostly memory and text functions that the others call).

{shares(results["animations"], results["growth"])}

## Starting

`{start["file"]}.json`, {start["bytes"]:,} bytes, with one nest: the run takes {millions(start["run"])} million instructions from the
process's start to its end, {start["run"] / start["least"]:.1f} × those of a process that only loads the module and parses the file
({millions(start["least"])} million). On the clock {1000 * start["seconds"]["run"]:.0f} ms and {1000 * start["seconds"]["least"]:.0f} ms.

## On the clock

monster.json from the process's start to its end, output thrown away; the best of eleven, taking turns.

{clock(results["clock"])}

## Memory, and time of the largest projects

A process that does nothing has {nothing:.1f} MiB, most of them pages of the program and its libraries. Of large files it is
the layers that count, not the bytes: with layers of 230 bytes that all come out of their nest, the result alone is twice the
input, and beside it stand the text, the script with four statements for each layer that the plug-in writes, each layer as two
objects (in its nest and copied) with a source, and the transforms that clearing a parent in place has to read.
{memory_floor(results["memory"])}

{memory_table}

## The toolchain

{table(["What", "Which"], [[name, value or "–"] for name, value in toolchain.items()])}
"""


def memory_floor(results):
    plain = results["one nest"]
    per_layer = (plain["megabytes"] - results["nothing at all"]["megabytes"]) * 2**20 / plain["layers"]
    return f"That is {per_layer / 1024:.1f} KiB for each layer that comes out."
