#!/usr/bin/env bats
# networksetup on a booted machine without NetworkManager: what else there is keeps the network.

source "$BATS_TEST_DIRNAME/../support/monitor.bash"
source "$BATS_TEST_DIRNAME/../support/homenetwork.bash"

setup()
{
    need_home_network
    # shellcheck disable=SC2119 # no options
    boot_machine
    add_router
    start_home_router
}

teardown()
{
    stop_machine
    stop_everything
}

networksetup()
{
    "${machine[@]}" "$VELQ_BUILD/nettools/networksetup" "$@"
}

# run_in_number COUNT PROGRAM: without those whose end nobody has looked at yet.
run_in_number()
{
    [[ $("${machine[@]}" pgrep --count --exact --runstates RSD "$2") == "$1" ]]
}

@test "systemd-networkd renews the lease of a device that it keeps" {
    "${machine[@]}" sh -c 'cat >/etc/systemd/network/lan0.network' <<'CONFIG'
[Match]
Name=lan0
[Network]
DHCP=ipv4
CONFIG
    "${machine[@]}" systemctl start systemd-networkd
    "${machine[@]}" timeout "$patience" /lib/systemd/systemd-networkd-wait-online --interface=lan0
    [[ $(networksetup -getinfo Ethernet) == $'DHCP Configuration\nIP address: 192.168.77.'* ]]
    networksetup -setdhcp Ethernet
}

@test "dhclient gets a lease, and the next one takes its place" {
    need dhclient
    networksetup -setdhcp Ethernet
    [[ $(networksetup -getinfo Ethernet) == $'DHCP Configuration\nIP address: 192.168.77.'* ]]
    networksetup -setdhcp Ethernet
    until_true run_in_number 1 dhclient
    [[ $(networksetup -getinfo Ethernet) == $'DHCP Configuration\nIP address: 192.168.77.'* ]]
}

@test "udhcpc gets a lease, and does not stay" {
    need udhcpc
    # What comes first of those that are there.
    "${machine[@]}" rm -f /sbin/dhclient
    networksetup -setdhcp Ethernet
    [[ $(networksetup -getinfo Ethernet) == *$'\nIP address: 192.168.77.'*$'\nRouter: 192.168.77.1\n'* ]]
    run_in_number 0 udhcpc
}

@test "nobody gives a lease: dhclient does not stay to ask for one" {
    need dhclient
    "${machine[@]}" systemctl stop router
    run networksetup -setdhcp Ethernet
    [[ $status == 1 && $output == 'networksetup: no DHCP server has answered on Ethernet' ]]
    # Ended it has been, if not gone; by itself it would give up half a minute later.
    patience=20 until_true run_in_number 0 dhclient
}
