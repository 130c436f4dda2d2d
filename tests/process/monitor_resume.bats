#!/usr/bin/env bats
# The monitor looks at once when the computer comes back from sleep.

source "$BATS_TEST_DIRNAME/../support/monitor.bash"

setup()
{
    need ip unshare nsenter setpriv dbus-daemon dbus-send
    make_network
    make_surroundings
}

teardown()
{
    stop_everything
}

login_manager_says()
{
    "${inside[@]}" dbus-send --bus="$(bus_address system)" --type=signal \
        /org/freedesktop/login1 org.freedesktop.login1.Manager.PrepareForSleep "boolean:$1"
}

# The kernel tells nobody about a route that goes together with its next hop.
connect_by_next_hop()
{
    ip_batch <<'LINES'
nexthop add id 7 via 192.168.7.1 dev lan0
route add default nhid 7
LINES
}

disconnect_silently()
{
    "${inside[@]}" ip nexthop del id 7
}

# IPv6 has things to tell for seconds after a link came up, and each makes the monitor look.
make_network_quiet()
{
    "${inside[@]}" sh -c 'echo 1 >/proc/sys/net/ipv6/conf/all/disable_ipv6'
}

# Changes that only a look can find. It takes the route for the one it knew, so its two-second look finds that; the
# next such look is two seconds away. On a busy machine some rounds take longer; those do not count.
@test "a change while it slept is seen at the resume" {
    local quick=0 round begin
    make_network_quiet
    start_bus system "${inside[@]}"
    start_monitor monitor
    expect_line monitor "$red"
    for ((round = 0; round < 20 && quick < 5; ++round)); do
        connect_by_next_hop
        expect_line monitor "$green"
        login_manager_says true
        disconnect_silently
        begin=$EPOCHREALTIME
        login_manager_says false
        expect_line monitor "$red"
        (($(milliseconds_since "$begin") >= 1000)) || ((++quick))
    done
    ((quick == 5)) || complain 'it looked late'
    end_monitor monitor
}
