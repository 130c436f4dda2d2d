"""Each reading tool, from exec to its end, beside the system's command that tells the same. A waiting machine
adds to the time of both sides what it adds; CPU is what the program alone has used."""

import shutil

import table
from benchmarks import medians
from desk import Desk
from processes import tool

HEAD = ("figure", "ours", *table.HEAD[2:])

KERNEL = [("arp -an", "ip neigh"), ("netstat -nr", "ip route"), ("netstat -nr", "route -n"),
          ("ifconfig eth0", "ip addr show eth0"), ("route -n get default", "ip route get 192.0.2.1")]
MANAGER = [("networksetup -listallhardwareports", "nmcli device"),
           ("networksetup -listallnetworkservices", "nmcli connection"),
           ("networksetup -listnetworkserviceorder", "nmcli connection"),
           ("networksetup -getnetworkserviceenabled Ethernet", "nmcli -g GENERAL.AUTOCONNECT device show eth0"),
           ("networksetup -getinfo Ethernet", "nmcli device show eth0"),
           ("networksetup -getdnsservers Ethernet", "nmcli -g ipv4.dns connection show Home"),
           ("networksetup -getMTU eth0", "nmcli -g GENERAL.MTU device show eth0")]


def words(command, where):
    name, *arguments = command.split()
    return "\n".join([where(name), *arguments])


def figures(ours, theirs, quick, bus):
    return medians("CommandBench", quick, DBUS_SYSTEM_BUS_ADDRESS=bus, BENCHMARK_ENABLE_RANDOM_INTERLEAVING="true",
                   VELQ_BENCH_OURS=words(ours, tool), VELQ_BENCH_THEIRS=words(theirs, shutil.which))


def rows(pairs, target, quick, bus):
    for ours, theirs in pairs:
        found = figures(ours, theirs, quick, bus)
        own, other = found["run/ours"], found["run/theirs"]
        yield table.row(f"{ours}, ms", own["real_time"] / 1e3, theirs, other["real_time"] / 1e3, target)
        yield table.row("its CPU, ms", own["children"] * 1e3, theirs, other["children"] * 1e3)


def measure(quick):
    with Desk(screen=False) as desk:
        desk.start_network()
        bus = desk.environment["DBUS_SYSTEM_BUS_ADDRESS"]
        present = [pair for pair in KERNEL if shutil.which(pair[1].split()[0])]
        table.show(HEAD, [*rows(present, "<= 2", quick, bus), *rows(MANAGER, "<= 0.33", quick, bus)])
