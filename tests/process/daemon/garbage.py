"""A polkit that answers each question with something else. Prints "ready"."""

import itertools

import dbus
import dbus.bus
import dbus.lowlevel
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

ANSWERS = itertools.cycle((
    ("", ()),
    ("b", (True,)),
    ("(bb)", ((True, True),)),
    ("(uua{ss})", ((1, 1, {}),)),
    ("(bba{sv})", ((True, False, {}),)),
))


def answer(_, message):
    if message.get_member() != "CheckAuthorization":
        return dbus.lowlevel.HANDLER_RESULT_NOT_YET_HANDLED
    signature, arguments = next(ANSWERS)
    reply = dbus.lowlevel.MethodReturnMessage(message)
    if signature:
        reply.append(signature=signature, *arguments)
    bus.send_message(reply)
    return dbus.lowlevel.HANDLER_RESULT_HANDLED


DBusGMainLoop(set_as_default=True)
bus = dbus.bus.BusConnection("unix:path=/run/dbus/system_bus_socket")
bus.add_message_filter(answer)
bus.request_name("org.freedesktop.PolicyKit1")
print("ready", flush=True)
GLib.MainLoop().run()
