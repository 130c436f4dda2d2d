"""Seeing an icon appear in the panel."""

import contextlib
import subprocess

from desk import PANEL_HEIGHT, SCREEN
from lines import Lines
from processes import programs, require_alive, running

WIDTH = 200
QUIET_SECONDS = 1


@contextlib.contextmanager
def icon_watch(desk):
    """Lines with the times, on the monotonic clock in nanoseconds, at which the tray has changed."""
    area = (SCREEN[0] - WIDTH, SCREEN[1] - PANEL_HEIGHT, WIDTH, PANEL_HEIGHT)
    command = [programs()["IconTimer"], *map(str, area)]
    with running(command, desk.environment, stdout=subprocess.PIPE) as process:
        lines = Lines(process.stdout)
        if lines.next(10) != "ready":
            require_alive(process, "IconTimer")
        lines.skip_until_quiet(QUIET_SECONDS)
        yield lines


def start_with_icon(desk, name, command):
    """Starts a program and returns it when its icon is there."""
    with icon_watch(desk) as changes:
        process = desk.start(*command)
        if changes.next(15) is None:
            require_alive(process, name)
            raise TimeoutError(f"{name} shows no icon")
        changes.skip_until_quiet(QUIET_SECONDS)
    return process
