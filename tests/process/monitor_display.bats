#!/usr/bin/env bats
# The monitor where nothing can be drawn.

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

# It shows the state in the terminal although nobody asked it to.
expect_terminal()
{
    connect
    start monitor "${inside[@]}" "${tied[@]}" "${surroundings[@]}" "$program"
    expect_line monitor "$green"
    expect_changes monitor
    end_monitor monitor
}

@test "no display is named" {
    expect_terminal
}

@test "the display that is named does not answer" {
    with DISPLAY=:54321 WAYLAND_DISPLAY=nowhere
    expect_terminal
}

@test "the name of the display is nonsense" {
    with DISPLAY=nonsense
    expect_terminal
}
