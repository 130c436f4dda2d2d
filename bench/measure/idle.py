"""What a program costs while nothing happens, all of them side by side at the same time."""

import time

import table
from desk import Desk, protocols
from icon import start_with_icon
from processes import Usage, require_alive
from switches import SwitchCounter

# The start's last work, the first pass of the device watch among it, is over before the counting begins.
SETTLE, SECONDS, QUICK_SECONDS = 25, 120, 30

TARGETS = {"cpu": "<= 10 ms", "wakeups": "<= 45"}
FIGURES = {"cpu": "CPU, ms a minute", "children": "CPU of its children, ms a minute", "wakeups": "wake-ups a minute",
           "living": "of them in threads that live on"}


class Idler:
    def __init__(self, name, process):
        self.name = name
        self.process = process
        self.usage = Usage(process.pid)
        self.counter = SwitchCounter(process.pid)
        self.before = self.read()

    def read(self):
        wakeups = self.usage.wakeups()
        return {"cpu": self.usage.cpu_nanoseconds() / 1e6, "children": self.usage.child_cpu_seconds() * 1e3,
                "living": wakeups, "wakeups": self.counter.count(), "time": time.monotonic()}

    def per_minute(self):
        require_alive(self.process, self.name)
        now = self.read()
        minutes = (now["time"] - self.before["time"]) / 60
        figures = {key: (now[key] - self.before[key]) / minutes for key in ("cpu", "children")}
        figures["living"] = sum(count - self.before["living"].get(thread, 0)
                                for thread, count in now["living"].items()) / minutes
        counted = now["wakeups"] is not None
        figures["wakeups"] = (now["wakeups"] - self.before["wakeups"]) / minutes if counted else figures["living"]
        return figures


def idle_figures(protocol, seconds):
    with Desk() as desk:
        desk.start_network()
        protocol.start_panel(desk)
        processes = {name: start_with_icon(desk, name, command) for name, command in protocol.commands.items()}
        time.sleep(SETTLE)
        idlers = [Idler(name, process) for name, process in processes.items()]
        time.sleep(seconds)
        figures = {idler.name: idler.per_minute() for idler in idlers}
        threads = {idler.name: idler.usage.thread_names() for idler in idlers}
    return figures, threads


def measure(quick):
    protocol = protocols()[0]
    figures, threads = idle_figures(protocol, QUICK_SECONDS if quick else SECONDS)
    table.show(table.HEAD, [line for key, text in FIGURES.items() for line in table.beside(
        text, figures["VelqMonitor"][key], {other: figures[other][key] for other in ("nm-applet", "floor")},
        TARGETS.get(key, ""))])
    for name, names in threads.items():
        print(f"Threads of {name} in the end: {', '.join(names)}")
