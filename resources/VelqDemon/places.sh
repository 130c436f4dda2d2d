# shellcheck shell=sh
# What lies where once the root daemon is installed, and how all of it goes. Part of the other scripts.

bus_name=com.zelmor.VelqDamonObject
unit=com.zelmor.VelqDemon.service
action=com.zelmor.velqdemon

programs=/usr/libexec/velq
tools=$programs/nettools
grants=/etc/velq/authorized.d
bus_policies=/etc/dbus-1/system.d
activations=/usr/share/dbus-1/system-services
units=/etc/systemd/system
actions=/usr/share/polkit-1/actions

# What is on its way to its place has the place's name with this behind, which no service reads.
new=.velq-new

reload_bus()
{
    timeout 10 dbus-send --system --print-reply --dest=org.freedesktop.DBus / \
        org.freedesktop.DBus.ReloadConfig >/dev/null 2>&1 \
        || timeout 10 busctl --system call org.freedesktop.DBus / org.freedesktop.DBus ReloadConfig \
            >/dev/null 2>&1 || :
}

# to_systemd WORDS...: where it is what runs the machine.
to_systemd()
{
    [ ! -d /run/systemd/system ] || timeout 30 systemctl --quiet "$@" 2>/dev/null || :
}

# With whatever it is running. Without systemd the bus has started it, and knows it.
stop_daemon()
{
    to_systemd stop "$unit"
    to_systemd reset-failed "$unit"
    answer=$(timeout 10 dbus-send --system --print-reply=literal --dest=org.freedesktop.DBus / \
        org.freedesktop.DBus.GetConnectionUnixProcessID "string:$bus_name" 2>/dev/null) || return 0
    kill "${answer##* }" 2>/dev/null || :
}

# The user ids for which an installation is complete: their bus policy is the last thing that one writes and the
# first that a removal takes.
persons()
{
    for policy in "$bus_policies/$bus_name".*.conf; do
        person=${policy#"$bus_policies/$bus_name."}
        person=${person%.conf}
        case $person in
        *[!0-9]*) ;;
        *) echo "$person" ;;
        esac
    done
}

# Whatever is left of any installation, complete or not. The bus policy goes first: it is the door.
take_all_away()
{
    rm -f "$bus_policies/$bus_name".conf "$bus_policies/$bus_name".[0-9]*.conf "$bus_policies/$bus_name".*"$new"
    reload_bus
    stop_daemon
    rm -f "$units/$unit" "$units/$unit$new"
    rm -f "$activations/$bus_name.service" "$activations/$bus_name.service$new"
    rm -f "$actions/$action.policy" "$actions/$action.policy$new"
    rm -f "$tools"/* "$programs"/VelqDemon* "$programs"/com.zelmor.VelqDemon.plist* "$programs"/manifest*
    rm -f "$grants"/[0-9]*
    for folder in "$tools" "$programs" "$grants" "${grants%/*}"; do
        [ ! -d "$folder" ] || rmdir "$folder" 2>/dev/null || :
    done
    to_systemd daemon-reload
    reload_bus
}
