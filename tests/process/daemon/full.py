"""full.py CALLS PLACES PROGRAM WORD...: two people (2001 and 2002) make so many calls at once between them, and each again
that hears "Busy". Prints "full" when nothing but "Busy" is heard any more by those for which there is no place, and in the
end how many calls were served.
"""

import os
import signal
import sys
from collections import deque
from selectors import EVENT_READ, DefaultSelector

from flood import as_user, flood

ROUNDS = 20


def lines_of(readers):
    """What any of them writes, each line with who wrote it."""
    selector = DefaultSelector()
    for uid, reader in readers.items():
        selector.register(reader, EVENT_READ, uid)
    while True:
        for key, _ in selector.select():
            # A line is written in one piece, and so is read in one.
            for line in os.read(key.fd, 65536).decode().splitlines():
                yield key.data, *line.split()


def main():
    calls, places = int(sys.argv[1]), int(sys.argv[2])
    without = calls - places
    people = {uid: as_user(uid, lambda writer: flood(writer, calls // 2, sys.argv[3], sys.argv[4:]))
              for uid in (2001, 2002)}
    heard, served = deque(maxlen=ROUNDS * without), set()
    for uid, number, word in lines_of({uid: reader for uid, (reader, _) in people.items()}):
        if word == "Busy":
            heard.append((uid, number))
            if not served and len(heard) == heard.maxlen and len(set(heard)) == without:
                print("full", flush=True)
                heard = deque(maxlen=0)
        else:
            assert word == "served", word
            served.add((uid, number))
            if len(served) == calls:
                break
    for _, child in people.values():
        os.kill(child, signal.SIGKILL)
    print(len(served), "served")


main()
