#!/usr/bin/env bats
# The network is down, for a reason that is real, and a person at the screen chooses the repair: real NetworkManager, real
# router, real root daemon.

source "$BATS_TEST_DIRNAME/../support/monitor.bash"
source "$BATS_TEST_DIRNAME/../support/homenetwork.bash"

setup()
{
    need_home_network
    make_home_network
    input=$here/keyboard
    mkfifo "$input"
    exec {keyboard}<>"$input"
    # Behind a shell: script(1) waits for ever for the child that the log-in has given its process.
    start terminal at_seat person sh -c "script --quiet --return --flush --echo never \
        --command '$app/Contents/MacOS/VelqMonitor --console' /dev/null; exit"
    expect_line terminal "$green"
}

teardown()
{
    stop_machine
    stop_everything
}

type_text()
{
    printf '%b' "$1" >&"$keyboard"
}

choose_repair()
{
    type_text 'r\n'
    expect_line terminal 'Repairing the connection'
}

quit()
{
    type_text 'q\n'
    wait_for terminal
    [[ $status == 0 ]]
}

@test "an interface that was switched off" {
    take_interface_down
    expect_line terminal "$red"
    choose_repair
    expect_line terminal "$green"
    quit
}

@test "a service that was switched off" {
    switch_service_off
    expect_line terminal "$red"
    service_is Disabled
    choose_repair
    expect_line terminal "$green"
    service_is Enabled
    quit
}

@test "an address that leads nowhere, kept in the profile" {
    set_wrong_address
    expect_line terminal "$red"
    choose_repair
    expect_line terminal "$green"
    profile_asks_for_address
    quit
}

@test "a cable that is out: nothing helps, and the repair ends and says so" {
    pull_home_cable
    expect_line terminal "$red"
    choose_repair
    expect_line terminal "$red"
    # And back in, nobody has to repair anything.
    put_home_cable_back
    expect_line terminal "$green"
    quit
}
