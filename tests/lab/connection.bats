#!/usr/bin/env bats
# The monitor on a computer whose network is NetworkManager's.

source "$BATS_TEST_DIRNAME/lab.bash"

setup()
{
    need_lab
    make_lab
    start_bus system "${inside[@]}"
}

teardown()
{
    stop_everything
}

# From no network to a lease, told line by line.
come_online()
{
    start_router
    start_monitor monitor
    expect_line monitor "$red"
    start_network_manager network_manager
    expect_line monitor "$green"
}

# The profile that NetworkManager finds, instead of the one that it would make.
use_ipv6_alone()
{
    mkdir "$here/profiles"
    printf '%s\n' '[connection]' id=wire type=ethernet interface-name=eth0 '[ipv4]' method=disabled '[ipv6]' method=auto \
        >"$here/profiles/wire.nmconnection"
    chmod 600 "$here/profiles/wire.nmconnection"
}

pull_cable()
{
    "${router[@]}" ip link set lan0 down
}

put_cable_back()
{
    "${router[@]}" ip link set lan0 up
}

@test "a lease arrives, the cable is pulled and put back" {
    come_online
    expect_changes monitor
    expect_idle monitor
    end_monitor monitor
}

@test "the default route goes and comes back" {
    come_online
    "${inside[@]}" ip route del default
    expect_line monitor "$red"
    "${inside[@]}" ip route add default via 192.168.77.1
    expect_line monitor "$green"
    end_monitor monitor
}

@test "the cable stays out until NetworkManager gives up, and is put back" {
    come_online
    start routes "${inside[@]}" "${tied[@]}" ip -4 monitor address
    # It does not say when it begins to listen.
    until next_line routes 0.1; do
        "${inside[@]}" ip address replace 192.0.2.1/32 dev lo
    done
    pull_cable
    expect_line monitor "$red"
    await_line routes '^Deleted .* 192\.168\.77\.'
    expect_idle monitor
    put_cable_back
    expect_line monitor "$green"
    end_monitor monitor
}

@test "networking is switched off and on" {
    come_online
    nmcli_inside networking off
    expect_line monitor "$red"
    nmcli_inside networking on
    expect_line monitor "$green"
    end_monitor monitor
}

@test "IPv6 alone, by router advertisement" {
    use_ipv6_alone
    router_options=(--enable-ra '--dhcp-range=fd77::,ra-only,1h')
    come_online
    [[ $("${inside[@]}" ip -4 address show dev eth0) == '' ]]
    [[ $("${inside[@]}" ip -6 route show default) == *' proto ra '* ]]
    expect_changes monitor
    end_monitor monitor
}

@test "NetworkManager dies: the connection stays, and changes are still seen" {
    come_online
    kill -KILL "${pids[network_manager]}"
    wait_for network_manager
    expect_idle monitor
    expect_changes monitor
    end_monitor monitor
}

@test "NetworkManager ends and starts again: the connection is the same" {
    come_online
    stop network_manager
    expect_idle monitor
    start_network_manager network_manager_again
    "${inside[@]}" "${surroundings[@]}" nm-online --quiet --timeout "$patience"
    expect_changes monitor
    end_monitor monitor
}
