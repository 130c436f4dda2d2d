"""From a cable that is pulled or plugged to the icon that says so."""

import contextlib
import statistics
import subprocess

import table
from desk import Desk, protocols
from icon import start_with_icon
from processes import programs, running

ROUNDS, QUICK_ROUNDS, APPLET_ROUNDS = 20, 5, 3
# NetworkManager waits six seconds for a carrier to come back before it says that it is gone.
PAUSE_MS, APPLET_PAUSE_MS = 400, 9000
TIMER_MS = 2000


def timed(desk, rounds, pause, source, **streams):
    """Milliseconds by "down" and "up"."""
    command = [programs()["EventTimer"], "cable", str(rounds), str(pause), source]
    output = subprocess.run(command, env=desk.environment, check=True, capture_output=True, text=True,
                            **streams).stdout
    times = {"down": [], "up": []}
    for line in output.splitlines():
        change, time = line.split()
        if time == "none":
            raise TimeoutError(f"{change} was not shown within {pause} ms")
        times[change].append(float(time))
    return times


@contextlib.contextmanager
def network_desk():
    with Desk() as desk:
        desk.start_network()
        yield desk


def in_panel(name, rounds, pause):
    protocol = protocols()[0]
    with network_desk() as desk:
        protocol.start_panel(desk)
        start_with_icon(desk, name, protocol.commands[name])
        return timed(desk, rounds, pause, "signal")


def in_console(rounds):
    command = [programs()["VelqMonitor"], "--console"]
    with network_desk() as desk, running(command, desk.environment, stdout=subprocess.PIPE) as process:
        return timed(desk, rounds, PAUSE_MS, "lines", stdin=process.stdout)


def rows(place, ours, yardsticks):
    for change, text in (("down", "pulled"), ("up", "plugged")):
        for figure, of in (("median", statistics.median), ("max", max)):
            yield from table.beside(f"{text}, {place}, {figure}, ms", of(ours[change]),
                                    {name: of(theirs[change]) for name, theirs in yardsticks.items()}, "< 50 ms")


def measure(quick):
    rounds = QUICK_ROUNDS if quick else ROUNDS
    # A timer alone is as late as the moment of its turn: half of it, all of it.
    timer = {"timer of 2 s": {change: [0, TIMER_MS] for change in ("down", "up")}}
    applet = {} if quick else {"nm-applet": in_panel("nm-applet", APPLET_ROUNDS, APPLET_PAUSE_MS)}
    table.show(table.HEAD, [*rows("icon", in_panel("VelqMonitor", rounds, PAUSE_MS), timer | applet),
                            *rows("console", in_console(rounds), timer)])
