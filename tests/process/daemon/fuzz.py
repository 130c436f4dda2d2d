"""fuzz.py SEED MESSAGES: random messages to the root daemon, by whoever runs this. Prints how many got which answer.

What would be served can only run /bin/true, /bin/echo or /bin/false, with any words: all other paths do not exist.
"""

import collections
import os
import random
import sys

import dbus
import dbus.types

from caller import NAME, PATH, Caller

PROGRAMS = ("/bin/true", "/bin/echo", "/bin/false")
BASIC = "ybnqiuxtdsog"
RANGES = {"y": (0, 2**8), "n": (-2**15, 2**15), "q": (0, 2**16), "i": (-2**31, 2**31), "u": (0, 2**32),
          "x": (-2**63, 2**63), "t": (0, 2**64)}
LONGEST = 50000


def text(longest=200):
    length = random.choice((0, 1, 2, random.randint(0, longest), random.randint(0, longest)))
    alphabet = random.choice(("a", "/..", "\n\t\x1b %$`;|&'\"\\", "é网\U0001f600\u202e\ufffd", "\x01\x7f\u0080"))
    return "".join(random.choice(alphabet) for _ in range(length))


def signature(depth=0):
    kind = random.random()
    if depth > 6 or kind < 0.6:
        return random.choice(BASIC)
    if kind < 0.75:
        return "a" + signature(depth + 1)
    if kind < 0.85:
        return "v"
    if kind < 0.93:
        return "(" + "".join(signature(depth + 1) for _ in range(random.randint(1, 3))) + ")"
    return "a{" + random.choice(BASIC) + signature(depth + 1) + "}"


def split(types):
    return [str(part) for part in dbus.Signature(types)]


def variant(depth):
    inner = signature(depth + 1)
    made = value(inner, depth + 1)
    if inner == "v":
        return made
    if inner[0] == "a" or inner[0] == "(":
        return type(made)(made, signature=made.signature, variant_level=1)
    return made


def value(types, depth=0):
    first = types[0]
    if first in RANGES:
        return random.randrange(*RANGES[first])
    if first == "b":
        return random.choice((True, False))
    if first == "d":
        return random.choice((0.0, -1.5, float("inf"), float("nan"), random.random()))
    if first == "s":
        return text(LONGEST if random.random() < 0.02 else 200)
    if first == "o":
        return dbus.ObjectPath(random.choice(("/", "/a", "/a/b_1", "/VelqDamonObject")))
    if first == "g":
        return dbus.Signature(random.choice(("", "s", "as", "a{sv}", "(ii)")))
    if first == "v":
        return variant(depth)
    if types.startswith("a{"):
        key, item = types[2], types[3:-1]
        return dbus.Dictionary({value(key): value(item, depth + 1) for _ in range(random.randint(0, 2))},
                               signature=key + item)
    if first == "a":
        most = 3 if depth or random.random() < 0.9 else 300
        return dbus.Array([value(types[1:], depth + 1) for _ in range(random.randint(0, most))], signature=types[1:])
    return dbus.Struct([value(part, depth + 1) for part in split(types[1:-1])], signature=types[1:-1])


def launch_path():
    kind = random.random()
    if kind < 0.5:
        return random.choice(PROGRAMS)
    if kind < 0.8:
        return "/no/such/" + text(5000)
    return "no/" + text()


def words():
    most = random.choice((0, 3, 300))
    return dbus.Array([text(LONGEST if random.random() < 0.01 else 100) for _ in range(random.randint(0, most))],
                      signature="s")


def arguments():
    if random.random() < 0.5:
        return "sas", (launch_path(), words())
    types = "".join(signature() for _ in range(random.randint(0, 4)))
    if types.startswith("sas"):
        types = "u" + types
    made = tuple(value(part) for part in split(types))
    if random.random() < 0.1:
        return types + "h", (*made, dbus.types.UnixFd(devnull))
    return types, made


def message(caller):
    mostly = random.random() < 0.7
    types, made = arguments()
    built = caller.message(
        member="runShell" if mostly else random.choice(("runShell", "Introspect", "Get", "Set", "GetAll", "Ping", "a_1")),
        name=random.choice([NAME, caller.owner() or NAME]),
        path=PATH if mostly else random.choice((PATH, "/", "/VelqDamonObject/a", "/a/b/c")),
        interface=NAME if mostly else random.choice((None, NAME, "org.freedesktop.DBus.Properties",
                                                     "org.freedesktop.DBus.Peer", "a.b")),
        signature=types, arguments=made)
    built.set_allow_interactive_authorization(random.random() < 0.2)
    built.set_auto_start(random.random() < 0.9)
    return built


def throw(caller, outcomes):
    try:
        built = message(caller)
    except (ValueError, TypeError, OverflowError, MemoryError):
        outcomes["not a message"] += 1
        return
    if random.random() < 0.1:
        built.set_no_reply(True)
        caller.connection.send_message(built)
        outcomes["no reply wanted"] += 1
        return
    error = caller.send(built, 30)[1]
    outcomes[error.rpartition(".")[2] or "served"] += 1


def main():
    random.seed(int(sys.argv[1]))
    outcomes = collections.Counter()
    caller = Caller()
    for number in range(int(sys.argv[2])):
        if number % 100 == 99:
            caller = Caller()
        throw(caller, outcomes)
    print(sum(outcomes.values()), dict(outcomes))


devnull = os.open("/dev/null", os.O_RDONLY)
main()
