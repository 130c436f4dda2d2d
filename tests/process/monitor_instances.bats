#!/usr/bin/env bats
# One monitor a session.

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

start_first()
{
    connect
    start_monitor first
    expect_line first "$green"
}

# A second one says why it ends, and only that; the first goes on.
expect_refusal()
{
    start_monitor second
    wait_for second
    [[ $status == 0 ]]
    [[ $(<"$here/second.err") == 'velq-monitor: the monitor is already running in this session' ]]
    expect_silence second 0.1
    expect_changes first
}

# A crash leaves the session to the next one.
expect_successor()
{
    kill -KILL "${pids[first]}"
    wait_for first
    start_monitor successor
    expect_line successor "$green"
    end_monitor successor
}

@test "by the session bus" {
    with_session_bus
    start_first
    expect_refusal
    end_monitor first
}

@test "by the runtime folder where there is no bus" {
    start_first
    expect_refusal
    end_monitor first
}

@test "one that was killed does not keep the next from starting, with a bus" {
    with_session_bus
    start_first
    expect_successor
}

@test "one that was killed does not keep the next from starting, without a bus" {
    start_first
    expect_successor
}

@test "one that ended does not keep the next from starting" {
    start_first
    end_monitor first
    start_monitor second
    expect_line second "$green"
    end_monitor second
}

@test "another session has its own" {
    start_first
    mkdir -m 700 "$here/elsewhere"
    with "XDG_RUNTIME_DIR=$here/elsewhere"
    start_monitor second
    expect_line second "$green"
    expect_changes first
    end_monitor second
    end_monitor first
}

@test "a runtime folder that cannot be written keeps nobody from starting" {
    connect
    with "XDG_RUNTIME_DIR=$here/nowhere/at/all"
    start_monitor first
    expect_line first "$green"
    end_monitor first
}
