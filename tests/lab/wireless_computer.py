#!/usr/bin/python3
"""wireless_computer.py ADDRESS PORT=ROUTER...: fills python-dbusmock's NetworkManager on that bus with a computer whose
ports, the last of them wireless, lead to a router each, the first port being the last resort. The kernel's default
route of a port follows the port's profile as it does under a real one."""
import pathlib
import subprocess
import sys

import dbus

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / 'process/nettools'))
import network_manager as computer  # pylint: disable=wrong-import-position

# Run by the made-up NetworkManager when it is to bring a profile into effect.
ON_REAPPLY = '''
import subprocess
metric = str(objects["{profile}"].settings["ipv4"]["route-metric"])
subprocess.run(["ip", "route", "flush", "default", "dev", "{port}"], check=True)
subprocess.run(["ip", "route", "add", "default", "via", "{router}", "dev", "{port}", "metric", metric], check=True)
'''


def add(number, port, router, wireless):
    metric = 200 - 10 * number
    kind = '802-11-wireless' if wireless else '802-3-ethernet'
    profile = computer.add_profile(port, number, kind, {'method': 'auto', 'route-metric': dbus.Int64(metric)})
    root = computer.mock(computer.ROOT)
    path = (root.AddWiFiDevice if wireless else root.AddEthernetDevice)(port, port, 100)
    if not wireless:
        computer.mock(path).UpdateProperties(computer.DEVICE + '.Wired',
                                             dbus.Dictionary({'Carrier': True}, signature='sv'))
    computer.update_device(path, AvailableConnections=dbus.Array([profile], signature='o'))
    root.AddActiveConnection([path], profile, '/', port, 2)
    computer.add_methods(path, ON_REAPPLY.format(profile=profile, port=port, router=router))
    subprocess.run(['ip', 'route', 'add', 'default', 'via', router, 'dev', port, 'metric', str(metric)], check=True)


ports = [argument.split('=') for argument in sys.argv[2:]]
for index, (name, gateway) in enumerate(ports, 1):
    add(index, name, gateway, wireless=index == len(ports))
