"""The command in a folder of its own, and small animations for it."""
import json
import os
import pathlib
import subprocess
import tempfile
import unittest

TRANSFORM = {"o": {"a": 0, "k": 100}, "r": {"a": 0, "k": 0}, "p": {"a": 0, "k": [50, 40, 0]},
             "a": {"a": 0, "k": [0, 0, 0]}, "s": {"a": 0, "k": [100, 100, 100]}}


def layer(ind, name, **members):
    return {"ddd": 0, "ind": ind, "ty": 4, "nm": name, "sr": 1, "ks": TRANSFORM, "ao": 0, "shapes": [], "ip": 0, "op": 50,
            "st": 0, "bm": 0, **members}


def nest(ind, name, composition):
    return layer(ind, name, ty=0, refId=composition, w=100, h=80)


def animation(nest_name="Intro", inner_name="Inside"):
    """One nest, of a composition with two layers; a `nest_name` of None is none."""
    layers = [layer(1, "Title")] + ([nest(2, nest_name, "comp_0")] if nest_name else [])
    inside = {"id": "comp_0", "nm": inner_name, "layers": [layer(1, "circle"), layer(2, "square")]}
    return json.dumps({"v": "5.7.4", "fr": 25, "ip": 0, "op": 50, "w": 100, "h": 80, "nm": "Main", "ddd": 0,
                       "assets": [inside], "layers": layers, "markers": []})


def layer_names(text):
    return [one["nm"] for one in json.loads(text)["layers"]]


class Sandbox(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name) / "work"
        self.folder.mkdir()
        self.settings = pathlib.Path(folder.name) / "settings"

    def exflate(self, *arguments, given=b""):
        """Runs the command with bytes on standard input; bytes come out, and sentences as text."""
        done = subprocess.run([os.environ["EXFLATE_COMMAND"], *arguments], cwd=self.folder, input=given, check=False,
                              capture_output=True, env=os.environ | {"XDG_CONFIG_HOME": str(self.settings)}, timeout=250)
        done.err = done.stderr.decode()
        return done

    def write(self, name, content):
        (self.folder / name).write_bytes(content)
        return name

    def read(self, name):
        return (self.folder / name).read_bytes()

    def names(self):
        return sorted(path.name for path in self.folder.iterdir())

    def assert_refused(self, content, sentence, name="a.lottie"):
        """One sentence from each subcommand, nothing written, and the file as it was."""
        self.write(name, content)
        for command in (["run", "-i"], ["run", "-o", "out"], ["check"], ["list"], ["report", "-o", "page.html"]):
            done = self.exflate(*command, name)
            self.assertEqual(done.returncode, 3, (command, done.err))
            self.assertRegex(done.err, rf"\A{name}(:.*)?: .*\n\Z", command)
            self.assertIn(sentence, done.err, command)
            self.assertEqual(self.names(), [name], command)
            self.assertEqual(self.read(name), content, command)
