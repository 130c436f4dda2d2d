"""A polkit whose answer hangs on the name of the program. Prints "ready", then each question.

It takes the real one's place and its user, whom alone the bus lets have the name.
"""

import os
import pwd

import dbus
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

INTERFACE = "org.freedesktop.PolicyKit1.Authority"
YES, NO, CHALLENGE = (True, False), (False, False), (False, True)


def details():
    return dbus.Dictionary({}, signature="ss")


class Authority(dbus.service.Object):
    @dbus.service.method(INTERFACE, in_signature="(sa{sv})sa{ss}us", out_signature="(bba{ss})",
                         async_callbacks=("reply", "fail"))
    def CheckAuthorization(self, subject, action, what, flags, cancellation, reply, fail):
        program = os.path.basename(what["program"])
        print("asked", subject[0], action, program, int(flags), bool(cancellation), flush=True)
        if program == "sleep":
            # never an answer
            return
        if program in ("printf", "touch"):
            GLib.timeout_add(1000, lambda: reply((*YES, details())))
        elif program == "tee":
            # not before the caller has left
            self.connection.watch_name_owner(subject[1]["name"], lambda owner: owner or reply((*YES, details())))
        elif program == "false":
            reply((*NO, details()))
        elif program == "stat":
            fail(dbus.DBusException("no", name="org.freedesktop.PolicyKit1.Error.Failed"))
        elif program == "sum":
            reply((*(CHALLENGE if flags == 0 else YES), details()))
        elif program == "yes":
            # a person who looks at the question and does nothing
            if flags == 0:
                reply((*CHALLENGE, details()))
        elif program == "kill":
            os.kill(os.getpid(), 9)
        else:
            reply((*YES, details()))

    @dbus.service.method(INTERFACE, in_signature="s", out_signature="")
    def CancelCheckAuthorization(self, cancellation):
        print("cancelled", flush=True)


def main():
    os.setuid(pwd.getpwnam("polkitd").pw_uid)
    DBusGMainLoop(set_as_default=True)
    bus = dbus.bus.BusConnection("unix:path=/run/dbus/system_bus_socket")
    assert bus.request_name("org.freedesktop.PolicyKit1") == dbus.bus.REQUEST_NAME_REPLY_PRIMARY_OWNER
    Authority(bus, "/org/freedesktop/PolicyKit1/Authority")
    print("ready", flush=True)
    GLib.MainLoop().run()


main()
