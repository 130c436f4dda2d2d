"""What a program holds once its icon is shown."""

import os
import time

import table
from desk import Desk, protocols
from icon import start_with_icon
from processes import Usage, require_alive

# Long enough for the first pass of the device watch, which comes after twenty seconds.
SETTLE, QUICK_SETTLE = 25, 5

TARGETS = {("Rss", "nm-applet"): "< 1", ("Private_Dirty", "nm-applet"): "<= 0.5",
           ("Rss", "floor"): "<= 1.3", ("Private_Dirty", "floor"): "<= 1.3"}
FIGURES = {"Private_Dirty": "private dirty, KiB", "Pss": "PSS, KiB", "Rss": "RSS, KiB", "threads": "threads",
           "descriptors": "file descriptors"}


def usage_of(protocol, name, settle):
    """Alone on its desk: a library that two of them share would count half in each one's PSS."""
    with Desk() as desk:
        desk.start_network()
        protocol.start_panel(desk)
        process = start_with_icon(desk, name, protocol.commands[name])
        time.sleep(settle)
        require_alive(process, name)
        usage = Usage(process.pid)
        return {**usage.memory(), "threads": len(usage.threads()), "descriptors": usage.descriptors()}


def measure(quick):
    # What was linked a moment ago is not on the disk yet, and its pages would count as the program's own.
    os.sync()
    for protocol in protocols():
        usages = {name: usage_of(protocol, name, QUICK_SETTLE if quick else SETTLE) for name in protocol.commands}
        print(f"{protocol.name}:\n")
        table.show(table.HEAD, [
            table.row(text, usages["VelqMonitor"][key], other, usages[other][key], TARGETS.get((key, other), ""))
            for key, text in FIGURES.items() for other in ("nm-applet", "floor")])
