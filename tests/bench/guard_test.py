# When the guard over instruction counts speaks up. The counts themselves are the guard's business.
import sys
import unittest

from programs import load

guard = load("guard")
measure = sys.modules["measure"]
projects = sys.modules["projects"]
RECORDED = {guard.YARDSTICK: 1000, "run": 10000}


class Guard(unittest.TestCase):
    def complaints(self, counts, same=True):
        return guard.complaints(counts, RECORDED, same)

    def test_five_percent_are_allowed_and_no_more(self):
        self.assertEqual(self.complaints({guard.YARDSTICK: 1000, "run": 10490}), [])
        self.assertEqual(len(self.complaints({guard.YARDSTICK: 1000, "run": 10510})), 1)
        self.assertEqual(self.complaints({guard.YARDSTICK: 1000, "run": 5000}), [])

    def test_with_another_toolchain_only_the_ratio_counts(self):
        self.assertEqual(self.complaints({guard.YARDSTICK: 2000, "run": 20000}, same=False), [])
        self.assertEqual(len(self.complaints({guard.YARDSTICK: 2000, "run": 20000})), 2)
        self.assertEqual(len(self.complaints({guard.YARDSTICK: 1000, "run": 11600}, same=False)), 1)

    def test_a_case_that_is_new_or_gone_is_told(self):
        self.assertEqual(len(self.complaints({guard.YARDSTICK: 1000, "run": 10000, "new": 1})), 1)
        self.assertEqual(len(self.complaints({guard.YARDSTICK: 1000})), 1)


class Callgrind(unittest.TestCase):
    def test_costs_are_counted_once_and_by_whose_code_they_are_in(self):
        import tempfile
        with tempfile.NamedTemporaryFile("w", suffix=".out") as file:
            file.write("events: Ir\nob=(1) /b/exflate\nfn=(1) main\n1 10\ncfn=(2) duk_call\ncalls=1 5\n2 700\n"
                       "fn=(2)\n3 20\ncob=(2) /b/Exflate.so\ncfn=(3) CommandHook\ncalls=2 1\n* 900\n"
                       "ob=(2)\nfn=(3)\n+1 400\ncob=(1)\n"
                       "cfn=(5) host::suites::SlotFunction<&AEGP_ItemSuite6::AEGP_GetItemID, &id_of>::call(int)\n"
                       "calls=3 1\n* 90\nob=(3) /lib/libc.so.6\nfn=(4) malloc\n-3 5\n")
            file.flush()
            counts = measure.read_callgrind(file.name)
        self.assertEqual(counts.total, 435)
        self.assertEqual(counts.by_share, {"host": 10, "engine": 20, "plug-in": 400, "libraries": 5})
        self.assertEqual((counts.walk_calls, counts.walk), (3, 90))


class Projects(unittest.TestCase):
    def test_each_family_has_as_many_layers_as_asked_for(self):
        for family, (make, _) in projects.FAMILIES.items():
            project = make(30)
            inside = sum(len(asset["layers"]) for asset in project["assets"])
            self.assertEqual(inside, 60 if family == "depth" else 30, family)


if __name__ == "__main__":
    unittest.main()
