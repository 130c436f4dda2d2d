#!/usr/bin/env bats
# Another process of the session switches the device watch off and on.

source "$BATS_TEST_DIRNAME/../support/monitor.bash"

setup()
{
    need ip unshare nsenter setpriv dbus-daemon dbus-send
    make_network
    make_surroundings
    connect
}

teardown()
{
    stop_everything
}

# start_logging NAME: a monitor whose netstat says in the stream NAME-passes that it was run.
start_logging()
{
    mkdir "$here/$1"
    open_stream "$1-passes"
    printf '#!/bin/sh\necho "$*" >%q\n' "$here/$1-passes.out" >"$here/$1/netstat"
    chmod +x "$here/$1/netstat"
    with "PATH=$here/$1:$PATH"
    start_monitor "$1"
    expect_line "$1" "$green"
}

@test "MonitorStart: NO ends the passes, YES begins them anew" {
    with_session_bus
    start_logging monitor
    # A monitor of another session, started later, is the clock: when it has made its pass, one of the first is overdue.
    with env -u DBUS_SESSION_BUS_ADDRESS
    start_logging clock

    post MonitorStart NO
    expect_line clock-passes '^-nr$'
    expect_silence monitor-passes 3

    post Unrelated YES
    post MonitorStart YES
    expect_line monitor-passes '^-nr$'
    end_monitor monitor
    end_monitor clock
}
