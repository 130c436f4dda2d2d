"""Many calls to the root daemon at the same time, by several people."""

import os
import signal

import dbus
from dbus.lowlevel import MethodReturnMessage
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

from caller import NAME, Caller


def as_user(uid, action):
    """What the action of a child process writes, and the child."""
    reader, writer = os.pipe()
    child = os.fork()
    if child == 0:
        signal.alarm(60)
        os.setuid(uid)
        action(writer)
        os._exit(0)
    os.close(writer)
    return os.fdopen(reader), child


def flood(writer, calls, program, words):
    """Makes the calls, each again that hears "Busy". Writes the number of each and what it heard; never ends."""
    caller = Caller(DBusGMainLoop())

    def call(number):
        message = caller.message(arguments=(program, dbus.Array(words, signature="s")))
        caller.connection.send_message_with_reply(message, lambda reply: note(number, reply), 100)

    def note(number, reply):
        served = isinstance(reply, MethodReturnMessage)
        outcome = "served" if served else reply.get_error_name().removeprefix(NAME + ".Error.")
        os.write(writer, f"{number} {outcome}\n".encode())
        if outcome == "Busy":
            GLib.timeout_add(50, call, number)

    for number in range(calls):
        call(number)
    GLib.MainLoop().run()
