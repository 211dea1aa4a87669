#!/usr/bin/env python3
"""The packages for Linux: packages_test.py REPACK CPACK_FOLDER DIST, where REPACK made DIST from CPACK_FOLDER."""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

REPACK, MADE, DIST = map(pathlib.Path, sys.argv[1:4])
PACKAGES = sorted([*DIST.glob("*.deb"), *DIST.glob("*.tar.gz")])


def output(*words, **how):
    return subprocess.run(list(map(str, words)), check=True, capture_output=True, text=True, **how).stdout


class Packages(unittest.TestCase):
    def test_all_are_there(self):
        self.assertEqual([path.name.split("_")[0].split(".")[0] for path in PACKAGES],
                         ["aegp-check", "exflate-0", "exflate-dialog", "exflate", "libaegp-dev"])

    def test_the_same_contents_give_the_same_bytes_from_any_folder_at_any_time_for_anybody(self):
        times = output("tar", "--list", "--verbose", "--full-time", "--utc", "--gunzip", "--file", next(DIST.glob("*.tar.gz")))
        seconds = {" ".join(line.split()[3:5]) for line in times.splitlines()}
        self.assertEqual(len(seconds), 1, "one time for everything")
        epoch = output("date", "--utc", "--date", seconds.pop() + "Z", "+%s").strip()
        with tempfile.TemporaryDirectory() as place:
            other = pathlib.Path(place) / "another folder"
            # Written in another order, and later.
            (other / "from").mkdir(parents=True)
            for package in sorted(MADE.glob("*.*"), reverse=True):
                if package.is_file():
                    shutil.copy(package, other / "from")
            subprocess.run(["sh", "-c", 'umask 077; exec "$@"', "sh", REPACK, other / "from", other / "to", epoch], check=True,
                           env=os.environ | {"TZ": "Asia/Tokyo", "TMPDIR": place})
            for package in PACKAGES:
                self.assertEqual((other / "to" / package.name).read_bytes(), package.read_bytes(), package.name)

    def test_nobody_who_installs_them_runs_a_script_and_files_belong_to_root(self):
        for package in PACKAGES:
            if package.suffix != ".deb":
                continue
            with tempfile.TemporaryDirectory() as folder:
                output("dpkg-deb", "--control", package, f"{folder}/control")
                self.assertEqual(sorted(os.listdir(f"{folder}/control")), ["control", "md5sums"], package.name)
            for line in output("dpkg-deb", "--contents", package).splitlines():
                self.assertEqual(line.split()[1], "root/root", line)

    @unittest.skipUnless(shutil.which("lintian"), "lintian is not installed")
    def test_lintian_finds_no_error(self):
        done = subprocess.run(["lintian", "--allow-root", "--fail-on", "error", *DIST.glob("*.deb")],
                              capture_output=True, text=True, check=False)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
