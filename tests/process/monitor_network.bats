#!/usr/bin/env bats
# The monitor and the kernel's tables.

source "$BATS_TEST_DIRNAME/../support/monitor.bash"

setup()
{
    need ip unshare nsenter setpriv
    make_network
    make_surroundings
}

teardown()
{
    stop_everything
}

# Messages that the kernel had no room for, of all listeners in the network namespace.
lost_messages()
{
    # shellcheck disable=SC2016 # awk's own
    "${inside[@]}" awk 'NR > 1 { lost += $9 } END { print lost + 0 }' /proc/net/netlink
}

many_changes()
{
    local net
    for ((net = 0; net < 4000; ++net)); do
        echo "route add 10.$((net / 250)).$((net % 250)).0/24 via 192.168.7.1"
    done
}

@test "without a default route it says so and offers the repair" {
    start_monitor monitor
    expect_line monitor "$red"
    expect_idle monitor
    end_monitor monitor
}

@test "a default route and the cable under it are followed at once" {
    connect
    start_monitor monitor
    expect_line monitor "$green"
    expect_changes monitor
    disconnect
    expect_line monitor "$red"
    connect
    expect_line monitor "$green"
    expect_idle monitor
    end_monitor monitor
}

@test "IPv6 alone is a connection" {
    start_monitor monitor
    expect_line monitor "$red"
    ip_batch <<'LINES'
addr flush dev lan0
addr add 2001:db8::2/64 dev lan0 nodad
route add default via 2001:db8::1
LINES
    expect_line monitor "$green"
    "${inside[@]}" ip -6 route del default
    expect_line monitor "$red"
    end_monitor monitor
}

@test "more changes than the kernel keeps for it lose it nothing" {
    connect
    start_monitor monitor
    expect_line monitor "$green"
    kill -STOP "${pids[monitor]}"
    many_changes | ip_batch
    disconnect
    (($(lost_messages) > 0)) || complain "nothing was lost: the test tests nothing"
    kill -CONT "${pids[monitor]}"
    expect_line monitor "$red"
    connect
    expect_line monitor "$green"
    expect_changes monitor
    end_monitor monitor
}
