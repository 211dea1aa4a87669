#!/usr/bin/env python3
"""What the command does with .tgs files, made and read again with Python's own gzip library."""
import gzip
import json
import random
import struct
import unittest
import zlib

from sandbox import Sandbox, animation, layer, layer_names


def with_header(text, flags=0, fields=b"", time=0, system=3):
    """A gzip file with the optional fields of its header."""
    deflate = zlib.compressobj(6, zlib.DEFLATED, -15)
    data = deflate.compress(text) + deflate.flush()
    header = struct.pack("<4sIBB", b"\x1f\x8b\x08" + bytes([flags]), time, 0, system)
    return header + fields + data + struct.pack("<II", zlib.crc32(text), len(text) & 0xFFFFFFFF)


def header_of(content):
    """All that a header says but the level of packing."""
    flags = content[3]
    end = 10
    if flags & 4:
        end += 2 + struct.unpack("<H", content[end:end + 2])[0]
    for bit in (8, 16):
        if flags & bit:
            end = content.index(b"\0", end) + 1
    return content[:8] + content[9:end]


class RoundTrip(Sandbox):
    def test_a_sticker_is_unpacked_worked_on_and_packed(self):
        self.write("a.tgs", gzip.compress(animation().encode()))
        done = self.exflate("-i", "a.tgs")
        self.assertEqual(done.returncode, 0, done.err)
        plain = self.exflate("-", given=animation().encode()).stdout
        self.assertEqual(gzip.decompress(self.read("a.tgs")), plain)
        self.assertRegex(done.err, r'\Aa\.tgs: 1 nest of composition "Main" un-nested, [^\n]*\n'
                                   r"a\.tgs: packed, \d+ bytes became \d+ \([^)]* %\); written to a\.tgs\n\Z")

    def test_the_fields_of_the_header_stay(self):
        every = struct.pack("<H", 4) + b"ABCD" + b"sticker.json\0" + b"a comment\0"
        for content in (with_header(animation().encode(), time=1_500_000_000, system=11),
                        with_header(animation().encode(), flags=4 | 8 | 16, fields=every, time=7),
                        with_header(animation().encode(), flags=8, fields=b"n" * 70_000 + b"\0")):
            done = self.exflate("-", given=content)
            self.assertEqual(done.returncode, 0, done.err)
            self.assertEqual(header_of(done.stdout), header_of(content))
            self.assertEqual(layer_names(gzip.decompress(done.stdout)), ["Title", "circle", "square"])

    def test_equal_input_gives_equal_bytes(self):
        content = gzip.compress(animation().encode(), mtime=5)
        self.assertEqual(self.exflate("-", given=content).stdout, self.exflate("-", given=content).stdout)

    def test_without_a_nest_the_very_bytes_stay(self):
        content = gzip.compress(animation(nest_name=None).encode(), compresslevel=1)
        self.assertEqual(self.exflate("-", given=content).stdout, content)

    def test_the_other_commands_take_stickers(self):
        self.write("a.tgs", gzip.compress(animation().encode()))
        self.assertEqual(json.loads(self.exflate("list", "--json", "a.tgs").stdout)["file"], "a.tgs")
        checked = json.loads(self.exflate("check", "--format", "json", "a.tgs").stdout)["files"]
        self.assertEqual([(one["file"], one["verdict"], one["bytes"]) for one in checked],
                         [("a.tgs", "exact", len(animation()))])
        chosen = self.exflate("-i", "--animation", "x", "a.tgs")
        self.assertEqual((chosen.returncode, chosen.err), (2, "a.tgs: is not a .lottie file: leave out --animation\n"))

    def test_a_fault_in_the_animation_is_told_with_its_place(self):
        done = self.exflate("-", given=gzip.compress(b'{\n"v":nonsense}'))
        self.assertEqual(done.returncode, 3)
        self.assertRegex(done.err, r"\Astandard input:2:\d+: [^\n]+\n\Z")


class Sticker(Sandbox):
    def sticker(self, inner_bytes):
        """Two nests that share a composition of so many bytes that pack badly; un-nesting doubles them."""
        noise = random.Random(1)
        text = json.loads(animation())
        text["assets"][0]["layers"] = [layer(1, "".join(noise.choices("abcdefghijklmnop", k=inner_bytes)))]
        text["layers"].append(text["layers"][1] | {"ind": 3, "nm": "Again"})
        return gzip.compress(json.dumps(text).encode())

    def test_one_that_becomes_too_large_is_written_with_a_warning(self):
        content = self.sticker(100_000)
        self.assertLess(len(content), 64 << 10)
        done = self.exflate("-i", self.write("a.tgs", content))
        self.assertEqual(done.returncode, 0, done.err)
        self.assertGreater(len(self.read("a.tgs")), 64 << 10)
        self.assertRegex(done.err, r"\na\.tgs: has \d+ bytes now, and a sticker may have 65536 at most: [^\n]+\n\Z")

    def test_one_that_was_too_large_or_stays_small_enough_is_not_warned_of(self):
        for content in (self.sticker(150_000), self.sticker(1_000)):
            done = self.exflate("-", given=content)
            self.assertEqual(done.returncode, 0, done.err)
            self.assertNotIn("sticker is taken", done.err)


class Hostile(Sandbox):
    def refused(self, content, sentence):
        self.assert_refused(content, sentence, name="a.tgs")

    def test_truncated_anywhere(self):
        content = gzip.compress(animation().encode())
        for length in range(2, len(content), 7):
            done = self.exflate("-", given=content[:length])
            self.assertEqual(done.returncode, 3, length)
            self.assertEqual(done.err, "standard input: is cut off inside its gzip data: pack the animation again with gzip\n")
            self.assertEqual(done.stdout, b"")
        self.refused(content[:-1], "is cut off inside its gzip data")

    def test_bytes_behind_the_data(self):
        self.refused(gzip.compress(animation().encode()) + b"more", "goes on for 4 bytes after its gzip data")
        self.refused(gzip.compress(animation().encode()) + b"\0", "goes on for 1 bytes after its gzip data")

    def test_several_members(self):
        content = gzip.compress(animation().encode())
        self.refused(content + content, "holds several gzip files one after the other")
        self.refused(content + gzip.compress(b""), "holds several gzip files one after the other")

    def test_damage(self):
        content = bytearray(gzip.compress(animation().encode()))
        content[-6] ^= 1
        self.refused(bytes(content), "holds damaged gzip data (incorrect data check)")
        content = bytearray(gzip.compress(animation().encode()))
        content[2] = 9
        self.refused(bytes(content), "holds damaged gzip data (unknown compression method)")

    def test_bombs(self):
        self.refused(gzip.compress(b" " * (64 << 20)), "unpacks to more than 200 times its size")

    def test_more_than_an_animation_may_have(self):
        block = json.dumps(list(range(40_000))).encode() * 40
        content = gzip.compress(block * ((256 << 20) // len(block) + 1), compresslevel=1)
        done = self.exflate("-", given=content)
        self.assertEqual(done.returncode, 3)
        self.assertRegex(done.err, r"\Astandard input: unpacks to more than 268435456 bytes: [^\n]+\n\Z")


if __name__ == "__main__":
    unittest.main()
