# shellcheck shell=bash
# A made-up NetworkManager: python-dbusmock's, filled with a computer that has Wi-Fi, on the bus "system".

# shellcheck source-path=SCRIPTDIR/../support
source "$(dirname "${BASH_SOURCE[0]}")/bus.bash"

manager=org.freedesktop.NetworkManager

need_made_up_manager()
{
    need dbus-daemon gdbus
    /usr/bin/python3 -c 'import dbusmock' 2>/dev/null || skip 'needs python3-dbusmock'
}

# What it is called with from then on is in $here/calls.
start_network_manager()
{
    local -x DBUS_SYSTEM_BUS_ADDRESS
    DBUS_SYSTEM_BUS_ADDRESS=$(bus_address system)
    start manager "${tied[@]}" /usr/bin/python3 -m dbusmock --system --logfile "$here/calls" --template networkmanager
    gdbus wait --system --timeout "$patience" "$manager"
    /usr/bin/python3 "$VELQ_SOURCE/tests/process/nettools/network_manager.py" "$DBUS_SYSTEM_BUS_ADDRESS"
    : >"$here/calls"
}
