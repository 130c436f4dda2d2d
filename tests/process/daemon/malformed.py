"""malformed.py [descriptor]: calls of another form than runShell's, or the one with a descriptor where the bus lets it
through; as root. A line for each: what, and how it was refused.
"""

import os
import sys

import dbus
import dbus.types

from caller import NAME, Caller

REFUSED = "org.freedesktop.DBus.Error.AccessDenied"
BAD = NAME + ".Error.BadArguments"
WORDS = dbus.Array(["x"], signature="s")
NONE = dbus.Array([], signature="s")


def check(caller, what, expected, **parts):
    reply, error = caller.send(caller.message(**parts))
    verdict = "refused" if error in expected else "NOT as expected"
    print(f"{what} {verdict}: {error or reply!r}")


def check_descriptor(caller, error):
    check(caller, "a descriptor", [error], signature="sash",
          arguments=("/bin/true", NONE, dbus.types.UnixFd(os.open("/dev/null", os.O_RDONLY))))


def check_all(caller):
    for signature, arguments in (
        ("s", ("/bin/true",)),
        ("as", (WORDS,)),
        ("ss", ("/bin/true", "x")),
        ("sass", ("/bin/true", WORDS, "x")),
        ("sau", ("/bin/true", dbus.Array([1], signature="u"))),
        ("oas", (dbus.ObjectPath("/bin/true"), WORDS)),
        ("vas", ("/bin/true", WORDS)),
    ):
        check(caller, f"signature {signature}", [BAD], signature=signature, arguments=arguments)
    check(caller, "nothing at all", [BAD])
    for path in ("", "bin/true", "/bin/../bin/true", "/" + "x" * 5000, "/tmp", "/etc/passwd", "/no/such/file"):
        check(caller, f"path {path[:20]!r}", [BAD], arguments=(path, NONE))
    check(caller, "257 arguments", [BAD], arguments=("/bin/true", dbus.Array(["x"] * 257, signature="s")))
    check(caller, "129 KiB", [BAD], arguments=("/bin/true", dbus.Array(["x" * 129 * 1024], signature="s")))
    check(caller, "2 MiB", [BAD], arguments=("/bin/true", dbus.Array(["x" * 65536] * 32, signature="s")))
    refused = [REFUSED]
    check(caller, "another member", refused, member="runShells", arguments=("/bin/true", NONE))
    check(caller, "another path", refused, path="/", arguments=("/bin/true", NONE))
    check(caller, "another interface", refused, interface="com.zelmor.Other", arguments=("/bin/true", NONE))
    check_descriptor(caller, REFUSED)


def main():
    caller = Caller()
    if sys.argv[1:]:
        check_descriptor(caller, "org.freedesktop.DBus.Error.NotSupported")
    else:
        check_all(caller)
    assert caller.run("/bin/true") == ("", "")


main()
