"""What the command is asked to do with odd files, in the worst of circumstances: each case by itself in a folder."""
import dataclasses
import os
import pathlib
import resource
import typing
import zipfile

import bombs
from bombs import animation, composition, layer, nest, solid, still, transform, with_nest

MEGABYTE = 1 << 20


@dataclasses.dataclass
class Case:
    name: str
    arguments: list  # of the command; the input is always a.json
    code: int  # what it has to end with
    says: str  # and to say
    make: typing.Callable[[pathlib.Path], None]  # fills the folder
    test: str = ""  # that guards it, beside the test of this table
    environment: dict = dataclasses.field(default_factory=dict)  # "{folder}" stands for the case's
    options: dict = dataclasses.field(default_factory=dict)  # of limited_run.run
    is_fed: bool = False  # a.json is a pipe, and gets zeros without end
    holds: typing.Callable[[pathlib.Path], bool] = lambda folder: True  # afterwards


def text(made):
    """Writes that animation."""
    return lambda folder: (folder / "a.json").write_text(bombs.compact(made))


def bomb(kind, size):
    return lambda folder: bombs.write(kind, size, folder / "a.json")


def move(begin, end, at=9, ease=0):
    """From one position to another."""
    return transform(p={"a": 1, "k": [{"t": 0, "s": begin, "i": {"x": 0.7, "y": 1}, "o": {"x": 0.3, "y": ease}}, {"t": at, "s": end}]})


def eased(value):
    return with_nest([solid(1)], ks=move([0, 0, 0], [5, 5, 0], ease=value))


HUGE = [1.7e308, 1.7e308, 100]
EDGES = "Oddities.an_edge_out_of_range_keeps_its_bytes_and_moves_with_its_layer"
PLACEHOLDERS = "Oddities.a_layer_whose_composition_is_missing_is_an_empty_placeholder"
NUMBERS = "RunInput.numbers_that_cannot_be_represented_are_bad_input_to_every_command"


def number(name, made, says, code=3, test=NUMBERS):
    return Case(name, ["run", "a.json"], code, says, text(made), test)


def taken(name, made, says="", test="Oddities.an_animation_without_nests_passes_unchanged_whatever_is_odd_in_it"):
    return number(name, made, says, 0, test)


def numbers():
    return [
        number("an ease whose speed is infinite", eased(1e308), "the easing of a keyframe"),
        number("an ease of 1e300", eased(1e300), "the easing of a keyframe"),
        number("values 1e308 apart", with_nest([solid(1)], ks=move([-1e308, 0, 0], [1e308, 0, 0])), "the easing of a keyframe"),
        number("a stretch of 1e-300", with_nest([solid(1)], sr=1e-300), '"sr"'),
        number("a scale that comes to infinity", with_nest([solid(1, ks=transform(s=still(HUGE)))], ks=transform(s=still(HUGE))),
               "not finite"),
        number("a position that comes to infinity",
               with_nest([solid(1, ks=transform(p=still([1.7e308, 0, 0])))], ks=transform(s=still([1e9, 100, 100]))), "not finite"),
        number("a keyframe at frame 1e9", with_nest([solid(1)], ks=move([0, 0, 0], [5, 5, 0], at=1e9)), "the time of a keyframe"),
        number("a start at frame 1e300", with_nest([solid(1)], st=1e300), '"st"'),
        taken("a layer that ends at frame 1e6", with_nest([solid(1, op=1e6)]), test=EDGES),
        taken("a nest that ends at frame 1e300", animation([nest(1, "c", op=1e300)], [composition("c", [solid(1)])]), test=EDGES),
        taken("no composition of that id", animation([nest(1, "gone")]), "does not exist", PLACEHOLDERS),
        taken("an image shown as a composition", animation([nest(1, "i")], [{"id": "i", "p": "i.png", "w": 9, "h": 9}]), "does not exist",
              PLACEHOLDERS),
        taken("no nest, two layers of one number", animation([solid(1), solid(1)]), "it stays as it is"),
        taken("no nest, parents in a circle", animation([solid(1, parent=2), solid(2, parent=1)]), "it stays as it is"),
        taken("no nest, a start at frame 1e300", animation([solid(1, st=1e300)]), "it stays as it is")]


def work():
    """Small files that ask for much, in the ways that once took for ever."""
    def asks(kind, size, command, code, says=""):
        return Case(f"{kind} {size:,}", [*command.split(), "a.json"], code, says, bomb(kind, size))

    budget = "this takes more work than one file may make"
    return [
        asks("doubling", 16, "check", 0),
        asks("doubling", 40, "check", 0),
        asks("doubling", 40, "report --picture-time 5", 0),
        asks("doubling", 40, "run --only-exact", 0),
        asks("doubling", 40, "run --strict", 0),
        asks("doubling", 40, "run --max-growth 10", 0),
        asks("doubling", 40, "run --recursive --max-growth 10", 0),
        asks("siblings", 5_000, "check", 3, budget),
        asks("siblings", 20_000, "run", 3, budget),
        asks("parents", 20_000, "check", 1),
        asks("outer_parents", 20_000, "check", 0),
        asks("chain", 50_000, "run --recursive", 3, budget),
        asks("effects", 20_000, "run", 0),
        asks("copies", 1_000_000_000, "check --prove --picture-time 5", 0),
        asks("frames", 400_000, "check --prove --picture-time 5", 1)]


def flat(folder):
    text(with_nest([solid(1)]))(folder)


def is_as_it_was(folder):
    """The input, and nothing was left beside it."""
    return [file.name for file in folder.iterdir()] == ["a.json"] and '"ty":0' in (folder / "a.json").read_text()


def is_flat(folder):
    return '"ty":0' not in (folder / "a.json").read_text()


def foreign(module, name, deed, code, says, *more, test="that_crashes_or_exits_ends_every_command_with_a_sentence"):
    """The test's plug-in does what the first layer's name says."""
    made = animation([solid(1, deed), nest(2, "c")], [composition("c", [solid(1)])])
    return Case(name, ["run", "a.json", *more], code, says, text(made), f"ForeignPlugin.{test}",
                environment={"EXFLATE_PLUGIN": module})


def with_link(folder):
    flat(folder)
    (folder / "link").symlink_to("flat.json")


def read_only(folder):
    flat(folder)
    (folder / "a.json").chmod(0o444)


def with_hard_link(folder):
    flat(folder)
    os.link(folder / "a.json", folder / "b.json")


def endless_settings(folder):
    flat(folder)
    (folder / "exflate").mkdir()
    (folder / "exflate" / "settings").symlink_to("/dev/zero")


def with_state_machine(folder):
    machine = {"initial": "idle", "states": [{"name": "idle", "type": "PlaybackState", "animation": "x"}],
               "interactions": [{"type": "PointerDown", "layerName": "nest", "actions": []}]}
    with zipfile.ZipFile(folder / "a.lottie", "w") as archive:
        manifest = {"version": "2", "animations": [{"id": "x"}], "stateMachines": [{"id": "m"}]}
        archive.writestr("manifest.json", bombs.compact(manifest))
        archive.writestr("a/x.json", bombs.compact(with_nest([solid(1)])))
        archive.writestr("s/m.json", bombs.compact(machine))


def under_an_odd_name(folder):
    flat(folder)
    (folder / "a.json").rename(folder / "\x1b[31m\u202e.json")


def files(module):
    """Files, devices and a plug-in of somebody else's; `module` is the tests' ends_early.so."""
    in_place = ["run", "-i", "a.json"]
    device = ["run", "/dev/zero"]
    name = "\x1b[31m\u202e.json"
    return [
        Case("a pipe without end", ["run", "a.json"], 3, "a.json", lambda folder: os.mkfifo(folder / "a.json"),
             "Files.without_end_are_refused_before_memory_is_gone", is_fed=True),
        Case("a device without end", device, 3, "/dev/zero", lambda folder: None, "Files.without_end_are_refused_before_memory_is_gone"),
        Case("a settings file without end", ["run", "a.json"], 0, "it is not a regular file", endless_settings,
             "Files.without_end_are_refused_before_memory_is_gone", environment={"XDG_CONFIG_HOME": "{folder}"}),
        Case("130 MB within 300 MB of memory", ["run", "a.json"], 4, "there is not enough memory for it", bomb("long_name", 65_000_000),
             "RunOutput.running_out_of_memory_is_reported_in_one_sentence", options={"address_space": 300 << 20}),
        Case("a standard output that is full", ["run", "a.json"], 4, "standard output cannot be written", flat,
             "RunOutput.a_full_standard_output_is_an_error", options={"output": "/dev/full"}, holds=is_as_it_was),
        Case("a result beyond the limit of file sizes", in_place, 4, "cannot be written: File too large", flat,
             "RunOutput.a_full_disk_leaves_only_the_old_file", options={"largest": 500}, holds=is_as_it_was),
        Case("a journal that becomes the result's file", ["run", "a.json", "-o", "flat.json", "--journal", "link"], 2,
             "the journal would overwrite 'flat.json'", with_link, "Journal.never_becomes_the_file_of_a_result_that_is_not_there_yet",
             holds=lambda folder: not (folder / "flat.json").exists()),
        Case("standard output closed, with a journal", ["run", "a.json", "--journal", "j"], 4, "standard output cannot be written", flat,
             "Journal.never_takes_the_place_of_a_closed_standard_output", options={"output": None},
             holds=lambda folder: '"layers"' not in (folder / "j").read_text()),
        Case("a read-only file in place", in_place, 4, "it is read-only", read_only,
             "RunOutput.a_read_only_file_is_replaced_only_with_force", holds=is_as_it_was),
        Case("the same with --force", [*in_place, "--force"], 0, "", read_only, "RunOutput.a_read_only_file_is_replaced_only_with_force",
             holds=is_flat),
        Case("a file with another hard link in place", in_place, 0, "is a file of its own now", with_hard_link,
             "RunOutput.a_hard_link_that_is_split_gets_a_warning", holds=is_flat),
        Case("a name of a file with control characters", ["run", name, "-o", "b.json"], 0, "\\u001B[31m\\u202E.json", under_an_odd_name,
             "RawBytes.never_reach_a_terminal"),
        foreign(module, "a plug-in that crashes", "crash", 4, "crashed (Aborted)"),
        foreign(module, "one that ends the program with 0", "leave", 4, "ended the program with code 0"),
        foreign(module, "one that never ends", "compute", 4, "took too much of the processor's time", "--script-time", "0.5",
                test="that_never_ends_is_ended"),
        Case("a state machine that names the nest", ["check", "a.lottie"], 1, "", with_state_machine,
             "tests/packed/lottie_test.py")]


# What no exit code shows, and the tests that do.
HELD = [
    ("after TERM, INT, HUP or KILL no process goes on and no file is replaced", "tests/cli/left_behind.py"),
    ("an expression in the page of `report` reaches no network; one without end freezes no more than its frame",
     "tests/report/report_page_test.mjs"),
    ("the renderer opens no file that an animation names", "DrawingProcess.opens_no_file_that_an_animation_names"),
    ("all pictures of a file share one budget of time", "DrawingProcess.all_processes_share_the_budget_of_time"),
    ("the drawing child has a limit of memory", "DrawingProcess.memory_without_end_is_refused_and_one_sentence_says_so"),
    ("a plug-in that crashes in `replay` is told of", "Journal.shows_a_crash_that_was_not_recorded"),
    ("results, reports and packed files on a full disk are refused and leave nothing behind", "tests/cli/full_disk.py"),
    ("`-i` keeps extended attributes and access lists", "Files.keep_extended_attributes_and_access_lists"),
    ("state machines and themes are rewritten with the layers that they name", "tests/packed/lottie_test.py")]
