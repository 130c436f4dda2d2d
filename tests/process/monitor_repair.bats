#!/usr/bin/env bats
# The repair, chosen in the menu: what it asks, what it has done as root, and in which order. The tools and the root
# daemon are the test's own.

source "$BATS_TEST_DIRNAME/../support/terminal.bash"
source "$BATS_TEST_DIRNAME/../support/tools.bash"

setup()
{
    need ip unshare nsenter setpriv script mount dbus-daemon /usr/bin/python3
    make_network
    make_surroundings
    with_fake_tools
    start_fake_daemon
    make_keyboard
}

teardown()
{
    stop_everything
}

# The first off and without a link, the second off but carrying, one without an address, one that is on without a link.
fake_faults()
{
    fake_ports 'Ethernet|lan7|02:00:00:00:00:07|Disabled|inactive' 'Wi-Fi|wlan7|02:00:00:00:00:08|Disabled|active' \
        'Two Words|lan8||Enabled|inactive' 'LAN-lan9|lan9|02:00:00:00:00:09|Enabled|inactive' \
        'Loopback|lo|00:00:00:00:00:00|Enabled|inactive'
}

expect_repair()
{
    expect_line daemon "^runShell /bin/sh \['-c', 'ifconfig lan7 up'\]$"
    expect_line daemon "^runShell /bin/sh \['-c', 'networksetup -setnetworkserviceenabled Ethernet on'\]$"
    expect_line daemon "^runShell /bin/sh \['-c', 'networksetup -setnetworkserviceenabled Wi-Fi on'\]$"
    expect_line daemon "^runShell /bin/sh \['-c', 'ifconfig lan9 up'\]$"
    expect_line daemon "^runShell /bin/sh \['-c', 'networksetup -setdhcp Ethernet'\]$"
    expect_line daemon "^runShell /bin/sh \['-c', 'networksetup -setdhcp Wi-Fi'\]$"
}

@test "what is off is switched on, and the addresses are asked for" {
    fake_faults
    start_terminal 'exec MONITOR'
    expect_line terminal "$red"
    type_text 'r\n'
    expect_line terminal 'Repairing the connection'
    expect_line tools '^networksetup -listallhardwareports$'
    expect_line tools '^networksetup -getnetworkserviceenabled Ethernet$'
    expect_line tools '^ifconfig lan7$'
    expect_line tools '^networksetup -getnetworkserviceenabled Wi-Fi$'
    expect_line tools '^ifconfig wlan7$'
    expect_line tools '^networksetup -getnetworkserviceenabled LAN-lan9$'
    expect_line tools '^ifconfig lan9$'
    expect_repair
    # Nobody has really done it.
    expect_line terminal "$red"
    type_text 'q\n'
    has_ended terminal
}

@test "nothing is changed before everything has been asked" {
    fake_faults
    mkfifo "$here/gate"
    fake ifconfig "[ \"\$1\" != lan9 ] || read -r go <'$here/gate'; cat '$here/links'/\"\$1\""
    start_terminal 'exec MONITOR'
    expect_line terminal "$red"
    type_text 'r\n'
    await_line tools '^ifconfig lan9$'
    expect_silence daemon 0.5
    echo >"$here/gate"
    expect_repair
    type_text 'q\n'
    has_ended terminal
}

@test "a port's name with a blank in it is several words" {
    fake_ports 'USB LAN|lan7|02:00:00:00:00:07|Enabled|active' 'Loopback|lo|00:00:00:00:00:00|Enabled|inactive'
    echo Disabled >"$here/services/USB"
    start_terminal 'exec MONITOR'
    expect_line terminal "$red"
    type_text 'r\n'
    expect_line daemon "^runShell /bin/sh \['-c', 'networksetup -setnetworkserviceenabled USB LAN on'\]$"
    expect_line daemon "^runShell /bin/sh \['-c', 'networksetup -setdhcp Ethernet'\]$"
    type_text 'q\n'
    has_ended terminal
}

@test "a network that comes back meanwhile is seen at the end, not before" {
    fake_faults
    start_terminal 'exec MONITOR'
    expect_line terminal "$red"
    fake ifconfig 'ip route replace default via 192.168.7.1'
    type_text 'r\n'
    expect_line terminal 'Repairing the connection'
    expect_line terminal "$green"
    type_text 'q\n'
    has_ended terminal
}

@test "a repair can be chosen again, and the probe goes on afterwards" {
    fake_faults
    start_terminal 'exec MONITOR'
    expect_line terminal "$red"
    local round
    for round in 1 2; do
        type_text 'r\n'
        expect_line terminal 'Repairing the connection'
        expect_repair
        expect_line terminal "$red"
    done
    connect
    expect_line terminal "$green"
    type_text 'q\n'
    has_ended terminal
}

@test "where no command can be started the repair ends, and the monitor goes on" {
    # Without its shell.
    # shellcheck disable=SC2016 # the inner shell's
    start_terminal 'exec unshare --mount bash -c "mount --bind /dev/null \"\$(readlink -f /bin/sh)\" && exec \"\$@\"" bash MONITOR'
    expect_line terminal "$red"
    type_text 'r\n'
    expect_line terminal 'Repairing the connection'
    expect_line terminal "$red"
    connect
    expect_line terminal "$green"
    type_text 'q\n'
    has_ended terminal
}

@test "a tool that hangs does not keep the monitor from ending" {
    fake networksetup 'echo $$ >"'"$here"'/hanging"; exec sleep infinity'
    start_terminal 'exec MONITOR'
    expect_line terminal "$red"
    type_text 'r\n'
    expect_line terminal 'Repairing the connection'
    expect_line tools '^networksetup '
    until_true test -s "$here/hanging"
    type_text 'q\n'
    has_ended terminal
    # With the terminal it may have gone, too.
    kill -KILL "$(<"$here/hanging")" 2>/dev/null || true
}
