#!/usr/bin/env bats
# networksetup beside a real NetworkManager: what it changes is in effect at once, lasts, and can be taken back.

source "$BATS_TEST_DIRNAME/lab.bash"

wire='Wired connection 1'

setup()
{
    need_lab
    make_lab
    "${inside[@]}" sh -ec 'mount -t tmpfs tmpfs /var/lib; mkdir /var/lib/NetworkManager'
    start_bus system "${inside[@]}"
    start_router
    start_network_manager network_manager
    "${inside[@]}" "${surroundings[@]}" nm-online --quiet --timeout "$patience"
}

teardown()
{
    stop_everything
}

networksetup()
{
    "${inside[@]}" "${surroundings[@]}" "$VELQ_BUILD/nettools/networksetup" "$@"
}

setting()
{
    nmcli_inside --get-values "$1" connection show "$wire"
}

set_wrong_address()
{
    nmcli_inside connection modify "$wire" ipv4.method manual ipv4.addresses 10.9.9.9/24 ipv4.gateway 10.9.9.1
    nmcli_inside connection up "$wire"
}

default_route()
{
    "${inside[@]}" ip -4 route show default
}

watch_link()
{
    start link "${inside[@]}" "${tied[@]}" ip -o -4 monitor link address
    # It does not say when it begins to listen.
    until next_line link 0.1; do
        "${inside[@]}" ip address replace 192.0.2.1/32 dev lo
    done
}

restart_network_manager()
{
    stop network_manager
    start_network_manager network_manager_again
    "${inside[@]}" "${surroundings[@]}" nm-online --quiet --timeout "$patience"
    # With all its devices.
    "${inside[@]}" "${surroundings[@]}" nm-online --wait-for-startup --quiet --timeout "$patience"
}

first_route_is_by()
{
    [[ $(default_route | head -n 1) == *" dev $1 "* ]]
}

@test "a wrong address gives way to a lease, and comes back when it is wanted" {
    set_wrong_address
    [[ $(networksetup -getinfo Ethernet) == $'Manual Configuration\nIP address: 10.9.9.9\n'* ]]
    networksetup -setdhcp Ethernet
    [[ $(default_route) == 'default via 192.168.77.1 '* ]]
    [[ $(networksetup -getinfo Ethernet) == $'DHCP Configuration\nIP address: 192.168.77.'* ]]
    [[ $(setting ipv4.method) == auto ]]
    networksetup -restore Ethernet
    [[ $(setting ipv4.method) == manual && $(setting ipv4.addresses) == 10.9.9.9/24 ]]
    [[ $(networksetup -getinfo Ethernet) == *$'\nIP address: 10.9.9.9\n'* ]]
}

@test "no DHCP server: the failure is told, and the setting is kept" {
    set_wrong_address
    stop dnsmasq
    run networksetup -setdhcp Ethernet
    [[ $status == 1 && $output == *'it goes on asking for an address by DHCP' ]]
    [[ $(setting ipv4.method) == auto ]]
    [[ $(networksetup -getinfo Ethernet) != *'IP address: 10.9.9.9'* ]]
}

# In NetworkManager's eyes, too.
cable_is_out()
{
    [[ $(nmcli_inside --get-values WIRED-PROPERTIES.CARRIER device show eth0) == off ]]
}

@test "a cable that is out is not waited for" {
    set_wrong_address
    watch_link
    "${router[@]}" ip link set lan0 down
    await_line link ' eth0.*NO-CARRIER'
    until_true cable_is_out
    once_within 10000 networksetup -setdhcp Ethernet
    [[ $(setting ipv4.method) == auto ]]
}

@test "DNS servers take the place of the lease's, last, and are taken back" {
    networksetup -setdnsservers Ethernet 192.168.77.53 192.168.77.54 fd77::53
    [[ $(networksetup -getdnsservers Ethernet) == $'192.168.77.53\n192.168.77.54\nfd77::53' ]]
    [[ $("${inside[@]}" grep nameserver /etc/resolv.conf) \
        == $'nameserver 192.168.77.53\nnameserver 192.168.77.54\nnameserver fd77::53' ]]
    # Not only in /run, which a new start of the computer empties.
    grep -q '^dns=192\.168\.77\.53;' "$here/profiles/$wire.nmconnection"
    restart_network_manager
    [[ $(networksetup -getdnsservers Ethernet) == 192.168.77.53* ]]
    networksetup -setdnsservers Ethernet empty
    [[ $("${inside[@]}" grep nameserver /etc/resolv.conf) == 'nameserver 192.168.77.1' ]]
    networksetup -restore Ethernet
    [[ $(setting ipv4.ignore-auto-dns) == no ]]
}

@test "an MTU is set, lasts, and is taken back" {
    networksetup -setMTU eth0 1400
    [[ $("${inside[@]}" cat /sys/class/net/eth0/mtu) == 1400 ]]
    [[ $(networksetup -getMTU Ethernet) == 'Active MTU: 1400 (Current Setting: 1400)' ]]
    [[ $(setting 802-3-ethernet.mtu) == 1400 ]]
    networksetup -restore Ethernet
    [[ $("${inside[@]}" cat /sys/class/net/eth0/mtu) == 1500 ]]
}

@test "a working link is not dropped for a change" {
    watch_link
    networksetup -setdnsservers Ethernet 192.168.77.53
    networksetup -setdhcp Ethernet
    # The end of what is looked at.
    "${inside[@]}" ip address add 192.0.2.2/32 dev lo
    await_line link ' 192\.0\.2\.2/32 '
    [[ $(grep -cE '^Deleted| eth0.*(NO-CARRIER|state DOWN)' "$here/link.lines") == 0 ]]
}

@test "changes in quick succession are all in effect" {
    local server
    for server in 192.168.77.5{1..6}; do
        networksetup -setdnsservers Ethernet "$server"
        [[ $("${inside[@]}" grep nameserver /etc/resolv.conf) == "nameserver $server" ]]
    done
    local mtu
    for mtu in 1401 1402 1403; do
        networksetup -setMTU Ethernet "$mtu"
        networksetup -setdhcp Ethernet
        [[ $("${inside[@]}" cat /sys/class/net/eth0/mtu) == "$mtu" ]]
        [[ $(default_route) == 'default via 192.168.77.1 '* ]]
    done
    [[ $("${inside[@]}" grep nameserver /etc/resolv.conf) == 'nameserver 192.168.77.56' ]]
}

@test "an order of services is one of routes, and lasts" {
    "${router[@]}" ip -batch - <<LINES
link add lan1 type veth peer name eth1 netns ${pids[computer]}
link set lan1 master switch0
link set lan1 up
LINES
    nmcli_inside connection add type ethernet ifname eth1 con-name second
    nmcli_inside connection up second
    [[ $(networksetup -listnetworkserviceorder) == *$'\n(1) Ethernet\n'*$'\n(2) LAN-eth1\n'* ]]
    networksetup -ordernetworkservices LAN-eth1 Ethernet
    [[ $(default_route | head -n 1) == *' dev eth1 '*' metric 50 '* ]]
    [[ $(default_route | tail -n 1) == *' dev eth0 '*' metric 60 '* ]]
    [[ $(networksetup -listnetworkserviceorder) == *$'\n(1) LAN-eth1\n'*$'\n(2) Ethernet\n'* ]]
    grep -q '^route-metric=60$' "$here/profiles/$wire.nmconnection"
    networksetup -ordernetworkservices Ethernet LAN-eth1
    [[ $(default_route | head -n 1) == *' dev eth0 '*' metric 50 '* ]]
    networksetup -ordernetworkservices LAN-eth1
    [[ $(default_route | head -n 1) == *' dev eth1 '*' metric 50 '* ]]
    restart_network_manager
    until_true first_route_is_by eth1
}

@test "a service that is off stays off, and on is online" {
    networksetup -setnetworkserviceenabled Ethernet off
    [[ $(networksetup -getnetworkserviceenabled Ethernet) == Disabled ]]
    [[ $(default_route) == '' ]]
    networksetup -setnetworkserviceenabled Ethernet on
    [[ $(networksetup -getnetworkserviceenabled Ethernet) == Enabled ]]
    networksetup -setdhcp Ethernet
    [[ $(default_route) == 'default via 192.168.77.1 '* ]]
}

@test "networking as a whole is off: on brings it back" {
    nmcli_inside networking off
    [[ $(networksetup -getnetworkserviceenabled Ethernet) == Disabled ]]
    networksetup -setnetworkserviceenabled Ethernet on
    networksetup -setdhcp Ethernet
    [[ $(default_route) == 'default via 192.168.77.1 '* ]]
}

@test "a device without any profile gets one, and loses it again" {
    nmcli_inside connection delete "$wire"
    [[ $(networksetup -getnetworkserviceenabled Ethernet) == Disabled ]]
    networksetup -setnetworkserviceenabled Ethernet on
    networksetup -setdhcp Ethernet
    [[ $(nmcli_inside --get-values connection.interface-name connection show Ethernet) == eth0 ]]
    [[ $(default_route) == 'default via 192.168.77.1 '* ]]
    networksetup -restore Ethernet
    [[ $(nmcli_inside --get-values name connection show) != *Ethernet* ]]
}

is_changed()
{
    [[ $(setting ipv4.method,ipv4.dns) != "$before" ]]
}

# restart_in_the_middle ARGUMENTS...: of a call that waits for a lease that nobody gives.
restart_in_the_middle()
{
    start tool "${inside[@]}" "${surroundings[@]}" "${tied[@]}" "$VELQ_BUILD/nettools/networksetup" "$@"
    until_true is_changed
    stop network_manager
    start_network_manager network_manager_again
    wait_for tool
}

@test "NetworkManager starts anew in the middle of -setdhcp: the settings are what they were" {
    set_wrong_address
    stop dnsmasq
    before=$(setting ipv4.method,ipv4.dns)
    restart_in_the_middle -setdhcp Ethernet
    [[ $status == 1 && $(<"$here/tool.err") == 'networksetup: NetworkManager has stopped, or answers no more' ]]
    [[ $(setting ipv4.method,ipv4.dns) == "$before" ]]
    [[ $(setting ipv4.addresses) == 10.9.9.9/24 ]]
}

@test "NetworkManager starts anew in the middle of -setdnsservers: the settings are what they were" {
    stop dnsmasq
    before=$(setting ipv4.method,ipv4.dns)
    "${inside[@]}" "${surroundings[@]}" nmcli --wait 0 connection up "$wire"
    restart_in_the_middle -setdnsservers Ethernet 192.168.77.53
    [[ $status == 1 && $(<"$here/tool.err") == 'networksetup: NetworkManager has stopped, or answers no more' ]]
    [[ $(setting ipv4.method,ipv4.dns) == "$before" ]]
}

@test "more profiles than the bus lets anybody ask for at once" {
    local number
    for number in {1..150}; do
        printf '[connection]\nid=%s\ntype=ethernet\nautoconnect=false\n' "$number" \
            >"$here/profiles/$number.nmconnection"
    done
    chmod 600 "$here/profiles"/*
    nmcli_inside connection reload
    [[ $(networksetup -getnetworkserviceenabled Ethernet) == Enabled ]]
    [[ $(networksetup -listallnetworkservices) == *$'\nEthernet' ]]
}

@test "NetworkManager is stopped: the kernel answers" {
    stop network_manager
    [[ $(networksetup -getinfo Ethernet) == *$'\nIP address: 192.168.77.'*$'\nRouter: 192.168.77.1\n'* ]]
    networksetup -setMTU eth0 1300
    [[ $(networksetup -getMTU Ethernet) == 'Active MTU: 1300 (Current Setting: 1300)' ]]
    networksetup -setdnsservers Ethernet 192.168.77.53
    [[ $(networksetup -getdnsservers Ethernet) == 192.168.77.53 ]]
    run networksetup -ordernetworkservices Ethernet
    [[ $status == 1 && $output == *'NetworkManager does not run'* ]]
}
