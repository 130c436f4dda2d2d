#!/usr/bin/env bats
# The monitor's standard streams: closed, full, or nobody at the other end.

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

# start_with REDIRECTION: as the shell does it, after all else.
start_with()
{
    start monitor "${inside[@]}" "${tied[@]}" "${surroundings[@]}" sh -c "exec \"\$@\" $1" sh "$program" --console
}

@test "standard input is closed" {
    connect
    start_with '<&-'
    expect_line monitor "$green"
    expect_idle monitor
    expect_changes monitor
    end_monitor monitor
}

@test "standard input is at its end" {
    connect
    start_with '</dev/null'
    expect_line monitor "$green"
    expect_idle monitor
    end_monitor monitor
}

@test "standard input is a pipe that is not read" {
    connect
    mkfifo "$here/pipe"
    exec {keyboard}<>"$here/pipe"
    echo q >&"$keyboard"
    start_with "<'$here/pipe'"
    expect_line monitor "$green"
    expect_idle monitor
    end_monitor monitor
}

@test "its reader leaves: it ends with the next line" {
    mkfifo "$here/pipe"
    start_with ">'$here/pipe'"
    exec {reader}<"$here/pipe"
    outputs[reader]=$reader
    expect_line reader "$red"
    exec {reader}<&-
    connect
    has_ended monitor
}

@test "its output is full: it ends with the first line" {
    start_with '>/dev/full'
    has_ended monitor
}

@test "standard output is closed: it ends with the first line" {
    with_session_bus
    start_with '>&-'
    has_ended monitor
}

@test "all standard streams are closed" {
    with_session_bus
    start_with '<&- >&- 2>&-'
    has_ended monitor
}
