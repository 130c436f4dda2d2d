#!/usr/bin/env bats
# A computer with Wi-Fi, which no kernel gives a test: beside a made-up NetworkManager, the bundle's own tools list it, and
# so do the inventory and the repair. The root daemon is the test's own.

source "$BATS_TEST_DIRNAME/../support/madeupmanager.bash"
source "$BATS_TEST_DIRNAME/../support/tools.bash"

wireless=/org/freedesktop/NetworkManager/Devices/wireless

setup()
{
    need_made_up_manager
    need ip unshare nsenter setpriv python3
    make_network
    make_surroundings
    # The kernel's side of the ports that it tells of.
    ip_batch <<'LINES'
link add enp3s0 type veth peer name far1
link add wlp2s0 type veth peer name far2
link add wlan1 type veth peer name far3
link add wwan0 type veth peer name far4
link set enp3s0 up
link set far1 up
addr add 10.7.7.7/24 dev wlp2s0
LINES
    start_fake_daemon
    start_network_manager
    program=$VELQ_BUILD/VelqMonitor.app/Contents/MacOS/velq
}

teardown()
{
    stop_everything
}

velq()
{
    "${inside[@]}" timeout --signal=KILL "$patience" "${surroundings[@]}" "$program" "$@"
}

switch_wireless_off()
{
    gdbus call --address "$(bus_address system)" --dest "$manager" --object-path "$wireless" \
        --method org.freedesktop.DBus.Properties.Set "$manager.Device" Autoconnect '<false>'
    gdbus call --address "$(bus_address system)" --dest "$manager" --object-path "$wireless" \
        --method "$manager.Device.Disconnect"
}

# services_are LINES: each with the name, the interface, the address, the switch and the link of one.
services_are()
{
    local found
    found=$(velq services --json | python3 -c 'import json, sys
for one in json.load(sys.stdin):
    print(one["name"], one["interface"], one["ipAdds"], one["enabled"], one["isActive"])')
    [[ $found == "$1" ]] || complain "$found"
}

@test "the inventory has the wireless port by its name" {
    services_are 'Ethernet enp3s0 None True True
Wi-Fi wlp2s0 10.7.7.7 True False
WLAN-wlan1 wlan1 None True False
Modem-wwan0 wwan0 None False False'
    [[ $(velq services) == *$'\nWi-Fi        wlp2s0     11:22:33:44:55:66  10.7.7.7    enabled   inactive\n'* ]]
    switch_wireless_off
    services_are 'Ethernet enp3s0 None True True
Wi-Fi wlp2s0 10.7.7.7 False False
WLAN-wlan1 wlan1 None True False
Modem-wwan0 wwan0 None False False'
}

@test "the repair brings the wireless port up, switches it on, and lets it ask for an address" {
    switch_wireless_off
    local status=0
    velq repair || status=$?
    [[ $status == 1 ]]
    expect_line daemon "^runShell /bin/sh \['-c', 'ifconfig wlp2s0 up'\]$"
    expect_line daemon "^runShell /bin/sh \['-c', 'networksetup -setnetworkserviceenabled Wi-Fi on'\]$"
    expect_line daemon "^runShell /bin/sh \['-c', 'ifconfig wlan1 up'\]$"
    expect_line daemon "^runShell /bin/sh \['-c', 'ifconfig wwan0 up'\]$"
    expect_line daemon "^runShell /bin/sh \['-c', 'networksetup -setnetworkserviceenabled Modem-wwan0 on'\]$"
    expect_line daemon "^runShell /bin/sh \['-c', 'networksetup -setdhcp Ethernet'\]$"
    expect_line daemon "^runShell /bin/sh \['-c', 'networksetup -setdhcp Wi-Fi'\]$"
    expect_silence daemon 0.1
}
