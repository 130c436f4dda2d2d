"""One look at the connection, in networks of different sizes."""

import subprocess

import table
from benchmarks import medians

LINK = ["link add eth0 type veth peer name cable", "link set cable up", "link set eth0 up"]
IPV4 = ["addr add 192.168.77.2/24 dev eth0"]
IPV6 = ["addr add fd00:77::2/64 dev eth0 nodad"]
IPV4_DEFAULT = ["route add default via 192.168.77.1"]
IPV6_DEFAULT = ["route add default via fd00:77::1"]
IPV4_THOUSAND = [f"route add 10.{i // 250}.{i % 250}.0/24 via 192.168.77.1" for i in range(1000)]
IPV6_THOUSAND = [f"route add fd01:{i:x}::/32 via fd00:77::1" for i in range(1000)]

# What there is, the commands that make it, what the probe must say, its target.
NETWORKS = [
    ("one default route", [*IPV4, *IPV4_DEFAULT], True, "< 100 us"),
    ("1,000 more routes", [*IPV4, *IPV4_DEFAULT, *IPV4_THOUSAND], True, "< 1 ms"),
    ("1,000 routes, no default", [*IPV4, *IPV4_THOUSAND], False, "< 1 ms"),
    ("IPv6 alone", [*IPV6, *IPV6_DEFAULT], True, "< 100 us"),
    ("IPv6 alone, 1,000 more routes", [*IPV6, *IPV6_DEFAULT, *IPV6_THOUSAND], True, "< 1 ms"),
    ("IPv6 alone, 1,000 routes, no default", [*IPV6, *IPV6_THOUSAND], False, "< 1 ms"),
]
YARDSTICKS = {"routeGet": "one route request", "interfaceAddresses": "getifaddrs"}


def make(commands):
    subprocess.run(["ip", "link", "del", "eth0"], stderr=subprocess.DEVNULL, check=False)
    subprocess.run(["ip", "-batch", "-"], input="\n".join([*LINK, *commands]), text=True, check=True)


# In CPU time, which is how long a call takes where nothing else wants the processor.
def rows(network, commands, connected, target, quick):
    make(commands)
    found = medians("ProbeBench", quick)
    if found["networkConnect"]["label"] != ("connected" if connected else "not connected"):
        raise RuntimeError(f"{network}: {found['networkConnect']['label']}")
    return table.beside(f"{network}, us", found["networkConnect"]["cpu_time"],
                        {text: found[name]["cpu_time"] for name, text in YARDSTICKS.items()}, target)


def measure(quick):
    table.show(table.HEAD, [line for network in NETWORKS for line in rows(*network, quick)])
