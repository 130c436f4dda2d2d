"""A scan with the line up beside the ping that it waits for, and with each of the line's links broken; the other two
scans with the line up."""

import pathlib
import statistics
import subprocess

import table

STATES = {"up": "line up", "link": "no link", "address": "wrong address", "names": "dead name server",
          "router": "nobody answers", "optimize": "velq optimize", "accelerate": "velq accelerate"}
HEAD = ("figure", "velq", *table.HEAD[2:])


def read(output):
    """What was measured: {state: {word: [numbers]}}."""
    found = {}
    for state, word, value in map(str.split, output.splitlines()):
        found.setdefault(state, {}).setdefault(word, []).append(float(value))
    return found


def own_share(state):
    """All but waiting for replies, in milliseconds."""
    return statistics.median(wall - waiting for wall, waiting in zip(state["wall"], state["waiting"])) / 1000


def programs(state):
    """The programs that it started, and how often."""
    times = sorted((word, int(values[0])) for word, values in state.items() if word not in ("wall", "waiting"))
    return f"{sum(count for _, count in times)}: " + ", ".join(f"{word} {count}" for word, count in times)


def measure(quick):
    script = pathlib.Path(__file__).parent.parent / "in-broken-network"
    output = subprocess.run([script, "2" if quick else "5"], check=True, stdout=subprocess.PIPE, text=True).stdout
    found = read(output)
    ping = statistics.median(found["ping"]["wall"]) / 1000
    up = statistics.median(found["up"]["wall"]) / 1000
    table.show(HEAD, [
        table.row("line up, ms", up, "ping -c2", ping),
        *[table.row(f"{name}, own share, ms", own_share(found[state]), "the whole scan",
                    statistics.median(found[state]["wall"]) / 1000, "< 150 ms")
          for state, name in STATES.items()],
    ])
    for state, name in STATES.items():
        print(f"{name}: {programs(found[state])}")
