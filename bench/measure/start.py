"""From exec to the icon, warm."""

import contextlib
import statistics
import subprocess
import time

import table
from desk import Desk, protocols
from icon import QUIET_SECONDS, icon_watch
from lines import Lines
from processes import require_alive, running

RUNS, QUICK_RUNS = 9, 3
MATCH = "type='method_call',interface='org.kde.StatusNotifierWatcher',member='RegisterStatusNotifierItem'"


@contextlib.contextmanager
def registrations(desk):
    """Lines of dbus-monitor, one for each item that is registered, its time in the second column."""
    with running(["dbus-monitor", "--session", "--profile", MATCH], desk.environment,
                 stdout=subprocess.PIPE) as process:
        lines = Lines(process.stdout)
        lines.skip_until_quiet(QUIET_SECONDS)
        yield lines


def registered_at(lines):
    while (line := lines.next(0)) is not None:
        if "RegisterStatusNotifierItem" in line:
            return float(line.split("\t")[1])
    return None


def once(desk, name, command, changes, calls):
    """Milliseconds until the item was registered (None for a tray without a watcher) and seen."""
    changes.skip_until_quiet(QUIET_SECONDS)
    calls.skip_until_quiet(0)
    began, began_wall = time.monotonic_ns(), time.time()
    with running(command, desk.environment) as process:
        seen = changes.next(15)
        require_alive(process, name)
        if seen is None:
            raise TimeoutError(f"{name} shows no icon")
        changes.skip_until_quiet(QUIET_SECONDS)
        registered = registered_at(calls)
    return registered and (registered - began_wall) * 1e3, (int(seen) - began) / 1e6


def times_of(protocol, runs):
    """Turn by turn, so that a busy moment of the machine meets all alike; the first turn only warms up."""
    times = {name: [] for name in protocol.commands}
    with Desk() as desk, contextlib.ExitStack() as stack:
        desk.start_network()
        protocol.start_panel(desk)
        changes, calls = stack.enter_context(icon_watch(desk)), stack.enter_context(registrations(desk))
        for turn in range(runs + 1):
            for name, command in protocol.commands.items():
                result = once(desk, name, command, changes, calls)
                if turn > 0:
                    times[name].append(result)
    return times


def rows(protocol, times):
    for column, figure in enumerate(("item registered, ms", "icon seen, ms")):
        columns = {name: [result[column] for result in results] for name, results in times.items()}
        if None in columns["VelqMonitor"]:
            continue
        for other, target in (("nm-applet", "< 1"), ("floor", "")):
            yield table.row(f"{figure} ({protocol.name})", statistics.median(columns["VelqMonitor"]), other,
                            statistics.median(columns[other]), target)


def measure(quick):
    found = []
    for protocol in protocols():
        found += rows(protocol, times_of(protocol, QUICK_RUNS if quick else RUNS))
    table.show(table.HEAD, found)
