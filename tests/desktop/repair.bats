#!/usr/bin/env bats
# The network is down, and a person clicks on the repair in the icon's menu. The screen is the test's, to look at and to
# click on; panel and monitor are in the person's session, with a real NetworkManager and the real root daemon.

source "$BATS_TEST_DIRNAME/desktop.bash"
# After the other: what has a name in both is this one's.
source "$BATS_TEST_DIRNAME/../support/homenetwork.bash"

setup()
{
    need_home_network
    need Xvfb lxqt-panel xdotool xprop import convert
    export DESKTOP=$here
    x_start
    make_home_network
    share_screen
    start_session
    until_true icon_is "$green"
}

teardown()
{
    stop_machine
    stop_everything
    desktop_stop
}

# The X server's socket, by its number, in the machine. By way of a folder that is the same on both sides: a machine
# that boots clears the one where X servers have them.
share_screen()
{
    local socket=/tmp/.X11-unix/X${DISPLAY#:}
    ln "$socket" "$here/screen"
    "${machine[@]}" touch "$socket"
    "${machine[@]}" mount --bind "$here/screen" "$socket"
}

start_session()
{
    XDG_CONFIG_HOME=$(home_of person)/.config
    XDG_CONFIG_HOME=$machine_root$XDG_CONFIG_HOME lxqt_panel_settings
    "${machine[@]}" chown -R person "$XDG_CONFIG_HOME"
    start panel at_seat person env "DISPLAY=$DISPLAY" XDG_CURRENT_DESKTOP=LXQt lxqt-panel
    start monitor at_seat person env "DISPLAY=$DISPLAY" "$app/Contents/MacOS/VelqMonitor"
}

# The monitor's process, as windows tell it.
monitor_pid()
{
    "${machine[@]}" pgrep --exact VelqMonitor
}

# click_entry NUMBER OF: the middle of that row, counted from 1, of the open menu.
click_entry()
{
    local X Y WIDTH HEIGHT
    eval "$(xdotool getwindowgeometry --shell "$(menus_of "$(monitor_pid)")" | grep -E '^(X|Y|WIDTH|HEIGHT)=[0-9]+$')"
    xdotool mousemove $((X + WIDTH / 2)) $((Y + HEIGHT * (2 * $1 - 1) / (2 * $2))) click 1
}

icon_is_blank()
{
    not icon_is "$green" && not icon_was_at "$red"
}

choose_repair()
{
    click "$red" 1
    until_true has_menu "$(monitor_pid)"
    click_entry 2 4
}

expect_blinking()
{
    local round
    for ((round = 0; round < 3; ++round)); do
        until_true icon_is_blank
        until_true icon_is "$green"
    done
}

is_recorded()
{
    [[ $(journal_of_daemon) == *'user 4001, /bin/sh "-c" "ifconfig lan0 up"'* ]]
}

is_online()
{
    icon_is "$green" && [[ -n $("${machine[@]}" ip -4 route show default) ]]
}

@test "an interface that was switched off: red, blinking, green" {
    take_interface_down
    until_true icon_is "$red"
    # It does nothing until it is told to go on, and so the repair takes as long as one looks.
    "${machine[@]}" systemctl start com.zelmor.VelqDemon
    "${machine[@]}" systemctl kill --signal=STOP com.zelmor.VelqDemon
    choose_repair
    expect_blinking
    "${machine[@]}" systemctl kill --signal=CONT com.zelmor.VelqDemon
    until_true is_online
    until_true is_recorded
}
