"""A command that root runs for a person, beside the same command run directly; and what the daemon holds."""

import pathlib
import statistics
import subprocess

import table

HEAD = ("figure", "VelqDemon", *table.HEAD[2:])


def measure(_quick):
    script = pathlib.Path(__file__).parent.parent / "in-machine"
    output = subprocess.run([script], check=True, stdout=subprocess.PIPE, text=True).stdout
    found = {}
    for name, value in map(str.split, output.splitlines()):
        found.setdefault(name, []).append(float(value))
    middle = {name: statistics.median(values) for name, values in found.items()}
    table.show(HEAD, [
        table.row("a call, us", middle["privileged"], "the command run directly", middle["direct"]),
        table.row("slowest of 50, us", max(found["privileged"]), "the command run directly", max(found["direct"])),
        table.row("a call that starts it, us", middle["activation"], "hostnamed", middle["hostnamed"]),
        table.row("PSS, KiB", middle["daemon"], "polkitd", middle["polkitd"], "<= 5,120 KiB"),
        table.row("private dirty, KiB", middle["daemon_dirty"], "polkitd", middle["polkitd_dirty"]),
    ])
