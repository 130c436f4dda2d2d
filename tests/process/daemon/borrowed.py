"""A connection's user is who opened it, whoever sends on it."""

import os

from caller import Caller


def outcome(opened_as, calling_as):
    os.seteuid(opened_as)
    caller = Caller()
    os.seteuid(0)
    os.seteuid(calling_as)
    error = caller.run("/bin/true")[1]
    os.seteuid(0)
    print(f"connected as {opened_as}, calling as {calling_as}: {error or 'served'}")


outcome(2002, 0)
outcome(0, 2002)
