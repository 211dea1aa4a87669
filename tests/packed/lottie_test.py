#!/usr/bin/env python3
"""What the command does with .lottie files, made and read again with Python's own zip library."""
import gzip
import io
import json
import os
import pathlib
import re
import struct
import unittest
import warnings
import zipfile

from sandbox import Sandbox, animation, layer_names

PICTURE = bytes(range(256)) * 40


def manifest(*ids, version="2", **members):
    return json.dumps({"version": version, "generator": "a test", "animations": [{"id": one} for one in ids], **members})


def entry(name, method=zipfile.ZIP_DEFLATED, time=(2019, 7, 14, 9, 26, 54), comment=b"", mode=0o100644):
    info = zipfile.ZipInfo(name, time)
    info.compress_type = method
    info.comment = comment
    info.external_attr = mode << 16
    return info


def packed(*entries, comment=b"", level=6):
    """An archive of (name or ZipInfo, content) in that order."""
    stream = io.BytesIO()
    with warnings.catch_warnings(), zipfile.ZipFile(stream, "w", zipfile.ZIP_DEFLATED, compresslevel=level) as archive:
        warnings.simplefilter("ignore")  # of names that come twice
        for name, content in entries:
            # A name alone would be stamped with the time of the test.
            archive.writestr(entry(name) if isinstance(name, str) else name, content, compresslevel=level)
        archive.comment = comment
    return stream.getvalue()


def one_animation(text=None, **members):
    return packed(("manifest.json", manifest("x", **members)), ("a/x.json", text or animation()))


def several():
    """Two animations among everything else that such an archive holds."""
    return packed(
        (entry("manifest.json", zipfile.ZIP_STORED), manifest("one", "two", themes=[{"id": "dark"}])),
        (entry("i/picture.png", zipfile.ZIP_STORED, comment=b"a picture"), PICTURE),
        (entry("a/one.json", time=(1999, 12, 31, 23, 59, 58), comment=b"the first", mode=0o100600), animation("First")),
        ("t/dark.json", '{"rules":[]}'),
        (entry("a/two.json", zipfile.ZIP_STORED), animation("Second", "Deep")),
        ("s/machine.json", '{"initial":"one"}'),
        (entry("empty folder/", zipfile.ZIP_STORED), b""),
        comment=b"of the whole")


def interactive(layer, text=None):
    """One animation and a state machine that reacts to a layer of that name."""
    machine = {"initial": "idle", "states": [{"name": "idle", "type": "PlaybackState", "animation": "x"}],
               "interactions": [{"type": "PointerDown", "layerName": layer, "actions": [{"type": "Fire", "inputName": layer}]}],
               "speed": 1.50}
    return packed(("manifest.json", manifest("x", stateMachines=[{"id": "m"}])), ("a/x.json", text or animation()),
                  ("s/m.json", json.dumps(machine)), ("s/broken.json", "{"), ("t/dark.json", '{"rules":[{"id":"colour"}]}'))


class Pipe:
    """Cannot be gone back in, so the sizes of an entry come after it."""

    def __init__(self):
        self.written = bytearray()

    def write(self, data):
        self.written += data
        return len(data)

    def flush(self):
        pass


def opened(content):
    return zipfile.ZipFile(io.BytesIO(content))


def raw_entry(content, info):
    """The packed bytes."""
    name, extra = struct.unpack("<HH", content[info.header_offset + 26:info.header_offset + 30])
    start = info.header_offset + 30 + name + extra
    return content[start:start + info.compress_size]


def facts(info):
    return {name: getattr(info, name) for name in
            ("filename", "date_time", "compress_type", "comment", "external_attr", "create_system")}


class RoundTrip(Sandbox):
    def test_every_animation_is_worked_on_and_everything_else_keeps_its_packed_bytes(self):
        before = several()
        done = self.exflate("-i", self.write("a.lottie", before))
        self.assertEqual(done.returncode, 0, done.err)
        after = self.read("a.lottie")
        old, new = opened(before), opened(after)
        self.assertIsNone(new.testzip())
        self.assertEqual(new.namelist(), old.namelist())
        self.assertEqual(new.comment, b"of the whole")
        for was, now in zip(old.infolist(), new.infolist()):
            self.assertEqual(facts(now), facts(was))
            if now.filename not in ("a/one.json", "a/two.json"):
                self.assertEqual(raw_entry(after, now), raw_entry(before, was), now.filename)
        for name in ("a/one.json", "a/two.json"):
            self.assertEqual(layer_names(new.read(name)), ["Title", "circle", "square"])
        self.assertRegex(done.err, r'a\.lottie:a/one\.json: 1 nest of composition "Main" un-nested, 2 layers made, .*\n'
                                   r'a\.lottie:a/two\.json: 1 nest .*\n'
                                   r'a\.lottie: packed, \d+ bytes became \d+ \(.* %\); written to a\.lottie\n')

    def test_an_animation_is_the_one_that_the_plain_file_gives(self):
        plain = self.exflate("-", given=animation().encode()).stdout
        for text in (animation(), animation().encode()):
            result = self.exflate("-", given=one_animation(text)).stdout
            self.assertEqual(opened(result).read("a/x.json"), plain)

    def test_equal_input_gives_equal_bytes_through_files_and_pipes(self):
        self.write("a.lottie", several())
        self.exflate("a.lottie", "-o", "b.lottie")
        self.exflate("a.lottie", "--out-dir", "there")
        piped = self.exflate("-", given=several())
        self.assertEqual(self.read("b.lottie"), piped.stdout)
        self.assertEqual(self.read("there/a.lottie"), piped.stdout)
        self.assertIn("standard input:a/one.json: 1 nest", piped.err)

    def test_an_archive_is_known_by_its_content_whatever_its_name(self):
        self.assertEqual(self.exflate("-i", self.write("a.json", one_animation())).returncode, 0)
        self.assertEqual(opened(self.read("a.json")).namelist(), ["manifest.json", "a/x.json"])
        self.assertEqual(self.exflate("-i", self.write("b.lottie", animation().encode())).returncode, 0)
        self.assertEqual(layer_names(self.read("b.lottie")), ["Title", "circle", "square"])

    def test_without_a_nest_the_very_bytes_stay(self):
        for content, arguments in ((one_animation(animation(nest_name=None)), []),
                                   (several(), ["--animation", "one", "--comp", "Inside"])):
            done = self.exflate("-", *arguments, given=content)
            self.assertEqual(done.returncode, 0, done.err)
            self.assertEqual(done.stdout, content)
            self.assertIn("nothing to do", done.err)

    def test_the_first_version_has_its_own_folders(self):
        for version in ("1.0", "1", 1.0, "any", None):
            content = packed(("manifest.json", manifest("x", version=version)), ("animations/x.json", animation()),
                             ("a/x.json", "not the one"))
            done = self.exflate("-", given=content)
            self.assertEqual(done.returncode, 0, done.err)
            self.assertEqual(opened(done.stdout).read("a/x.json"), b"not the one")
        for version in ("2", "2.0", 2):
            content = packed(("manifest.json", manifest("x", version=version)), ("a/x.json", animation()),
                             ("animations/x.json", "not the one"))
            done = self.exflate("-", given=content)
            self.assertEqual(done.returncode, 0, done.err)
        crossed = packed(("manifest.json", manifest("x", version="2")), ("animations/x.json", animation()))
        self.assertEqual(self.exflate("-", given=crossed).returncode, 0)

    def test_archives_that_were_written_as_streams_are_taken(self):
        stream = Pipe()
        with zipfile.ZipFile(stream, "w", zipfile.ZIP_DEFLATED) as archive:
            for name, one in (("manifest.json", manifest("x")), ("i/p.png", PICTURE), ("a/x.json", animation())):
                archive.writestr(entry(name), one)
        content = bytes(stream.written)
        self.assertEqual(opened(content).infolist()[0].flag_bits & 8, 8)
        done = self.exflate("-", given=content)
        self.assertEqual(done.returncode, 0, done.err)
        result = opened(done.stdout)
        self.assertIsNone(result.testzip())
        self.assertEqual(result.read("i/p.png"), PICTURE)
        self.assertEqual(raw_entry(done.stdout, result.getinfo("i/p.png")), raw_entry(content, opened(content).getinfo("i/p.png")))

    def test_names_beyond_ascii_and_fields_of_other_programs_stay(self):
        info = entry("i/büste.png")
        info.extra = struct.pack("<HHB4s", 0x5455, 5, 1, b"\1\2\3\4")
        done = self.exflate("-", given=packed(("manifest.json", manifest("é")), (info, PICTURE), ("a/é.json", animation())))
        self.assertEqual(done.returncode, 0, done.err)
        result = opened(done.stdout)
        self.assertEqual(result.namelist(), ["manifest.json", "i/büste.png", "a/é.json"])
        self.assertIn(info.extra, result.getinfo("i/büste.png").extra)
        self.assertIn("standard input:a/é.json: ", done.err)


class RealAnimations(Sandbox):
    def test_each_comes_out_as_from_its_plain_file(self):
        folder = os.environ["REAL_ANIMATIONS"]
        files = sorted(pathlib.Path(folder).glob("*.json"), key=lambda file: file.stat().st_size)
        self.assertGreater(len(files), 10)
        files = files if os.environ.get("EXFLATE_ARCHIVE") == "full" else files[:6]
        texts = {file.stem: file.read_bytes() for file in files}
        content = packed(("manifest.json", manifest(*texts)), *((f"a/{name}.json", text) for name, text in texts.items()))
        done = self.exflate("-", given=content)
        self.assertEqual(done.returncode, 0, done.err)
        self.assertGreater(done.err.count(" un-nested, "), 2)
        result = opened(done.stdout)
        self.assertIsNone(result.testzip())
        for name, text in texts.items():
            plain = self.exflate("-", given=text)
            self.assertEqual(plain.returncode, 0, plain.err)
            self.assertEqual(result.read(f"a/{name}.json"), plain.stdout, name)
            sticker = self.exflate("-", given=gzip.compress(text))
            self.assertEqual(gzip.decompress(sticker.stdout), plain.stdout, name)


class Selection(Sandbox):
    def test_one_animation_can_be_chosen_and_the_others_stay(self):
        done = self.exflate("-", "--animation", "two", given=several())
        self.assertEqual(done.returncode, 0, done.err)
        result = opened(done.stdout)
        self.assertEqual(layer_names(result.read("a/two.json")), ["Title", "circle", "square"])
        self.assertEqual(raw_entry(done.stdout, result.getinfo("a/one.json")),
                         raw_entry(several(), opened(several()).getinfo("a/one.json")))
        self.assertNotIn("one.json", done.err)

    def test_an_unknown_animation_is_told_with_near_ones(self):
        done = self.exflate("-", "--animation", "tow", given=several())
        self.assertEqual(done.returncode, 2)
        self.assertEqual(done.err, 'standard input: there is no animation "tow"; did you mean "two"? (exflate list shows '
                                   "them all)\n")
        plain = self.exflate("-", "--animation", "two", given=animation().encode())
        self.assertEqual(plain.returncode, 2)
        self.assertEqual(plain.err, "standard input: is not a .lottie file: leave out --animation\n")

    def test_animations_that_lack_what_is_named_are_passed_over(self):
        for arguments in (["--layer", "Second"], ["--layer", "Second", "--strict"]):
            done = self.exflate("-", *arguments, given=several())
            self.assertEqual(done.returncode, 0, done.err)
            self.assertEqual(layer_names(opened(done.stdout).read("a/one.json")), ["Title", "First"])
            self.assertEqual(layer_names(opened(done.stdout).read("a/two.json")), ["Title", "circle", "square"])
            self.assertIn('a/one.json: skipped: composition "Main" has no layer named "Second"', done.err)
        checked = self.exflate("check", "--layer", "Second", "-", given=several())
        self.assertEqual(checked.returncode, 0, checked.err)
        self.assertNotIn(b"one.json", checked.stdout)

    def test_what_no_animation_has_is_wrong_usage_and_nothing_is_written(self):
        self.write("a.lottie", several())
        done = self.exflate("--layer", "Third", "-i", "a.lottie")
        self.assertEqual(done.returncode, 2)
        self.assertRegex(done.err, r'\Aa\.lottie:a/one\.json: composition "Main" has no layer named "Third"[^\n]*\n\Z')
        self.assertEqual(self.read("a.lottie"), several())
        self.assertEqual(self.exflate("check", "--comp", "none", "a.lottie").returncode, 2)

    def test_a_fault_in_one_animation_leaves_the_file_as_it_was(self):
        content = packed(("manifest.json", manifest("x", "y")), ("a/x.json", animation()), ("a/y.json", '{\n "layers":7}'))
        self.write("a.lottie", content)
        for command in (["-i"], ["check"], ["list"]):
            done = self.exflate(*command, "a.lottie")
            self.assertEqual(done.returncode, 3)
            self.assertRegex(done.err, r"\Aa\.lottie:a/y\.json(:\d+:\d+)?: [^\n]+\n\Z")
        self.assertEqual(self.read("a.lottie"), content)


class OtherCommands(Sandbox):
    def test_check_tells_of_every_animation(self):
        done = self.exflate("check", "--format", "json", self.write("a.lottie", several()))
        self.assertEqual(done.returncode, 0, done.err)
        files = json.loads(done.stdout)["files"]
        self.assertEqual([one["file"] for one in files], ["a.lottie:a/one.json", "a.lottie:a/two.json"])
        self.assertEqual([one["nests"][0]["name"] for one in files], ["First", "Second"])
        self.assertEqual(files[0]["bytes"], len(animation("First")))

    def test_list_shows_every_animation(self):
        self.write("a.lottie", several())
        text = self.exflate("list", "a.lottie").stdout.decode()
        self.assertEqual(re.findall(r"^a\.lottie:.*$", text, re.M), ["a.lottie:a/one.json", "a.lottie:a/two.json"])
        listing = json.loads(self.exflate("list", "--json", "a.lottie").stdout)
        self.assertEqual(listing["file"], "a.lottie")
        self.assertEqual([(one["file"], one["id"]) for one in listing["animations"]],
                         [("a.lottie:a/one.json", "one"), ("a.lottie:a/two.json", "two")])
        self.assertEqual(listing["animations"][0]["compositions"],
                         json.loads(self.exflate("list", "--json", "-", given=animation("First").encode()).stdout)["compositions"])

    def test_report_shows_one_animation_and_a_command_for_it(self):
        self.write("a.lottie", several())
        none = self.exflate("report", "a.lottie", "-o", "page.html")
        self.assertEqual(none.returncode, 2)
        self.assertEqual(none.err, 'a.lottie: holds 2 animations, and a page shows one: give --animation and its id, one of '
                                   '"one", "two"\n')
        self.assertEqual(self.names(), ["a.lottie"])
        done = self.exflate("report", "a.lottie", "--animation", "two", "-o", "page.html")
        if done.returncode == 4 and "the page's player" in done.err:
            self.skipTest("the player of pages is not installed")
        self.assertEqual(done.returncode, 0, done.err)
        page = self.read("page.html").decode()
        self.assertIn('"file": "a.lottie:a/two.json"', page)
        command = re.search(r'"command": "(.*)"', page).group(1)
        self.assertEqual(command, "exflate run --animation=two -o a_flat.lottie a.lottie")
        words = command.split()[1:]
        self.assertEqual(self.exflate(*words).returncode, 0)
        self.assertEqual(layer_names(opened(self.read("a_flat.lottie")).read("a/two.json")), ["Title", "circle", "square"])

    def test_a_journal_of_all_animations_can_be_replayed(self):
        self.assertEqual(self.exflate("-", "--journal", "j", "-o", "b.lottie", given=several()).returncode, 0)
        self.assertEqual(self.exflate("replay", "j").returncode, 0)


class Interactions(Sandbox):
    def entry(self, name, file="out.lottie"):
        with zipfile.ZipFile(self.folder / file) as archive:
            return archive.read(name)

    def test_a_state_machine_that_names_no_renamed_layer_stays_as_it_is(self):
        for layer in ("circle", "nobody"):
            content = interactive(layer)
            self.write("a.lottie", content)
            done = self.exflate("run", "a.lottie", "-o", "out.lottie")
            self.assertEqual((done.returncode, done.err.count("state machine")), (0, 0), done.err)
            self.write("in.lottie", content)
            self.assertEqual(self.entry("s/m.json"), self.entry("s/m.json", "in.lottie"))
            self.assertNotIn(b"interaction", self.exflate("check", "a.lottie").stdout)

    def test_a_layer_that_is_renamed_is_renamed_in_state_machines(self):
        self.write("a.lottie", interactive("circle"))
        done = self.exflate("run", "a.lottie", "-o", "out.lottie", "--prefix", "P")
        self.assertEqual(done.returncode, 0, done.err)
        machine = self.entry("s/m.json").decode()
        self.assertEqual([one["layerName"] for one in json.loads(machine)["interactions"]], ["P_circle"])
        self.assertIn('"inputName":"circle"', machine)
        self.assertIn('1.5', machine)
        self.assertEqual(self.entry("s/broken.json"), b"{")

    def test_a_nest_that_a_state_machine_names_is_a_finding(self):
        self.write("a.lottie", interactive("Intro"))
        checked = self.exflate("check", "a.lottie")
        self.assertEqual(checked.returncode, 1)
        self.assertIn(b'! interaction: a state machine reacts to layer "Intro", which goes away -> let the state machine', checked.stdout)
        strict = self.exflate("run", "--strict", "a.lottie", "-o", "out.lottie")
        self.assertEqual((strict.returncode, self.names()), (1, ["a.lottie"]), strict.err)
        self.assertEqual(self.exflate("run", "--only-exact", "a.lottie", "-o", "out.lottie").returncode, 0)
        self.assertEqual(layer_names(self.entry("a/x.json")), ["Title", "Intro"])
        flat = self.exflate("flatten", "a.lottie", "-o", "out.lottie")
        self.assertEqual(flat.returncode, 1)
        self.assertIn('"Intro" (interaction: a state machine reacts to layer "Intro", which goes away', flat.err)
        plain = self.exflate("run", "a.lottie", "-o", "out.lottie")
        self.assertEqual(plain.returncode, 0)
        self.assertIn('a state machine reacts to layer "Intro", which goes away: ', plain.err)

    def test_a_layer_that_mending_renames_is_renamed_in_state_machines(self):
        content = json.loads(animation())
        content["layers"][0]["ks"] = dict(content["layers"][0]["ks"], o={"a": 0, "k": 100, "x": "thisComp.layer('circle').index"})
        self.write("a.lottie", interactive("circle", json.dumps(content)))
        for command in (["flatten"], ["run", "--mend"]):
            done = self.exflate(*command, "a.lottie", "-o", "out.lottie")
            self.assertEqual(done.returncode, 0, done.err)
            self.assertEqual(layer_names(self.entry("a/x.json")), ["Title", "circle 2", "square"])
            self.assertIn(b'"layerName":"circle 2"', self.entry("s/m.json"))

    def test_a_name_that_would_become_two_stays(self):
        content = json.loads(animation())
        content["layers"][0]["ks"] = dict(content["layers"][0]["ks"], o={"a": 0, "k": 100, "x": "thisComp.layer('circle').index"})
        content["layers"].append(dict(content["assets"][0]["layers"][0], ind=3))
        self.write("a.lottie", interactive("circle", json.dumps(content)))
        flat = self.exflate("flatten", "a.lottie", "-o", "out.lottie")
        self.assertEqual(flat.returncode, 1)
        self.assertIn('"Intro" (interaction: a state machine reacts to layer "circle", which has several names', flat.err)
        self.assertEqual(layer_names(self.entry("a/x.json")), ["Title", "Intro", "circle"])
        mended = self.exflate("run", "--mend", "a.lottie", "-o", "out.lottie")
        self.assertEqual(mended.returncode, 0)
        self.assertIn('layer "circle", which has several names afterwards: leave out the prefix, or keep the nest', mended.err)
        self.assertIn(b'"layerName": "circle"', self.entry("s/m.json"))

    def test_animations_that_do_not_agree_on_a_name_leave_state_machines_as_they_are(self):
        machine = json.dumps({"interactions": [{"type": "Click", "layerName": "circle"}]})
        for second in (animation(), animation(None).replace("Title", "circle")):  # one that is not chosen, and one without nests
            self.write("a.lottie", packed(("manifest.json", manifest("x", "y")), ("a/x.json", animation()), ("a/y.json", second),
                                          ("s/m.json", machine)))
            chosen = ["--animation", "x"] if second == animation() else []
            done = self.exflate("run", "a.lottie", *chosen, "-o", "out.lottie", "--prefix", "P")
            self.assertEqual(done.returncode, 0, done.err)
            self.assertEqual(self.entry("s/m.json").decode(), machine)
            self.assertIn('a.lottie: a state machine reacts to layer "circle", which has several names afterwards', done.err)

    def test_a_theme_that_fills_what_goes_away_is_a_finding(self):
        content = json.loads(animation())
        content["slots"] = {"colour": {"p": {"a": 0, "k": 100}}}
        content["layers"][1]["ks"] = dict(content["layers"][1]["ks"], o={"sid": "colour", "a": 0, "k": 100})
        self.write("a.lottie", interactive("nobody", json.dumps(content)))
        checked = self.exflate("check", "a.lottie")
        self.assertEqual(checked.returncode, 1)
        self.assertIn(b'! interaction: a theme fills slot "colour"', checked.stdout)
        content["slots"] = {"other": content["slots"]["colour"]}
        content["layers"][1]["ks"]["o"]["sid"] = "other"
        self.write("a.lottie", interactive("nobody", json.dumps(content)))
        self.assertNotIn(b"interaction", self.exflate("check", "a.lottie").stdout)


class Hostile(Sandbox):
    def test_names_that_lead_out_of_the_archive(self):
        for name, sentence in (("../x", "leads out"), ("i/../../x", "leads out"), ("i/..", "leads out"), ("/etc/x", "absolute"),
                               ("C:/x", "absolute"), ("i\\x", "backslash"), ("..\\x", "backslash")):
            info = entry("placeholder")
            info.filename = name
            content = packed(("manifest.json", manifest("x")), ("a/x.json", animation()), (info, b"payload"))
            self.assert_refused(content, ": is the name of an entry, and ")
            self.assertIn(sentence, self.exflate("list", "a.lottie").err, name)
        for name in ("..x", "x..", "i/...", "i/..x/y"):
            content = packed(("manifest.json", manifest("x")), ("a/x.json", animation()), (name, b"harmless"))
            self.assertEqual(self.exflate("-", given=content).returncode, 0, name)

    def test_a_name_that_is_empty(self):
        self.assert_refused(packed(("manifest.json", manifest("x")), ("a/x.json", animation()), ("", b"payload")),
                            "a.lottie: holds an entry without a name: get the archive from somebody you trust")

    def test_names_that_come_twice(self):
        content = packed(("manifest.json", manifest("x")), ("a/x.json", animation()), ("a/x.json", animation("Other")))
        self.assert_refused(content, "a.lottie: holds two entries of one name: leave one of them out")

    def test_encrypted_entries(self):
        for name in ("a/x.json", "i/p.png"):
            content = bytearray(packed(("manifest.json", manifest("x")), ("a/x.json", animation()), ("i/p.png", PICTURE)))
            info = opened(bytes(content)).getinfo(name)
            content[info.header_offset + 6] |= 1
            central = content.index(b"PK\1\2")
            while content[central + 46:central + 46 + len(name)] != name.encode():
                central = content.index(b"PK\1\2", central + 1)
            content[central + 8] |= 1
            self.assert_refused(bytes(content), f"a.lottie:{name}: is encrypted: pack the archive without a password")

    def test_truncated_anywhere(self):
        content = several()
        for length in range(4, len(content), 211):
            self.write("a.lottie", content[:length])
            done = self.exflate("-i", "a.lottie")
            self.assertEqual(done.returncode, 3, (length, done.err))
            self.assertRegex(done.err, r"\Aa\.lottie: is a [^\n]+\n\Z")
        self.assert_refused(content[:-40], "cut off or damaged")

    def test_damage_inside(self):
        content = bytearray(one_animation())
        info = opened(bytes(content)).getinfo("a/x.json")
        content[info.header_offset + 30 + len("a/x.json") + 60] ^= 0xFF
        self.assert_refused(bytes(content), "a.lottie:a/x.json: is damaged (")
        content = bytearray(one_animation())
        content[info.header_offset + 30] ^= 1  # the name in front of the entry, not the one in the list
        self.assert_refused(bytes(content), "is a damaged zip archive (")

    def test_two_entries_of_one_content(self):
        content = bytearray(packed(("manifest.json", manifest("x", "y")), ("a/x.json", animation()), ("a/y.json", animation())))
        places = [match.start() for match in re.finditer(b"PK\1\2", content)]
        content[places[2] + 42:places[2] + 46] = content[places[1] + 42:places[1] + 46]
        self.assert_refused(bytes(content), "is a damaged zip archive (")

    def test_trailing_bytes(self):
        self.assert_refused(one_animation() + b"more", "is a damaged zip archive (")

    def test_bombs(self):
        bomb = one_animation(b" " * (64 << 20))
        self.assertLess(len(bomb), 100_000)
        self.assert_refused(bomb, "a.lottie:a/x.json: unpacks to more than 200 times its size")
        big = packed(("manifest.json", manifest("x") + " " * (2 << 20)), ("a/x.json", animation()), level=0)
        self.assert_refused(big, "a.lottie:manifest.json: unpacks to more than 1048576 bytes")

    def test_sizes_that_the_headers_hide(self):
        content = bytearray(one_animation(b" " * (64 << 20)))
        info = opened(bytes(content)).getinfo("a/x.json")
        central = content.rindex(b"PK\1\2")
        for place in (info.header_offset + 22, central + 24):
            content[place:place + 4] = struct.pack("<I", 1000)
        self.write("a.lottie", bytes(content))
        done = self.exflate("-i", "a.lottie")
        self.assertEqual(done.returncode, 3, done.err)
        self.assertRegex(done.err, r"\Aa\.lottie:a/x\.json: [^\n]+\n\Z")

    def test_more_than_all_animations_may_have_together(self):
        block = json.dumps(list(range(40_000))).encode() * 40  # no more than twenty times its packed size
        ids = [str(i) for i in range((256 << 20) // len(block) + 1)]
        content = packed(("manifest.json", manifest(*ids)), *((f"a/{i}.json", block) for i in ids), level=1)
        self.write("a.lottie", content)
        done = self.exflate("list", "a.lottie")
        self.assertEqual(done.returncode, 3)
        self.assertRegex(done.err, r"\Aa\.lottie:a/\d+\.json: unpacks to more than \d+ bytes: [^\n]+\n\Z")

    def test_more_entries_than_any_animation_needs(self):
        content = packed(("manifest.json", manifest("x")), ("a/x.json", animation()), *((f"i/{i}", b"") for i in range(10_000)))
        self.assert_refused(content, "a.lottie: holds 10002 entries, and more than 10000 are not taken")

    def test_nothing_to_work_on(self):
        self.assert_refused(packed(), "is a zip archive without manifest.json")
        self.assert_refused(packed(("a/x.json", animation())), "is a zip archive without manifest.json")
        self.assert_refused(packed(("manifest.json", manifest())), "a.lottie:manifest.json: lists no animation")

    def test_a_manifest_that_names_what_is_not_there(self):
        self.assert_refused(packed(("manifest.json", manifest("x", "y")), ("a/x.json", animation())),
                            "a.lottie:a/y.json: is named by the manifest and not in the archive")
        self.assert_refused(packed(("manifest.json", manifest("../x", version="1")), ("x.json", animation())),
                            "a.lottie:animations/../x.json: is named by the manifest and not in the archive")

    def test_manifests_that_are_none(self):
        deep = b"[" * 500_000
        for text, sentence in (("{", "is not JSON"), (deep, "is not JSON"), ("[]", "has no list"), ("7", "has no list"),
                               ('{"animations":{}}', "has no list"), ('{"animations":[7]}', "is not an object"),
                               ('{"animations":[{}]}', "has no id"), ('{"animations":[{"id":7}]}', "has no id"),
                               ('{"animations":[{"id":""}]}', "has no id"), (manifest("x", "x"), "have one id"),
                               (b"\xff\xfe", "is not JSON")):
            content = packed((entry("manifest.json", zipfile.ZIP_STORED), text), ("a/x.json", animation()))
            self.write("a.lottie", content)
            done = self.exflate("-i", "a.lottie")
            self.assertEqual(done.returncode, 3, done.err)
            self.assertRegex(done.err, r"\Aa\.lottie:manifest\.json: [^\n]*\n\Z")
            self.assertIn(sentence, done.err)

    def test_methods_that_players_do_not_know(self):
        content = packed(("manifest.json", manifest("x")), (entry("a/x.json", zipfile.ZIP_BZIP2), animation()))
        self.assert_refused(content, "a.lottie:a/x.json: is packed with method 12")
        other = packed(("manifest.json", manifest("x")), ("a/x.json", animation()), (entry("i/p", zipfile.ZIP_LZMA), PICTURE))
        done = self.exflate("-", given=other)
        self.assertEqual(done.returncode, 0, done.err)
        self.assertEqual(opened(done.stdout).read("i/p"), PICTURE)

    def test_names_that_steer_a_terminal(self):
        content = packed(("manifest.json", manifest("\x1b[31m")), ("a/\x1b[31m.json", "{"))
        done = self.exflate("-", given=content)
        self.assertEqual(done.returncode, 3)
        self.assertNotIn("\x1b", done.err)


if __name__ == "__main__":
    unittest.main()
