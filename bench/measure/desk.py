"""A desktop in a box: a screen, a session bus, a panel; a network that NetworkManager manages."""

import contextlib
import os
import pathlib
import shutil
import subprocess
import tempfile

from processes import programs, running, wait_for

SCREEN = (1280, 800)
PANEL_HEIGHT = 32

LXQT_PANEL = f"""panels=panel1
[panel1]
plugins=mainmenu,statusnotifier
position=Bottom
desktop=0
alignment=-1
iconSize=22
panelSize={PANEL_HEIGHT}
width-percent=true
width=100
[mainmenu]
type=mainmenu
[statusnotifier]
alignment=Right
type=statusnotifier
"""

NETWORK_MANAGER = """[main]
plugins=keyfile
dns=none
rc-manager=unmanaged
auth-polkit=false
no-auto-default=*
[keyfile]
path={folder}/connections
unmanaged-devices=interface-name:cable
[device]
match-device=*
managed=1
"""

CONNECTION = """[connection]
id=Home
type=ethernet
interface-name=eth0
[ipv4]
method=manual
address1=192.168.77.2/24,192.168.77.1
[ipv6]
method=disabled
"""

BUS_NAME = "org.freedesktop.DBus"


class Desk:
    """Where programs run; `environment` is theirs. Without a screen there is no session either."""

    def __init__(self, screen=True):
        self.screen = screen
        self.stack = contextlib.ExitStack()

    def __enter__(self):
        with contextlib.ExitStack() as stack:
            self.folder = pathlib.Path(tempfile.mkdtemp(prefix="velq-bench."))
            stack.callback(shutil.rmtree, self.folder, ignore_errors=True)
            self.stack = stack
            self.environment = self.make_environment()
            if self.screen:
                self.start_screen()
                self.start_bus("DBUS_SESSION_BUS_ADDRESS", "session")
                self.start("openbox", "--sm-disable")
            self.stack = stack.pop_all()
        return self

    def __exit__(self, *_):
        self.stack.close()

    def make_environment(self):
        home, runtime = self.folder / "home", self.folder / "run"
        (home / ".config" / "lxqt").mkdir(parents=True)
        runtime.mkdir(mode=0o700)
        return {"PATH": "/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin", "HOME": str(home), "LANG": "C.UTF-8",
                "XDG_RUNTIME_DIR": str(runtime), "XDG_SESSION_TYPE": "x11", "NO_AT_BRIDGE": "1",
                "GTK_USE_PORTAL": "0", "DBUS_SYSTEM_BUS_ADDRESS": "unix:path=/nonexistent"}

    def start(self, *command, **streams):
        return self.stack.enter_context(running(command, self.environment, **streams))

    def start_screen(self):
        reading, writing = os.pipe()
        self.start("Xvfb", "-displayfd", str(writing), "-screen", "0", f"{SCREEN[0]}x{SCREEN[1]}x24",
                   "-nolisten", "tcp", "-noreset", pass_fds=[writing])
        os.close(writing)
        with os.fdopen(reading) as display:
            self.environment["DISPLAY"] = f":{display.readline().strip()}"

    def start_bus(self, variable, name):
        socket = self.folder / "run" / name
        self.environment[variable] = f"unix:path={socket}"
        self.start("dbus-daemon", "--session", "--nofork", "--nopidfile", "--nosyslog",
                   f"--address=unix:path={socket}")
        wait_for(socket.exists, 10, f"the {name} bus")

    def asks_bus(self, bus, method, name):
        return subprocess.run(["dbus-send", f"--bus={self.environment[bus]}", "--print-reply", f"--dest={BUS_NAME}",
                               "/", f"{BUS_NAME}.{method}", f"string:{name}"], env=self.environment,
                              capture_output=True, text=True, check=False).stdout

    def wait_for_name(self, bus, name):
        wait_for(lambda: "true" in self.asks_bus(bus, "NameHasOwner", name), 20, name)

    def start_lxqt_panel(self):
        """A panel that shows StatusNotifierItems."""
        (self.folder / "home" / ".config" / "lxqt" / "panel.conf").write_text(LXQT_PANEL)
        self.start("lxqt-panel")
        self.wait_for_name("DBUS_SESSION_BUS_ADDRESS", "org.kde.StatusNotifierWatcher")

    def start_trayer(self):
        """A panel that embeds windows."""
        self.start("trayer", "--edge", "bottom", "--align", "right", "--widthtype", "pixel", "--width", "200",
                   "--height", str(PANEL_HEIGHT))
        wait_for(lambda: self.has_window("panel"), 20, "the tray")

    def has_window(self, title):
        return subprocess.run(["xwininfo", "-name", title], env=self.environment, capture_output=True,
                              check=False).returncode == 0

    def start_network(self):
        """eth0, whose cable is plugged while the other end, "cable", is up."""
        self.start_bus("DBUS_SYSTEM_BUS_ADDRESS", "system")
        connections = self.folder / "connections"
        connections.mkdir()
        (connections / "home.nmconnection").write_text(CONNECTION)
        (connections / "home.nmconnection").chmod(0o600)
        settings = self.folder / "NetworkManager.conf"
        settings.write_text(NETWORK_MANAGER.format(folder=self.folder))
        subprocess.run("ip link add eth0 type veth peer name cable && ip link set cable up", shell=True, check=True)
        self.stack.callback(subprocess.run, ["ip", "link", "del", "eth0"], check=False)
        self.start("NetworkManager", "--no-daemon", f"--config={settings}", f"--config-dir={self.folder}/none",
                   f"--pid-file={self.folder}/nm.pid", f"--state-file={self.folder}/nm.state")
        wait_for(has_default_route, 30, "NetworkManager's default route")


def has_default_route():
    return bool(subprocess.run(["ip", "route", "show", "default"], capture_output=True, text=True,
                               check=True).stdout.strip())


class Protocol:
    """How a program shows its icon, and the panel that shows it."""

    def __init__(self, name, start_panel, applet):
        self.name = name
        self.start_panel = start_panel
        where = programs()
        self.commands = {"VelqMonitor": [where["VelqMonitor"]], "nm-applet": applet, "floor": [where["FloorTray"]]}


def protocols():
    return [Protocol("StatusNotifierItem in lxqt-panel", Desk.start_lxqt_panel, ["nm-applet", "--indicator"]),
            Protocol("XEmbed in trayer", Desk.start_trayer, ["nm-applet"])]
