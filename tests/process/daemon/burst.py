"""burst.py CALLS: so many at once, over ten connections. Prints how many were served, how many were told "Busy", and
what else there was.
"""

import collections
import sys

import dbus
from dbus.lowlevel import MethodReturnMessage
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

from caller import NAME, Caller

CONNECTIONS = 10


def main():
    calls = int(sys.argv[1])
    outcomes = collections.Counter()
    loop = GLib.MainLoop()
    main_loop = DBusGMainLoop()

    def note(reply):
        served = isinstance(reply, MethodReturnMessage)
        outcomes["served" if served else reply.get_error_name().removeprefix(NAME + ".Error.")] += 1
        if outcomes.total() == calls:
            loop.quit()

    callers = [Caller(main_loop) for _ in range(CONNECTIONS)]
    for number in range(calls):
        caller = callers[number % CONNECTIONS]
        message = caller.message(arguments=("/bin/sh", dbus.Array(["-c", "sleep 0.1"], signature="s")))
        caller.connection.send_message_with_reply(message, note, 100)
    loop.run()
    print(outcomes.pop("served", 0), outcomes.pop("Busy", 0), dict(outcomes))


main()
