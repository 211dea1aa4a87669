"""How much longer a command takes for a larger bomb of the same kind."""
import collections
import math

Growth = collections.namedtuple("Growth", "pairs fast least slack")

LEAST = 0.5  # seconds: shorter times tell little
START = 0.05  # seconds: what any run takes on a busy machine
SLACK = 2  # times N log N; a busy machine makes times half as long again


def fast_growing(results):
    """Of results by kind, size and command: how many pairs of neighbouring sizes were compared, and the rows of those where the
    time grew faster than N log N. Runs that ended with a sentence are none."""
    answers = {key: result.seconds for key, result in results.items() if result.code in (0, 1)}
    pairs, fast = 0, []
    for kind, name in sorted({(kind, name) for kind, _, name in answers}):
        sizes = sorted(size for each, size, of in answers if (each, of) == (kind, name))
        for small, large in zip(sizes, sizes[1:]):
            before, after = answers[kind, small, name], answers[kind, large, name]
            if after < LEAST:
                continue
            pairs += 1
            most = large * math.log(large) / (small * math.log(small))
            grown = after / max(before, START)
            if grown > SLACK * most:
                fast.append([kind, f"`{name}`", f"{small:,}", f"{before:.2f} s", f"{large:,}", f"{after:.1f} s", f"{grown:.0f}",
                             f"{most:.0f}"])
    return Growth(pairs, fast, LEAST, SLACK)
