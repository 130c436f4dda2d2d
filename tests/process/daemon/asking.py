"""asking.py WHAT: what callers hear while polkit (polkit.py) thinks. As root."""

import collections
import os
import sys
import time
from concurrent.futures import ThreadPoolExecutor

import dbus
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

from caller import NAME, Caller


def word(outcome):
    return outcome[1].removeprefix(NAME + ".Error.") or "served"


def one(program):
    start = time.monotonic()
    print(word(Caller().run(f"/usr/bin/{program}")), int((time.monotonic() - start) * 1000))


def others():
    """While one waits for polkit, others are served: in one of five tries, as it waits for five seconds only."""
    slow, quick = Caller(), Caller()
    with ThreadPoolExecutor(1) as pool:
        for _ in range(5):
            waiting = pool.submit(slow.run, "/usr/bin/sleep")
            for _ in range(20):
                assert quick.run("/usr/bin/true") == ("", "")
            in_time = not waiting.done()
            outcome = word(waiting.result())
            if in_time:
                break
    print("others served" if in_time else "others wait")
    print("slow", outcome)


def second():
    """Two calls of one connection that wait for polkit at the same time: each gets what its own words print."""
    loop = GLib.MainLoop()
    caller = Caller(DBusGMainLoop())
    replies = {}

    def note(text, reply):
        replies[text] = reply.get_args_list()[0]
        if len(replies) == 10:
            loop.quit()

    for text in map(str, range(10)):
        message = caller.message(arguments=("/usr/bin/printf", dbus.Array([text], signature="s")))
        caller.connection.send_message_with_reply(message, lambda reply, text=text: note(text, reply), 60)
    loop.run()
    print("own words" if all(text == reply for text, reply in replies.items()) else replies)


def caller_as(uid, main_loop):
    os.seteuid(uid)
    caller = Caller(main_loop)
    os.seteuid(0)
    return caller


def together(calls):
    """So many calls at once that polkit does not answer, by each of two people; what became of all of them."""
    loop = GLib.MainLoop()
    outcomes = collections.Counter()

    def note(reply):
        outcomes[reply.get_error_name().removeprefix(NAME + ".Error.")] += 1
        if outcomes.total() == 2 * int(calls):
            loop.quit()

    main_loop = DBusGMainLoop()
    callers = [caller_as(uid, main_loop) for uid in (2001, 2002)]
    for caller in callers * int(calls):
        message = caller.message(arguments=("/usr/bin/sleep", dbus.Array(["1"], signature="s")))
        caller.connection.send_message_with_reply(message, note, 60)
    loop.run()
    print(*(f"{count} {outcome}" for outcome, count in sorted(outcomes.items())))


def pressed():
    """Calls one after the other until the daemon has had enough of them: sixty, and twenty for each second."""
    callers = [Caller() for _ in range(4)]
    start = time.monotonic()
    with ThreadPoolExecutor(len(callers)) as pool:
        served = sum(pool.map(served_until_busy, callers))
    most = 61 + 20 * (time.monotonic() - start)
    print("as many as there may be" if 60 <= served <= most else f"{served} of {most}")


def served_until_busy(caller):
    count = 0
    while (outcome := word(caller.run("/usr/bin/true"))) == "served":
        count += 1
    assert outcome == "Busy", outcome
    return count


def leaves(program, file, *wait):
    """The caller is gone at once, or after a word on standard input."""
    caller = Caller()
    caller.connection.send_message(
        caller.message(arguments=(f"/usr/bin/{program}", dbus.Array([file], signature="s"))))
    caller.connection.flush()
    if wait:
        input()
    caller.connection.close()


def person(program):
    caller = Caller()
    message = caller.message(arguments=(f"/usr/bin/{program}", dbus.Array(["/dev/null"], signature="s")))
    message.set_allow_interactive_authorization(True)
    print(word(caller.send(message)))


def person_leaves():
    caller = Caller()
    message = caller.message(arguments=("/usr/bin/yes", dbus.Array([], signature="s")))
    message.set_allow_interactive_authorization(True)
    caller.connection.send_message(message)
    caller.connection.flush()
    input()
    caller.connection.close()


globals()[sys.argv[1]](*sys.argv[2:])
