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

# stands_for DESCRIPTOR: the file that has the place of a standard stream.
stands_for()
{
    readlink "/proc/${pids[monitor]}/fd/$1"
}

@test "standard input is closed: nothing else takes its place" {
    connect
    start_with '<&-'
    expect_line monitor "$green"
    [[ $(stands_for 0) == /dev/null ]]
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

@test "standard error is closed: nothing else takes its place" {
    connect
    start_with '2>&-'
    expect_line monitor "$green"
    [[ $(stands_for 2) == /dev/full ]]
    expect_changes monitor
    end_monitor monitor
}

@test "all standard streams are closed" {
    with_session_bus
    start_with '<&- >&- 2>&-'
    has_ended monitor
}
