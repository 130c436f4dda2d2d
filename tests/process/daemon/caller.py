"""Who calls the root daemon: a connection of its own to the system bus, and calls on it, right and wrong ones."""

import dbus
import dbus.bus
import dbus.lowlevel

NAME = "com.zelmor.VelqDamonObject"
PATH = "/VelqDamonObject"
ADDRESS = "unix:path=/run/dbus/system_bus_socket"


class Caller:
    def __init__(self, loop=None):
        self.connection = dbus.bus.BusConnection(ADDRESS, mainloop=loop)

    def owner(self):
        """The daemon's unique name; empty while it does not run."""
        try:
            return self.connection.get_name_owner(NAME)
        except dbus.DBusException:
            return ""

    def message(self, member="runShell", name=NAME, path=PATH, interface=NAME, signature="sas", arguments=()):
        message = dbus.lowlevel.MethodCallMessage(name, path, interface, member)
        if arguments:
            message.append(signature=signature, *arguments)
        return message

    def send(self, message, seconds=100):
        """The reply's only argument, or None when there is none, and the error's name, empty when there is none."""
        try:
            reply = self.connection.send_message_with_reply_and_block(message, seconds)
        except dbus.DBusException as error:
            return None, error.get_dbus_name()
        return (reply.get_args_list() or [None])[0], ""

    def run(self, program, *words, seconds=100):
        return self.send(self.message(arguments=(program, dbus.Array(words, signature="s"))), seconds)

    def shell(self, line, seconds=100):
        return self.run("/bin/sh", "-c", line, seconds=seconds)
