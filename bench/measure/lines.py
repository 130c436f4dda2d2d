"""Lines of a running program, waited for no longer than asked."""

import os
import select
import time


class Lines:
    def __init__(self, stream):
        self.descriptor = stream.fileno()
        self.rest = b""

    def next(self, seconds):
        """The next line; None when none comes in time or ever."""
        end = time.monotonic() + seconds
        while b"\n" not in self.rest:
            ready, _, _ = select.select([self.descriptor], [], [], max(0, end - time.monotonic()))
            part = os.read(self.descriptor, 65536) if ready else b""
            if not part:
                return None
            self.rest += part
        line, self.rest = self.rest.split(b"\n", 1)
        return line.decode(errors="replace")

    def skip_until_quiet(self, seconds):
        while self.next(seconds) is not None:
            pass
