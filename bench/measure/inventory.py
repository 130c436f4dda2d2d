"""The inventory of services in computers with few and many ports, told by the kernel and by NetworkManager."""

import contextlib
import os
import shutil
import subprocess

import table
from benchmarks import medians
from desk import Desk
from processes import tools_first, wait_for

SIZES = (2, 10, 50)
HEAD = ("figure", "NetworkScanner", *table.HEAD[2:])
NOBODY = "unix:path=/nonexistent"


@contextlib.contextmanager
def ports(size):
    """Both ends of a cable are ports."""
    cables = range(size // 2)
    subprocess.run(["ip", "-batch", "-"], check=True, text=True, input="\n".join(
        f"link add one{n} type veth peer name two{n}\nlink set one{n} up\nlink set two{n} up" for n in cables))
    try:
        yield
    finally:
        for number in cables:
            subprocess.run(["ip", "link", "del", f"one{number}"], check=True)


def listed(bus):
    """The loopback port, which is always listed, is none of the inventory's."""
    text = subprocess.run(["networksetup", "-listallhardwareports"], check=True, stdout=subprocess.PIPE, text=True,
                          env={**os.environ, "PATH": tools_first(), "DBUS_SYSTEM_BUS_ADDRESS": bus}).stdout
    return text.count("Hardware Port:") - 1


def command_time(command, quick, bus):
    words = "\n".join([shutil.which(command[0]), *command[1:]])
    return medians("CommandBench", quick, DBUS_SYSTEM_BUS_ADDRESS=bus, VELQ_BENCH_OURS=words,
                   VELQ_BENCH_THEIRS=words)["run/theirs"]


def rows(teller, yardstick, size, quick, bus):
    wait_for(lambda: listed(bus) >= size, 20, f"{size} ports")
    found = medians("InventoryBench", quick, PATH=tools_first(), DBUS_SYSTEM_BUS_ADDRESS=bus,
                    VELQ_BENCH_PORTS=str(listed(bus)))
    once = command_time(yardstick, quick, bus)
    theirs = " ".join(yardstick)
    all_services, one = found["inventory"], found["lookUps"]
    yield table.row(f"{size} ports, {teller}, ms", all_services["real_time"] / 1e3, theirs, once["real_time"] / 1e3)
    yield table.row("its own CPU, ms", all_services["own"] * 1e3, theirs, once["own"] * 1e3)
    yield table.row("CPU of its tools, ms", all_services["children"] * 1e3, theirs, once["children"] * 1e3)
    yield table.row("looking one up, ms", one["real_time"] / 1e3, theirs, once["real_time"] / 1e3)


def told_by_kernel(quick):
    for size in SIZES:
        with ports(size):
            yield from rows("told by the kernel", ["ip", "addr"], size, quick, NOBODY)


def told_by_manager(quick):
    with Desk(screen=False) as desk:
        desk.start_network()
        for size in SIZES:
            # eth0 is one of them; its cable's far end is not NetworkManager's.
            with ports(size):
                yield from rows("told by NetworkManager", ["nmcli", "device", "show"], size, quick,
                                desk.environment["DBUS_SYSTEM_BUS_ADDRESS"])


def measure(quick):
    table.show(HEAD, [*told_by_kernel(quick), *told_by_manager(quick)])
