#!/usr/bin/python3
"""network_manager.py ADDRESS: fills python-dbusmock's NetworkManager on that bus with a computer that is
online by cable, with Wi-Fi and a modem besides. What the template lacks and ours calls is added here; whoever
imports it makes another computer of it, on the bus of the same argument."""

import sys

import dbus

NAME = 'org.freedesktop.NetworkManager'
ROOT = '/org/freedesktop/NetworkManager'
MOCK = 'org.freedesktop.DBus.Mock'
DEVICE = NAME + '.Device'
PROFILE = NAME + '.Settings.Connection'

bus = dbus.bus.BusConnection(sys.argv[1])


def mock(path):
    return dbus.Interface(bus.get_object(NAME, path), MOCK)


def settings_group(**entries):
    return dbus.Dictionary({key.replace('_', '-'): value for key, value in entries.items()}, signature='sv')


def addresses(address, prefix):
    entry = dbus.Dictionary({'address': address, 'prefix': dbus.UInt32(prefix)}, signature='sv')
    return dbus.Array([entry], signature='a{sv}')


def add_profile(name, number, kind, ipv4):
    settings = dbus.Dictionary({
        'connection': settings_group(id=name, uuid='00000000-0000-4000-8000-00000000000%d' % number, type=kind),
        'ipv4': settings_group(**ipv4),
        'ipv6': settings_group(method='auto'),
    }, signature='sa{sv}')
    path = bus.get_object(NAME, ROOT + '/Settings').AddConnection(
        settings, dbus_interface=NAME + '.Settings')
    mock(path).AddMethod(PROFILE, 'Update2', 'a{sa{sv}}ua{sv}', 'a{sv}',
                         'self.settings = args[0]; ret = {}')
    return path


def set_device(path, **properties):
    mock(path).AddProperties(DEVICE, dbus.Dictionary(properties, signature='sv'))


def update_device(path, **properties):
    mock(path).UpdateProperties(DEVICE, dbus.Dictionary(properties, signature='sv'))


def add_methods(path, on_reapply=''):
    mock(path).AddMethods(DEVICE, dbus.Array([
        ('Reapply', 'a{sa{sv}}tu', '', on_reapply),
        ('Disconnect', '', '', 'self.UpdateProperties("%s", {"State": dbus.UInt32(30)})' % DEVICE),
    ], signature='(ssss)'))


def add_ip4(address, prefix, gateway):
    path = ROOT + '/IP4Config/1'
    properties = dbus.Dictionary({'AddressData': addresses(address, prefix), 'Gateway': gateway,
                                  'NameserverData': addresses('10.0.0.53', 0)}, signature='sv')
    mock(ROOT).AddObject(path, NAME + '.IP4Config', properties, dbus.Array([], signature='(ssss)'))
    return dbus.ObjectPath(path)


def add_wired(profile):
    path = mock(ROOT).AddEthernetDevice('wired', 'enp3s0', 100)
    mock(path).UpdateProperties(DEVICE + '.Wired', dbus.Dictionary({'Carrier': True}, signature='sv'))
    set_device(path, Autoconnect=True, Mtu=dbus.UInt32(1500), Ip4Config=add_ip4('192.168.7.2', 24, '192.168.7.1'))
    update_device(path, AvailableConnections=dbus.Array([profile], signature='o'))
    mock(ROOT).AddActiveConnection([path], profile, '/', 'wired', 2)
    add_methods(path)


def add_wireless(name, interface, profiles):
    path = mock(ROOT).AddWiFiDevice(name, interface, 30)
    set_device(path, Autoconnect=True, Mtu=dbus.UInt32(1500))
    update_device(path, AvailableConnections=dbus.Array(profiles, signature='o'))
    add_methods(path)


def add_modem():
    path = mock(ROOT).AddEthernetDevice('modem', 'wwan0', 30)
    update_device(path, DeviceType=dbus.UInt32(8))
    mock(path).UpdateProperties(DEVICE + '.Wired', dbus.Dictionary({'HwAddress': ''}, signature='sv'))


def add_search():
    """By the UUID of settings as they are by then."""
    mock(ROOT + '/Settings').AddMethod(
        NAME + '.Settings', 'GetConnectionByUuid', 's', 'o',
        'for path, known in objects.items():\n'
        '    if getattr(known, "settings", {}).get("connection", {}).get("uuid") == args[0]:\n'
        '        ret = path')


def main():
    add_search()
    add_wired(add_profile('wire', 1, '802-3-ethernet', {'method': 'manual', 'address-data': addresses('192.168.7.2', 24)}))
    add_wireless('wireless', 'wlp2s0',
                 [add_profile('home', 2, '802-11-wireless', {'method': 'auto'})])
    add_wireless('wireless1', 'wlan1', [])
    add_modem()


if __name__ == '__main__':
    main()
