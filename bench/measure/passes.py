"""One pass of the device watch, in networks of different sizes."""

import subprocess

import table
from benchmarks import medians
from processes import tools_first

SIZES = {10: "", 1000: "", 10000: "<= 1.5"}
LINK = ["link add eth0 type veth peer name cable", "link set cable up", "link set eth0 up",
        "addr add 192.168.255.254/16 dev eth0"]


def neighbour(number):
    """Permanent ones: the kernel counts them into no limit, and a namespace has no limits of its own to raise."""
    high, low = divmod(number + 1, 256)
    return f"neigh add 192.168.{high}.{low} lladdr 02:00:00:00:{high:02x}:{low:02x} dev eth0 nud permanent"


def make(size):
    subprocess.run(["ip", "link", "del", "eth0"], stderr=subprocess.DEVNULL, check=False)
    commands = [*LINK, *map(neighbour, range(size))]
    subprocess.run(["ip", "-batch", "-"], input="\n".join(commands), text=True, check=True)


def rows(size, target, quick):
    make(size)
    found = medians("PassBench", quick, PATH=tools_first(), VELQ_BENCH_NEIGHBOURS=str(size))
    ours, theirs = found["pass"], found["ipNeigh"]
    yield table.row(f"{size:,} neighbours, ms", ours["real_time"] / 1e3, "ip neigh", theirs["real_time"] / 1e3, target)
    for counter, text in (("own", "CPU of the caller"), ("children", "CPU of the tool")):
        yield table.row(f"{text}, ms", ours[counter] * 1e3, "ip neigh", theirs[counter] * 1e3)


def measure(quick):
    table.show(table.HEAD, [line for size, target in SIZES.items() for line in rows(size, target, quick)])
