#!/usr/bin/env bats
# The monitor on a terminal: the menu's entries by their keys.

bats_require_minimum_version 1.5.0
source "$BATS_TEST_DIRNAME/../support/terminal.bash"

setup()
{
    need ip unshare nsenter setpriv script
    make_network
    make_surroundings
    connect
    make_keyboard
}

teardown()
{
    stop_everything
}

is_stopped()
{
    grep -q '^State:[[:space:]]*T' "/proc/$1/status"
}

@test "q and Enter quit" {
    start_terminal 'exec MONITOR'
    expect_line terminal "$green"
    type_text 'q\n'
    has_ended terminal
}

@test "an entry that is not available, an unknown key, and an empty line" {
    start_terminal 'exec MONITOR'
    expect_line terminal "$green"
    type_text 'r\n'
    expect_line terminal '  “Repair Connection” is not available now\.'
    type_text 'x\n'
    expect_line terminal '  There is no entry “x”\.'
    type_text '\n  \n'
    expect_silence terminal 0.5
    type_text ' q \n'
    has_ended terminal
}

@test "Ctrl-C quits" {
    start_terminal 'exec MONITOR'
    expect_line terminal "$green"
    type_text '\003'
    has_ended terminal
}

@test "the end of input is no key, and no reason to spin" {
    local monitor
    start_terminal 'echo $$; exec MONITOR'
    expect_line terminal '^[0-9]+'
    monitor=${line//[^0-9]/}
    expect_line terminal "$green"
    type_text '\004'
    expect_idle terminal "$monitor"
    expect_changes terminal
    kill "$monitor"
    has_ended terminal
}

@test "in the background it leaves the keyboard alone, neither stops nor spins, and takes it in the foreground" {
    local monitor
    # shellcheck disable=SC2016 # the terminal's shell's own
    start_terminal 'set -m; MONITOR & echo $!; read -r word; echo "the shell got $word"; fg >/dev/null'
    expect_line terminal '^[0-9]+'
    monitor=${line//[^0-9]/}
    expect_line terminal "$green"
    # Half a line would stay unread by the shell, too.
    type_text 'q'
    expect_idle terminal "$monitor"
    run ! is_stopped "$monitor"
    expect_changes terminal
    type_text '\n'
    expect_line terminal '^the shell got q'
    type_text 'q\n'
    has_ended terminal
}

@test "in the background, a line that nobody takes neither stops it nor makes it spin" {
    local monitor
    start_terminal 'set -m; MONITOR & echo $!; exec sleep infinity'
    expect_line terminal '^[0-9]+'
    monitor=${line//[^0-9]/}
    expect_line terminal "$green"
    type_text 'q\n'
    expect_idle terminal "$monitor"
    run ! is_stopped "$monitor"
    expect_changes terminal
    kill "$monitor"
}
