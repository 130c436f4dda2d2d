"""measure PART [--quick]: measures one part, in the surroundings that bench/run has made for it."""

import importlib
import os
import sys

# "pass" is a word of the language.
MODULES = {"pass": "passes"}


def main():
    part, *options = sys.argv[1:]
    print(f"\n{part} (load {os.getloadavg()[0]:.1f} before it)\n", flush=True)
    importlib.import_module(MODULES.get(part, part)).measure("--quick" in options)


main()
