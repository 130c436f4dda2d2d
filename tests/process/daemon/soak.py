"""soak.py CALLS UID...: so many calls in all, by these users at the same time, each with a result of its own. Prints how
many were served rightly.
"""

import os
import sys
import time

from caller import NAME, Caller


def served(uid, calls):
    os.setuid(uid)
    caller = Caller()
    right = 0
    for number in range(calls):
        text = f"{uid} {number}\n"
        reply, error = caller.run("/usr/bin/printf", text)
        # Pressed like this, polkit itself is now and then stuck in its rules for fifteen seconds.
        while error in (NAME + ".Error.Busy", NAME + ".Error.NotAuthorized"):
            time.sleep(0.05)
            reply, error = caller.run("/usr/bin/printf", text)
        right += reply == text
    return right


def main():
    calls, uids = int(sys.argv[1]), [int(word) for word in sys.argv[2:]]
    readers = []
    for uid in uids:
        reader, writer = os.pipe()
        if os.fork() == 0:
            os.write(writer, b"%d\n" % served(uid, calls // len(uids)))
            os._exit(0)
        os.close(writer)
        readers.append(reader)
    print(sum(int(os.read(reader, 20)) for reader in readers))


main()
