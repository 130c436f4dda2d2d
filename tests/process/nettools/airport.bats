#!/usr/bin/env bats
# airport beside a made-up NetworkManager, and without one: what it says of Wi-Fi.

# shellcheck source-path=SCRIPTDIR/../../support
source "$BATS_TEST_DIRNAME/../../support/bus.bash"
source "$BATS_TEST_DIRNAME/../../support/golden.bash"

tool=$VELQ_BUILD/nettools/airport
manager=org.freedesktop.NetworkManager
wireless=/org/freedesktop/NetworkManager/Devices/wireless

setup()
{
    need dbus-daemon gdbus
    /usr/bin/python3 -c 'import dbusmock' 2>/dev/null || skip "needs python3-dbusmock"
    start_bus system
    export DBUS_SYSTEM_BUS_ADDRESS
    DBUS_SYSTEM_BUS_ADDRESS=$(bus_address system)
}

teardown()
{
    stop_everything
}

start_network_manager()
{
    start manager "${tied[@]}" /usr/bin/python3 -m dbusmock --system --template networkmanager
    gdbus wait --system --timeout "$patience" "$manager"
    /usr/bin/python3 "$BATS_TEST_DIRNAME/network_manager.py" "$DBUS_SYSTEM_BUS_ADDRESS"
}

# call PATH METHOD ARGUMENTS...
call()
{
    gdbus call --system --dest "$manager" --object-path "$1" --method "$2" "${@:3}"
}

set_property()
{
    call "$1" org.freedesktop.DBus.Properties.Set "$2" "$3" "$4"
}

# join NAME: an access point of that name, and the radio in its network.
join()
{
    local point
    point=$(call /org/freedesktop/NetworkManager org.freedesktop.DBus.Mock.AddAccessPoint "$wireless" \
        point "$1" 00:11:22:0A:44:55 2 5180 866000 82 "${2:-256}" | cut -d "'" -f 2)
    call "$wireless" org.freedesktop.DBus.Mock.AddProperties "$manager.Device.Wireless" \
        "{'ActiveAccessPoint': <objectpath '$point'>}"
    set_property "$wireless" "$manager.Device.Wireless" Bitrate '<uint32 144000>'
}

# expect_golden NAME ARGUMENTS...
expect_golden()
{
    local status=0
    "$tool" "${@:2}" >"$here/output" 2>"$here/errors" || status=$?
    is_golden "$1"
}

@test "in a network" {
    start_network_manager
    join 'Caffè: Zur Post'
    expect_golden airport-joined -I
}

@test "on, and in no network" {
    start_network_manager
    expect_golden airport-alone -I
}

@test "off, by either switch" {
    start_network_manager
    join home
    set_property /org/freedesktop/NetworkManager "$manager" WirelessEnabled '<false>'
    expect_golden airport-off -I
    set_property /org/freedesktop/NetworkManager "$manager" WirelessEnabled '<true>'
    set_property /org/freedesktop/NetworkManager "$manager" WirelessHardwareEnabled '<false>'
    expect_golden airport-off -I
}

@test "a network whose name would be lines of its own" {
    start_network_manager
    join $'x\nAirPort: Off' 0
    [[ $("$tool" -I | grep -c .) == 9 ]]
    [[ $("$tool" -I | grep SSID) == *$'\n           SSID: x?AirPort: Off' ]]
}

@test "a network that only the old way protects, and one that nothing does" {
    local point=/org/freedesktop/NetworkManager/AccessPoint/point
    start_network_manager
    join home 0
    [[ $("$tool" -I | grep 'link auth') == *': none' ]]
    set_property "$point" "$manager.AccessPoint" Flags '<uint32 1>'
    [[ $("$tool" -I | grep 'link auth') == *': wep' ]]
}

@test "a network without a name" {
    start_network_manager
    join ''
    [[ $("$tool" -I | tail -n 2) == $'           SSID: \n        channel: 36' ]]
}

@test "a computer without Wi-Fi" {
    need unshare
    unshare --net true || skip "the kernel gives this user no namespaces"
    start_network_manager
    call /org/freedesktop/NetworkManager org.freedesktop.DBus.Properties.Set "$manager" Devices '<@ao []>'
    tool_alone=$tool
    tool=$here/alone
    printf '#!/bin/sh\nexec unshare --net %s "$@"\n' "$tool_alone" >"$tool"
    chmod +x "$tool"
    expect_golden airport-none -I
    stop manager
    expect_golden airport-none -I
}

@test "NetworkManager hangs" {
    start_network_manager
    kill -STOP "${pids[manager]}"
    expect_golden airport-hanging -I
}

@test "a wrong call" {
    expect_golden airport-nothing
    expect_golden airport-unknown -s
    expect_golden airport-help --help
}
