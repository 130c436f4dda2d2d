"""fair.py CALLS PLACES PROGRAM WORD...: one person (2001) makes so many calls at once, and each again that hears "Busy".
When nothing but "Busy" is heard any more by those for which there is no place, another (2002) makes a call, and /run/go
comes to be. Prints what the other heard, then what those with a place did.
"""

import collections
import os
import signal
import sys
import time

from caller import NAME, Caller
from flood import as_user, flood

ROUNDS = 20


def one(writer):
    error = Caller().run("/usr/bin/true", seconds=20)[1]
    os.write(writer, (error.removeprefix(NAME + ".Error.") or "served").encode())


def flooded(calls, without):
    """What the first person's calls hear, and who makes them; None when one with a place hears something by then, as it
    does when polkit has not answered for five seconds."""
    lines, child = as_user(2001, lambda writer: flood(writer, calls, sys.argv[3], sys.argv[4:]))
    heard = collections.deque(maxlen=ROUNDS * without)
    while len(heard) < heard.maxlen or len(set(heard)) != without:
        line = lines.readline()
        if not line.endswith(" Busy\n"):
            os.kill(child, signal.SIGKILL)
            return None
        heard.append(line)
    return lines, child


def main():
    calls, places = int(sys.argv[1]), int(sys.argv[2])
    for _ in range(5):
        flow = flooded(calls, calls - places)
        if flow is not None:
            break
        # The next try finds nothing of this one.
        time.sleep(6)
    else:
        sys.exit("polkit's time is over before all are in their places")
    lines, child = flow
    print("the other:", as_user(2002, one)[0].read())
    with open("/run/go", "w"):
        pass
    outcomes = collections.Counter()
    while outcomes.total() < places:
        word = lines.readline().split()[1]
        outcomes[word] += word != "Busy"
    os.kill(child, signal.SIGKILL)
    print("the first:", *(f"{count} {word}" for word, count in outcomes.items() if count))


main()
