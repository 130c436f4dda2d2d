#!/usr/bin/env bats
# The monitor in a panel that speaks StatusNotifierItem.

source "$BATS_TEST_DIRNAME/desktop.bash"

setup_file()
{
    need lxqt-panel gdbus
    desktop_start
    lxqt_panel_start
    export PANEL
}

setup()
{
    plug_cable
    # A test that restarted the panel runs in a process of its own.
    PANEL=$(cat "$DESKTOP/panel" 2>/dev/null || echo "$PANEL")
}

teardown()
{
    [[ -z ${MONITOR:-} ]] || end "$MONITOR"
    xdotool mousemove 300 20
}

teardown_file()
{
    desktop_stop
}

item_name()
{
    in_network gdbus call --session --dest org.freedesktop.DBus --object-path / \
        --method org.freedesktop.DBus.ListNames \
        | grep -o "org.kde.StatusNotifierItem-$MONITOR-[0-9]*"
}

# Whether the entry with this title can be chosen, "true" or "false".
entry_is_enabled()
{
    in_network gdbus call --session --dest "$(item_name)" --object-path /MenuBar \
        --method com.canonical.dbusmenu.GetGroupProperties '[]' '[]' \
        | grep -o "{[^}]*'label': <'$1'>[^}]*}" | grep -q "'enabled': <$2>"
}

@test "the icon is green with a network and red without" {
    monitor_start
    until_true icon_is "$green"
    not icon_is "$red"
    pull_cable
    until_true icon_is "$red"
    not icon_is "$green"
    plug_cable
    until_true icon_is "$green"
}

@test "without a network the icon is red from the start" {
    pull_cable
    monitor_start
    until_true icon_is "$red"
}

@test "a left click opens the menu, Escape closes it" {
    monitor_start
    until_true icon_is "$green"
    click "$green" 1
    until_true has_menu "$MONITOR"
    xdotool key Escape
    until_true not has_menu "$MONITOR"
}

@test "clicking again does not stack menus" {
    monitor_start
    until_true icon_is "$green"
    click "$green" 1
    until_true has_menu "$MONITOR"
    click "$green" 1
    until_true not has_menu "$MONITOR"
    click "$green" 1
    until_true has_menu "$MONITOR"
    xdotool key Escape
}

@test "the left click's menu quits the monitor" {
    monitor_start
    until_true icon_is "$green"
    click "$green" 1
    until_true has_menu "$MONITOR"
    xdotool key Up Return
    monitor_ended 0
    [[ -z $(monitor_output) ]]
    until_true not icon_is "$green"
}

@test "the right click's menu is the same and quits, too" {
    monitor_start
    until_true icon_is "$green"
    click "$green" 3
    until_true has_menu "$PANEL"
    xdotool key Up Return
    monitor_ended 0
}

@test "the repair can be chosen exactly while the network is away" {
    monitor_start
    until_true icon_is "$green"
    entry_is_enabled 'Repair Connection' false
    entry_is_enabled 'Quit' true
    pull_cable
    until_true entry_is_enabled 'Repair Connection' true
    entry_is_enabled 'No network connection' false
    plug_cable
    until_true entry_is_enabled 'Repair Connection' false
}

@test "a quiet network is a quiet bus" {
    monitor_start
    until_true icon_is "$green"
    name=$(item_name)
    start TRAFFIC dbus-monitor --session "sender='$name'"
    until_true grep -q NameAcquired "$DESKTOP/TRAFFIC.log"
    # The connection is probed every two seconds.
    sleep 3
    end "$TRAFFIC"
    not grep -E 'member=(New|ItemsPropertiesUpdated|LayoutUpdated)' "$DESKTOP/TRAFFIC.log"
}

@test "a panel that is restarted shows the icon again" {
    monitor_start
    until_true icon_is "$green"
    end "$PANEL"
    until_true not icon_is "$green"
    lxqt_panel_start
    echo "$PANEL" >"$DESKTOP/panel"
    until_true icon_is "$green"
}

@test "a panel that comes after the monitor shows the icon" {
    end "$PANEL"
    monitor_start
    until_true name_is_owned com.zelmor.Monitor
    lxqt_panel_start
    echo "$PANEL" >"$DESKTOP/panel"
    until_true icon_is "$green"
}
