#!/usr/bin/env bats
# Two kinds of tray that come and go: the monitor is in one of them, never in both.

source "$BATS_TEST_DIRNAME/desktop.bash"

setup_file()
{
    need lxqt-panel trayer
}

setup()
{
    BATS_FILE_TMPDIR=$BATS_TEST_TMPDIR
    desktop_start
    trayer_start
}

teardown()
{
    desktop_stop
}

is_in_trayer()
{
    [[ -n $(xdotool search --onlyvisible --pid "$MONITOR" 2>/dev/null) ]] && icon_is "$green"
}

is_in_panel_only()
{
    [[ -z $(xdotool search --onlyvisible --pid "$MONITOR" 2>/dev/null) ]] && icon_is "$green"
}

@test "the icon moves to the panel when that comes, and back when it goes" {
    monitor_start
    until_true is_in_trayer
    for _ in 1 2; do
        lxqt_panel_start
        until_true is_in_panel_only
        end "$PANEL"
        until_true is_in_trayer
    done
    kill "$MONITOR"
    monitor_ended 0
    [[ -z $(monitor_output) ]]
}

@test "when the session bus dies the icon moves to the tray that is left" {
    lxqt_panel_start
    monitor_start
    until_true is_in_panel_only
    end "$BUS"
    end "$PANEL"
    until_true is_in_trayer
    [[ -z $(monitor_output) ]]
}
