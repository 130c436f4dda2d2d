#!/usr/bin/env bats
# The monitor without buses, and with buses that go away.

source "$BATS_TEST_DIRNAME/../support/monitor.bash"

setup()
{
    need ip unshare nsenter setpriv dbus-daemon
    make_network
    make_surroundings
}

teardown()
{
    stop_everything
}

# A monitor that runs on both buses and knows the state.
start_on_buses()
{
    connect
    with_session_bus
    start_bus system "${inside[@]}"
    start_monitor monitor
    expect_line monitor "$green"
}

@test "no bus at all" {
    connect
    start_monitor monitor
    expect_line monitor "$green"
    expect_idle monitor
    expect_changes monitor
    end_monitor monitor
}

@test "bus addresses that lead nowhere" {
    connect
    with "DBUS_SESSION_BUS_ADDRESS=$(bus_address session)" DBUS_SYSTEM_BUS_ADDRESS=nonsense
    start_monitor monitor
    expect_line monitor "$green"
    expect_idle monitor
    expect_changes monitor
    end_monitor monitor
}

@test "both buses are there" {
    start_on_buses
    expect_idle monitor
    expect_changes monitor
    end_monitor monitor
}

@test "both buses die while it runs" {
    start_on_buses
    stop session
    stop system
    expect_idle monitor
    expect_changes monitor
    end_monitor monitor
}

@test "both buses hang while it runs" {
    start_on_buses
    kill -STOP "${pids[session]}" "${pids[system]}"
    expect_changes monitor
    end_monitor monitor
}

@test "both buses hang from the start" {
    connect
    with_session_bus
    start_bus system "${inside[@]}"
    kill -STOP "${pids[session]}" "${pids[system]}"
    start_monitor monitor
    expect_line monitor "$green"
    expect_idle monitor
    expect_changes monitor
    end_monitor monitor
}
