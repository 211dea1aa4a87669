# The benchmarks' programs as modules.
import sys
from importlib.machinery import SourceFileLoader
from importlib.util import module_from_spec, spec_from_loader
from pathlib import Path

BENCH = Path(__file__).resolve().parents[2] / "bench"
sys.path.insert(0, str(BENCH))
sys.dont_write_bytecode = True


def load(name):
    loader = SourceFileLoader(name, str(BENCH / name))
    module = module_from_spec(spec_from_loader(name, loader))
    loader.exec_module(module)
    return module
