"""What runs took, in a file that is added to while they go on: a line of JSON for each."""
import dataclasses
import json
import pathlib

from limited_run import Result


LONGEST = 1000  # characters that are kept of what a run said


@dataclasses.dataclass
class Figure:
    size: int  # of the input, in bytes
    result: Result


def add(file, key, size, result):
    """Under a tuple of text and numbers: the build, the case, the command."""
    kept = dataclasses.asdict(result) | {"said": result.said[:LONGEST]}
    with open(file, "a", encoding="utf-8") as stream:
        stream.write(json.dumps([key, size, kept]) + "\n")


def read(file):
    """The figures by their keys; none if there is no such file."""
    if not pathlib.Path(file).exists():
        return {}
    with open(file, encoding="utf-8") as stream:
        return {tuple(key): Figure(size, Result(**result)) for key, size, result in map(json.loads, stream)}
