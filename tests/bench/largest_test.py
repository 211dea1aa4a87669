# The largest projects of bench/performance that grow with the square are within the work that one file may make.
import subprocess
import sys
import unittest

from programs import load

EXFLATE = sys.argv.pop()
performance = load("performance")
projects = sys.modules["projects"]


class Largest(unittest.TestCase):
    def test_each_is_run(self):
        for family, count in performance.LARGEST_OF.items():
            text, flags = projects.text_of(family, count)
            done = subprocess.run([EXFLATE, "run", *flags, "-"], input=text, capture_output=True, text=True, check=False)
            self.assertEqual(done.returncode, 0, f"{family}, {count}: {done.stderr}")


if __name__ == "__main__":
    unittest.main()
