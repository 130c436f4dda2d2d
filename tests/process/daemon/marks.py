"""What is no text comes as marks, and comes whole; as root. Prints "marked" when it does."""

from caller import Caller

MARK = "\ufffd"
MOST = 8 * 1024 * 1024


def main():
    caller = Caller()
    assert caller.shell(r"printf 'a\000b\377\355\240\200\357\277\277c'") == (f"a{MARK}b{MARK}{MARK}{MARK}c", "")
    # Thrice as long on the bus, which carries 32 MiB.
    assert caller.shell(rf"head -c {MOST} /dev/zero | tr '\000' '\377'") == (MARK * MOST, "")
    print("marked")


main()
