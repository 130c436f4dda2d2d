"""idle.py CALLS SECONDS SEED: calls at all moments around the end of a daemon that leaves after so long. Prints how many
were not served, and how many daemons served them.
"""

import random
import sys
import time

from caller import Caller


def main():
    calls, idle = int(sys.argv[1]), float(sys.argv[2])
    random.seed(int(sys.argv[3]))
    caller = Caller()
    lost = 0
    daemons = set()
    for number in range(calls):
        reply, error = caller.shell(f"echo {number} $(ps -o ppid= $PPID)")
        words = (reply or "").split()
        if error or words[0] != str(number):
            lost += 1
            print(error or reply)
        else:
            daemons.add(words[1])
        time.sleep(random.uniform(0, 2 * idle))
    print(lost, len(daemons))


main()
