"""Starting programs, ending them by their process, and reading what they use."""

import contextlib
import os
import pathlib
import signal
import subprocess
import time


def programs():
    """Where the build has put its programs."""
    text = (pathlib.Path(os.environ["VELQ_BUILD"]) / "bench" / "programs").read_text()
    return dict(line.split("=", 1) for line in text.split())


def tool(name):
    return str(pathlib.Path(programs()["netstat"]).with_name(name))


def tools_first():
    """A search path with the built tools in front of the system's."""
    return f"{pathlib.Path(tool('netstat')).parent}:{os.environ['PATH']}"


def wait_for(condition, seconds, what):
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            raise TimeoutError(f"{what}: not within {seconds} s")
        time.sleep(0.02)


def end(process):
    process.terminate()
    try:
        process.wait(5)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()


@contextlib.contextmanager
def running(command, environment, **streams):
    """A process for the length of a block; what it has to say is dropped unless a stream is given."""
    streams.setdefault("stdin", subprocess.DEVNULL)
    streams.setdefault("stdout", subprocess.DEVNULL)
    streams.setdefault("stderr", subprocess.DEVNULL)
    process = subprocess.Popen(command, env=environment, start_new_session=True, **streams)
    try:
        yield process
    finally:
        end(process)


def require_alive(process, name):
    if process.poll() is not None:
        raise RuntimeError(f"{name} ended by itself with status {process.returncode}")


class Usage:
    """What a process uses now."""

    def __init__(self, pid):
        self.folder = pathlib.Path("/proc") / str(pid)
        self.pid = pid

    def memory(self):
        """KiB by the names of smaps_rollup."""
        lines = (self.folder / "smaps_rollup").read_text().splitlines()[1:]
        return {words[0].rstrip(":"): int(words[1]) for words in map(str.split, lines)}

    def threads(self):
        return sorted((self.folder / "task").iterdir(), key=lambda path: int(path.name))

    def thread_names(self):
        return [(thread / "comm").read_text().strip() for thread in self.threads()]

    def descriptors(self):
        return len(list((self.folder / "fd").iterdir()))

    def cpu_nanoseconds(self):
        """Of all its threads, those that ended included. clock_getcpuclockid(3) makes the id this way."""
        return time.clock_gettime_ns((~self.pid << 3) | 2)

    def child_cpu_seconds(self):
        fields = (self.folder / "stat").read_text().rpartition(")")[2].split()
        return (int(fields[13]) + int(fields[14])) / os.sysconf("SC_CLK_TCK")

    def wakeups(self):
        """The times that each thread of now has gone to sleep of its own will."""
        return {thread.name: int(field(thread / "status", "voluntary_ctxt_switches")) for thread in self.threads()}


def field(path, name):
    for line in path.read_text().splitlines():
        key, _, value = line.partition(":")
        if key == name:
            return value.strip()
    raise KeyError(name)


# A signal that ends this program must end what it has started too.
signal.signal(signal.SIGTERM, lambda *_: exit(1))
