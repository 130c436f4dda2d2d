#!/usr/bin/env bats
# How the monitor is ended.

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

setup_connected()
{
    connect
    start_monitor monitor
    expect_line monitor "$green"
}

@test "SIGTERM ends it" {
    setup_connected
    end_monitor monitor TERM
}

@test "SIGINT ends it" {
    setup_connected
    end_monitor monitor INT
}

@test "SIGHUP ends it" {
    setup_connected
    end_monitor monitor HUP
}

@test "SIGHUP that is ignored from the start does not end it" {
    with env --ignore-signal=HUP
    setup_connected
    kill -HUP "${pids[monitor]}"
    expect_changes monitor
    end_monitor monitor
}

@test "a signal that comes while it starts ends it too" {
    local delay
    for delay in 0 0.003 0.01 0.02 0.04 0.07 0.1 0.2; do
        start_monitor "after $delay s"
        pause $delay
        kill -TERM "${pids["after $delay s"]}"
        wait_for "after $delay s"
        # As the kernel does it, or as the program does.
        [[ $status == 0 || $status == 143 ]]
        [[ ! -s "$here/after $delay s.err" ]]
    done
}
