"""matrix.py FILE: every way to reach the daemon that this user may try; what was served would have made FILE.

Prints a line "served" or the error's name for each: the name it was called by, the path, the interface, the member.
"""

import itertools
import sys

import dbus

from caller import NAME, PATH, Caller

PATHS = (PATH, "/", "/com/zelmor/VelqDamonObject")
MEMBERS = (
    (NAME, "runShell"),
    (None, "runShell"),
    (NAME, "runshell"),
    ("org.freedesktop.DBus.Introspectable", "Introspect"),
    ("org.freedesktop.DBus.Peer", "Ping"),
    ("org.freedesktop.DBus.Properties", "GetAll"),
)


def main():
    caller = Caller()
    names = [name for name in (NAME, caller.owner()) if name]
    arguments = {
        "GetAll": ("s", (NAME,)),
        "runShell": ("sas", ("/usr/bin/touch", dbus.Array([sys.argv[1]], signature="s"))),
    }
    for name, path, (interface, member) in itertools.product(names, PATHS, MEMBERS):
        signature, words = arguments.get(member, ("", ()))
        message = caller.message(member, name, path, interface, signature, words)
        print(name if name == NAME else "unique", path, interface, member, caller.send(message)[1] or "served")


main()
